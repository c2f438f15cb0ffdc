// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommandContainer.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrlCapture_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlClipboard_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlFiles_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlGestures_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlImages_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlNavigation_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlPages_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlPanels_p.h>

/// The parts of a 2D controller. The panels and the snip tool are destroyed first, because their last events
/// reach the others.
struct CImageView2DCtrl::SParts {
    SParts(const SImageView2DCtrlContext& given, const CImageView2DCtrlPanels::SDocks& sDocks);

    /// Connects the signals of the view, which must exist, with the controller's slots.
    void ConnectView();
    /// Records a step and executes it. @return the recorded step, which the history keeps
    CCommand* Execute(std::unique_ptr<CCommand> pCommand);

    SImageView2DCtrlContext context;
    CCommandContainer commands;
    std::unique_ptr<CAnnotationStore> pStore; ///< never null once the controller is constructed
    CImageView2DCtrlNavigation navigation;
    CImageView2DCtrlGestures gestures;
    CImageView2DCtrlImages images;
    CImageView2DCtrlPages pages;
    CImageView2DCtrlFiles files;
    CImageView2DCtrlClipboard clipboard;
    CImageView2DCtrlPanels panels;
    CImageView2DCtrlCapture capture;
};
