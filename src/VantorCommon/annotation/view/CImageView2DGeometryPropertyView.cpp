// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>

#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr int kMinimumWidth = 200;
constexpr double kMaxWidth = 50.0; // widget pixels
constexpr int kFillAlpha = 50;     // of a fill that begins

QIcon Swatch(const QColor& color, const QSize& size)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return QIcon(pixmap);
}

bool CanBeFilled(const CImageView2DDrawableObject& object)
{
    return ShapeKinds::IsRegion(object) || object.GetType() == EImageView2DDrawbleObjectType_Text;
}

QPushButton* AddColorButton(QFormLayout* pForm, QWidget* pLabel, const QString& strName)
{
    auto* pButton = new QPushButton;
    pButton->setAccessibleName(strName);
    pButton->setToolTip(strName);
    pButton->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard to the image view
    pForm->addRow(pLabel, pButton);
    return pButton;
}
} // namespace

CImageView2DGeometryPropertyView::CImageView2DGeometryPropertyView(CImageView2DGeometryModel* pModel,
                                                                   QWidget* pParent)
    : QWidget(pParent), m_pModel(pModel)
{
    setMinimumWidth(kMinimumWidth);
    if (pModel)
        connect(pModel, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty, this,
                &CImageView2DGeometryPropertyView::slot_ChangeDrawableObjectProperty);
}

CImageView2DGeometryPropertyView::~CImageView2DGeometryPropertyView() = default;

void CImageView2DGeometryPropertyView::SetEditable(bool bEditable)
{
    if (bEditable && !m_pEditors)
        CreateEditors();
    if (!m_pEditors)
        return;
    m_pEditors->setVisible(bEditable);
    ShowValues();
}

void CImageView2DGeometryPropertyView::CreateEditors()
{
    m_pEditors = new QGroupBox(QStringLiteral("Annotation"), this);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pEditors);
    auto* pForm = new QFormLayout(m_pEditors);
    m_pColor = AddColorButton(pForm, new QLabel(QStringLiteral("Color")), QStringLiteral("Color"));
    m_pWidth = new QDoubleSpinBox;
    m_pWidth->setAccessibleName(QStringLiteral("Width"));
    m_pWidth->setRange(1.0, kMaxWidth);
    m_pWidth->setDecimals(0);
    m_pWidth->setKeyboardTracking(false); // one step for an entry, not for each digit
    pForm->addRow(QStringLiteral("Width"), m_pWidth);
    m_pFilled = new QCheckBox(QStringLiteral("Fill"));
    m_pFilled->setFocusPolicy(Qt::TabFocus);
    m_pFill = AddColorButton(pForm, m_pFilled, QStringLiteral("Fill color"));
    using View = CImageView2DGeometryPropertyView;
    connect(m_pColor, &QPushButton::clicked, this,
            [this] { ChooseColor(m_color, false, &View::signal_ChangeColor); });
    connect(m_pFill, &QPushButton::clicked, this, [this] { ChooseColor(m_fill, true, &View::TellFill); });
    connect(m_pWidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &View::signal_ChangeWidth);
    connect(m_pFilled, &QCheckBox::toggled, this, [this](bool bFilled) {
        Q_EMIT signal_ChangeFill(bFilled ? QBrush(m_fill) : QBrush(Qt::NoBrush));
    });
    m_pShowLater = new QTimer(this);
    m_pShowLater->setSingleShot(true);
    connect(m_pShowLater, &QTimer::timeout, this, &View::ShowValues);
    if (!m_pModel)
        return;
    const auto showLater = [this] { m_pShowLater->start(0); };
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_AddDrawableObject, this, showLater);
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_DeleteDrawableObject, this, showLater);
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_ClearObject, this, showLater);
}

void CImageView2DGeometryPropertyView::ChooseColor(
    const QColor& color, bool bAlpha, void (CImageView2DGeometryPropertyView::*pTell)(const QColor&))
{
    auto* pDialog = new QColorDialog(color, this);
    pDialog->setOption(QColorDialog::ShowAlphaChannel, bAlpha);
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(pDialog, &QColorDialog::colorSelected, this, pTell);
    pDialog->open();
}

void CImageView2DGeometryPropertyView::TellFill(const QColor& color)
{
    Q_EMIT signal_ChangeFill(QBrush(color));
}

void CImageView2DGeometryPropertyView::slot_ChangeDrawableObjectProperty(unsigned int)
{
    if (m_pShowLater)
        m_pShowLater->start(0);
}

void CImageView2DGeometryPropertyView::ShowValues()
{
    const auto vctObjects = m_pModel ? m_pModel->GetObjects() : CImageView2DGeometryModel::ObjectList();
    const auto it = std::find_if(vctObjects.begin(), vctObjects.end(),
                                 [](const auto& pObject) { return pObject->GetSelected(); });
    m_pEditors->setEnabled(it != vctObjects.end());
    const SObjectLook look = it != vctObjects.end() ? ObjectLook::Of(**it) : SObjectLook{QPen(Qt::gray), {}};
    const bool bFilled = look.brush.style() != Qt::NoBrush;
    m_color = look.pen.color();
    m_fill = look.brush.color();
    if (!bFilled) {
        m_fill = m_color;
        m_fill.setAlpha(kFillAlpha);
    }
    const QSignalBlocker blockWidth(m_pWidth);
    const QSignalBlocker blockFilled(m_pFilled);
    m_pColor->setIcon(Swatch(m_color, m_pColor->iconSize()));
    m_pFill->setIcon(Swatch(m_fill, m_pFill->iconSize()));
    m_pFill->setEnabled(bFilled);
    m_pFilled->setChecked(bFilled);
    m_pFilled->setEnabled(it == vctObjects.end() || CanBeFilled(**it));
    m_pWidth->setValue(look.pen.widthF());
}
