// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2D.h>

/// The signals that the 2D view emits for the mouse in a mode: those of a drag, and of the mouse without a
/// button. Null: it emits nothing.
struct SViewGesture {
    using OnePoint = void (CImageView2D::*)(QPointF&);
    using TwoPoints = void (CImageView2D::*)(QPointF&, QPointF&);

    OnePoint start = nullptr;
    TwoPoints doing = nullptr;
    TwoPoints end = nullptr;
    OnePoint hover = nullptr;
};

/// The mode's own signals, or the common ones of all other kinds that users draw; none for panning and for
/// unknown modes.
SViewGesture ViewGestureOf(int nMode);
