// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/filter/FilterModel.h"
#include "tests/support/TestMain.h"

#include <limits>
#include <pthread.h>
#include <sched.h>
#include <set>
#include <system_error>
#include <thread>

using namespace FilterModel;

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kMax = std::numeric_limits<int>::max();

int MedianOf(CImage& image, int radiusX, int radiusY)
{
    return image.MedianFilter(radiusX, radiusY, nullptr, ERegionMode::Inside, 0.0);
}

Value ModelOf(long long radiusX, long long radiusY)
{
    return [=](const CImage& image, int x, int y, int c) { return Median(image, x, y, c, radiusX, radiusY); };
}

Mask WholeOf(const CImage& image)
{
    return RegionOf(
        image, [](double) { return ShapePtr(); }, ERegionMode::All, 0.0);
}
} // namespace

class tst_MedianFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyInstructionSetIsTried();
    void smallWindowsEqualTheModelInEveryRegion_data();
    void smallWindowsEqualTheModelInEveryRegion();
    void otherWindowsEqualTheModelInEveryRegion_data();
    void otherWindowsEqualTheModelInEveryRegion();
    void windowsOfAnySizeEqualTheModel_data();
    void windowsOfAnySizeEqualTheModel();
    void longRunsAndWideStripesEqualTheModel();
    void twoThreadsEqualTheModel_data();
    void twoThreadsEqualTheModel();
    void twoThreadsMeetBetweenRowsOfSeveralRuns();
    void oneRowIsNotDivided();
    void withoutASecondThreadOrProcessorTheResultIsTheSame();
    void toleranceIsADistanceBetweenCentres();
    void radiiOfZeroChangeNothing();
    void negativeRadiiAreAnError();
    void sixteenBitsAreRefused();
    void badArgumentsChangeNothing_data();
    void badArgumentsChangeNothing();
    void anEmptyImageIsAnError();
    void aRegionOutsideTheImageChangesNothing();
    void withoutGeometryTheWholeImageIsFiltered();
    void objectBufferAndIdentifierStay();
    void shapesOutOfOrderAreRefused();
    void theLastFailureHasAReason();
    void touchingRunsOfAHostsShapeAreInOrder();
    void aWindowIsCountedBeyondSixteenBits();
    void theLargestToleranceReachesItsDistance();
};

void tst_MedianFilter::everyInstructionSetIsTried()
{
    std::set<std::string> setNames;
    const int nCalls = ForEachInstructionSet([&](const char* pName) { setNames.insert(pName); });
    QVERIFY(nCalls >= 1);
    QCOMPARE(setNames.size(), static_cast<std::size_t>(nCalls));
    for (const std::string& strName : setNames)
        qInfo("%s", strName.c_str());
}

void tst_MedianFilter::smallWindowsEqualTheModelInEveryRegion_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("radius");
    for (int nRadius : {1, 2}) {
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            QTest::addRow("radius %d, %d channels", nRadius, nChannels) << nChannels << nRadius;
    }
}

void tst_MedianFilter::smallWindowsEqualTheModelInEveryRegion()
{
    QFETCH(int, channels);
    QFETCH(int, radius);
    const auto filter = [radius](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
        return image.MedianFilter(radius, radius, region, mode, tolerance);
    };
    int nTurn = channels;
    for (const Size& size : kSizes) {
        const ImagePtr image = MakeNoise(size.nWidth, size.nHeight, channels, size.nRowAlignment, 7);
        QCOMPARE(
            FirstDifference(*image, filter, ModelOf(radius, radius), {0.0, 1.0, -1.0, 3.5, -2.3}, nTurn++),
            QString());
    }
}

void tst_MedianFilter::otherWindowsEqualTheModelInEveryRegion_data()
{
    QTest::addColumn<int>("channels");
    for (int nChannels = 1; nChannels <= 4; ++nChannels)
        QTest::addRow("%d channels", nChannels) << nChannels;
}

