// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QPointer>
#include <QRect>
#include <memory>

class CImageView2DCtrl;
class CScreenPortal;
class CSnipTool;
class CSnipToolModel;
class QImage;

namespace Vantor::Algorithms
{
class CImage;
}

/// Turns the selection of the snip tool into a new image of a 2D view and copies it to the clipboard. The 2D
/// controller starts a capture: it hides the application and shows the tool; this one ends it.
///
/// Nothing is owned, and any of the three may be null. GUI thread only.
class VANTORCOMMON_EXPORT CSnipToolCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the tool's signals, also its closing by the window manager, which counts as Escape.
    CSnipToolCtrl(CSnipToolModel* pModel, CSnipTool* pView, CImageView2DCtrl* pImageView2DCtrl);
    ~CSnipToolCtrl() override;

    /// Lets the desktop take the picture where programs cannot see the screen (Wayland): its own dialog asks
    /// the user for a part, the picture goes the same way as one of slot_CaptureScreen. Returns at once.
    void AskDesktop();

    /// @{
    /// False: there is nothing to undo.
    bool Undo() override;
    bool Redo() override;
    /// @}

public Q_SLOTS:
    /// Hides the tool, grabs that part of the primary screen, shows the application again and puts the
    /// picture into the 2D view and on the clipboard. Waits until the tool is gone from the screen, for at
    /// most 1 s, and blocks user input meanwhile. When there is nothing to grab (a width or height below 1,
    /// or a display server that refuses), the application comes back, and signal_Failed and one log line say
    /// why.
    /// @param rect  in global coordinates, in device independent pixels; the picture has device pixels
    void slot_CaptureScreen(const QRect& rect);
    /// Hides the tool and shows the application again; nothing is captured.
    void slot_ExitCapture();
    /// Deliberate: nothing; opening is the 2D controller's job.
    void slot_OpenCaptureScreen();

Q_SIGNALS:
    /// Nothing was captured, and why: one line in English.
    void signal_Failed(const QString& strMessage);

private:
    void Fail(ELogLevel eLevel, const QString& strMessage);
    void Deliver(const QImage& picture);
    void Push(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);

    CSnipToolModel* m_pModel;
    QPointer<CSnipTool> m_pView;
    QPointer<CImageView2DCtrl> m_pImageView2DCtrl;
    CScreenPortal* m_pPortal = nullptr; ///< a child, made at its first use
};
