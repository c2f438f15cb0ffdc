// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QImage>
#include <QWidget>

class CImageView2D;

/// The whole image in a corner of the 2D view, with a frame around what the view shows, while that is a part.
/// A press or a drag centres the view there.
class CMiniMap : public QWidget
{
public:
    explicit CMiniMap(CImageView2D* pView);

    /// Zoom, place or size have changed. The image is read now or not at all; null: hides.
    void Follow(const QImage& image, const QRect& viewPort);
    /// The next Follow comes with another image.
    void Forget() { m_picture = QImage(); }

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;

private:
    QRect Inner() const;
    QRectF Frame() const;
    void GoTo(const QPointF& pos);

    CImageView2D* m_pView;
    QSize m_image;    ///< size, in image pixels
    QImage m_picture; ///< the image, small
};
