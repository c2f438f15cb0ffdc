// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/CSnipTool.h>

#include <VantorCommon/sniptool/CSnipToolColors_p.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/view2d/Saturate_p.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace
{
QPoint PositionOf(const QMouseEvent* pEvent)
{
    return {RoundToInt(pEvent->localPos().x()), RoundToInt(pEvent->localPos().y())};
}
} // namespace

CSnipTool::CSnipTool(CSnipToolModel* pModel, QWidget* parent) : QDialog(parent), m_pModel(pModel)
{
    // Qt::Window is explicit: without it a dialog with a parent is no window any more.
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    // Deliberate: on a window of its own this does not keep the mouse away, and it must not.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(false);
    hide();
}

CSnipTool::~CSnipTool() = default;

void CSnipTool::showEvent(QShowEvent* pEvent)
{
    setCursor(Qt::CrossCursor);
    QDialog::showEvent(pEvent);
}

/// The user may release the button after the window is gone; that must not end a drag.
void CSnipTool::hideEvent(QHideEvent* pEvent)
{
    m_bPressed = false;
    m_rectSelect = QRect();
    QDialog::hideEvent(pEvent);
}

void CSnipTool::closeEvent(QCloseEvent* pEvent)
{
    setCursor(Qt::ArrowCursor);
    QDialog::closeEvent(pEvent);
}

void CSnipTool::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Escape)
        Q_EMIT signal_ExitCapture();
    else
        pEvent->ignore();
}

void CSnipTool::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    m_bPressed = true;
    m_ptStart = PositionOf(pEvent);
}

void CSnipTool::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bPressed)
        return;
    m_rectSelect = QRect(m_ptStart, PositionOf(pEvent));
    update();
}

void CSnipTool::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!m_bPressed || pEvent->button() != Qt::LeftButton)
        return;
    const QPoint ptEnd = PositionOf(pEvent);
    m_rectSelect = QRect();
    update();
    m_bPressed = false;
    // Last, because a receiver may end the application, and this window with it.
    Q_EMIT signal_CaptureScreen(QRect(mapToGlobal(m_ptStart), mapToGlobal(ptEnd)));
}

void CSnipTool::paintEvent(QPaintEvent*)
{
    setMask(QRegion(rect()) - QRegion(m_rectSelect));
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgba(CSnipToolColors::kGrey));
    if (m_rectSelect.isEmpty())
        return;
    const QColor green = QColor::fromRgba(CSnipToolColors::kGreen);
    painter.setPen(QPen(green, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    // The middle of a line, one pixel wide, around the selection on a screen of any density.
    painter.drawRect(QRectF(m_rectSelect).adjusted(-0.5, -0.5, 0.5, 0.5));
}
