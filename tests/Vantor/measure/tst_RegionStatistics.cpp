// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/filter/FilterModel.h"
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>

#include <limits>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

Q_DECLARE_METATYPE(MeasureModel::ShapePtr)

namespace
{
/// A host's own region.
class CRuns : public CGeometry
{
public:
    explicit CRuns(std::vector<SPixelRun> runs) : m_vctRuns(std::move(runs)) {}
    EGeometryType GetType() const override { return EGeometryType_Host; }
    CRectangle GetBoundingRectangle() const override { return {0, 0, 1, 1}; }
    void MoveTopLeftTo(const CPoint<double>&) override {}
    int GetPoints(CPointList&, CPointList&) const override { return 0; }
    bool Contains(const CPoint<double>&) const override { return false; }
    std::vector<SPixelRun> GetPixelRuns(int, int) const override { return m_vctRuns; }
    std::shared_ptr<CGeometry> Clone() const override { return std::make_shared<CRuns>(*this); }

private:
    std::vector<SPixelRun> m_vctRuns;
};

void AddLayouts()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bits");
    for (int nBits : {8, 16}) {
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            QTest::addRow("%d channels of %d bits", nChannels, nBits) << nChannels << nBits;
    }
}

ImagePtr MakeFlat(int width, int height, int channels, int bits, unsigned char byte)
{
    ImagePtr image = MakeNoise(width, height, channels, bits, 1);
    std::fill_n(image->GetData(),
                static_cast<std::size_t>(image->GetStride()) * static_cast<std::size_t>(height), byte);
    return image;
}
} // namespace

class tst_RegionStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void regionsEqualTheModel_data() { AddLayouts(); }
    void regionsEqualTheModel();
    void rowsOfEveryLengthEqualTheModelWithEveryInstructionSet_data() { AddLayouts(); }
    void rowsOfEveryLengthEqualTheModelWithEveryInstructionSet();
    void longRowsDoNotOverflow_data() { AddLayouts(); }
    void longRowsDoNotOverflow();
    void farColumnsAndRowsCountInFull();
    void largeRegionsBetweenSmallOnesEqualTheModel_data();
    void largeRegionsBetweenSmallOnesEqualTheModel();
    void momentsComeWithoutHistogram();
    void severalRegionsAreEachMeasuredAlone();
    void aMedianBetweenTwoValuesIsTheUpperOne();
    void theModeOfATieIsTheLowest();
    void onePixelHasNoDeviation();
    void blackPixelsHaveNoCentreOfMass();
    void regionsWithoutPixelsHaveNoValues_data();
    void regionsWithoutPixelsHaveNoValues();
    void anEmptyImageIsAFailure();
    void aRegionOutOfOrderFailsAlone();
    void aPolygonOfAMillionCornersIsMeasured();
    void cancellingEndsIt();
};

void tst_RegionStatistics::regionsEqualTheModel()
{
    QFETCH(int, channels);
    QFETCH(int, bits);
    std::mt19937 random(static_cast<unsigned>(10 * channels + bits));
    for (int nAlignment : {1, 64}) {
        const ImagePtr image = MakeNoise(171, 43, channels, bits, random(), nAlignment);
        QString difference = Difference(MeasureRegion(*image, nullptr, EStatistics::Full), *image, nullptr);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        for (int i = 0; i < 60; ++i) {
            const ShapePtr shape = RandomShape(random, image->GetWidth(), image->GetHeight());
            difference =
                Difference(MeasureRegion(*image, shape.get(), EStatistics::Full), *image, shape.get());
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("shape %1: %2").arg(i).arg(difference)));
        }
    }
}

void tst_RegionStatistics::rowsOfEveryLengthEqualTheModelWithEveryInstructionSet()
{
    QFETCH(int, channels);
    QFETCH(int, bits);
    const ImagePtr image = MakeNoise(140, 4, channels, bits, 5);
    const int nCalls = FilterModel::ForEachInstructionSet([&](const char* pName) {
        for (int nLength = 1; nLength <= 137; nLength += nLength < 70 ? 1 : 11) {
            const CRectangle shape(3, 1, nLength, 2);
            const QString difference =
                Difference(MeasureRegion(*image, &shape, EStatistics::Full), *image, &shape);
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1, %2 pixels: %3")
                                                          .arg(QLatin1String(pName))
                                                          .arg(nLength)
                                                          .arg(difference)));
        }
    });
    QVERIFY(nCalls >= 1);
}

