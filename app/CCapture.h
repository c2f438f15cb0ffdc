// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class CImageView2DCtrl;

/// Captures of the screen that begin later, or that take all of it without a drag. GUI thread.
class CCapture : public QObject
{
    Q_OBJECT

public:
    explicit CCapture(QObject* pParent);

    /// Opens the snip tool of a 2D controller after a time, in which a person can open a menu elsewhere.
    /// A later call replaces one that still waits.
    void OpenAfter(CImageView2DCtrl* pCtrl, int nMilliseconds);
    /// The whole screen on which the window is, without the window.
    void TakeWhole(CImageView2DCtrl* pCtrl);

private:
    void TakeWhenOpen();

    QPointer<CImageView2DCtrl> m_pCtrl;
    QTimer m_delay;
    QTimer m_look; ///< whether the tool is on the screen
};
