// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlCapture_p.h>

#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/sniptool/CSnipToolCtrl.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/sniptool/ScreenPortal_p.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QMainWindow>
#include <QScreen>

namespace
{
/// The first registered main window; null when there is none.
QWidget* FindMainWindow()
{
    const auto item = CMVCManager::FindFirst(
        [](const SMVC& mvc) { return dynamic_cast<QMainWindow*>(mvc.pView) != nullptr; });
    return item ? item->pView : nullptr;
}
} // namespace

CImageView2DCtrlCapture::CImageView2DCtrlCapture(const SImageView2DCtrlContext& context)
    : m_context(context), m_pSnipToolModel(std::make_unique<CSnipToolModel>())
{
    auto* pSnipTool = new CSnipTool(m_pSnipToolModel.get(), nullptr);
    m_pSnipTool = pSnipTool;
    m_pSnipToolCtrl = std::make_unique<CSnipToolCtrl>(m_pSnipToolModel.get(), pSnipTool, context.pCtrl);
    QObject::connect(m_pSnipToolCtrl.get(), &CSnipToolCtrl::signal_Failed, context.pCtrl,
                     &CImageView2DCtrl::signal_Failed);
}

CImageView2DCtrlCapture::~CImageView2DCtrlCapture()
{
    delete m_pSnipTool;
}

void CImageView2DCtrlCapture::SetApplicationVisible(bool bVisible)
{
    QWidget* pWindow = FindMainWindow();
    if (!m_context.pView || !pWindow)
        return;
    if (!bVisible) {
        m_bWasMaximised = pWindow->isMaximized();
        m_bWasFullScreen = pWindow->isFullScreen();
        pWindow->showMinimized();
        return;
    }
    if (m_context.sOptions.bRestoreAfterCapture && m_bWasFullScreen)
        pWindow->showFullScreen();
    else if (m_context.sOptions.bRestoreAfterCapture && !m_bWasMaximised)
        pWindow->showNormal();
    else
        pWindow->showMaximized();
    pWindow->raise();
    pWindow->activateWindow();
}

void CImageView2DCtrlCapture::Open()
{
    if (m_context.sOptions.bPortalCapture && CScreenPortal::IsNeeded()) {
        m_pSnipToolCtrl->AskDesktop();
        return;
    }
    if (!m_pSnipTool)
        return;
    SetApplicationVisible(false);
    if (const QWidget* pWindow = FindMainWindow())
        m_pSnipTool->setGeometry(pWindow->screen()->geometry());
    m_pSnipTool->showMaximized();
    m_pSnipTool->show();
    m_pSnipTool->activateWindow();
    m_pSnipTool->raise();
}
