// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2D.h>

/// The signals by which the 2D view tells of the mouse in a mode: those of a drag, and of the mouse without a
/// button. Null: it tells nothing.
struct SViewGesture {
    using OnePoint = void (CImageView2D::*)(QPointF&);
    using TwoPoints = void (CImageView2D::*)(QPointF&, QPointF&);

    OnePoint start = nullptr;
    TwoPoints doing = nullptr;
    TwoPoints end = nullptr;
    OnePoint hover = nullptr;
};

/// The signals that a mode has of its own, or those of every other kind that is drawn; none in panning and in
/// unknown modes.
SViewGesture ViewGestureOf(int nMode);
