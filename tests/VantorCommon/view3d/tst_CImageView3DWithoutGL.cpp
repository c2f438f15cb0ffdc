// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view3d/View3DFixture.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QApplication>
#include <QLabel>
#include <QOpenGLContext>
#include <QThreadPool>
#include <QWindow>
#include <utility>

namespace
{
QtMessageHandler s_pPrevious = nullptr;

/// The offscreen platform complains of its missing context whenever a window is painted.
void SwallowContextWarnings(QtMsgType eType, const QMessageLogContext& context, const QString& strMessage)
{
    if (!strMessage.contains(QStringLiteral("composeAndFlush: ")) &&
        !strMessage.contains(QStringLiteral("propagateSizeHints()")) &&
        strMessage != QStringLiteral("QOpenGLWidget: Failed to create context"))
        s_pPrevious(eType, context, strMessage);
}

class CExpectedWarnings
{
public:
    CExpectedWarnings()
    {
        if (QGuiApplication::platformName() == QStringLiteral("offscreen"))
            s_pPrevious = qInstallMessageHandler(SwallowContextWarnings);
    }
    ~CExpectedWarnings()
    {
        if (s_pPrevious)
            qInstallMessageHandler(std::exchange(s_pPrevious, nullptr));
    }
};
} // namespace

/// Runs twice: with a driver that offers OpenGL 2.1 only, and on a platform without any.
class tst_CImageView3DWithoutGL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theViewShowsTheLabelLogsOneLineAndSurvives()
    {
        const CExpectedWarnings expected;
        SView3DFixture fixture;
        fixture.images.SetImages({MakeTestImage(20, 20, 3)});
        LogRecorder log;
        QSignalSpy failed(fixture.pCtrl.get(), &CImageView3DCtrl::signal_Failed);
        QVERIFY(fixture.ShowWindow());
        const auto showAgain = [&] {
            fixture.pView->setVisible(false);
            fixture.pView->setVisible(true);
            QTest::qWait(0);
        };
        showAgain();
        QTRY_VERIFY(fixture.pView->findChild<QLabel*>());
        showAgain();
        QCOMPARE(fixture.pView->findChildren<QLabel*>().size(), 1);
        QCOMPARE(fixture.pView->findChild<QLabel*>()->text(),
                 QStringLiteral("System doesnot support OpenGL"));
        QCOMPARE(log.Take().filter(QStringLiteral("is not available")).size(), 1);
        QVERIFY(failed.count() >= 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("The 3D view needs OpenGL 3.3, which this system does not offer."));
        fixture.Drag(10, 10);
        fixture.Wheel(120);
        QCOMPARE(fixture.model.GetRotateY(), 1.0F);
        QThreadPool::globalInstance()->waitForDone();
        QTRY_COMPARE(fixture.model.GetVerticesSize(), 0);
        fixture.pView->InitImageView3DGL();
        fixture.pView->ClearMesh();
    }

    void aHostsWindowStaysAsItIsWhereNoContextCanBeMade()
    {
        const CExpectedWarnings expected;
        QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, true);
        SView3DFixture fixture;
        fixture.pView->hide();
        QVERIFY(fixture.ShowWindow());
        fixture.pView->setVisible(true);
        QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, false);
        QOpenGLContext context;
        QCOMPARE(fixture.pView->window()->windowHandle()->surfaceType(),
                 context.create() ? QSurface::RasterGLSurface : QSurface::RasterSurface);
        QTRY_VERIFY(fixture.pView->findChild<QLabel*>());
    }

    void quickImageChangesAndDestructionsDuringABuildAreSafe()
    {
        const CExpectedWarnings expected;
        SView3DFixture fixture;
        QVERIFY(fixture.ShowWindow());
        fixture.pView->setVisible(true);
        for (int i = 0; i < 1000; ++i) {
            fixture.images.SetImages({MakeTestImage(20 + i % 7, 20, 3)});
            if (i % 10 == 0)
                QCoreApplication::processEvents();
        }
        QVERIFY(QTest::qWaitFor([&] { return fixture.loads.count() > 0; }));
        for (int i = 0; i < 200; ++i) {
            fixture.pCtrl = std::make_unique<CImageView3DCtrl>(&fixture.model, &fixture.images, fixture.pView,
                                                               nullptr, nullptr, nullptr);
            fixture.pCtrl->slot_ChangeCurrentImage();
            fixture.pCtrl.reset();
        }
        QThreadPool::globalInstance()->waitForDone();
        QTRY_COMPARE(fixture.model.GetVerticesSize(), 0);
    }

    void theViewerKeepsIts2DSide()
    {
        const CExpectedWarnings expected;
        CImageViewerModel model;
        CImageView2DToolModel tool;
        CImageViewer viewer(&model, 0, nullptr);
        CImageViewerCtrl ctrl(&viewer, &model, &tool, nullptr, nullptr, nullptr);
        viewer.resize(500, 400);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(&viewer));
        ctrl.ChangeCurrentImage(MakeTestImage(20, 20, 1));
        auto* pView2D = viewer.findChild<CImageView2D*>();
        const QImage before = pView2D->grab().toImage();
        viewer.slot_Press3D();
        QTRY_VERIFY(viewer.findChild<CImageView3D*>()->findChild<QLabel*>());
        QVERIFY(!ctrl.Undo());
        viewer.slot_Press2D();
        QVERIFY(pView2D->isVisible());
        QThreadPool::globalInstance()->waitForDone(); // its progress takes a line of the viewer
        QTRY_COMPARE(pView2D->grab().toImage(), before);
        QSet<QRgb> colours;
        for (int y = 0; y < before.height(); ++y)
            for (int x = 0; x < before.width(); ++x)
                colours.insert(before.pixel(x, y));
        QVERIFY(colours.size() > 50); // it shows the image
    }
};

int main(int argc, char* argv[])
{
    qputenv("MESA_GL_VERSION_OVERRIDE", "2.1");
    QApplication app(argc, argv);
    tst_CImageView3DWithoutGL test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CImageView3DWithoutGL.moc"
