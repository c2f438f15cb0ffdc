// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/center/SCenterOptions.h>

#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

class CImageView2D;
class CImageViewer;
class CImageViewerCtrl;

/// Compares the viewers of a centre: links their places, makes differences, and shows one image in the place
/// of another. Viewers may be destroyed first; what needs one that has gone, or one without an image, does
/// nothing. GUI thread.
class CCenterCtrlCompare : public QObject
{
public:
    struct SSide {
        QPointer<CImageViewer> pViewer;
        QPointer<CImageViewerCtrl> pCtrl;
    };

    /// @param vctSides  by index, which is also the viewer's identifier
    explicit CCenterCtrlCompare(std::vector<SSide> vctSides);
    ~CCenterCtrlCompare() override;

    void SetOptions(const SCenterOptions& sOptions) { m_sOptions = sOptions; }
    void SetLinked(bool bLinked, int nLeader);
    bool IsLinked() const { return m_bLinked; }
    void AddDifference(int nViewID, int nOther);
    void ShowOther(int nViewID, int nOther);
    void HideOther();

protected:
    /// Watches the views for the mouse that leaves, and for another size.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    const SSide* SideOf(int nViewID) const;
    CImageView2D* ViewOf(int nViewID) const;
    std::vector<CImageView2D*> OthersOf(const CImageView2D* pView) const;
    void Follow(const CImageView2D* pLeader);
    void Mark(const CImageView2D* pView, const QPointF& point);
    void ClearMarks();
    void PlaceOther();

    std::vector<SSide> m_vctSides;
    SCenterOptions m_sOptions;
    bool m_bLinked = false;
    bool m_bFollows = false; ///< the others move because of one
    QPointer<CImageView2D> m_pBelow;
    QPointer<CImageView2D> m_pOther; ///< over m_pBelow, which owns it; null: none
};
