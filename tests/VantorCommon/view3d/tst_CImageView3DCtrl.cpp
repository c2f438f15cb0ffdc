// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view3d/View3DFixture.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/thread/CVThread.h>
#include <VantorCommon/view3d/CImageView3DPropertyView.h>
#include <VantorCommon/view3d/CInternalRunnable.h>

#include <QApplication>
#include <QLabel>
#include <QThreadPool>
#include <new>

class tst_CImageView3DCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hidingTheViewStopsLoadingAndShowingItLoadsTheCurrentImage()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.images.SetImages({MakeTestImage(4, 4, 1)});
        QVERIFY(fixture.WaitForLoad(1));
        fixture.pView->hide();
        fixture.images.SetImages({MakeTestImage(5, 5, 1)});
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(fixture.loads.count(), 1);
        fixture.pView->show();
        QVERIFY(fixture.WaitForLoad(2));
    }

    void theNewestOfManyQuickChangesIsShown()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.pView->grabFramebuffer();
        const auto pBlack = MakeTestImage(64, 64, 1);
        for (int y = 0; y < 64; ++y)
            memset(pBlack->GetPixel(0, y), 0, 64);
        fixture.model.SetRotateX(0);
        fixture.model.SetRotateZ(0);
        for (int i = 0; i < 200; ++i) {
            fixture.images.SetImages({MakeTestImage(100 + i % 5, 80, 3, i)});
            if (i % 20 == 0)
                QCoreApplication::processEvents();
        }
        fixture.images.SetImages({pBlack});
        const auto isBlack = [&] {
            const QImage picture = fixture.Picture();
            for (const QVector3D& p : {QVector3D(0.2F, 0.3F, 0), QVector3D(0.5F, 0.6F, 0)})
                if (!fixture.HasColour(picture, p, QColor(0, 0, 0)))
                    return false;
            return true;
        };
        QTRY_VERIFY(isBlack());
        QThreadPool::globalInstance()->waitForDone();
        QTest::qWait(0);
        QVERIFY(isBlack());
    }

    void withoutAnImageTheMeshIsDropped()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage empty = fixture.Picture();
        fixture.images.SetImages({MakeTestImage(40, 40, 3)});
        QVERIFY(fixture.WaitForLoad(1));
        QVERIFY(fixture.Picture() != empty);
        fixture.images.Clear();
        QCOMPARE(fixture.Picture(), empty);
    }

    void anImageThatGoesDuringItsBuildIsNotShown()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage empty = fixture.Picture();
        for (int i = 0; i < 20; ++i) {
            fixture.images.SetImages({MakeTestImage(300, 300, 3)});
            fixture.images.Clear();
        }
        QThreadPool::globalInstance()->waitForDone();
        QTRY_COMPARE(fixture.Picture(), empty);
        QCoreApplication::processEvents();
        QCOMPARE(fixture.Picture(), empty);
    }

    void theControllerWaitsForItsBuildBeforeTheModelsGo()
    {
        for (int i = 0; i < 20; ++i) {
            SView3DFixture fixture;
            QVERIFY(fixture.Show());
            fixture.images.SetImages({MakeTestImage(400, 300, 3)});
        }
        // What a build still touched would be found by the address sanitizer; the pool's thread itself may
        // take a moment to lie down.
        QTRY_COMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    }

    void anActiveViewPutsThePanelIntoThePropertyDock()
    {
        CImageView3DModel model;
        CImageView3D view(&model, nullptr);
        CPropertyDockView dock;
        QLabel panel2D;
        dock.setWidget(&panel2D);
        {
            CImageView3DCtrl ctrl(&model, nullptr, &view, nullptr, &dock, nullptr);
            QTest::mousePress(&view, Qt::LeftButton);
            QVERIFY(qobject_cast<CImageView3DPropertyView*>(dock.widget()));
            QVERIFY(!dock.widget()->isHidden());
            QVERIFY(!panel2D.parentWidget());
            ctrl.slot_Active3DView();
            QVERIFY(qobject_cast<CImageView3DPropertyView*>(dock.widget()));
        }
        QVERIFY(!dock.widget());
    }

    void undoAndRedoDoNothing()
    {
        CImageView3DModel model;
        CImageView3DCtrl ctrl(&model, nullptr, nullptr, nullptr, nullptr, nullptr);
        model.SetFOV(30);
        QVERIFY(!ctrl.Undo());
        QVERIFY(!ctrl.Redo());
        QCOMPARE(model.GetFOV(), 30.0F);
    }

    void withoutModelsAndViewNothingHappens()
    {
        CImageView3DCtrl ctrl(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        ctrl.slot_ChangeFOV(10);
        ctrl.slot_ChangeCurrentImage();
        ctrl.slot_Active3DView();
    }

    void theRunnableLoadsTheCurrentImageOnAThreadOfItsOwnToo()
    {
        CImageView3DModel model;
        CImageView2DModel images;
        images.SetImages({MakeTestImage(3, 3, 1), MakeTestImage(2, 2, 1)});
        images.SetCurrentIndex(1);
        int nGone = 0;
        alignas(CInternalRunnable) unsigned char storage[sizeof(CInternalRunnable)];
        IVRunnable* pWork = new (storage) CInternalRunnable(&model, &images, [&] { ++nGone; });
        CVThread thread(pWork);
        thread.start();
        QTRY_COMPARE(nGone, 1);
        QVERIFY(thread.wait());
        QCOMPARE(model.GetVerticesSize(), 24);
        CInternalRunnable(nullptr, nullptr).run();
    }
};

VANTOR_TEST_MAIN(tst_CImageView3DCtrl)
#include "tst_CImageView3DCtrl.moc"
