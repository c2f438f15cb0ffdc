// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/KeptPicture_p.h>
#include <VantorCommon/view2d/PaintRecord_p.h>

#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cstring>
#include <utility>

namespace
{
/// Copies the pixels of a rectangle to a place of an image of the same format, which has them all.
void CopyPixels(const QImage& from, const QRect& rect, QImage& to, const QPoint& place)
{
    const auto nPixel = static_cast<std::size_t>(from.depth() / 8);
    for (int y = 0; y < rect.height(); ++y)
        std::memcpy(to.scanLine(place.y() + y) + static_cast<std::size_t>(place.x()) * nPixel,
                    from.constScanLine(rect.top() + y) + static_cast<std::size_t>(rect.left()) * nPixel,
                    static_cast<std::size_t>(rect.width()) * nPixel);
}
} // namespace

void CKeptPicture::Invalidate(const QRect& part)
{
    m_vctInvalid.push_back(part);
    m_vctInvalid = CPaintRecord::Gather(std::move(m_vctInvalid));
}

void CKeptPicture::Drop()
{
    m_image = QImage();
    m_size = QSize();
    m_vctInvalid.clear();
    m_vctDrawn.clear();
    m_vctStaleBeneath.clear();
}

void CKeptPicture::Adapt(const QImage& screen, const QSize& size)
{
    if (m_size == size && m_image.devicePixelRatio() == screen.devicePixelRatio() &&
        m_image.dotsPerMeterY() == screen.dotsPerMeterY())
        return;
    Drop();
    m_size = size;
    m_image = QImage(size * screen.devicePixelRatio(), QImage::Format_RGB32);
    m_image.setDevicePixelRatio(screen.devicePixelRatio());
    m_image.setDotsPerMeterX(screen.dotsPerMeterX());
    m_image.setDotsPerMeterY(screen.dotsPerMeterY());
    m_bAllInvalid = true;
}

/// Whole pixels of the image that the part touches.
QRect CKeptPicture::ToPixels(const QRect& part) const
{
    const double dblRatio = m_image.devicePixelRatio();
    return QRectF(QPointF(part.topLeft()) * dblRatio, QSizeF(part.size()) * dblRatio).toAlignedRect() &
           m_image.rect();
}

void CKeptPicture::Renew(const QImage& screen, const QSize& size, const PaintPart& paint)
{
    Adapt(screen, size);
    if (m_image.isNull())
        return;
    const QRect whole(QPoint(), size);
    if (std::exchange(m_bAllInvalid, false)) {
        m_vctInvalid = {whole};
        m_vctDrawn.clear();
        m_vctStaleBeneath.clear();
    }
    const bool bMoved = m_vctDrawn.size() != m_vctMarks.size() ||
                        !std::equal(m_vctDrawn.begin(), m_vctDrawn.end(), m_vctMarks.begin(),
                                    [](const SMark& drawn, const QRect& mark) { return drawn.rect == mark; });
    if (bMoved)
        RemoveMarks();
    for (const QRect& part : std::exchange(m_vctInvalid, {})) {
        Paint(part & whole, paint);
        for (const QRect& mark : m_vctMarks)
            if (mark.intersects(part))
                m_vctStaleBeneath.push_back(mark & part);
    }
    m_vctStaleBeneath = CPaintRecord::Gather(std::move(m_vctStaleBeneath));
    if (bMoved)
        AddMarks(paint);
}

void CKeptPicture::RemoveMarks()
{
    for (const SMark& mark : m_vctDrawn) {
        const QRect rect = ToPixels(mark.rect);
        CopyPixels(mark.beneath, mark.beneath.rect(), m_image, rect.topLeft());
    }
    m_vctDrawn.clear();
    for (const QRect& part : std::exchange(m_vctStaleBeneath, {}))
        Invalidate(part);
}

void CKeptPicture::AddMarks(const PaintPart& paint)
{
    for (const QRect& mark : m_vctMarks) {
        const QRect pixels = ToPixels(mark);
        m_vctDrawn.push_back({mark, pixels.isEmpty() ? QImage() : m_image.copy(pixels)});
    }
    for (const QRect& mark : m_vctMarks)
        Paint(mark & QRect(QPoint(), m_size), paint);
}

void CKeptPicture::Paint(const QRect& part, const PaintPart& paint)
{
    const QRect pixels = ToPixels(part);
    if (pixels.isEmpty())
        return;
    // A painter's own clip would keep code from writing to the pixels directly.
    QPaintEngine* pEngine = m_image.paintEngine();
    pEngine->setSystemClip(pixels);
    {
        QPainter painter(&m_image);
        paint(painter, part);
    }
    pEngine->setSystemClip(QRegion());
}

void CKeptPicture::Copy(QPainter& painter, const QRegion& region) const
{
    for (const QRect& rect : region& QRect(QPoint(), m_size))
        painter.drawImage(rect, m_image, ToPixels(rect));
}
