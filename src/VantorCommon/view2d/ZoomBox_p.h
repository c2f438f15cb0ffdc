// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

class CImageView2D;
class QMouseEvent;
class QRubberBand;

/// Waits for a drag with the left button in a 2D view, shows its box meanwhile, and then zooms to it. It
/// deletes itself at the end.
class CZoomBox : public QObject
{
public:
    /// The view owns it.
    explicit CZoomBox(CImageView2D* pView);
    ~CZoomBox() override;

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Press(const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    void Release();
    void End();

    CImageView2D* m_pView;
    QPointer<QRubberBand> m_pBand; ///< the view owns it; null before the press
    QPoint m_start;
};
