// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view3d/View3DParameters.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <limits>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using Vantor::Algorithms::CImage;

namespace
{
using Floats = std::vector<float>;
using Indices = std::vector<unsigned int>;

Floats VerticesOf(const CImageView3DModel& model)
{
    return Floats(model.GetVerticesBuffer(), model.GetVerticesBuffer() + model.GetVerticesSize());
}

Indices IndicesOf(const CImageView3DModel& model)
{
    return Indices(model.GetIndicesBuffer(), model.GetIndicesBuffer() + model.GetIndicesSize());
}

std::shared_ptr<CImage> MakeImage(int w, int h, int c, const std::vector<unsigned char>& vctBytes)
{
    auto pImage = MakeTestImage(w, h, c);
    for (int i = 0; i < w * h * c; ++i)
        pImage->GetPixel(i / c % w, i / c / w)[i % c] = vctBytes[i];
    return pImage;
}

/// The mesh written down in the plainest way, from the image's bytes.
void PlainMesh(const CImage& image, Floats& vertices, Indices& indices)
{
    const int w = image.GetWidth();
    const int h = image.GetHeight();
    const int c = image.GetChannel();
    for (int r = 0; r < h; ++r)
        for (int x = 0; x < w; ++x) {
            const unsigned char* p = image.GetPixel(x, r);
            vertices.push_back(float(x) / w);
            vertices.push_back(float(h - 1 - r) / h);
            const double grey = c == 1 ? p[0] : c >= 3 ? 0.2126 * p[0] + 0.7152 * p[1] + 0.0722 * p[2] : 0.0;
            vertices.push_back(float(grey * 0.1 / 255));
            for (int i = 0; i < 3 && c != 2; ++i)
                vertices.push_back(p[c == 1 ? 0 : i] / 255.0F);
        }
    for (int j = 0; j + 1 < h; ++j)
        for (int x = 0; x + 1 < w; ++x) {
            const unsigned int a = j * w + x;
            const unsigned int b = a + w;
            indices.insert(indices.end(), {b, a + 1, a, b, b + 1, a + 1});
        }
}

/// Every signal of a load, in order.
QStringList RecordLoad(CImageView3DModel& model, std::shared_ptr<CImage> pImage)
{
    QStringList signalled;
    QObject context;
    using M = CImageView3DModel;
    QObject::connect(&model, &M::signal_ChangeProgressMaxRange, &context,
                     [&](int n) { signalled << QStringLiteral("max %1").arg(n); });
    QObject::connect(&model, &M::signal_ChangeProgressValue, &context,
                     [&](int n) { signalled << QString::number(n); });
    QObject::connect(&model, &M::signal_LoadFinished, &context,
                     [&] { signalled << QStringLiteral("finished"); });
    model.LoadImage(std::move(pImage));
    return signalled;
}

/// The bytes of address space that the process has taken.
rlim_t AddressSpace()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(0).toULongLong() * rlim_t(sysconf(_SC_PAGESIZE));
}

const QStringList kWholeLoad = {QStringLiteral("0"),   QStringLiteral("10"), QStringLiteral("30"),
                                QStringLiteral("100"), QStringLiteral("0"),  QStringLiteral("finished")};
} // namespace