void tst_MedianFilter::otherWindowsEqualTheModelInEveryRegion()
{
    QFETCH(int, channels);
    const auto filter = [](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
        return image.MedianFilter(2, 3, region, mode, tolerance);
    };
    const ImagePtr image = MakeNoise(31, 27, channels, 5, 8);
    for (int nTurn = 0; nTurn < kTurns; ++nTurn)
        QCOMPARE(FirstDifference(*image, filter, ModelOf(2, 3), {0.0, 2.0, -1.5}, nTurn), QString());
}

void tst_MedianFilter::windowsOfAnySizeEqualTheModel_data()
{
    QTest::addColumn<int>("radiusX");
    QTest::addColumn<int>("radiusY");
    const std::vector<std::pair<int, int>> vctRadii = {
        {0, 1},    {1, 0},     {2, 2},         {7, 7},        {0, 12},
        {40, 3},   {127, 127}, {128, 127},     {200, 400},    {32767, 32767},
        {0, kMax}, {kMax, 0},  {40000, 40000}, {kMax - 1, 5}, {kMax, kMax}};
    for (const auto& radii : vctRadii)
        QTest::addRow("%d %d", radii.first, radii.second) << radii.first << radii.second;
}

void tst_MedianFilter::windowsOfAnySizeEqualTheModel()
{
    QFETCH(int, radiusX);
    QFETCH(int, radiusY);
    for (const auto& size : {std::pair(1, 1), std::pair(1, 20), std::pair(20, 1), std::pair(23, 17)}) {
        for (int nChannels : {1, 3, 4}) {
            const ImagePtr image = MakeNoise(size.first, size.second, nChannels, 1, 9);
            const ImagePtr expected = Filtered(*image, WholeOf(*image), ModelOf(radiusX, radiusY));
            QCOMPARE(MedianOf(*image, radiusX, radiusY), 0);
            QVERIFY(AreEqual(*image, *expected));
        }
    }
}

void tst_MedianFilter::longRunsAndWideStripesEqualTheModel()
{
    // Longer than the blocks of the small windows, wider than a stripe of the others.
    const ShapeMaker gaps = [](double o) {
        auto array = std::make_shared<Vantor::Geometry::CGeometryArray>();
        for (const double x : {3.0, 40.0, 500.0, 900.0})
            array->Add(std::make_shared<Vantor::Geometry::CRectangle>(o + x, o, 30.0, 7.0));
        return array;
    };
    const ShapePtr pGaps = gaps(0.0);
    for (const int nRadius : {1, 2, 3, 300}) {
        // The model's windows are large enough without many rows.
        const ImagePtr image = MakeNoise(1500, nRadius == 300 ? 2 : 7, 3, 1, 10);
        const Mask region = RegionOf(*image, gaps, ERegionMode::Inside, 0.0);
        const ImagePtr modelled = Modelled(*image, ModelOf(nRadius, nRadius));
        const ImagePtr whole = CopyOf(*image);
        QCOMPARE(MedianOf(*whole, nRadius, nRadius), 0);
        QVERIFY(AreEqual(*whole, *modelled));
        const ImagePtr part = CopyOf(*image);
        QCOMPARE(part->MedianFilter(nRadius, nRadius, pGaps.get(), ERegionMode::Inside, 0.0), 0);
        QVERIFY(AreEqual(*part, *Merged(*image, *modelled, region)));
    }
}

void tst_MedianFilter::twoThreadsEqualTheModel_data()
{
    QTest::addColumn<int>("radius");
    QTest::newRow("3x3") << 1;
    QTest::newRow("5x5") << 2;
}

