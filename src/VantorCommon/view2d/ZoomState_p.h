// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2D.h>

#include <QPoint>
#include <QSize>

class CMiniMap;
class CViewMark;
class CZoomBox;

/// The place of the image. Fit and 100 % zoom put the image in "unzoomed" widget pixels.
struct CImageView2D::SZoomState {
    double dblAnchorX = 0.0; ///< unzoomed widget pixels
    double dblAnchorY = 0.0;
    double dblWheelX = 0.0; ///< the same anchor in widget pixels, the last wheel position
    double dblWheelY = 0.0;
    double dblCrossX = 0.0; ///< crosshair, widget pixels
    double dblCrossY = 0.0;
    double dblZoom = 1.0; ///< 1.0 fits the image into the widget
    double dblPanX = 0.0; ///< unzoomed widget pixels
    double dblPanY = 0.0;

    /// Where the fitted image begins, in unzoomed widget pixels.
    QPoint Origin(const QSizeF& fitted, const QSize& widget) const;
    /// What lies at the widget point stays there.
    void ZoomAbout(const QPointF& pos, double dblNew);
    /// The viewport begins at that widget pixel; pos is some point near which numbers shall stay small.
    void PutTopLeft(const QPoint& topLeft, const QPoint& origin, const QPointF& pos);
    bool IsFitted() const;
};

/// What else belongs to the place of a 2D view.
struct CImageView2D::SPlaceParts {
    double dblZoom = 0.0; ///< as announced last
    bool bKeep = false;
    bool bGotoCentres = false;
    CViewMark* pMark = nullptr;   ///< made at its first use, as the others; the view owns them
    CMiniMap* pMiniMap = nullptr; ///< null: off
    QPointer<CZoomBox> pZoomBox;
};
