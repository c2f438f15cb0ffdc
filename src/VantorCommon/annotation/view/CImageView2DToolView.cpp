// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CImageView2DToolView.h>

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/log/CLogger.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QMetaEnum>
#include <QPushButton>
#include <QVBoxLayout>

CImageView2DToolView::CImageView2DToolView(CImageView2DToolModel* pModel, QWidget* pParent)
    : QWidget(pParent), m_pModel(pModel)
{
    QPushButton* pSelect = MakeButton(QStringLiteral("Select"), &CImageView2DToolView::signal_SelectMode);
    QPushButton* pPanning = MakeButton(QStringLiteral("Panning"), &CImageView2DToolView::signal_PanningMode);
    QPushButton* pRect =
        MakeButton(QStringLiteral("Rect"), &CImageView2DToolView::signal_ROIRectangleSelected);
    QPushButton* pCircle =
        MakeButton(QStringLiteral("Circle"), &CImageView2DToolView::signal_ROICircleSelected);
    QPushButton* pEllipse =
        MakeButton(QStringLiteral("Ellipse"), &CImageView2DToolView::signal_ROIEllipseSelected);
    QPushButton* pPolygon =
        MakeButton(QStringLiteral("Polygon"), &CImageView2DToolView::signal_ROIPolygonSelected);
    m_arrButtons = {pSelect, pPanning, pRect, pEllipse, pCircle, pPolygon};

    auto* pGroup = new QGroupBox(QStringLiteral("ROI"), this);
    auto* pGrid = new QGridLayout(pGroup);
    pGrid->addWidget(pSelect, 0, 0);
    pGrid->addWidget(pPanning, 0, 1);
    pGrid->addWidget(pRect, 1, 0);
    pGrid->addWidget(pCircle, 1, 1);
    pGrid->addWidget(pEllipse, 2, 0);
    pGrid->addWidget(pPolygon, 2, 1);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pGroup, 0, Qt::AlignTop);

    if (!m_pModel)
        return;
    connect(m_pModel, &CImageView2DToolModel::signal_ChangeViewMode, this,
            &CImageView2DToolView::slot_ChangeViewMode);
    PressButtonOfMode();
}

CImageView2DToolView::~CImageView2DToolView() = default;

QPushButton* CImageView2DToolView::MakeButton(const QString& strText, Signal signal)
{
    auto* pButton = new QPushButton(strText, this);
    pButton->setCheckable(true);
    pButton->setAutoExclusive(true);
    // A click must not take the focus from the image view, or its undo would be dead after every choice.
    pButton->setFocusPolicy(Qt::TabFocus);
    connect(pButton, &QPushButton::clicked, this, signal);
    return pButton;
}

void CImageView2DToolView::slot_ChangeViewMode()
{
    if (!m_pModel)
        return;
    const char* szName = QMetaEnum::fromType<EImageView2DMode>().valueToKey(m_pModel->GetViewMode());
    CLogger::Write(DEBUG, "%s", szName ? szName : "");
    PressButtonOfMode();
}

void CImageView2DToolView::PressButtonOfMode()
{
    const int nMode = m_pModel->GetViewMode();
    if (nMode >= 0 && nMode < static_cast<int>(m_arrButtons.size()))
        m_arrButtons[static_cast<std::size_t>(nMode)]->setChecked(true);
}