void tst_MedianFilter::twoThreadsEqualTheModel()
{
    QFETCH(int, radius);
    // More than four million pixels, so that two bands meet somewhere in the middle.
    const ImagePtr image = MakeNoise(2003, 2100, 1, 1, 11);
    const ImagePtr expected = CopyOf(*image);
    QCOMPARE(MedianOf(*image, radius, radius), 0);
    const ImagePtr source = CopyOf(*expected);
    for (int y = 0; y < source->GetHeight(); ++y) {
        // The rows around the middle, the rims, and a few between: the model takes its time.
        if (std::abs(y - 1050) > 4 && y > 2 && y < 2097 && y % 300 != 0)
            continue;
        for (int x = 0; x < source->GetWidth(); ++x) {
            if (image->GetPixel(x, y)[0] != Median(*source, x, y, 0, radius, radius))
                QFAIL(qPrintable(QStringLiteral("at %1, %2").arg(x).arg(y)));
        }
    }
    // The same in four parts that are small enough for one thread.
    for (int i = 0; i < 4; ++i) {
        const ImagePtr part = CopyOf(*source);
        const Vantor::Geometry::CRectangle rows(0, i * 525, 2003, 525);
        QCOMPARE(part->MedianFilter(radius, radius, &rows, ERegionMode::Inside, 0.0), 0);
        const std::size_t nStride = static_cast<std::size_t>(part->GetStride());
        std::memcpy(expected->GetPixel(0, i * 525), part->GetPixel(0, i * 525), 525 * nStride);
    }
    QVERIFY(AreEqual(*image, *expected));
}

void tst_MedianFilter::twoThreadsMeetBetweenRowsOfSeveralRuns()
{
    // Half of the pixels end with the first run of the middle row; the second belongs to it.
    const ImagePtr image = MakeNoise(2003, 2101, 1, 1, 12);
    const ImagePtr source = CopyOf(*image);
    Vantor::Geometry::CGeometryArray region;
    region.Add(std::make_shared<Vantor::Geometry::CRectangle>(0, 0, 990, 2101));
    region.Add(std::make_shared<Vantor::Geometry::CRectangle>(1000, 0, 990, 2101));
    QCOMPARE(image->MedianFilter(1, 1, &region, ERegionMode::Inside, 0.0), 0);
    for (const int y : {0, 1, 1048, 1049, 1050, 1051, 1052, 2099, 2100}) {
        for (int x = 0; x < source->GetWidth(); ++x) {
            const bool bInside = x < 990 || (x >= 1000 && x < 1990);
            const int nExpected = bInside ? Median(*source, x, y, 0, 1, 1) : source->GetPixel(x, y)[0];
            if (image->GetPixel(x, y)[0] != nExpected)
                QFAIL(qPrintable(QStringLiteral("at %1, %2").arg(x).arg(y)));
        }
    }
}

void tst_MedianFilter::oneRowIsNotDivided()
{
    constexpr int kWidth = 4'100'000;
    for (const int nRadius : {1, 3}) {
        const ImagePtr image = MakeNoise(kWidth, 1, 1, 1, 13);
        const ImagePtr source = CopyOf(*image);
        QCOMPARE(MedianOf(*image, nRadius, nRadius), 0);
        for (int x = 0; x < kWidth; x += x < 50 || x > kWidth - 1000 ? 1 : 401) {
            if (image->GetPixel(x, 0)[0] != Median(*source, x, 0, 0, nRadius, nRadius))
                QFAIL(qPrintable(QStringLiteral("radius %1, at %2").arg(nRadius).arg(x)));
        }
    }
}

void tst_MedianFilter::withoutASecondThreadOrProcessorTheResultIsTheSame()
{
    const ImagePtr source = MakeNoise(2003, 2100, 1, 1, 14);
    const ImagePtr expected = CopyOf(*source);
    QCOMPARE(MedianOf(*expected, 1, 1), 0);

    // A stack that no address space holds.
    pthread_attr_t usual, none;
    QCOMPARE(::pthread_getattr_default_np(&usual), 0);
    QCOMPARE(::pthread_getattr_default_np(&none), 0);
    QCOMPARE(::pthread_attr_setstacksize(&none, std::size_t(1) << 47), 0);
    QCOMPARE(::pthread_setattr_default_np(&none), 0);
    bool bRefused = false;
    try {
        std::thread([] {}).join();
    } catch (const std::system_error&) {
        bRefused = true;
    }
    const ImagePtr alone = CopyOf(*source);
    const int nAlone = MedianOf(*alone, 1, 1);
    QCOMPARE(::pthread_setattr_default_np(&usual), 0);
    QVERIFY(bRefused);
    QCOMPARE(nAlone, 0);
    QVERIFY(AreEqual(*alone, *expected));

    cpu_set_t before, one;
    QCOMPARE(::sched_getaffinity(0, sizeof before, &before), 0);
    CPU_ZERO(&one);
    for (int i = 0; i < CPU_SETSIZE && CPU_COUNT(&one) == 0; ++i)
        if (CPU_ISSET(i, &before))
            CPU_SET(i, &one);
    QCOMPARE(::sched_setaffinity(0, sizeof one, &one), 0);
    const ImagePtr single = CopyOf(*source);
    const int nSingle = MedianOf(*single, 1, 1);
    QCOMPARE(::sched_setaffinity(0, sizeof before, &before), 0);
    QCOMPARE(nSingle, 0);
    QVERIFY(AreEqual(*single, *expected));
}

