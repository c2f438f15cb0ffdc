// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>
#include <VantorCommon/view2d/KeptPicture_p.h>
#include <VantorCommon/view2d/LabelReach_p.h>
#include <VantorCommon/view2d/PaintRecord_p.h>

#include <QRegion>

/// What a drawable widget knows about what it has to paint anew. Rectangles are in widget pixels.
struct CImageView2DDrawableWidget::SUpdates {
    CPaintRecord record;
    CKeptPicture picture;
    CLabelReach labels;
    std::vector<QRect> vctChanged; ///< for which update() is still to be called
    QRegion above;                 ///< updates since the last paint that came from a widget above this one
    QRect part;                    ///< that is being painted; null: all of the widget
    bool bCompare = true;          ///< the list may differ from the record
    bool bPending = false;         ///< the call of UpdateChanged is on its way
    bool bKeeps = false;           ///< see KeepPicture
};
