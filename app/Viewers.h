// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <vector>

class CCenterView;
class CImageView2D;
class CImageView2DCtrl;
class CImageViewer;
class CImageViewerCtrl;
class QWidget;

/// One viewer of the centre; it owns neither pointer.
struct SViewer {
    CImageViewer* pView = nullptr;
    CImageViewerCtrl* pCtrl = nullptr;

    CImageView2D* View2D() const;
    CImageView2DCtrl* Ctrl2D() const;
    bool HasImage() const;
};

/// The four viewers of the centre, and the active one: the last one with the keyboard focus, if it is
/// visible, otherwise the first.
class CViewers : public QObject
{
    Q_OBJECT

public:
    /// The centre's controller must have made the viewers.
    explicit CViewers(CCenterView* pCentre);

    const std::vector<SViewer>& All() const { return m_vctViewers; }
    const SViewer& Active() const;
    /// Gives the keyboard to the visible view of the active viewer, whose undo needs it.
    void FocusActive();

Q_SIGNALS:
    /// Another viewer is active.
    void signal_ChangeActive();

private:
    void FollowFocus(QWidget* pNow);

    std::vector<SViewer> m_vctViewers; ///< never empty
    std::size_t m_nActive = 0;
};