void tst_MedianFilter::toleranceIsADistanceBetweenCentres()
{
    // One pixel, grown by 2: the pixels whose centres are at most 2 away from its centre.
    CImage image;
    QCOMPARE(image.Create(7, 7, 1, 8, EImageType::Interleaved, 1), 0);
    for (int i = 0; i < 49; ++i)
        image.GetData()[i] = static_cast<unsigned char>(i % 2 ? 255 : 100);
    const Point pixel(3.2, 3.8);
    QCOMPARE(image.SobelX(&pixel, ERegionMode::Inside, 2.0), 0);
    QString strPicture;
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 7; ++x)
            strPicture += QLatin1Char(image.GetPixel(x, y)[0] == ((y * 7 + x) % 2 ? 255 : 100) ? '.' : '#');
        strPicture += QLatin1Char(' ');
    }
    QCOMPARE(strPicture, QStringLiteral("....... ...#... ..###.. .#####. ..###.. ...#... ....... "));
}

void tst_MedianFilter::radiiOfZeroChangeNothing()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr original = CopyOf(*image);
    QCOMPARE(MedianOf(*image, 0, 0), 0);
    QVERIFY(AreEqual(*image, *original));
}

void tst_MedianFilter::negativeRadiiAreAnError()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr original = CopyOf(*image);
    QVERIFY(MedianOf(*image, -1, 1) != 0);
    QVERIFY(MedianOf(*image, 1, -1) != 0);
    QVERIFY(MedianOf(*image, -kMax - 1, 0) != 0);
    QVERIFY(AreEqual(*image, *original));
}

void tst_MedianFilter::sixteenBitsAreRefused()
{
    CImage image;
    QCOMPARE(image.Create(8, 8, 3, 16, EImageType::Interleaved, 1), 0);
    for (std::size_t i = 0; i < BytesOf(image); ++i)
        image.GetData()[i] = static_cast<unsigned char>(i * 91);
    const ImagePtr original = CopyOf(image);
    for (const int nRadius : {0, 1, 2}) {
        QVERIFY(MedianOf(image, nRadius, nRadius) != 0);
        QVERIFY(AreEqual(image, *original));
        QCOMPARE(image.GetFailureReason(), std::string("Only images of 8 bits per channel can be filtered."));
    }
}

void tst_MedianFilter::badArgumentsChangeNothing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<double>("x");
    QTest::newRow("mode 3") << 3 << 0.0 << 1.0;
    QTest::newRow("mode -1") << -1 << 0.0 << 1.0;
    QTest::newRow("tolerance NaN") << 1 << kNaN << 1.0;
    QTest::newRow("tolerance infinite") << 1 << std::numeric_limits<double>::infinity() << 1.0;
    QTest::newRow("tolerance too large") << 1 << 4097.0 << 1.0;
    QTest::newRow("tolerance too small") << 1 << -1e300 << 1.0;
    QTest::newRow("tolerance of a shape without bounds")
        << 1 << 1.0 << -std::numeric_limits<double>::infinity();
}

