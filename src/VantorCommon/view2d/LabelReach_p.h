// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRectF>
#include <array>

class QFont;
class QPaintDevice;
class QString;

/// Tells quickly where a line of text may have pixels: adds up the widths of its letters, which is at least
/// the width of the text.
class CLabelReach
{
public:
    /// Measures the letters, unless they are known for this resolution. The font must always be the same.
    void Measure(const QFont& font, const QPaintDevice& device);
    /// A rectangle around the text, in pixels of the device, its baseline beginning at a point.
    QRectF Around(const QString& strText, const QPointF& anchor) const;

private:
    static constexpr std::size_t kLetters = 256; ///< Latin-1

    std::array<double, kLetters> m_widths{};
    double m_dblAscent = 0.0;
    double m_dblDescent = 0.0;
    int m_nDotsPerInch = 0;
};
