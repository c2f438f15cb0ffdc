// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <vector>

class QMainWindow;

/// Shows the viewers alone on the whole screen, also as a slide show. F11 or Escape ends it; everything is
/// where it was then. GUI thread.
class CFullScreen : public QObject
{
    Q_OBJECT

public:
    /// @param pWindow  lives longer
    explicit CFullScreen(QMainWindow* pWindow);

    bool IsOn() const { return m_bOn; }
    bool IsSlideShow() const { return m_slides.isActive(); }
    void Set(bool bOn);
    /// The whole screen, with signal_NextSlide every five seconds.
    void StartSlideShow();

Q_SIGNALS:
    void signal_NextSlide();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Hide();

    QMainWindow* m_pWindow;
    bool m_bOn = false;
    Qt::WindowStates m_eBefore = Qt::WindowNoState;
    std::vector<QPointer<QWidget>> m_vctHidden;
    QTimer m_slides;
};
