// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The 3D model and its controller on several threads, for tests/support/race_check.sh. No OpenGL is about:
// run it on the platform "offscreen", where the view has no context.
#include "tests/VantorCommon/view3d/View3DFixture.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>

#include <QApplication>
#include <QThreadPool>
#include <thread>

namespace
{
constexpr int kChanges = 1000;
constexpr int kDestructions = 200;

void Ignore(QtMsgType, const QMessageLogContext&, const QString&)
{
}

/// The offscreen platform complains of its missing context whenever a window is painted.
class CQuiet
{
public:
    CQuiet() : m_pPrevious(qInstallMessageHandler(Ignore)) {}
    ~CQuiet() { qInstallMessageHandler(m_pPrevious); }

private:
    QtMessageHandler m_pPrevious;
};
} // namespace

class race_CImageView3D : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { CLogModel::GetInstance(); }

    /// The getters do not lock: read while a build hands over, they are a race, and it must be reported.
    void planted()
    {
        CImageView3DModel model;
        const auto pImage = MakeTestImage(20, 20, 3);
        std::thread worker([&] {
            for (int i = 0; i < 20; ++i)
                model.LoadImage(pImage);
        });
        long nSum = 0;
        for (int i = 0; i < 20; ++i) {
            nSum += model.GetVerticesSize();
            std::this_thread::yield();
        }
        worker.join();
        QVERIFY(nSum >= 0);
        QCOMPARE(model.GetVerticesSize(), 20 * 20 * 6);
    }

    void quickImageChanges()
    {
        const CQuiet quiet;
        SView3DFixture fixture;
        QVERIFY(fixture.ShowWindow());
        fixture.pView->setVisible(true);
        for (int i = 0; i < kChanges; ++i) {
            fixture.images.SetImages({MakeTestImage(20 + i % 7, 20, 3)});
            if (i % 10 == 0)
                QCoreApplication::processEvents();
        }
        QVERIFY(QTest::qWaitFor([&] { return fixture.loads.count() > 0; }));
        fixture.pCtrl.reset();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(fixture.model.GetVerticesSize(), 0); // the view has emptied the model
    }

    /// Every other time the view goes before the controller.
    void destructionsDuringABuild()
    {
        const CQuiet quiet;
        for (int i = 0; i < kDestructions; ++i) {
            SView3DFixture fixture;
            fixture.images.SetImages({MakeTestImage(100 + i % 7, 80, 3)});
            fixture.window.show();
            fixture.pView->setVisible(true);
            fixture.pCtrl->slot_ChangeCurrentImage();
            if (i % 2 == 0)
                fixture.pCtrl.reset();
            else
                delete fixture.pView;
        }
        QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    }

    void takingTheMeshFromAnotherThread()
    {
        CImageView3DModel model;
        const auto pImage = MakeTestImage(20, 20, 3);
        std::thread worker([&] {
            for (int i = 0; i < 200; ++i)
                model.LoadImage(pImage);
        });
        std::vector<float> vertices;
        std::vector<unsigned int> indices;
        for (int i = 0; i < 200; ++i) {
            model.TakeBuffers(vertices, indices);
            if (i % 20 == 0)
                model.ClearBufferData();
            std::this_thread::yield();
        }
        worker.join();
        model.LoadImage(pImage);
        QVERIFY(model.TakeBuffers(vertices, indices));
        QCOMPARE(vertices.size(), std::size_t(20 * 20 * 6));
    }
};

VANTOR_TEST_MAIN(race_CImageView3D)
#include "race_CImageView3D.moc"