class tst_CImageView3DModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CImageView3DModel::SetBufferLimit(std::size_t(2) << 30); }

    void everyParameterHasItsDefaultSetterAndSignal_data()
    {
        QTest::addColumn<int>("nRow");
        for (int i = 0; i < kExpectedCount; ++i)
            QTest::newRow(kExpected[i].pLabel) << i;
    }

    void everyParameterHasItsDefaultSetterAndSignal()
    {
        QFETCH(int, nRow);
        const SExpectedParameter& row = kExpected[nRow];
        CImageView3DModel model;
        QSignalSpy spy(&model, &CImageView3DModel::signal_ChangeTransformMatrix);
        QCOMPARE((model.*row.pGetter)(), row.fDefault);
        (model.*row.pSetter)(row.fDefault + 1.5F);
        QCOMPARE((model.*row.pGetter)(), row.fDefault + 1.5F);
        QCOMPARE(spy.count(), 1);
        for (int i = 0; i < kExpectedCount; ++i)
            if (i != nRow)
                QCOMPARE((model.*kExpected[i].pGetter)(), kExpected[i].fDefault);
    }

    void settingAParameterToItsCurrentValueEmitsNothing()
    {
        CImageView3DModel model;
        QSignalSpy spy(&model, &CImageView3DModel::signal_ChangeTransformMatrix);
        for (const SExpectedParameter& row : kExpected)
            (model.*row.pSetter)((model.*row.pGetter)());
        model.SetFOV(22.000001F);
        QCOMPARE(spy.count(), 0);
        model.SetFOV(22.001F);
        QCOMPARE(spy.count(), 1);
    }

    void aValueThatIsNotFiniteIsRefused()
    {
        CImageView3DModel model;
        QSignalSpy spy(&model, &CImageView3DModel::signal_ChangeTransformMatrix);
        model.SetFOV(std::numeric_limits<float>::quiet_NaN());
        model.SetFOV(std::numeric_limits<float>::infinity());
        QCOMPARE(model.GetFOV(), 22.0F);
        QCOMPARE(spy.count(), 0);
    }

    void greyValueFollowsTheChannelCount()
    {
        const unsigned char pixel[4] = {200, 100, 50, 7};
        QCOMPARE(__InternalGetGrayValue(nullptr, 3), 0.0F);
        QCOMPARE(__InternalGetGrayValue(pixel, 1), 200.0F);
        const float fGrey = float(0.2126 * 200 + 0.7152 * 100 + 0.0722 * 50);
        QCOMPARE(__InternalGetGrayValue(pixel, 3), fGrey);
        QCOMPARE(__InternalGetGrayValue(pixel, 4), fGrey);
        for (const int c : {0, 2, 5, -1, 100})
            QCOMPARE(__InternalGetGrayValue(pixel, c), 0.0F);
    }

    void buffersAreEmptyAtFirst()
    {
        const CImageView3DModel model;
        QCOMPARE(model.GetVerticesSize(), 0);
        QCOMPARE(model.GetIndicesSize(), 0);
    }

    void aGreyImageOfTwoByTwoYields24FloatsAndSixIndices()
    {
        CImageView3DModel model;
        QCOMPARE(RecordLoad(model, MakeImage(2, 2, 1, {0, 51, 255, 102})), kWholeLoad);
        const Floats expected = {0,    0.5F, 0,     0,    0,    0,    //
                                 0.5F, 0.5F, 0.02F, 0.2F, 0.2F, 0.2F, //
                                 0,    0,    0.1F,  1,    1,    1,    //
                                 0.5F, 0,    0.04F, 0.4F, 0.4F, 0.4F};
        const Floats vertices = VerticesOf(model);
        QCOMPARE(vertices.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            QVERIFY2(std::abs(vertices[i] - expected[i]) < 1e-7F, qPrintable(QString::number(i)));
        QCOMPARE(IndicesOf(model), (Indices{2, 1, 0, 2, 3, 1}));
    }

    void aWhitePixelLiesAtATenthAndARedOneAtItsWeight()
    {
        CImageView3DModel model;
        model.LoadImage(MakeImage(1, 1, 1, {255}));
        QCOMPARE(VerticesOf(model)[2], 0.1F);
        model.LoadImage(MakeImage(1, 1, 3, {255, 0, 0}));
        QCOMPARE(VerticesOf(model)[2], 0.1F * 0.2126F);
    }

    void theMeshIsThePlainOneNumberByNumber_data()
    {
        QTest::addColumn<int>("w");
        QTest::addColumn<int>("h");
        QTest::addColumn<int>("c");
        for (const auto& [w, h] : {std::pair(1, 1), {5, 1}, {1, 4}, {2, 3}, {7, 5}, {33, 17}})
            for (int c = 1; c <= 4; ++c)
                QTest::addRow("%dx%dx%d", w, h, c) << w << h << c;
    }

    void theMeshIsThePlainOneNumberByNumber()
    {
        QFETCH(int, w);
        QFETCH(int, h);
        QFETCH(int, c);
        const auto pImage = MakeTestImage(w, h, c, 11);
        CImageView3DModel model;
        QCOMPARE(RecordLoad(model, pImage), kWholeLoad);
        Floats expected;
        Indices indices;
        PlainMesh(*pImage, expected, indices);
        const Floats vertices = VerticesOf(model);
        QCOMPARE(vertices.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            QVERIFY2(std::abs(vertices[i] - expected[i]) < 1e-7F, qPrintable(QString::number(i)));
        QCOMPARE(IndicesOf(model), indices);
    }

    void oneRowOrOneColumnYieldsNoTriangles()
    {
        CImageView3DModel model;
        for (const auto& [w, h] : {std::pair(9, 1), {1, 9}}) {
            model.LoadImage(MakeTestImage(w, h, 1));
            QCOMPARE(model.GetVerticesSize(), 9 * 6);
            QCOMPARE(model.GetIndicesSize(), 0);
        }
    }

    void deliberateAPixelOfTwoChannelsHasThreeFloats()
    {
        CImageView3DModel model;
        model.LoadImage(MakeTestImage(4, 3, 2));
        QCOMPARE(model.GetVerticesSize(), 4 * 3 * 3);
        QCOMPARE(model.GetIndicesSize(), 3 * 2 * 6);
    }

    void anEmptyImageEmitsOnlyTheProgressValueZero()
    {
        CImageView3DModel model;
        model.LoadImage(MakeTestImage(2, 2, 1));
        QCOMPARE(RecordLoad(model, std::make_shared<CImage>()), QStringList{QStringLiteral("0")});
        QCOMPARE(model.GetVerticesSize(), 24);
    }

    void noImageEmitsNothing()
    {
        CImageView3DModel model;
        QCOMPARE(RecordLoad(model, nullptr), QStringList());
        QCOMPARE(RecordLoad(model, MakeTestImage(2, 2, 1)), kWholeLoad); // the lock is free again
    }

    void eachLoadReplacesTheMesh()
    {
        CImageView3DModel model;
        model.LoadImage(MakeTestImage(9, 9, 1));
        model.LoadImage(MakeTestImage(2, 2, 1));
        QCOMPARE(model.GetVerticesSize(), 24);
        QCOMPARE(model.GetIndicesSize(), 6);
    }

    void theMeshIsTakenOnce()
    {
        CImageView3DModel model;
        Floats vertices(3);
        Indices indices;
        QVERIFY(!model.TakeBuffers(vertices, indices));
        QCOMPARE(vertices.size(), std::size_t(3));
        model.LoadImage(MakeTestImage(9, 9, 1));
        model.LoadImage(MakeTestImage(2, 2, 1));
        QVERIFY(model.TakeBuffers(vertices, indices));
        QCOMPARE(vertices.size(), std::size_t(24));
        QCOMPARE(model.GetVerticesSize(), 0);
        QCOMPARE(model.GetIndicesSize(), 0);
        QVERIFY(!model.TakeBuffers(vertices, indices));
        QCOMPARE(indices.size(), std::size_t(6));
    }

    void clearingEmptiesBothBuffers()
    {
        CImageView3DModel model;
        model.LoadImage(MakeTestImage(3, 3, 3));
        model.ClearBufferData();
        QCOMPARE(model.GetVerticesSize(), 0);
        QCOMPARE(model.GetIndicesSize(), 0);
        Floats vertices;
        Indices indices;
        QVERIFY(!model.TakeBuffers(vertices, indices));
    }

    void anImageOverTheLimitIsNotBuilt()
    {
        QCOMPARE(CImageView3DModel::GetBufferLimit(), std::size_t(2) << 30);
        CImageView3DModel model;
        constexpr std::size_t kBytes = 3 * 3 * 6 * 4 + 2 * 2 * 6 * 4;
        CImageView3DModel::SetBufferLimit(kBytes);
        model.LoadImage(MakeTestImage(3, 3, 1));
        QCOMPARE(model.GetIndicesSize(), 24);
        CImageView3DModel::SetBufferLimit(kBytes - 1);
        LogRecorder log;
        QSignalSpy failed(&model, &CImageView3DModel::signal_Failed);
        QCOMPARE(RecordLoad(model, MakeTestImage(3, 3, 1)),
                 (QStringList{QStringLiteral("0"), QStringLiteral("finished")}));
        const QString strMessage = QStringLiteral("The image of 3 x 3 pixels is too large for the 3D view");
        QCOMPARE(log.Take(), QStringList(QStringLiteral("2:") + strMessage));
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(), strMessage + QLatin1Char('.'));
        QCOMPARE(model.GetVerticesSize(), 0);
        QCOMPARE(model.GetIndicesSize(), 0);
    }

    void aLackOfMemoryIsAFailedLoad()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the address sanitizer cannot live with a limit of the address space");
#else
        CImageView3DModel model;
        model.LoadImage(MakeTestImage(2, 2, 1));
        const auto pLarge = MakeTestImage(4000, 4000, 1); // its mesh takes 768 MB
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_AS, &before), 0);
        rlimit tight = before;
        tight.rlim_cur = AddressSpace() + (rlim_t(200) << 20);
        LogRecorder log;
        QSignalSpy failed(&model, &CImageView3DModel::signal_Failed);
        QCOMPARE(setrlimit(RLIMIT_AS, &tight), 0);
        const QStringList signalled = RecordLoad(model, pLarge);
        QCOMPARE(setrlimit(RLIMIT_AS, &before), 0);
        QCOMPARE(signalled, (QStringList{QStringLiteral("0"), QStringLiteral("10"), QStringLiteral("0")}));
        const QString strMessage = QStringLiteral("Not enough memory for the 3D view of 4000 x 4000 pixels");
        QCOMPARE(log.Take(), QStringList(QStringLiteral("2:") + strMessage));
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(), strMessage + QLatin1Char('.'));
        QCOMPARE(model.GetVerticesSize(), 24); // the mesh before stays
        QCOMPARE(RecordLoad(model, MakeTestImage(3, 3, 1)), kWholeLoad);
