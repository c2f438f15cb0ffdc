// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2D.h>

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
};
