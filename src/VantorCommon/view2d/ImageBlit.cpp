// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageBlit_p.h>
#include <VantorCommon/view2d/ImageGround_p.h>
#include <VantorCommon/view2d/PaintTarget_p.h>

#include <QImage>
#include <QPainter>
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <vector>

namespace
{
constexpr double kMinBlendScale = 3.0; // widget pixels per image pixel
constexpr int kMaxSide = 32767;        // beyond it QPainter computes differently

/// Three bytes for each number from 0 to kMaxSide: an RGB888 image whose pixels say where they stand.
const std::vector<uchar>& Numbers()
{
    static const std::vector<uchar> vctNumbers = [] {
        std::vector<uchar> bytes;
        for (int i = 0; i <= kMaxSide; ++i)
            for (const int nShift : {16, 8, 0})
                bytes.push_back(static_cast<uchar>(i >> nShift));
        return bytes;
    }();
    return vctNumbers;
}

/// One direction of a place, in widget and image pixels.
struct SAxis {
    int nWidget;
    int nViewPort;
    int nViewPortSize;
    int nWindow;
    int nWindowSize;
    double dblSource;
    double dblSourceSize;
    int nImage;
};

/// The widget pixels nBegin .. nBegin + positions.size() - 1 of one direction and the image's columns (rows)
/// in them.
struct SLookUp {
    int nBegin = 0;
    std::vector<int> positions;
};

/// Asks QPainter, the only one that knows its rounding, to paint an image of numbers, one pixel high (or
/// wide), through the same transformation.
SLookUp LookUp(const SAxis& axis, Qt::Orientation eOrientation)
{
    const bool bColumns = eOrientation == Qt::Horizontal;
    const auto rect = [bColumns](auto begin, auto size) {
        return bColumns ? QRectF(begin, 0, size, 1) : QRectF(0, begin, 1, size);
    };
    const QSize size = rect(0, axis.nWidget).size().toSize();
    const QSize numbersSize = rect(0, axis.nImage).size().toSize();
    const QImage numbers(Numbers().data(), numbersSize.width(), numbersSize.height(), 3 * numbersSize.width(),
                         QImage::Format_RGB888);
    QImage probe(size, QImage::Format_RGB32);
    probe.fill(Qt::white); // no number
    QPainter painter(&probe);
    painter.setViewport(rect(axis.nViewPort, axis.nViewPortSize).toRect());
    painter.setWindow(rect(axis.nWindow, axis.nWindowSize).toRect());
    const QRectF source = rect(axis.dblSource, axis.dblSourceSize);
    painter.drawImage(source, numbers, source);
    painter.end();

    SLookUp lookUp;
    for (int i = 0; i < axis.nWidget; ++i) {
        const QRgb pixel = bColumns ? reinterpret_cast<const QRgb*>(probe.constScanLine(0))[i]
                                    : *reinterpret_cast<const QRgb*>(probe.constScanLine(i));
        const auto nPosition = static_cast<int>(pixel & 0xFFFFFFu);
        if (nPosition > kMaxSide)
            continue;
        if (lookUp.positions.empty())
            lookUp.nBegin = i;
        lookUp.positions.push_back(nPosition);
    }
    return lookUp;
}

QRgb GreyPixel(const uchar* p)
{
    return 0xFF000000u | p[0] * 0x010101u;
}

QRgb RgbPixel(const uchar* p)
{
    return qRgb(p[0], p[1], p[2]);
}

/// Twice as fast; also reads the byte after the pixel.
QRgb RgbPixelAndOneByte(const uchar* p)
{
    return 0xFF000000u | qFromBigEndian<quint32>(p) >> 8;
}

/// Each byte times a / 255, rounded as QPainter rounds.
QRgb Multiply(QRgb pixel, unsigned int a)
{
    const auto scale = [a](unsigned int two) {
        const unsigned int t = two * a;
        return (t + ((t >> 8) & 0xFF00FFu) + 0x800080u) >> 8 & 0xFF00FFu;
    };
    return scale(pixel & 0xFF00FFu) | scale((pixel >> 8) & 0xFF00FFu) << 8;
}

QRgb Blend(const uchar* p, QRgb background)
{
    const QRgb pixel = qRgba(p[0], p[1], p[2], p[3]);
    return p[3] == 255 ? pixel : qPremultiply(pixel) + Multiply(background, 255u - p[3]);
}

/// Paints the rows of one rectangle (the target's coordinates), whose first pixel shows columns[0] of
/// rows[0]. It converts the image's last row differently, because no byte follows it.
template <int nBytes, class Convert, class ConvertLast>
void PaintRows(QImage& target, const QRect& rect, const QImage& image, const int* pColumns, const int* pRows,
               Convert convert, ConvertLast convertLast)
{
    // Not scanLine, which would detach the image from its active painter.
    uchar* pBits = const_cast<uchar*>(target.constBits());
    const auto nStride = static_cast<std::size_t>(target.bytesPerLine());
    const auto nWidth = static_cast<std::size_t>(rect.width());
    std::vector<std::size_t> offsets(nWidth);
    for (std::size_t x = 0; x < nWidth; ++x)
        offsets[x] = static_cast<std::size_t>(pColumns[x]) * nBytes;
    const QRgb* pFormer = nullptr;
    for (int y = 0; y < rect.height(); ++y) {
        auto* pRow =
            reinterpret_cast<QRgb*>(pBits + static_cast<std::size_t>(rect.top() + y) * nStride) + rect.left();
        if (pFormer && pRows[y] == pRows[y - 1]) {
            std::memcpy(pRow, pFormer, nWidth * sizeof(QRgb));
        } else {
            const uchar* pSource = image.constScanLine(pRows[y]);
            if (pRows[y] == image.height() - 1)
                for (std::size_t x = 0; x < nWidth; ++x)
                    pRow[x] = convertLast(pSource + offsets[x], x);
            else
                for (std::size_t x = 0; x < nWidth; ++x)
                    pRow[x] = convert(pSource + offsets[x], x);
        }
        pFormer = pRow;
    }
}

/// Paints rows of squares over squares, a row of squares at a time. The offset leads from the target's to the
/// widget's pixels.
void PaintOverSquares(QImage& target, const QRect& rect, const QImage& image, const int* pColumns,
                      const int* pRows, const CImageGround& ground, const QPoint& offset)
{
    const QRect inWidget = rect.translated(offset);
    std::vector<QRgb> behind(static_cast<std::size_t>(rect.width()));
    for (int y = inWidget.top(); y <= inWidget.bottom();) {
        const int nEnd =
            std::min((y / CImageGround::kSquare + 1) * CImageGround::kSquare, inWidget.bottom() + 1);
        for (int x = 0; x < rect.width(); ++x)
            behind[static_cast<std::size_t>(x)] = ground.At(inWidget.left() + x, y);
        const auto blend = [&behind](const uchar* p, std::size_t x) { return Blend(p, behind[x]); };
        const QRect band(rect.left(), y - offset.y(), rect.width(), nEnd - y);
        PaintRows<4>(target, band, image, pColumns, pRows + (y - inWidget.top()), blend, blend);
        y = nEnd;
    }
}

void PaintPart(QImage& target, const QRect& rect, const QImage& image, const int* pColumns, const int* pRows,
               const CImageGround& ground, const QPoint& offset)
{
    const auto grey = [](const uchar* p, std::size_t) { return GreyPixel(p); };
    const auto rgb = [](const uchar* p, std::size_t) { return RgbPixelAndOneByte(p); };
    const auto lastRgb = [](const uchar* p, std::size_t) { return RgbPixel(p); };
    const auto blend = [](const uchar* p, std::size_t) { return Blend(p, CImageGround::kGrey); };
    if (image.format() == QImage::Format_Grayscale8)
        PaintRows<1>(target, rect, image, pColumns, pRows, grey, grey);
    else if (image.format() == QImage::Format_RGB888)
        PaintRows<3>(target, rect, image, pColumns, pRows, rgb, lastRgb);
    else if (ground.HasSquares())
        PaintOverSquares(target, rect, image, pColumns, pRows, ground, offset);
    else
        PaintRows<4>(target, rect, image, pColumns, pRows, blend, blend);
}

bool IsSupported(const QImage& image, double dblScale)
{
    // Blending costs more than looking up, so it pays only where rows repeat.
    return (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_RGB888 ||
            (image.format() == QImage::Format_RGBA8888 && dblScale >= kMinBlendScale)) &&
           image.width() > 1 && image.height() > 1 && image.width() <= kMaxSide && image.height() <= kMaxSide;
}
} // namespace

