// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CFullScreen.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <utility>

namespace
{
constexpr int kSlideMs = 5000;
}

CFullScreen::CFullScreen(QMainWindow* pWindow) : QObject(pWindow), m_pWindow(pWindow)
{
    m_slides.setInterval(kSlideMs);
    connect(&m_slides, &QTimer::timeout, this, &CFullScreen::signal_NextSlide);
}

void CFullScreen::Set(bool bOn)
{
    m_slides.stop();
    if (std::exchange(m_bOn, bOn) == bOn)
        return;
    if (bOn) {
        qApp->installEventFilter(this); // the views have a use of their own for Escape
        m_eBefore = m_pWindow->windowState();
        Hide();
        m_pWindow->setWindowState(m_eBefore | Qt::WindowFullScreen);
        return;
    }
    qApp->removeEventFilter(this);
    m_pWindow->setWindowState(m_eBefore);
    for (const auto& pWidget : std::exchange(m_vctHidden, {}))
        if (pWidget)
            pWidget->show();
}

void CFullScreen::StartSlideShow()
{
    Set(true);
    m_slides.start();
}

/// The entries of a hidden menu bar have no keys but those of other widgets that have them, too.
void CFullScreen::Hide()
{
    QList<QWidget*> lstWidgets{m_pWindow->menuBar(), m_pWindow->statusBar()};
    for (auto* pBar : m_pWindow->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
        lstWidgets.append(pBar);
    for (auto* pDock : m_pWindow->findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
        lstWidgets.append(pDock);
    for (QWidget* pWidget : lstWidgets)
        if (!pWidget->isHidden()) {
            pWidget->hide();
            m_vctHidden.emplace_back(pWidget);
        }
}

bool CFullScreen::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const auto* pWidget = qobject_cast<QWidget*>(pWatched);
    const bool bEscape =
        pEvent->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape;
    if (!bEscape || !pWidget || pWidget->window() != m_pWindow)
        return QObject::eventFilter(pWatched, pEvent);
    Set(false);
    return true;
}
