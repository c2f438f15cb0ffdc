// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ViewMark_p.h>

#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/Saturate_p.h>

#include <QPainter>

namespace
{
constexpr int kArm = 15; // widget pixels
constexpr int kHole = 4; // so that the pixel itself stays visible
constexpr int kHalo = 3; // width of the dark line beneath
const QColor kDark(0, 0, 0);
const QColor kLight(255, 220, 0);
} // namespace

CViewMark::CViewMark(CImageView2D* pView) : QWidget(pView), m_pView(pView)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedSize(2 * kArm + 1, 2 * kArm + 1);
}

void CViewMark::Show(const QPointF& point)
{
    m_point = point;
    Follow();
    show();
    raise();
}

void CViewMark::Follow()
{
    const QPointF pos = m_pView->MapToWidget(m_point);
    // At most one cross beyond the view, so that the window system can tell where it is.
    const int x = qBound(-width(), RoundToInt(pos.x() - 0.5) - kArm, m_pView->width());
    const int y = qBound(-height(), RoundToInt(pos.y() - 0.5) - kArm, m_pView->height());
    move(x, y);
}

void CViewMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const QPen& pen : {QPen(kDark, kHalo), QPen(kLight, 1)}) {
        painter.setPen(pen);
        for (const QPoint& to : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            painter.drawLine(QPoint(kArm, kArm) + to * kHole, QPoint(kArm, kArm) + to * (kArm - 1));
    }
}
