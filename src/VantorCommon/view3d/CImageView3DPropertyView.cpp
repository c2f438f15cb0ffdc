// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DPropertyView.h>

#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/ImageView3DParameters_p.h>

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace
{
/// The value that a box shows for a number: rounded to its decimals, inside its range.
double ShownValue(const QDoubleSpinBox& box, double dblValue)
{
    const double dblScale = std::pow(10.0, box.decimals());
    return std::clamp(std::round(dblValue * dblScale) / dblScale, box.minimum(), box.maximum());
}

/// Accepts a typed number beyond the range and makes it the limit when the entry ends; the plain box would
/// refuse the digit that exceeds the range, and 150 would become 15.
class CClampingBox : public QDoubleSpinBox
{
public:
    using QDoubleSpinBox::QDoubleSpinBox;

    QValidator::State validate(QString& strText, int& nPos) const override
    {
        const QValidator::State eState = QDoubleSpinBox::validate(strText, nPos);
        return eState == QValidator::Invalid && IsBeyond(strText) ? QValidator::Intermediate : eState;
    }
    void fixup(QString& strText) const override
    {
        if (IsBeyond(strText))
            strText = textFromValue(locale().toDouble(strText) > maximum() ? maximum() : minimum());
    }

private:
    bool IsBeyond(const QString& strText) const
    {
        bool bNumber = false;
        const double dblValue = locale().toDouble(strText, &bNumber);
        return bNumber && (dblValue > maximum() || dblValue < minimum());
    }
};

QDoubleSpinBox* CreateBox(const SImageView3DParameter& row, QWidget* pParent)
{
    auto* pBox = new CClampingBox(pParent);
    pBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    pBox->setRange(row.dblMinimum, row.dblMaximum);
    pBox->setSingleStep(row.dblStep);
    return pBox;
}
} // namespace

CImageView3DPropertyView::CImageView3DPropertyView(CImageView3DModel* pModel, QWidget* pParent)
    : QWidget(pParent), m_pModel(pModel)
{
    auto* pMainLayout = new QVBoxLayout(this);
    QGroupBox* pGroup = nullptr;
    QFormLayout* pLayout = nullptr;
    for (const SImageView3DParameter& row : ImageView3D::kParameters) {
        const QString strGroup = QString::fromLatin1(row.pGroup);
        if (!pGroup || pGroup->title() != strGroup) {
            pGroup = new QGroupBox(strGroup, this);
            pLayout = new QFormLayout(pGroup);
            pMainLayout->addWidget(pGroup);
        }
        QDoubleSpinBox* pBox = CreateBox(row, pGroup);
        auto* pLabel = new QLabel(QString::fromLatin1(row.pLabel), pGroup);
        pLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        pLabel->setBuddy(pBox);
        pLayout->addRow(pLabel, pBox);
        connect(pBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, row.pSignal);
        m_vctBoxes.push_back(pBox);
    }
    if (m_pModel)
        connect(m_pModel.data(), &CImageView3DModel::signal_ChangeTransformMatrix, this,
                &CImageView3DPropertyView::slot_ChangeTransformMatrix);
    UpdateValue();
}

CImageView3DPropertyView::~CImageView3DPropertyView() = default;

void CImageView3DPropertyView::UpdateValue()
{
    if (!m_pModel)
        return;
    for (int i = 0; i < EImageView3DParameter_Count; ++i) {
        QDoubleSpinBox* pBox = m_vctBoxes[i];
        const double dblValue = m_pModel->GetParameter(static_cast<EImageView3DParameter>(i));
        if (ShownValue(*pBox, dblValue) != pBox->value())
            pBox->setValue(dblValue);
    }
}

void CImageView3DPropertyView::slot_ChangeTransformMatrix()
{
    UpdateValue();
}
