// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewerParts.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/CImageView3DPropertyView.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QThreadPool>
#include <QVBoxLayout>

namespace
{
/// A whole viewer with its controller and a property dock, as a host has it.
struct SFixture {
    QWidget window;
    CPropertyDockView* pDock = new CPropertyDockView(&window);
    CImageViewerModel model;
    CImageView2DToolModel tool;
    CImageViewer* pViewer = new CImageViewer(&model, 0, &window);
    CImageViewerCtrl ctrl{pViewer, &model, &tool, nullptr, pDock, nullptr};
    ViewerParts parts{pViewer};
    CImageView2D* pView2D = pViewer->findChild<CImageView2D*>();
    CImageView3D* pView3D = pViewer->findChild<CImageView3D*>();

    SFixture()
    {
        auto* pLayout = new QHBoxLayout(&window);
        pLayout->addWidget(pViewer, 1);
        pLayout->addWidget(pDock);
        window.resize(900, 600);
    }
    bool Show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    void Press(const char* pIcon)
    {
        QTest::mouseClick(parts.Button(QString::fromLatin1(pIcon)), Qt::LeftButton);
    }
    /// How many pixels of the 3D view are neither background nor axis nor reference.
    int ReliefPixels() const
    {
        const QImage picture = pView3D->grabFramebuffer();
        int nCount = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb c = picture.pixel(x, y);
                nCount += c != qRgb(51, 51, 51) && c != qRgb(128, 128, 128) && c != qRgb(255, 0, 0) &&
                          c != qRgb(0, 255, 0) && c != qRgb(0, 0, 255);
            }
        return nCount;
    }
};

/// Counts how often a widget is shown.
class CShowCounter : public QObject
{
public:
    int nShown = 0;

protected:
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        nShown += pEvent->type() == QEvent::Show;
        return false;
    }
};
} // namespace

class tst_CImageViewer3D : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pressing3DShowsTheReliefAndPressing2DGoesBack()
    {
        SFixture fixture;
        QVERIFY(fixture.Show());
        QVERIFY(fixture.pView3D && fixture.pView3D->isHidden());
        fixture.ctrl.ChangeCurrentImage(MakeTestImage(60, 40, 3));
        const QSize size2D = fixture.pView2D->size();
        fixture.Press("3D.png");
        QVERIFY(fixture.pView3D->isVisible());
        QVERIFY(fixture.pView2D->isHidden());
        QTRY_VERIFY(fixture.ReliefPixels() > 5000);
        QVERIFY(fixture.pView3D->hasFocus());
        QVERIFY(qobject_cast<CImageView3DPropertyView*>(fixture.pDock->widget()));
        fixture.Press("2D.png");
        QVERIFY(fixture.pView3D->isHidden());
        QVERIFY(fixture.pView2D->isVisible());
        QTRY_COMPARE(fixture.pView2D->size(), size2D);
        QVERIFY(!qobject_cast<CImageView3DPropertyView*>(fixture.pDock->widget()));
    }

    void theMenuOfThe3DViewGoesBackToThe2DView()
    {
        SFixture fixture;
        QVERIFY(fixture.Show());
        fixture.Press("3D.png");
        Q_EMIT fixture.pView3D->signal_Switch3DTo2D();
        QVERIFY(fixture.pView2D->isVisible());
        QVERIFY(fixture.pView3D->isHidden());
    }

    void anotherImageWhileTheReliefIsShownReplacesIt()
    {
        SFixture fixture;
        QVERIFY(fixture.Show());
        fixture.Press("3D.png");
        QCOMPARE(fixture.ReliefPixels(), 0);
        fixture.ctrl.ChangeCurrentImage(MakeTestImage(60, 40, 3));
        QTRY_VERIFY(fixture.ReliefPixels() > 5000);
        fixture.ctrl.CloseCurrentImage();
        QTRY_COMPARE(fixture.ReliefPixels(), 0);
    }

    void progressIsShownWhileALargeImageIsBuilt()
    {
        SFixture fixture;
        QVERIFY(fixture.Show());
        auto* pStatusBar = fixture.pViewer->findChild<CStatusBarView*>();
        CShowCounter shown;
        pStatusBar->installEventFilter(&shown);
        fixture.ctrl.ChangeCurrentImage(MakeTestImage(900, 900, 1));
        fixture.Press("3D.png");
        QTRY_VERIFY(shown.nShown > 0);
        QTRY_VERIFY(pStatusBar->isHidden());
        QThreadPool::globalInstance()->waitForDone();
    }

    void theViewerGoesDuringABuild()
    {
        for (int i = 0; i < 5; ++i) {
            SFixture fixture;
            QVERIFY(fixture.Show());
            fixture.ctrl.ChangeCurrentImage(MakeTestImage(500, 400, 3));
            fixture.Press("3D.png");
        }
        QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    }

    void undoAndRedoReachThe3DControllerToo()
    {
        SFixture fixture;
        QVERIFY(fixture.Show());
        fixture.Press("3D.png");
        QVERIFY(!fixture.ctrl.Undo());
        QVERIFY(!fixture.ctrl.Redo());
    }
};

VANTOR_TEST_MAIN(tst_CImageViewer3D)
#include "tst_CImageViewer3D.moc"
