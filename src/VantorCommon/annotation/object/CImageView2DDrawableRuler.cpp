// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>

#include <Vantor/geometry/CLine.h>

namespace
{
constexpr int kDigits = 6;
} // namespace

CImageView2DDrawableRuler::CImageView2DDrawableRuler()
    : CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType_Ruler)
{
}

CImageView2DDrawableRuler::~CImageView2DDrawableRuler() = default;

QPointF CImageView2DDrawableRuler::GetPointText() const
{
    const auto pLine = std::dynamic_pointer_cast<Vantor::Geometry::CLine>(GetData());
    return pLine ? QPointF(pLine->end().x(), pLine->end().y()) : QPointF();
}

SObjectLabel CImageView2DDrawableRuler::GetLabel() const
{
    const auto pLine = std::dynamic_pointer_cast<Vantor::Geometry::CLine>(GetData());
    if (!pLine)
        return {};
    SObjectLabel label{QString::asprintf("%.03f pixel", pLine->GetLength()), GetPointText()};
    if (!m_bUnits || m_calibration.IsPixel())
        return label;
    const double dblUnits =
        m_calibration.GetLength(pLine->end().x() - pLine->start().x(), pLine->end().y() - pLine->start().y());
    label.strSecond = QStringLiteral("%1 %2")
                          .arg(dblUnits, 0, 'g', kDigits)
                          .arg(QString::fromStdString(m_calibration.GetSize().unit));
    return label;
}

void CImageView2DDrawableRuler::SetCalibration(const Vantor::Algorithms::CCalibration& calibration,
                                               bool bLabel)
{
    const SObjectLabel before = GetLabel();
    m_calibration = calibration;
    m_bUnits = bLabel;
    if (GetLabel().strSecond != before.strSecond)
        Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
}
