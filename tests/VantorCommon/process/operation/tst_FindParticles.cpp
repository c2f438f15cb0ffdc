// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The tool that finds particles, and operations that find shapes.
#include "OperationBench.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPolygon.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>

#include <QSemaphore>
#include <climits>
#include <cstring>
#include <stdexcept>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CPolygon;
using Vantor::Geometry::CRectangle;

namespace
{
enum ERow {
    ERow_Channel,
    ERow_Low,
    ERow_High,
    ERow_Neighbours,
    ERow_MinArea,
    ERow_MaxArea,
    ERow_Holes,
    ERow_Most
};

/// Black with white squares of 4 x 4, a ring of 8 x 8 around a hole of 4 x 4, and a single white pixel.
std::shared_ptr<CImage> Particles(int nChannels = 1)
{
    auto pImage = std::make_shared<CImage>();
    if (pImage->Create(200, 150, nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4) != 0)
        qFatal("no image");
    const auto fill = [&](int nX, int nY, int nSide, int nValue) {
        for (int y = nY; y < nY + nSide; ++y)
            std::memset(pImage->GetPixel(nX, y), nValue, std::size_t(nSide) * std::size_t(nChannels));
    };
    fill(0, 0, 150, 0);
    fill(50, 0, 150, 0);
    fill(10, 10, 4, 255);
    fill(40, 60, 4, 255);
    fill(100, 100, 8, 255);
    fill(102, 102, 4, 0);
    fill(150, 20, 1, 255);
    return pImage;
}

/// The areas of what the viewer shows, the topmost first.
std::vector<int> Areas(OperationBench& b)
{
    std::vector<int> vctAreas;
    for (const auto& pObject : b.fixture.Viewer(0)->Get2DDrawableObjects()) {
        int nArea = 0;
        if (const auto* pPolygon = ShapeKinds::GeometryOf<CPolygon>(*pObject))
            for (const auto& run : pPolygon->GetPixelRuns(200, 150))
                nArea += run.nEnd - run.nBegin;
        vctAreas.push_back(nArea);
    }
    return vctAreas;
}

using Ints = std::vector<int>;
} // namespace

