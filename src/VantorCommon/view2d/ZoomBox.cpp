// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ZoomBox_p.h>

#include <VantorCommon/view2d/CImageView2D.h>

#include <QKeyEvent>
#include <QRubberBand>

namespace
{
constexpr int kSmallest = 4; // widget pixels; a smaller box was a click
} // namespace

CZoomBox::CZoomBox(CImageView2D* pView) : QObject(pView), m_pView(pView)
{
    pView->installEventFilter(this);
    pView->setCursor(Qt::CrossCursor);
}

CZoomBox::~CZoomBox()
{
    delete m_pBand;
}

bool CZoomBox::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    switch (pEvent->type()) {
    case QEvent::MouseButtonPress:
        Press(static_cast<QMouseEvent&>(*pEvent));
        return true;
    case QEvent::MouseMove:
        Move(static_cast<QMouseEvent&>(*pEvent));
        return true;
    case QEvent::MouseButtonRelease:
        if (m_pBand)
            Release();
        return true;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(pEvent)->key() != Qt::Key_Escape)
            return false;
        End();
        return true;
    case QEvent::Hide:
        End();
        return false;
    default:
        return QObject::eventFilter(pWatched, pEvent);
    }
}

void CZoomBox::Press(const QMouseEvent& event)
{
    Q_EMIT m_pView->signal_Active();
    if (m_pBand || event.button() != Qt::LeftButton)
        return End();
    m_start = event.pos();
    m_pBand = new QRubberBand(QRubberBand::Rectangle, m_pView);
}

/// The readout goes on; what the mode does with the mouse, such as another cursor, waits.
void CZoomBox::Move(const QMouseEvent& event)
{
    QPointF point = m_pView->MapToImage(event.localPos());
    Q_EMIT m_pView->signal_ChangeMousePosition(point);
    if (!m_pBand)
        return;
    if (!event.buttons().testFlag(Qt::LeftButton)) // the release went elsewhere
        return End();
    m_pBand->setGeometry(QRect(m_start, event.pos()).normalized());
    m_pBand->show();
}

void CZoomBox::Release()
{
    const QRect box = m_pBand->geometry();
    if (m_pBand->isVisible() && box.width() >= kSmallest && box.height() >= kSmallest)
        m_pView->ZoomTo(m_pView->MapToImage(QRectF(box)));
    End();
}

void CZoomBox::End()
{
    m_pView->removeEventFilter(this);
    m_pView->slot_ChangeViewMode(); // for the cursor
    delete m_pBand;
    deleteLater();
}
