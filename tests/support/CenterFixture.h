// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <tests/support/TestImages.h>

#include <QDockWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest/QtTest>

/// A main window with the centre, its docks and an image of 200 x 150 in each viewer shown. Mouse and keys go
/// through the window; points are image coordinates of a viewer.
class CenterFixture
{
public:
    CenterFixture(int nColumns, int nRows)
    {
        centerView = std::make_unique<CCenterView>(&model, &window);
        toolDock = AddDock<CToolBoxDockView>();
        propertyDock = AddDock<CPropertyDockView>();
        statusDock = AddDock<CStatusBarDockView>();
        model.ChangeSize(nColumns, nRows);
        center = std::make_unique<CCenterCtrl>(&model, centerView.get(), toolDock, propertyDock, statusDock);
        window.setCentralWidget(centerView.get());
        window.setGeometry(0, 0, 1270, 900);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        for (int i = 0; i < nColumns * nRows; ++i)
            LoadInto(i, 3);
        QCoreApplication::processEvents();
    }
    ~CenterFixture()
    {
        center.reset();
        window.takeCentralWidget();
    }

    CImageViewer* Viewer(int nView) const
    {
        for (CImageViewer* pViewer : centerView->findChildren<CImageViewer*>())
            if (pViewer->GetViewID() == nView)
                return pViewer;
        return nullptr;
    }
    CImageView2D* View(int nView) const { return Viewer(nView)->findChild<CImageView2D*>(); }
    CImageViewerCtrl* Ctrl(int nView) const
    {
        const auto item = CMVCManager::FindFirst(
            [&](const SMVC& each) { return each.pView && each.pView == Viewer(nView); });
        return item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr;
    }
    QVector<int> Counts() const
    {
        QVector<int> vctCounts;
        for (int i = 0; i < 4; ++i)
            vctCounts << int(Viewer(i)->Get2DDrawableObjects().size());
        return vctCounts;
    }

    QPoint Pixel(int nView, const QPointF& point) const
    {
        const QPointF pos = View(nView)->MapToWidget(point);
        return View(nView)->mapTo(&window, QPoint(qRound(pos.x()), qRound(pos.y())));
    }
    QWindow* Window() const { return window.windowHandle(); }
    void ClickAt(int nView, const QPointF& point)
    {
        QTest::mouseMove(Window(), Pixel(nView, point));
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, Pixel(nView, point));
    }
    void Drag(int nView, const QPointF& start, const QPointF& end)
    {
        QTest::mouseMove(Window(), Pixel(nView, start));
        QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, Pixel(nView, start));
        QTest::mouseMove(Window(), Pixel(nView, end));
        QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, Pixel(nView, end));
    }
    void DrawRectangle(int nView, const QPointF& start, const QPointF& end)
    {
        PressToolButton("Rect");
        Drag(nView, start, end);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(Window(), key, modifiers);
    }
    void PressToolButton(const char* szText)
    {
        for (QPushButton* pButton : toolDock->findChildren<QPushButton*>())
            if (pButton->text() == QLatin1String(szText))
                return Press(pButton);
        QFAIL("no such tool");
    }
    void PressFrameButton(int nView, const char* szName)
    {
        for (QPushButton* pButton : Viewer(nView)->findChildren<QPushButton*>())
            if (pButton->accessibleName() == QLatin1String(szName))
                return Press(pButton);
        QFAIL("no such button");
    }
    void LoadInto(int nView, int nChannels)
    {
        const QString strFile = folder.filePath(QString::number(nView) + QStringLiteral(".png"));
        QCOMPARE(MakeTestImage(200, 150, nChannels, nView)->Save(strFile.toStdWString()), 0);
        Ctrl(nView)->LoadFile(strFile);
    }

    QTemporaryDir folder;
    QMainWindow window;
    CCenterModel model;
    std::unique_ptr<CCenterView> centerView;
    CToolBoxDockView* toolDock = nullptr;
    CPropertyDockView* propertyDock = nullptr;
    CStatusBarDockView* statusDock = nullptr;
    std::unique_ptr<CCenterCtrl> center;

private:
    template <class T> T* AddDock()
    {
        auto* pDock = new QDockWidget(&window);
        auto* pContent = new T(pDock);
        pDock->setWidget(pContent);
        window.addDockWidget(Qt::BottomDockWidgetArea, pDock);
        return pContent;
    }
    void Press(QPushButton* pButton)
    {
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier,
                          pButton->mapTo(&window, pButton->rect().center()));
    }
};