void tst_MedianFilter::badArgumentsChangeNothing()
{
    QFETCH(int, mode);
    QFETCH(double, tolerance);
    QFETCH(double, x);
    const Vantor::Geometry::CRectangle region(x, 1.0, 5.0, 5.0);
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr original = CopyOf(*image);
    for (const int nRadius : {0, 1, 2}) {
        QVERIFY(image->MedianFilter(nRadius, nRadius, &region, static_cast<ERegionMode>(mode), tolerance) !=
                0);
        QVERIFY(AreEqual(*image, *original));
        QVERIFY(!image->GetFailureReason().empty());
    }
}

void tst_MedianFilter::anEmptyImageIsAnError()
{
    CImage image;
    QVERIFY(MedianOf(image, 1, 1) != 0);
    QCOMPARE(image.GetFailureReason(), std::string("The image is empty."));
}

void tst_MedianFilter::aRegionOutsideTheImageChangesNothing()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr original = CopyOf(*image);
    const Vantor::Geometry::CRectangle outside(100.0, 5.0, 9.0, 9.0);
    const Vantor::Geometry::CRectangle nowhere(kNaN, 5.0, 9.0, 9.0);
    const Vantor::Geometry::CPolygon empty;
    const Vantor::Geometry::CGeometryArray none;
    for (const CGeometry* pRegion :
         std::initializer_list<const CGeometry*>{&outside, &nowhere, &empty, &none}) {
        for (const int nRadius : {1, 2})
            QCOMPARE(image->MedianFilter(nRadius, nRadius, pRegion, ERegionMode::Inside, 0.0), 0);
        QVERIFY(AreEqual(*image, *original));
    }
}

void tst_MedianFilter::withoutGeometryTheWholeImageIsFiltered()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr expected = Filtered(*image, WholeOf(*image), ModelOf(1, 1));
    const ImagePtr inside = CopyOf(*image);
    QCOMPARE(inside->MedianFilter(1, 1, nullptr, ERegionMode::Inside, -5.0), 0);
    QVERIFY(AreEqual(*inside, *expected));
    const ImagePtr outside = CopyOf(*image);
    QCOMPARE(outside->MedianFilter(1, 1, nullptr, ERegionMode::Outside, 0.0), 0);
    QVERIFY(AreEqual(*outside, *image));
}

void tst_MedianFilter::objectBufferAndIdentifierStay()
{
    const ImagePtr image = MakeNoise(40, 30, 3, 1, 13);
    image->SetName(L"name");
    const unsigned char* pData = image->GetData();
    unsigned char** ppRows = image->GetRows();
    const unsigned int nUID = image->GetUID();
    for (const int nRadius : {0, 1, 2}) {
        QCOMPARE(MedianOf(*image, nRadius, nRadius), 0);
        QCOMPARE(static_cast<const CImage&>(*image).GetData(), pData);
        QCOMPARE(image->GetRows(), ppRows);
        QCOMPARE(image->GetUID(), nUID);
        QCOMPARE(image->GetName(), std::wstring(L"name"));
    }
}

void tst_MedianFilter::shapesOutOfOrderAreRefused()
{
    struct Wild : Vantor::Geometry::CRectangle {
        std::vector<SPixelRun> vctRuns;
        std::vector<SPixelRun> GetPixelRuns(int, int) const override { return vctRuns; }
        ShapePtr Clone() const override { return std::make_shared<Wild>(*this); }
    };
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    const ImagePtr original = CopyOf(*image);
    const std::vector<std::vector<SPixelRun>> vctWild = {
        {{0, 0, 21}},           {{20, 0, 5}},           {{-1, 0, 5}}, {{3, -1, 5}},
        {{3, 1, 5}, {2, 1, 5}}, {{3, 1, 5}, {3, 4, 6}}, {{3, 5, 5}}};
    for (const auto& vctRuns : vctWild) {
        Wild wild;
        wild.vctRuns = vctRuns;
        QVERIFY(image->MedianFilter(1, 1, &wild, ERegionMode::Inside, 0.0) != 0);
        QVERIFY(image->MedianFilter(1, 1, &wild, ERegionMode::Outside, 0.0) != 0);
        QVERIFY(AreEqual(*image, *original));
        if (vctRuns[0].nRow != 3) // those that are wrong on a canvas with a margin, too
            continue;
        QVERIFY(vctRuns[0].nBegin < 0 || image->MedianFilter(1, 1, &wild, ERegionMode::Inside, 2.0) != 0);
        QVERIFY(AreEqual(*image, *original));
    }
}

