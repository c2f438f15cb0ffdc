// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPointF>
#include <QWidget>

class CImageView2D;

/// A cross at a point of the image, a small child of the view that the mouse does not notice.
class CViewMark : public QWidget
{
public:
    explicit CViewMark(CImageView2D* pView);

    /// @param point  in image coordinates
    void Show(const QPointF& point);
    /// Goes to its point after zoom or place have changed.
    void Follow();

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    CImageView2D* m_pView;
    QPointF m_point;
};