void tst_RegionStatistics::longRowsDoNotOverflow()
{
    QFETCH(int, channels);
    QFETCH(int, bits);
    // The largest values: lanes that are not emptied in time overflow.
    const int nWidth = 700001;
    const ImagePtr image = MakeFlat(nWidth, 2, channels, bits, 255);
    const double value = bits == 8 ? 255.0 : 65535.0;
    const auto check = [&](EStatistics what, const char* pName) {
        const SRegionStatistics all = MeasureRegion(*image, nullptr, what);
        QCOMPARE(all.count, std::uint64_t(2 * nWidth));
        std::vector<SChannelStatistics> channelsAndGreys = all.channels;
        if (channels >= 3) {
            channelsAndGreys.push_back(*all.grey);
            channelsAndGreys.push_back(*all.weightedGrey);
        }
        for (const SChannelStatistics& is : channelsAndGreys) {
            QVERIFY2(is.min == value && is.max == value && is.mean == value && is.deviation == 0.0, pName);
            if (what == EStatistics::Full)
                QVERIFY2(is.median == value && is.mode == value && is.histogram.back() == all.count, pName);
            QCOMPARE(is.sum, value * 2.0 * nWidth);
            QCOMPARE(is.centreOfMass.x, nWidth / 2.0);
            QCOMPARE(is.centreOfMass.y, 1.0);
        }
    };
    check(EStatistics::Full, "the best one");
    FilterModel::ForEachInstructionSet([&](const char* pName) { check(EStatistics::Moments, pName); });
}

void tst_RegionStatistics::farColumnsAndRowsCountInFull()
{
    for (int nBits : {8, 16}) {
        const ImagePtr wide = MakeFlat(3000000, 1, 1, nBits, 200);
        const CRectangle right(2999990, 0, 10, 1);
        QCOMPARE(MeasureRegion(*wide, &right, EStatistics::Moments).channels[0].centreOfMass.x, 2999995.0);
        const ImagePtr high = MakeFlat(1, 3000000, 1, nBits, 200);
        const CRectangle bottom(0, 2999990, 1, 10);
        QCOMPARE(MeasureRegion(*high, &bottom, EStatistics::Moments).channels[0].centreOfMass.y, 2999995.0);
    }
}

void tst_RegionStatistics::largeRegionsBetweenSmallOnesEqualTheModel_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bits");
    QTest::newRow("grey") << 1 << 8;
    QTest::newRow("colours") << 3 << 8;
    QTest::newRow("colours of 16 bits") << 3 << 16;
}

void tst_RegionStatistics::largeRegionsBetweenSmallOnesEqualTheModel()
{
    QFETCH(int, channels);
    QFETCH(int, bits);
    // An odd number of pixels, in rows that do not fill whole pieces.
    const ImagePtr image = MakeNoise(731, 371, channels, bits, 23);
    const CRectangle small(5, 7, 31, 9), large(3, 0, 727, 371);
    const std::vector<SRegionStatistics> all =
        MeasureRegions(*image, {&small, &large, &small, &large}, EStatistics::Full);
    QCOMPARE(all.size(), std::size_t(4));
    QString difference = Difference(all[0], *image, &small);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    difference = Difference(all[1], *image, &large);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    for (std::size_t i = 2; i < 4; ++i) {
        for (std::size_t c = 0; c < all[i].channels.size(); ++c)
            QCOMPARE(all[i].channels[c].histogram, all[i - 2].channels[c].histogram);
        if (channels >= 3) {
            QCOMPARE(all[i].grey->histogram, all[i - 2].grey->histogram);
            QCOMPARE(all[i].weightedGrey->histogram, all[i - 2].weightedGrey->histogram);
        }
    }
}

void tst_RegionStatistics::momentsComeWithoutHistogram()
{
    const ImagePtr image = MakeNoise(50, 20, 3, 8, 7);
    const SRegionStatistics moments = MeasureRegion(*image, nullptr, EStatistics::Moments);
    const QString difference = Difference(moments, *image, nullptr);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(moments.channels[0].histogram.empty() && moments.grey->histogram.empty());
    QVERIFY(std::isnan(moments.channels[0].median) && std::isnan(moments.weightedGrey->mode));
}

void tst_RegionStatistics::severalRegionsAreEachMeasuredAlone()
{
    for (int nBits : {8, 16}) {
        const ImagePtr image = MakeNoise(90, 60, 4, nBits, 3);
        std::mt19937 random(11);
        std::vector<ShapePtr> shapes;
        std::vector<const CGeometry*> regions{nullptr};
        for (int i = 0; i < 40; ++i) {
            shapes.push_back(RandomShape(random, 90, 60));
            regions.push_back(shapes.back().get());
        }
        const std::vector<SRegionStatistics> all = MeasureRegions(*image, regions, EStatistics::Full);
        QCOMPARE(all.size(), regions.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            const QString difference = Difference(all[i], *image, regions[i]);
            QVERIFY2(difference.isEmpty(), qPrintable(difference));
        }
    }
    QVERIFY(MeasureRegions(*MakeNoise(9, 9, 1, 8, 1), {}, EStatistics::Full).empty());
}

void tst_RegionStatistics::aMedianBetweenTwoValuesIsTheUpperOne()
{
    const ImagePtr image = MakeFlat(4, 1, 1, 8, 10);
    image->GetPixel(2, 0)[0] = image->GetPixel(3, 0)[0] = 20;
    QCOMPARE(MeasureRegion(*image, nullptr, EStatistics::Full).channels[0].median, 20.0);
}

