// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJob.h>
#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>
#include <VantorCommon/view2d/ImageFileLoad_p.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

/// A file that is to be shown.
struct SOpening {
    ImageFileLoad::SRequest request;
    bool bReplace = false; ///< in place of the list; else behind it
    int nSteps = 0;        ///< SImageView2DCtrlContext::nSteps when it was asked for
};

/// Reads files beside the GUI thread, several at once, and hands them on in the order in which they were
/// asked for. What is to replace the list cancels everything before it. GUI thread only.
class CImageView2DCtrlOpenings
{
public:
    /// Shows what was read. The file may be asked for again, with a password: then it is the next.
    /// @return whether it is done; else the opening has been changed and is read again
    using Show = std::function<bool(SOpening& opening, const ImageFileLoad::SLoaded& loaded)>;

    CImageView2DCtrlOpenings(const SImageView2DCtrlContext& context, Show show);
    ~CImageView2DCtrlOpenings();

    void Start(SOpening opening);
    /// Gives up what has not been shown.
    void CancelAll();

private:
    struct SPending;
    using PendingPtr = std::shared_ptr<SPending>;

    void Read(const PendingPtr& pPending);
    CJob::Finish Load(const PendingPtr& pPending, const ImageFileLoad::SRequest& request, bool bAsked);
    void Drop(const PendingPtr& pPending);
    void ShowReady();

    const SImageView2DCtrlContext& m_context;
    Show m_show;
    std::deque<PendingPtr> m_pending;
    bool m_bShowing = false;
};
