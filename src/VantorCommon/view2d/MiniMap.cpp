// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/MiniMap_p.h>

#include <VantorCommon/view2d/CImageView2D.h>

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace
{
constexpr int kSide = 180;       // the longer one, widget pixels
constexpr int kShare = 3;        // of the view, at most one part of so many
constexpr int kSmallest = 24;    // a smaller one helps nobody
constexpr int kBorder = 1;       // around the picture
constexpr int kDistance = 8;     // from the corner of the view
constexpr int kOversampling = 4; // samples per pixel and direction, which are then smoothed
const QColor kBorderColor(30, 30, 30);
const QColor kShade(0, 0, 0, 110); // of what is out of view
const QColor kFrameColor(255, 220, 0);

QImage MakePicture(const QImage& image, const QSize& size)
{
    const QSize coarse = size * kOversampling;
    const bool bLarge = image.width() > coarse.width() && image.height() > coarse.height();
    // A copy, because the pixels of the view's image belong to somebody else.
    return (bLarge ? image.scaled(coarse) : image)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .copy();
}
} // namespace

CMiniMap::CMiniMap(CImageView2D* pView) : QWidget(pView), m_pView(pView)
{
    setCursor(Qt::ArrowCursor);
    hide();
}

QRect CMiniMap::Inner() const
{
    return rect().adjusted(kBorder, kBorder, -kBorder, -kBorder);
}

void CMiniMap::Follow(const QImage& image, const QRect& viewPort)
{
    const QSize room = QSize(kSide, kSide).boundedTo(m_pView->size() / kShare);
    const QSize size = image.isNull() ? QSize() : image.size().scaled(room, Qt::KeepAspectRatio);
    const bool bPart = viewPort.width() > m_pView->width() || viewPort.height() > m_pView->height();
    if (!bPart || std::max(size.width(), size.height()) < kSmallest)
        return hide();
    const QSize picture = size.expandedTo(QSize(1, 1));
    m_image = image.size();
    if (m_picture.size() != picture * devicePixelRatioF()) {
        m_picture = MakePicture(image, picture * devicePixelRatioF());
        m_picture.setDevicePixelRatio(devicePixelRatioF());
    }
    const QSize whole = picture + QSize(2 * kBorder, 2 * kBorder);
    setGeometry(QRect(
        QPoint(m_pView->width() - whole.width() - kDistance, m_pView->height() - whole.height() - kDistance),
        whole));
    show();
    raise();
    update();
}

/// What the view shows, in pixels of this widget.
QRectF CMiniMap::Frame() const
{
    const QRectF seen = m_pView->MapToImage(QRectF(m_pView->rect())) & QRectF(QPointF(), QSizeF(m_image));
    const QRectF inner(Inner());
    const double sx = inner.width() / m_image.width();
    const double sy = inner.height() / m_image.height();
    return {inner.x() + seen.x() * sx, inner.y() + seen.y() * sy, seen.width() * sx, seen.height() * sy};
}

void CMiniMap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kBorderColor);
    painter.fillRect(Inner(), Qt::white); // below transparent pixels
    painter.drawImage(Inner().topLeft(), m_picture);
    const QRectF frame = Frame();
    QPainterPath shade;
    shade.addRect(QRectF(Inner()));
    shade.addRect(frame);
    painter.fillPath(shade, kShade);
    painter.setPen(kFrameColor);
    painter.drawRect(frame.adjusted(0, 0, -1, -1));
}

void CMiniMap::GoTo(const QPointF& pos)
{
    const QRectF inner(Inner());
    m_pView->CenterOn(QPointF((pos.x() - inner.x()) / inner.width() * m_image.width(),
                              (pos.y() - inner.y()) / inner.height() * m_image.height()));
}

void CMiniMap::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        GoTo(pEvent->localPos());
}

void CMiniMap::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (pEvent->buttons().testFlag(Qt::LeftButton))
        GoTo(pEvent->localPos());
}

/// The view must not notice.
void CMiniMap::mouseReleaseEvent(QMouseEvent*)
{
}
