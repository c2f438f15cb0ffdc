// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CImageView2DToolView.h>

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/view2d/SharedIcon_p.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QMetaEnum>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kColumns = 2;

using Signal = void (CImageView2DToolView::*)();
/// The signals of modes that have their own; the others use signal_ShapeSelected.
const std::map<int, Signal> kSignals{
    {EImageView2DMode_Selecting, &CImageView2DToolView::signal_SelectMode},
    {EImageView2DMode_Panning, &CImageView2DToolView::signal_PanningMode},
    {EImageView2DMode_Drawing_Rectanlge, &CImageView2DToolView::signal_ROIRectangleSelected},
    {EImageView2DMode_Drawing_Circle, &CImageView2DToolView::signal_ROICircleSelected},
    {EImageView2DMode_Drawing_Ellipse, &CImageView2DToolView::signal_ROIEllipseSelected},
    {EImageView2DMode_Drawing_Polygon, &CImageView2DToolView::signal_ROIPolygonSelected}};

/// The name of a mode, or of the kind that is drawn in it.
QByteArray NameOf(int nMode)
{
    const char* szName = QMetaEnum::fromType<EImageView2DMode>().valueToKey(nMode);
    const SShapeKind* pKind = szName ? nullptr : ShapeKinds::OfMode(nMode);
    return pKind ? pKind->strName.toUtf8() : QByteArray(szName);
}

QIcon IconOf(int nMode)
{
    if (nMode == EImageView2DMode_Selecting)
        return SharedIcon("selection.png");
    if (nMode == EImageView2DMode_Panning)
        return SharedIcon("move.png");
    const SShapeKind* pKind = ShapeKinds::OfMode(nMode);
    return pKind ? QIcon(pKind->strIcon) : QIcon();
}
} // namespace

CImageView2DToolView::CImageView2DToolView(CImageView2DToolModel* pModel, QWidget* pParent)
    : QWidget(pParent), m_pModel(pModel)
{
    auto* pGroup = new QGroupBox(QStringLiteral("ROI"), this);
    m_pGrid = new QGridLayout(pGroup);
    AddButton(EImageView2DMode_Selecting, QStringLiteral("Select"));
    AddButton(EImageView2DMode_Panning, QStringLiteral("Panning"));
    AddShapes(false);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pGroup, 0, Qt::AlignTop);

    if (!m_pModel)
        return;
    connect(m_pModel, &CImageView2DToolModel::signal_ChangeViewMode, this,
            &CImageView2DToolView::slot_ChangeViewMode);
    PressButtonOfMode();
}

CImageView2DToolView::~CImageView2DToolView() = default;

/// In the next free cell of the grid.
QPushButton* CImageView2DToolView::AddButton(int nMode, const QString& strText)
{
    auto* pButton = new QPushButton(strText, m_pGrid->parentWidget());
    pButton->setCheckable(true);
    pButton->setAutoExclusive(true);
    // A click must not take the focus from the image view; otherwise its undo would not work after a choice.
    pButton->setFocusPolicy(Qt::TabFocus);
    const auto it = kSignals.find(nMode);
    if (it != kSignals.end())
        connect(pButton, &QPushButton::clicked, this, it->second);
    else
        connect(pButton, &QPushButton::clicked, this, [this, nMode] { Q_EMIT signal_ShapeSelected(nMode); });
    const int nCell = static_cast<int>(m_mapButtons.size());
    m_pGrid->addWidget(pButton, nCell / kColumns, nCell % kColumns);
    m_mapButtons[nMode] = pButton;
    return pButton;
}

void CImageView2DToolView::AddShapes(bool bOptional)
{
    for (const SShapeKind& kind : ShapeKinds::All()) {
        if (kind.nMode == SShapeKind::kNone || kind.strButton.isEmpty() || kind.bOptional != bOptional)
            continue;
        AddButton(kind.nMode, kind.strButton)->setToolTip(kind.strToolTip);
    }
    UpdateIcons();
}

void CImageView2DToolView::UpdateIcons()
{
    // Deliberate: the buttons of the six modes have texts only, until the optional kinds are shown.
    for (const auto& [nMode, pButton] : m_mapButtons)
        pButton->setIcon(m_bOptional || kSignals.count(nMode) == 0 ? IconOf(nMode) : QIcon());
}

void CImageView2DToolView::ShowOptionalShapes(bool bShow)
{
    if (bShow == m_bOptional)
        return;
    m_bOptional = bShow;
    if (bShow)
        AddShapes(true);
    else
        for (const SShapeKind& kind : ShapeKinds::All())
            if (kind.bOptional)
                RemoveButton(kind.nMode);
    UpdateIcons();
    if (m_pModel)
        PressButtonOfMode();
}

void CImageView2DToolView::RemoveButton(int nMode)
{
    const auto it = m_mapButtons.find(nMode);
    if (it == m_mapButtons.end())
        return;
    delete it->second;
    m_mapButtons.erase(it);
}

void CImageView2DToolView::slot_ChangeViewMode()
{
    if (!m_pModel)
        return;
    CLogger::Write(DEBUG, "%s", NameOf(m_pModel->GetViewMode()).constData());
    PressButtonOfMode();
}

void CImageView2DToolView::PressButtonOfMode()
{
    const auto it = m_mapButtons.find(m_pModel->GetViewMode());
    if (it != m_mapButtons.end())
        it->second->setChecked(true);
}