void tst_MedianFilter::theLastFailureHasAReason()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 1, 12);
    QCOMPARE(image->GetFailureReason(), std::string());
    QVERIFY(MedianOf(*image, -1, 1) != 0);
    QCOMPARE(image->GetFailureReason(), std::string("A radius of the median is negative."));
    QVERIFY(image->CopyFrom(nullptr) != 0);
    QCOMPARE(image->GetFailureReason(), std::string("There is no image to copy."));
    CImage other;
    QCOMPARE(other.CopyFrom(image.get()), 0);
    QCOMPARE(other.GetFailureReason(), std::string());
    QCOMPARE(MedianOf(*image, 1, 1), 0);
    QCOMPARE(image->GetFailureReason(), std::string());
}

void tst_MedianFilter::touchingRunsOfAHostsShapeAreInOrder()
{
    struct Split : Vantor::Geometry::CRectangle {
        using CRectangle::CRectangle;
        std::vector<SPixelRun> GetPixelRuns(int width, int height) const override
        {
            std::vector<SPixelRun> vctHalves;
            for (const SPixelRun& run : CRectangle::GetPixelRuns(width, height)) {
                const int nMiddle = (run.nBegin + run.nEnd) / 2;
                vctHalves.push_back({run.nRow, run.nBegin, nMiddle});
                vctHalves.push_back({run.nRow, nMiddle, run.nEnd});
            }
            return vctHalves;
        }
        ShapePtr Clone() const override { return std::make_shared<Split>(*this); }
    };
    const Split split(3, 4, 10, 8);
    const Vantor::Geometry::CRectangle whole(3, 4, 10, 8);
    for (const ERegionMode eMode : {ERegionMode::Inside, ERegionMode::Outside}) {
        for (const double dblTolerance : {0.0, 2.0, -1.5}) {
            const ImagePtr image = MakeNoise(20, 20, 3, 1, 14);
            const ImagePtr expected = CopyOf(*image);
            QCOMPARE(image->MedianFilter(1, 1, &split, eMode, dblTolerance), 0);
            QCOMPARE(expected->MedianFilter(1, 1, &whole, eMode, dblTolerance), 0);
            QVERIFY(AreEqual(*image, *expected));
        }
    }
}

void tst_MedianFilter::aWindowIsCountedBeyondSixteenBits()
{
    // All samples of a window in one bin: 65,535 at the first radii, 66,049 at the second.
    for (const int nRadiusY : {127, 128}) {
        const ImagePtr image = MakeNoise(40, 30, 1, 1, 15);
        for (int y = 0; y < 30; ++y)
            std::fill_n(image->GetRows()[y], 40, static_cast<unsigned char>(200));
        const ImagePtr original = CopyOf(*image);
        QCOMPARE(MedianOf(*image, 128, nRadiusY), 0);
        QVERIFY(AreEqual(*image, *original));
    }
}

void tst_MedianFilter::theLargestToleranceReachesItsDistance()
{
    const Vantor::Geometry::CRectangle corner(0.0, 0.0, 1.0, 1.0);
    const ImagePtr image = MakeNoise(6, 5, 3, 1, 16);
    const ImagePtr expected = CopyOf(*image);
    QCOMPARE(image->MedianFilter(1, 1, &corner, ERegionMode::Inside, 4096.0), 0);
    QCOMPARE(MedianOf(*expected, 1, 1), 0); // all of it
    QVERIFY(AreEqual(*image, *expected));
}

VANTOR_CORE_TEST_MAIN(tst_MedianFilter)
#include "tst_MedianFilter.moc"
