// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CZoomField.h"

#include <QLocale>
#include <cmath>

namespace
{
constexpr double kFewPercents = 10.0; // below, a digit behind the point helps
constexpr double kWidest = 1000.0;    // 100000 %
} // namespace

CZoomField::CZoomField(QWidget* pParent)
    : CStatusField(tr("Zoom"), tr("Zoom: click to type another one"), TextOf(kWidest), pParent)
{
}

QString CZoomField::TextOf(double dblZoom)
{
    const double dblPercent = dblZoom * 100.0;
    return tr("%1 %").arg(QLocale().toString(dblPercent, 'f', dblPercent < kFewPercents ? 1 : 0));
}

double CZoomField::ZoomOf(const QString& strText)
{
    const QString strNumber = QString(strText).remove(QLatin1Char('%')).simplified().remove(QLatin1Char(' '));
    bool bIsNumber = false;
    double dblPercent = QLocale().toDouble(strNumber, &bIsNumber);
    if (!bIsNumber)
        dblPercent = QLocale::c().toDouble(strNumber, &bIsNumber);
    return bIsNumber && std::isfinite(dblPercent) && dblPercent > 0.0 ? dblPercent / 100.0 : 0.0;
}

void CZoomField::ShowZoom(double dblZoom)
{
    ShowText(dblZoom > 0.0 ? TextOf(dblZoom) : QString());
}

bool CZoomField::Take(const QString& strText)
{
    const double dblZoom = ZoomOf(strText);
    if (!(dblZoom > 0.0))
        return false;
    Q_EMIT signal_Zoom(dblZoom);
    return true;
}