#endif
    }

    void takingWhileAnotherThreadLoadsLosesNoMesh()
    {
        CImageView3DModel model;
        const auto pSmall = MakeTestImage(8, 8, 1);
        const auto pLarge = MakeTestImage(20, 20, 3);
        std::thread worker([&] {
            for (int i = 0; i < 500; ++i)
                model.LoadImage(i % 2 == 0 ? pSmall : pLarge);
        });
        Floats vertices;
        Indices indices;
        int nTaken = 0;
        const auto take = [&] {
            if (!model.TakeBuffers(vertices, indices))
                return true;
            ++nTaken;
            return (vertices.size() == 8 * 8 * 6 && indices.size() == 7 * 7 * 6) ||
                   (vertices.size() == 20 * 20 * 6 && indices.size() == 19 * 19 * 6);
        };
        bool bWhole = true;
        for (int i = 0; i < 20000; ++i)
            bWhole = take() && bWhole;
        worker.join();
        bWhole = take() && bWhole;
        QVERIFY(bWhole);
        QVERIFY(nTaken > 0);
        QCOMPARE(vertices.size(), std::size_t(20 * 20 * 6)); // the last one loaded
    }

    void aSlotOfTheLoadMayTakeTheMeshAtOnce()
    {
        CImageView3DModel model;
        Floats vertices;
        Indices indices;
        connect(&model, &CImageView3DModel::signal_LoadFinished, this,
                [&] { model.TakeBuffers(vertices, indices); });
        model.LoadImage(MakeTestImage(2, 2, 1));
        QCOMPARE(vertices.size(), std::size_t(24));
    }
};

VANTOR_TEST_MAIN(tst_CImageView3DModel)
#include "tst_CImageView3DModel.moc"
