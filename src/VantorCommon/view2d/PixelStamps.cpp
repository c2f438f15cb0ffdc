// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/PaintTarget_p.h>
#include <VantorCommon/view2d/PixelStamps_p.h>

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cstring>
#include <limits>

namespace
{
constexpr int kOne = 64;         // a pixel in the fixed-point numbers of text layout
constexpr int kMargin = 8;       // pixels around a digit while it is examined
constexpr int kMaxHeight = 200;  // pixels; larger fonts are drawn plainly
constexpr double kInch = 0.0254; // metres
const QColor kGround(0, 0, 0, 255);

QImage Canvas(const QSize& size, int nDotsPerInch)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.setDotsPerMeterX(qRound(nDotsPerInch / kInch));
    picture.setDotsPerMeterY(picture.dotsPerMeterX());
    picture.fill(kGround);
    return picture;
}

int Fixed(double dblPixels)
{
    return static_cast<int>(dblPixels * kOne);
}

int FloorToPixel(int nFixed)
{
    return (nFixed - ((nFixed % kOne + kOne) % kOne)) / kOne;
}

bool IsBlack(const QImage& picture, int x)
{
    for (int y = 0; y < picture.height(); ++y)
        if (picture.pixel(x, y) != kGround.rgb())
            return false;
    return true;
}
} // namespace

CPixelStamps::CPixelStamps(const QFont& font) : m_font(font), m_pTarget(std::make_unique<SPaintTarget>())
{
}

CPixelStamps::~CPixelStamps() = default;

void CPixelStamps::Begin(QPainter& painter, const QPaintDevice& device)
{
    m_nLine = QFontMetrics(m_font, &device).height();
    m_pPainter = &painter;
    *m_pTarget = SPaintTarget::Of(painter);
    if (painter.device()->logicalDpiY() != m_nDotsPerInch)
        Measure(painter.device()->logicalDpiY());
}

void CPixelStamps::Measure(int nDotsPerInch)
{
    m_nDotsPerInch = nDotsPerInch;
    m_digits.clear();
    const QImage canvas = Canvas(QSize(1, 1), nDotsPerInch);
    const QFontMetricsF metrics(m_font, &canvas);
    m_nAscent = static_cast<int>(metrics.ascent());
    m_nHeight = static_cast<int>(metrics.ascent() + metrics.descent());
    m_bUsable = m_nAscent == metrics.ascent() && m_nHeight == metrics.ascent() + metrics.descent() &&
                m_nHeight == metrics.height() && m_nHeight <= kMaxHeight;
    for (int nValue = 0; nValue < 256; ++nValue) {
        const QString strText = QString::number(nValue);
        SNumber& number = m_numbers[std::size_t(nValue)];
        number.nWidth = Fixed(metrics.horizontalAdvance(strText));
        number.nDigits = strText.size();
        for (int i = 0; i < number.nDigits; ++i) {
            // Kerning belongs to the digit before, so measuring from the right leaves it out.
            const double dblEnd = metrics.horizontalAdvance(strText.left(i + 1));
            number.digits[std::size_t(i)] = strText[i].digitValue();
            number.offsets[std::size_t(i)] = Fixed(dblEnd - metrics.horizontalAdvance(strText.mid(i, 1)));
        }
    }
}

void CPixelStamps::Write(const QRectF& where, int nFlags, const QColor& color, unsigned char nValue)
{
    const SNumber& number = m_numbers[nValue];
    QPointF at = where.topLeft();
    const double dblSpare = where.width() - double(number.nWidth) / kOne;
    if (nFlags & Qt::AlignHCenter)
        at.rx() += dblSpare / 2;
    if (nFlags & Qt::AlignBottom)
        at.ry() += where.height() - m_nHeight;
    else if (nFlags & Qt::AlignVCenter)
        at.ry() += (where.height() - m_nHeight) / 2;
    if (m_pTarget->pImage && !IsInSight(at, number))
        return;
    // Rounding of fixed-point numbers around 0 and below differs.
    const bool bSimple = at.x() >= 1.0 && at.y() >= 1.0;
    if (bSimple && m_bUsable && m_pTarget->pImage) {
        // A rectangle cuts text that is wider than it.
        m_clip =
            dblSpare < 0.0 ? where.toAlignedRect().translated(m_pTarget->origin) : m_pTarget->pImage->rect();
        if (Copy(at, number, color))
            return;
    }
    m_pPainter->setFont(m_font);
    m_pPainter->setBackground(kGround);
    m_pPainter->setBackgroundMode(Qt::OpaqueMode);
    m_pPainter->setPen(color);
    m_pPainter->drawText(where, nFlags, QString::number(nValue));
    m_pPainter->setBackgroundMode(Qt::TransparentMode);
}

