// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/ViewerParts.h"

#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QTimer>
#include <QtTest/QtTest>
#include <functional>
#include <memory>

/// A centre in a window of its own, with the three docks at its sides.
struct SCentre {
    QWidget window;
    CToolBoxDockView* pToolBox = new CToolBoxDockView(&window);
    CPropertyDockView* pProperties = new CPropertyDockView(&window);
    CStatusBarDockView* pStatus = new CStatusBarDockView(&window);
    std::unique_ptr<CCenterModel> pModel = std::make_unique<CCenterModel>();
    CCenterView* pView = new CCenterView(pModel.get(), &window);
    std::unique_ptr<CCenterCtrl> pCtrl =
        std::make_unique<CCenterCtrl>(pModel.get(), pView, pToolBox, pProperties, pStatus);

    SCentre()
    {
        auto* pLayout = new QHBoxLayout(&window);
        pLayout->addWidget(pToolBox);
        pLayout->addWidget(pView, 1);
        pLayout->addWidget(pProperties);
        pLayout->addWidget(pStatus);
        pView->setMinimumWidth(500);
    }

    bool Show()
    {
        window.resize(1100, 700);
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    CImageViewer* Viewer(int nIndex) const
    {
        return pView->findChild<CImageViewer*>(QStringLiteral("CImageViewer_%1").arg(nIndex));
    }
    CImageView2D* View2D(int nIndex) const { return Viewer(nIndex)->findChild<CImageView2D*>(); }
    ViewerParts Parts(int nIndex) const { return ViewerParts(Viewer(nIndex)); }
    CImageViewerCtrl* Ctrl(int nIndex) const
    {
        const auto item =
            CMVCManager::FindFirst([&](const SMVC& mvc) { return mvc.pView == Viewer(nIndex); });
        return item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr;
    }
};

/// Does something to the next modal dialogs as they come up, one step for each, and counts them. The steps
/// must end their dialog.
class DialogDriver : public QObject
{
public:
    using Step = std::function<void(QDialog*)>;

    explicit DialogDriver(std::vector<Step> vctSteps) : m_vctSteps(std::move(vctSteps))
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogDriver::Look);
        m_timer.start(10);
    }
    /// How many dialogs came.
    int Count() const { return m_nSeen; }

private:
    void Look()
    {
        auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!pDialog || !pDialog->isVisible() || m_bBusy)
            return;
        m_bBusy = true;
        if (QTest::qWaitForWindowActive(pDialog)) {
            const auto nStep = static_cast<std::size_t>(m_nSeen++);
            if (nStep < m_vctSteps.size())
                m_vctSteps[nStep](pDialog);
            else
                pDialog->reject();
        }
        m_bBusy = false;
    }

    QTimer m_timer;
    std::vector<Step> m_vctSteps;
    int m_nSeen = 0;
    bool m_bBusy = false;
};
