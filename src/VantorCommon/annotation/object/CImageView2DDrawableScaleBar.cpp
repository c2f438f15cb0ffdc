// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableScaleBar.h>

#include <Vantor/geometry/CScaleBar.h>

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

using Vantor::Algorithms::CCalibration;
using Vantor::Geometry::CScaleBar;

namespace
{
// In widget pixels.
constexpr double kMostLength = 200.0;
constexpr double kThickness = 5.0;
constexpr double kMargin = 3.0;
constexpr int kLetters = 14;
constexpr double kReach = 120.0; // of a text that is wider than its bar, and up

constexpr int kDigits = 12;
const QColor kGround(255, 255, 255, 190);
} // namespace

CImageView2DDrawableScaleBar::CImageView2DDrawableScaleBar()
    : CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType_Geometry)
{
}

CImageView2DDrawableScaleBar::~CImageView2DDrawableScaleBar() = default;

double CImageView2DDrawableScaleBar::GetLength(double s) const
{
    const auto pBar = std::dynamic_pointer_cast<CScaleBar>(GetData());
    return pBar ? CCalibration::RoundLength(m_calibration.GetSize().x *
                                            std::min(pBar->CLine::GetLength(), kMostLength * s))
                : 0.0;
}

double CImageView2DDrawableScaleBar::GetReach() const
{
    return kReach;
}

void CImageView2DDrawableScaleBar::PaintContents(QPainter& painter, double s) const
{
    const auto pBar = std::dynamic_pointer_cast<CScaleBar>(GetData());
    const double dblUnits = GetLength(s);
    if (!pBar || dblUnits <= 0.0)
        return;
    const QString strText = QStringLiteral("%1 %2")
                                .arg(dblUnits, 0, 'g', kDigits)
                                .arg(QString::fromStdString(m_calibration.GetSize().unit));
    QFont font;
    font.setPixelSize(kLetters);
    const QFontMetricsF metrics(font);
    const double dblLength = dblUnits / m_calibration.GetSize().x / s;
    painter.save();
    painter.translate(std::min(pBar->start().x(), pBar->end().x()), pBar->start().y());
    painter.scale(s, s); // from here on in widget pixels
    const double dblWidth = std::max(dblLength, metrics.horizontalAdvance(strText));
    const QRectF bar(0.0, -kThickness / 2.0, dblLength, kThickness);
    const QRectF text(0.0, bar.top() - kMargin - metrics.height(), dblWidth, metrics.height());
    painter.fillRect((bar | text).adjusted(-kMargin, -kMargin, kMargin, kMargin), kGround);
    painter.fillRect(bar, Qt::black);
    painter.setPen(Qt::black);
    painter.setFont(font);
    painter.drawText(QRectF(text.topLeft(), QSizeF(dblWidth, text.height())), Qt::AlignHCenter, strText);
    painter.restore();
}

void CImageView2DDrawableScaleBar::SetCalibration(const CCalibration& calibration, bool)
{
    if (m_calibration == calibration)
        return;
    m_calibration = calibration;
    Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
}