/// Whether a number whose text begins at a point can reach a writable part. Glyphs may overhang a little.
bool CPixelStamps::IsInSight(const QPointF& at, const SNumber& number) const
{
    const QRectF box(at + QPointF(m_pTarget->origin), QSizeF(double(number.nWidth) / kOne, m_nHeight));
    const QRect touched = box.toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin);
    return std::any_of(m_pTarget->parts.begin(), m_pTarget->parts.end(),
                       [&](const QRect& part) { return part.intersects(touched); });
}

/// Copies the digits of a number whose text begins at a point. Does nothing and returns false where drawing
/// would give another result: where digits touch or reach beyond the ground.
bool CPixelStamps::Copy(const QPointF& at, const SNumber& number, const QColor& color)
{
    const int nX = Fixed(at.x()) + m_pTarget->origin.x() * kOne;
    const double dblLeft = double(nX) / kOne;
    const double dblTop = double(Fixed(at.y())) / kOne + m_pTarget->origin.y();
    const QRect ground(QPoint(qRound(dblLeft), qRound(dblTop)),
                       QPoint(qRound(dblLeft + double(number.nWidth) / kOne), qRound(dblTop + m_nHeight)) -
                           QPoint(1, 1));
    const Digits& digits = DigitsOf(color);
    std::array<const SDigit*, 3> found{};
    std::array<int, 3> places{};
    int nFree = ground.left();
    for (std::size_t i = 0; i < std::size_t(number.nDigits); ++i) {
        const int nDigitX = nX + number.offsets[i];
        places[i] = FloorToPixel(nDigitX);
        const int nPhase = (nDigitX - places[i] * kOne) * kPhases / kOne;
        found[i] = &digits[std::size_t(number.digits[i] * kPhases + nPhase)];
        if (places[i] + found[i]->nFirst < nFree)
            return false;
        nFree = places[i] + found[i]->nLast + 1;
    }
    if (nFree > ground.right() + 1)
        return false;
    Fill(ground);
    for (std::size_t i = 0; i < std::size_t(number.nDigits); ++i)
        CopyColumns(*found[i], QPoint(places[i], ground.top()));
    return true;
}

const CPixelStamps::Digits& CPixelStamps::DigitsOf(const QColor& color)
{
    const auto it = m_digits.constFind(color.rgb());
    if (it != m_digits.constEnd())
        return *it;
    Digits digits;
    for (int i = 0; i < int(digits.size()); ++i)
        digits[std::size_t(i)] = DrawDigit(color, i / kPhases, i % kPhases);
    return *m_digits.insert(color.rgb(), digits);
}

CPixelStamps::SDigit CPixelStamps::DrawDigit(const QColor& color, int nDigit, int nPhase)
{
    QImage canvas = Canvas(QSize(m_nHeight + 4 * kMargin, m_nHeight + 2 * kMargin), m_nDotsPerInch);
    QPainter painter(&canvas);
    painter.setFont(m_font);
    painter.setPen(color);
    painter.drawText(QPointF(kMargin + double(nPhase) / kPhases, kMargin + m_nAscent),
                     QString::number(nDigit));
    painter.end();
    SDigit digit;
    digit.picture = canvas.copy(0, kMargin, canvas.width(), m_nHeight);
    int nFirst = 0;
    int nLast = canvas.width() - 1;
    while (nFirst <= nLast && IsBlack(canvas, nFirst))
        ++nFirst;
    while (nLast >= nFirst && IsBlack(canvas, nLast))
        --nLast;
    digit.nFirst = nFirst - kMargin;
    digit.nLast = nLast - kMargin;
    return digit;
}

void CPixelStamps::Fill(const QRect& rect)
{
    for (const QRect& part : m_pTarget->parts) {
        const QRect piece = part & m_clip & rect;
        for (int y = piece.top(); y <= piece.bottom(); ++y)
            std::fill_n(m_pTarget->Row(y) + piece.left(), piece.width(), kGround.rgb());
    }
}

/// Copies the columns of a digit that are not all black; the digit begins at the point `at`, at the top of
/// the text.
void CPixelStamps::CopyColumns(const SDigit& digit, const QPoint& at)
{
    const QRect rect(at.x() + digit.nFirst, at.y(), digit.nLast - digit.nFirst + 1, m_nHeight);
    const int nShift = kMargin - at.x();
    for (const QRect& part : m_pTarget->parts) {
        const QRect piece = part & m_clip & rect;
        for (int y = piece.top(); y <= piece.bottom(); ++y)
            std::memcpy(m_pTarget->Row(y) + piece.left(),
                        reinterpret_cast<const QRgb*>(digit.picture.constScanLine(y - at.y())) +
                            piece.left() + nShift,
                        std::size_t(piece.width()) * sizeof(QRgb));
    }
}