bool ImageBlit::Paint(QPainter& painter, const QImage& image, const SPlace& place, const CImageGround& ground)
{
    const QRect& v = place.viewPort;
    const QRect& w = place.window;
    if (place.source.isEmpty() || v.width() == w.width() || v.height() == w.height() ||
        !IsSupported(image, double(v.height()) / w.height()))
        return false;
    const SPaintTarget target = SPaintTarget::Of(painter);
    if (!target.pImage)
        return false;
    const SLookUp columns = LookUp({place.widget.width(), v.left(), v.width(), w.left(), w.width(),
                                    place.source.left(), place.source.width(), image.width()},
                                   Qt::Horizontal);
    const SLookUp rows = LookUp({place.widget.height(), v.top(), v.height(), w.top(), w.height(),
                                 place.source.top(), place.source.height(), image.height()},
                                Qt::Vertical);
    const QRect shown(columns.nBegin, rows.nBegin, static_cast<int>(columns.positions.size()),
                      static_cast<int>(rows.positions.size()));
    CImageGround::FillAround(painter, place.widget, shown);
    for (const QRect& part : target.parts) {
        const QRect rect = part & shown.translated(target.origin);
        if (rect.isEmpty())
            continue;
        const QPoint first = rect.topLeft() - target.origin - shown.topLeft();
        PaintPart(*target.pImage, rect, image, columns.positions.data() + first.x(),
                  rows.positions.data() + first.y(), ground, -target.origin);
    }
    return true;
}
