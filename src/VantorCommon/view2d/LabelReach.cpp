// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/LabelReach_p.h>

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QString>

namespace
{
constexpr double kMargin = 4.0;      // pixels, for letters that overhang and for rounding
constexpr double kOtherLetter = 6.0; // lines; wider than letters beyond Latin-1 and than tabulators
constexpr std::size_t kFirstPrinted = 32;
} // namespace

void CLabelReach::Measure(const QFont& font, const QPaintDevice& device)
{
    if (m_nDotsPerInch == device.logicalDpiY())
        return;
    m_nDotsPerInch = device.logicalDpiY();
    const QFontMetricsF metrics(font, &device);
    m_dblAscent = metrics.ascent();
    m_dblDescent = metrics.descent();
    for (std::size_t i = 0; i < kLetters; ++i)
        m_widths[i] = i < kFirstPrinted ? kOtherLetter * metrics.height()
                                        : metrics.horizontalAdvance(QChar(static_cast<ushort>(i))) + 1.0;
}

QRectF CLabelReach::Around(const QString& strText, const QPointF& anchor) const
{
    double dblWidth = 0.0;
    bool bOther = false;
    for (const QChar c : strText) {
        const bool bKnown = c.unicode() < kLetters;
        dblWidth += bKnown ? m_widths[c.unicode()] : m_widths[0];
        bOther = bOther || !bKnown;
    }
    // Letters of other writings may come from a font with taller lines.
    const double dblTall = bOther ? m_dblAscent + m_dblDescent : 0.0;
    return QRectF(anchor.x(), anchor.y() - m_dblAscent - dblTall, dblWidth,
                  m_dblAscent + m_dblDescent + 2.0 * dblTall)
        .adjusted(-kMargin - dblTall, -kMargin, kMargin + dblTall, kMargin);
}
