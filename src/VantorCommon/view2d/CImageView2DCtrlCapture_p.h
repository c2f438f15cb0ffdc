// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QWidget>
#include <memory>

class CSnipToolCtrl;
class CSnipToolModel;

/// The screen capture of a 2D controller: owns the snip tool with its model and controller, and minimises the
/// main window meanwhile.
class CImageView2DCtrlCapture
{
public:
    explicit CImageView2DCtrlCapture(const SImageView2DCtrlContext& context);
    ~CImageView2DCtrlCapture();
    CImageView2DCtrlCapture(const CImageView2DCtrlCapture&) = delete;
    CImageView2DCtrlCapture& operator=(const CImageView2DCtrlCapture&) = delete;

    /// Shows the first registered main window, or minimises it.
    void SetApplicationVisible(bool bVisible);
    /// Minimises the main window and opens the snip tool on its screen.
    void Open();

private:
    const SImageView2DCtrlContext& m_context;
    std::unique_ptr<CSnipToolModel> m_pSnipToolModel;
    QPointer<QWidget> m_pSnipTool; ///< without a parent, because the view may die first
    std::unique_ptr<CSnipToolCtrl> m_pSnipToolCtrl;
    bool m_bWasMaximised = false; ///< the main window before it was minimised, as the next
    bool m_bWasFullScreen = false;
};
