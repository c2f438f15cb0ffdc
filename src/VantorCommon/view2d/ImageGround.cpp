// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageGround_p.h>

#include <QImage>
#include <QPainter>
#include <QRegion>

namespace
{
constexpr int kTileWidth = 32 * CImageGround::kSquare; // the wider, the fewer steps of the painter
constexpr int kTileHeight = 2 * CImageGround::kSquare;

QImage MakeTile()
{
    QImage tile(kTileWidth, kTileHeight, QImage::Format_RGB32);
    const CImageGround squares(true);
    for (int y = 0; y < kTileHeight; ++y)
        for (int x = 0; x < kTileWidth; ++x)
            tile.setPixel(x, y, squares.At(x, y));
    return tile;
}
} // namespace

void CImageGround::Fill(QPainter& painter, const QRect& widget, const QRect& image) const
{
    if (!m_bSquares) {
        painter.fillRect(widget, QColor(kGrey));
        return;
    }
    static const QImage tile = MakeTile();
    FillAround(painter, widget, image);
    painter.fillRect(image & widget, QBrush(tile));
}

void CImageGround::FillAround(QPainter& painter, const QRect& widget, const QRect& image)
{
    for (const QRect& rect : QRegion(widget) - image)
        painter.fillRect(rect, QColor(kGrey));
}