class tst_FindParticles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatItFindsIsOneStep()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        const auto pImage = Particles();
        b.fixture.Ctrl(0)->ChangeCurrentImage(pImage);
        b.parts->ClickRun();
        QCOMPARE(Areas(b), (Ints{16, 16, 48}));
        QCOMPARE(b.parts->Message(), QStringLiteral("Found: 3"));
        for (const auto& pObject : b.fixture.Viewer(0)->Get2DDrawableObjects())
            QVERIFY(pObject->GetSelected() && !pObject->GetDisplayName());
        QVERIFY(b.Image() == pImage);
        b.PressUndo();
        QCOMPARE(Areas(b), Ints());
        QVERIFY(b.Image() == pImage);
        b.fixture.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(Areas(b), (Ints{16, 16, 48}));
    }

    void theParametersReachTheSearch()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.Set(ERow_MinArea, 1);
        b.Set(ERow_Holes, QStringLiteral("Filled"));
        b.Set(ERow_MaxArea, 20);
        b.parts->ClickRun();
        QCOMPARE(Areas(b), (Ints{16, 1, 16}));
        b.Set(ERow_MaxArea, 64);
        b.Set(ERow_MinArea, 64);
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.parts->ClickRun();
        QCOMPARE(Areas(b), Ints{64});
        b.Set(ERow_Low, 0);
        b.Set(ERow_High, 10);
        b.Set(ERow_MaxArea, INT_MAX);
        b.Set(ERow_Holes, QStringLiteral("Kept"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.parts->ClickRun();
        QCOMPARE(Areas(b), Ints{200 * 150 - 2 * 16 - 64 - 1}); // without the hole of the ring
    }

    void onlyTheRegionIsSearched()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.DrawRegion(); // (20, 30) to (90, 80)
        b.parts->ClickRun();
        QCOMPARE(Areas(b).size(), std::size_t(2)); // with the region
        QCOMPARE(Areas(b)[0], 16);
    }

    void aFailureIsToldAndAddsNothing()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.Set(ERow_Channel, QStringLiteral("Channel 2"));
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), QStringLiteral("The image does not have that channel."));
        b.Set(ERow_Channel, QStringLiteral("Channel 1"));
        b.Set(ERow_Most, 2);
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(),
                 QStringLiteral("There are more than 2 components. A larger smallest area "
                                "leaves some out."));
        QCOMPARE(Areas(b), Ints());
    }

    void nothingFoundIsNoStep()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.Set(ERow_MinArea, 1000);
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), QStringLiteral("Found: 0"));
        b.PressUndo(); // takes back the image
        QVERIFY(b.Image()->GetWidth() == 200 && b.Image()->GetPixel(10, 10)[0] != 255);
    }

    void asAJobItIsTheSameOfTheImageThatIsShown()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        b.fixture.center->SetOptions(sOptions);
        b.parts->ClickRun();
        QTRY_COMPARE(Areas(b), (Ints{16, 16, 48}));
        QTRY_COMPARE(b.parts->Message(), QStringLiteral("Found: 3"));
    }

    void whatWasFoundInAnImageThatIsGoneIsDropped()
    {
        QSemaphore goOn;
        SProcessOperation operation;
        operation.strTitle = QStringLiteral("Slow");
        operation.find = [&goOn](const CImage&, const Vantor::Geometry::CGeometry*, const ProcessValues&,
                                 const ProcessProgress&, SProcessOperation::Shapes& vctFound) {
            goOn.acquire();
            vctFound.push_back(std::make_shared<CRectangle>(1, 2, 3, 4));
            return QString();
        };
        OperationBench b(operation);
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        b.fixture.center->SetOptions(sOptions);
        b.parts->ClickRun();
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        goOn.release();
        QTRY_COMPARE(b.parts->Message(),
                     QStringLiteral("Another image is shown by now; the result was dropped."));
        QCOMPARE(Areas(b), Ints());
    }

    void theNextRunSearchesTheSameRegion()
    {
        OperationBench b(QStringLiteral("Find Particles"));
        b.fixture.Ctrl(0)->ChangeCurrentImage(Particles());
        b.parts->ClickRun();
        b.parts->ClickRun(); // not in what was found first
        QCOMPARE(Areas(b), (Ints{16, 16, 48, 16, 16, 48}));
    }

    void anExceptionOfAnOperationIsAFailure()
    {
        SProcessOperation operation;
        operation.strTitle = QStringLiteral("Thrower");
        operation.find = [](const CImage&, const Vantor::Geometry::CGeometry*, const ProcessValues&,
                            const ProcessProgress&, SProcessOperation::Shapes& vctFound) -> QString {
            vctFound.push_back(std::make_shared<CRectangle>(1, 2, 3, 4));
            throw std::runtime_error("no luck");
        };
        OperationBench b(operation);
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), QStringLiteral("The operation failed: no luck."));
        QCOMPARE(b.fixture.Counts()[0], 0);
    }

    void anOperationMayFindShapesOfAnyKind()
    {
        SProcessOperation operation;
        operation.strTitle = QStringLiteral("Finder");
        operation.find = [](const CImage&, const Vantor::Geometry::CGeometry*, const ProcessValues&,
                            const ProcessProgress& progress, SProcessOperation::Shapes& vctFound) {
            progress(0.5);
            vctFound = {std::make_shared<CRectangle>(1, 2, 3, 4), nullptr};
            return QString();
        };
        OperationBench b(operation);
        b.parts->ClickRun();
        QCOMPARE(b.fixture.Counts()[0], 1);
        QCOMPARE(b.parts->Message(), QStringLiteral("Found: 1"));
    }
};

VANTOR_TEST_MAIN(tst_FindParticles)
#include "tst_FindParticles.moc"