void tst_RegionStatistics::theModeOfATieIsTheLowest()
{
    const ImagePtr image = MakeFlat(4, 1, 1, 8, 90);
    image->GetPixel(0, 0)[0] = image->GetPixel(3, 0)[0] = 20;
    QCOMPARE(MeasureRegion(*image, nullptr, EStatistics::Full).channels[0].mode, 20.0);
}

void tst_RegionStatistics::onePixelHasNoDeviation()
{
    const ImagePtr image = MakeNoise(5, 5, 3, 16, 3);
    const CRectangle one(2, 2, 1, 1);
    const SRegionStatistics is = MeasureRegion(*image, &one, EStatistics::Moments);
    QCOMPARE(is.count, std::uint64_t(1));
    QCOMPARE(is.channels[1].deviation, 0.0);
    QCOMPARE(is.grey->deviation, 0.0);
}

void tst_RegionStatistics::blackPixelsHaveNoCentreOfMass()
{
    const SRegionStatistics is = MeasureRegion(*MakeFlat(5, 5, 1, 8, 0), nullptr, EStatistics::Moments);
    QVERIFY(std::isnan(is.channels[0].centreOfMass.x) && std::isnan(is.channels[0].centreOfMass.y));
    QCOMPARE(is.centroid.x, 2.5);
    QCOMPARE(is.channels[0].mean, 0.0);
}

void tst_RegionStatistics::regionsWithoutPixelsHaveNoValues_data()
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<ShapePtr>("shape");
    QTest::newRow("outside") << ShapePtr(std::make_shared<CRectangle>(100, 100, 5, 5));
    QTest::newRow("empty") << ShapePtr(std::make_shared<CPolygon>());
    QTest::newRow("empty array") << ShapePtr(std::make_shared<CGeometryArray>());
    QTest::newRow("thin") << ShapePtr(std::make_shared<CRectangle>(1.6, 1, 0.2, 5));
    QTest::newRow("not a number") << ShapePtr(PolygonOf({{1, 1}, {kNaN, 5}, {9, 9}}));
    QTest::newRow("infinite") << ShapePtr(PolygonOf({{1, 1}, {kInfinity, 5}, {9, 9}}));
}

void tst_RegionStatistics::regionsWithoutPixelsHaveNoValues()
{
    QFETCH(ShapePtr, shape);
    const SRegionStatistics is = MeasureRegion(*MakeNoise(20, 20, 3, 8, 2), shape.get(), EStatistics::Full);
    QCOMPARE(is.failure, std::string());
    QCOMPARE(is.count, std::uint64_t(0));
    QVERIFY(std::isnan(is.centroid.x) && std::isnan(is.channels[2].mean) && std::isnan(is.grey->min));
    QVERIFY(std::isnan(is.channels[0].median) && std::isnan(is.channels[0].deviation));
    QCOMPARE(is.channels[0].histogram, std::vector<std::uint32_t>(256, 0));
    QCOMPARE(is.channels[0].sum, 0.0);
}

void tst_RegionStatistics::anEmptyImageIsAFailure()
{
    const SRegionStatistics is = MeasureRegion(CImage(), nullptr, EStatistics::Full);
    QCOMPARE(is.failure, std::string("The image is empty."));
    QVERIFY(is.channels.empty());
}

void tst_RegionStatistics::aRegionOutOfOrderFailsAlone()
{
    const ImagePtr image = MakeNoise(20, 20, 3, 8, 2);
    const CRuns outside({{3, 15, 25}}), backwards({{3, 1, 2}, {2, 1, 2}}), good({{2, 1, 2}, {3, 1, 9}});
    const auto all = MeasureRegions(*image, {&outside, &good, &backwards}, EStatistics::Full);
    QCOMPARE(all[0].failure, std::string("The pixels of the region are not in order."));
    QCOMPARE(all[2].failure, all[0].failure);
    QVERIFY(all[0].channels.empty());
    const QString difference = Difference(all[1], *image, &good);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RegionStatistics::aPolygonOfAMillionCornersIsMeasured()
{
    std::vector<SPlace> places;
    for (int i = 0; i < 1000000; ++i)
        places.push_back({50 + 40 * std::cos(i * 6.283185307179586 / 1e6),
                          50 + 40 * std::sin(i * 6.283185307179586 / 1e6)});
    const ShapePtr shape = PolygonOf(places);
    const ImagePtr image = MakeNoise(100, 100, 1, 8, 2);
    const QString difference =
        Difference(MeasureRegion(*image, shape.get(), EStatistics::Full), *image, shape.get());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RegionStatistics::cancellingEndsIt()
{
    Vantor::CProgress progress;
    const Vantor::CProgress::CScope scope(&progress);
    QVERIFY(progress.Cancel());
    const auto all = MeasureRegions(*MakeNoise(20, 20, 3, 8, 2), {nullptr, nullptr}, EStatistics::Full);
    QCOMPARE(all.size(), std::size_t(2));
    QCOMPARE(all[1].failure, std::string(Vantor::kCancelled));
    QVERIFY(all[1].channels.empty());
}

VANTOR_CORE_TEST_MAIN(tst_RegionStatistics)
#include "tst_RegionStatistics.moc"
