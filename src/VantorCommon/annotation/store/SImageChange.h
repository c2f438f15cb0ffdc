// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/ShapeKinds.h>

/// How an image has come from the one before it, as far as that moves what is on it. A value.
struct SImageChange {
    /// What was done to the image.
    enum EKind : int {
        EKind_Other,       ///< nothing that this can say; of equal size: everything stays where it is
        EKind_TurnedRight, ///< a quarter turn clockwise
        EKind_TurnedLeft,  ///< a quarter turn counter-clockwise
        EKind_TurnedRound, ///< half a turn
        EKind_FlippedX,    ///< left and right have changed sides
        EKind_FlippedY,    ///< top and bottom have changed sides
        EKind_Cropped      ///< a part of it was cut out
    };

    EKind eKind = EKind_Other; ///< what was done
    int nLeft = 0;             ///< the first column of the part that was cut out, in pixels
    int nTop = 0;              ///< its first row

    /// Where things on the image are afterwards.
    /// @param nWidth   of the image before, in pixels
    /// @param nHeight  of the image before, in pixels
    SPlaneMap MapOf(int nWidth, int nHeight) const
    {
        const double w = nWidth;
        const double h = nHeight;
        switch (eKind) {
        case EKind_TurnedRight:
            return {true, -1.0, 1.0, h, 0.0};
        case EKind_TurnedLeft:
            return {true, 1.0, -1.0, 0.0, w};
        case EKind_TurnedRound:
            return {false, -1.0, -1.0, w, h};
        case EKind_FlippedX:
            return {false, -1.0, 1.0, w, 0.0};
        case EKind_FlippedY:
            return {false, 1.0, -1.0, 0.0, h};
        case EKind_Cropped:
            return {false, 1.0, 1.0, -double(nLeft), -double(nTop)};
        default:
            return {};
        }
    }

    /// Whether it is one of the three turns.
    bool IsTurn() const { return eKind >= EKind_TurnedRight && eKind <= EKind_TurnedRound; }
};
