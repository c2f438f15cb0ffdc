// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CCapture.h"

#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QApplication>
#include <QScreen>
#include <QWindow>

namespace
{
constexpr int kLookMs = 20;

/// The tool that is open; null without one.
CSnipTool* OpenTool()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        if (auto* pTool = qobject_cast<CSnipTool*>(pWidget); pTool && pTool->isVisible())
            return pTool;
    return nullptr;
}
} // namespace

CCapture::CCapture(QObject* pParent) : QObject(pParent)
{
    m_delay.setSingleShot(true);
    m_look.setInterval(kLookMs);
    connect(&m_delay, &QTimer::timeout, this, [this] {
        if (m_pCtrl)
            m_pCtrl->slot_OpenSnipTool();
    });
    connect(&m_look, &QTimer::timeout, this, &CCapture::TakeWhenOpen);
}

void CCapture::OpenAfter(CImageView2DCtrl* pCtrl, int nMilliseconds)
{
    m_pCtrl = pCtrl;
    m_delay.start(nMilliseconds);
}

void CCapture::TakeWhole(CImageView2DCtrl* pCtrl)
{
    pCtrl->slot_OpenSnipTool();
    m_look.start();
}

/// As if a person had dragged over all of it: the window is gone from the screen when the tool is there.
void CCapture::TakeWhenOpen()
{
    CSnipTool* pTool = OpenTool();
    if (pTool && !pTool->windowHandle()->isExposed())
        return;
    m_look.stop();
    if (pTool)
        Q_EMIT pTool->signal_CaptureScreen(pTool->screen()->geometry());
}
