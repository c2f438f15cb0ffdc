// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CZoomField.h"

#include <QKeyEvent>
#include <QLocale>
#include <QTimer>
#include <cmath>

namespace
{
constexpr double kFewPercents = 10.0; // below, a digit behind the point helps
constexpr int kMargin = 12;           // pixels, of the line editor
} // namespace

CZoomField::CZoomField(QWidget* pParent) : QLineEdit(pParent)
{
    setFrame(false);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::ClickFocus); // Tab goes from viewer to viewer
    setAccessibleName(tr("Zoom"));
    setToolTip(tr("Zoom: click to type another one"));
    setFixedWidth(fontMetrics().horizontalAdvance(TextOf(1000.0)) + kMargin);
    connect(this, &QLineEdit::returnPressed, this, &CZoomField::Enter);
    setEnabled(false);
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
    m_dblZoom = dblZoom;
    if (!hasFocus())
        setText(dblZoom > 0.0 ? TextOf(dblZoom) : QString());
}

void CZoomField::Enter()
{
    const double dblZoom = ZoomOf(text());
    if (!(dblZoom > 0.0)) {
        Q_EMIT signal_Refused(text());
        return selectAll();
    }
    Q_EMIT signal_Zoom(dblZoom);
    Q_EMIT signal_Left();
}

void CZoomField::focusInEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusInEvent(pEvent);
    QTimer::singleShot(0, this, &QLineEdit::selectAll); // after the press that gave the focus
}

void CZoomField::focusOutEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusOutEvent(pEvent);
    ShowZoom(m_dblZoom);
}

void CZoomField::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Escape)
        Q_EMIT signal_Left();
    else
        QLineEdit::keyPressEvent(pEvent);
}
