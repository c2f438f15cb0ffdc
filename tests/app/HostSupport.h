// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CMainWindow.h"
#include "HostSettings.h"
#include "tests/support/TestImages.h"

#include <VantorCommon/annotation/store/AnnotationRecovery.h>
#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QtTest/QtTest>

#include "CMessageBar.h"

/// The main window of the viewer, with what a test looks for in it. What it does is done when the call
/// returns, unless the test wants it otherwise.
class Host
{
public:
    Host() { SetBackground(false); }

    void SetBackground(bool bOn)
    {
        const auto item = CMVCManager::FindFirst([&](const SMVC& each) {
            return each.pView && window.centralWidget() == each.pView->parent() &&
                   dynamic_cast<CCenterCtrl*>(each.pCtrl);
        });
        QVERIFY(item);
        auto* pCenter = dynamic_cast<CCenterCtrl*>(item->pCtrl);
        SCenterOptions sOptions = pCenter->GetOptions();
        sOptions.bBackground = bOn;
        pCenter->SetOptions(sOptions);
    }

    /// Shows it, active, with files opened.
    bool Show(const QStringList& lstFiles = {})
    {
        window.show();
        if (window.OpenFiles(lstFiles) != lstFiles.size())
            return false;
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    /// An entry by the texts on the way to it, without their mnemonics: {"View", "Docks", "Log"}. Menus on
    /// the way are brought up to date as if they had opened.
    QAction* Entry(const QStringList& lstPath) const
    {
        QList<QAction*> lstActions = window.menuBar()->actions();
        QAction* pFound = nullptr;
        for (const QString& strText : lstPath) {
            pFound = nullptr;
            for (QAction* pAction : lstActions)
                if (pAction->text().remove(QLatin1Char('&')) == strText)
                    pFound = pAction;
            if (!pFound)
                return nullptr;
            if (pFound->menu()) {
                Q_EMIT pFound->menu()->aboutToShow();
                lstActions = pFound->menu()->actions();
            }
        }
        return pFound;
    }
    QAction* Entry(const char* pMenu, const char* pText) const
    {
        return Entry({QString::fromLatin1(pMenu), QString::fromLatin1(pText)});
    }
    bool IsEnabled(const char* pMenu, const char* pText) const
    {
        const QAction* pEntry = Entry(pMenu, pText);
        return pEntry && pEntry->isEnabled();
    }

    CImageViewer* Viewer(int nView) const
    {
        for (CImageViewer* pViewer : window.findChildren<CImageViewer*>())
            if (pViewer->GetViewID() == nView)
                return pViewer;
        return nullptr;
    }
    CImageView2D* View(int nView) const { return Viewer(nView)->findChild<CImageView2D*>(); }
    int ShownViewers() const
    {
        int nShown = 0;
        for (int i = 0; i < 4; ++i)
            nShown += Viewer(i)->isHidden() ? 0 : 1;
        return nShown;
    }
    int Annotations(int nView) const
    {
        return static_cast<int>(Viewer(nView)->Get2DDrawableObjects().size());
    }

    /// With the mouse, in the widget's coordinates.
    void Drag(int nView, const QPoint& from, const QPoint& to)
    {
        QWindow* pWindow = window.windowHandle();
        const auto at = [&](const QPoint& point) { return View(nView)->mapTo(&window, point); };
        QTest::mouseMove(pWindow, at(from));
        QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, at(from));
        QTest::mouseMove(pWindow, at((from + to) / 2));
        QTest::mouseMove(pWindow, at(to));
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, at(to));
    }
    void DrawRectangle(int nView)
    {
        Entry({QStringLiteral("Tools"), QStringLiteral("Draw"), QStringLiteral("Rectangle")})->trigger();
        const QPoint centre = View(nView)->rect().center();
        Drag(nView, centre - QPoint(40, 30), centre + QPoint(40, 30));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }

    const CMessageBar* Bar() const { return window.findChild<CMessageBar*>(); }
    /// What the message bar shows; empty while it is closed.
    QString Message() const
    {
        if (!Bar()->isVisible())
            return QString();
        for (const QLabel* pLabel : Bar()->findChildren<QLabel*>())
            if (!pLabel->text().isEmpty())
                return pLabel->text();
        return QString();
    }

    /// Stores a setting as a window before would have done: each window begins by loading the file.
    static void StoreSetting(const QString& strKey, const QVariant& value)
    {
        QVERIFY(CSettingCtrl(nullptr).UpdateParameter(strKey, value));
    }
    /// Forgets what earlier windows stored.
    static void ForgetSettings()
    {
        for (const QString& strKey : {HostSettings::kGeometry, HostSettings::kState, HostSettings::kLayout,
                                      HostSettings::kRecentFiles, HostSettings::kScheme,
                                      HostSettings::kAutoSave, HostSettings::kReopen, HostSettings::kSession})
            StoreSetting(strKey, QString());
        QDir(AnnotationRecovery::GetFolder()).removeRecursively(); // what they have left unsaved
    }

    CMainWindow window;
};

inline const QString kPhoto = TestDataPath(QStringLiteral("png/bricks-color.png"));
inline const QString kDocument = TestDataPath(QStringLiteral("pdf/11-pages.pdf"));
