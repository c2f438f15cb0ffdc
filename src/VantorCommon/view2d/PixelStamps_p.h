// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QRect>
#include <array>
#include <memory>

struct SPaintTarget;
class QPaintDevice;
class QPainter;

/// Writes the numbers 0 to 255 over an opaque black ground, pixel for pixel as QPainter::drawText does. Where
/// it can write to the painter's pixels directly, it draws each digit once for each quarter of a pixel and
/// copies it from then on, many times faster; elsewhere it calls drawText. GUI thread only.
class CPixelStamps
{
public:
    /// The font has the resolution of each painter's device.
    explicit CPixelStamps(const QFont& font);
    ~CPixelStamps();

    /// Sets the target of the numbers. The painter lives until the last Write or the next Begin.
    /// @param device  its metrics give the height of a line
    void Begin(QPainter& painter, const QPaintDevice& device);
    /// In pixels; valid after Begin.
    int LineHeight() const { return m_nLine; }
    /// Writes a number into the rectangle, in the painter's coordinates, which must be those of widget
    /// pixels.
    /// @param nFlags  as for drawText; only horizontal centring, vertical centring and bottom count
    void Write(const QRectF& where, int nFlags, const QColor& color, unsigned char nValue);

private:
    /// The positions of the digits of a number, in 64ths of a pixel.
    struct SNumber {
        int nWidth = 0;
        int nDigits = 0;
        std::array<int, 3> digits{};
        std::array<int, 3> offsets{};
    };
    /// A digit on black. Its columns from nFirst to nLast are not all black; column 0 is the pixel in which
    /// it begins.
    struct SDigit {
        QImage picture;
        int nFirst = 0;
        int nLast = -1;
    };
    static constexpr int kPhases = 4; ///< glyphs are drawn at quarters of a pixel
    using Digits = std::array<SDigit, 10 * kPhases>;

    void Measure(int nDotsPerInch);
    const Digits& DigitsOf(const QColor& color);
    SDigit DrawDigit(const QColor& color, int nDigit, int nPhase);
    bool IsInSight(const QPointF& at, const SNumber& number) const;
    bool Copy(const QPointF& at, const SNumber& number, const QColor& color);
    void Fill(const QRect& rect);
    void CopyColumns(const SDigit& digit, const QPoint& at);

    QFont m_font;
    int m_nLine = 0;
    int m_nDotsPerInch = 0; ///< for which the numbers and digits below were made
    int m_nAscent = 0;      ///< pixels
    int m_nHeight = 0;      ///< of a text, pixels
    bool m_bUsable = false; ///< whether digits can be copied at all
    std::array<SNumber, 256> m_numbers;
    QHash<QRgb, Digits> m_digits;
    QPainter* m_pPainter = nullptr;
    std::unique_ptr<SPaintTarget> m_pTarget;
    QRect m_clip; ///< where the current number may be written, in the target's coordinates
};
