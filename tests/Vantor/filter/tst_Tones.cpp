// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The filters that look at one pixel only: tones and thresholds.
#include "tests/Vantor/filter/FilterModel.h"
#include "tests/support/TestMain.h"

using namespace FilterModel;

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A filter and what it makes of a byte.
struct Kind {
    Filter filter;
    Value value;
};

int GreyOf(const CImage& image, int x, int y)
{
    const unsigned char* p = image.GetPixel(x, y);
    return image.GetChannel() < 3
               ? p[0]
               : static_cast<int>(std::lround((299 * p[0] + 587 * p[1] + 114 * p[2]) / 1000.0));
}

Kind KindOf(const QString& name)
{
    const auto at = [](const CImage& image, int x, int y, int c) { return image.GetPixel(x, y)[c]; };
    if (name == QLatin1String("invert"))
        return {[](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
                    return image.Invert(region, mode, tolerance);
                },
                [=](const CImage& image, int x, int y, int c) {
                    return static_cast<unsigned char>(255 - at(image, x, y, c));
                }};
    if (name == QLatin1String("tones"))
        return {[](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
                    return image.AdjustTones(0.1, 1.7, 2.2, region, mode, tolerance);
                },
                [=](const CImage& image, int x, int y, int c) {
                    const double v = (at(image, x, y, c) / 255.0 - 0.5) * 1.7 + 0.6;
                    const double cut = v < 0.0 ? 0.0 : v > 1.0 ? 1.0 : v;
                    return static_cast<unsigned char>(std::lround(255.0 * std::pow(cut, 1.0 / 2.2)));
                }};
    return {[](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
                return image.Threshold(101, region, mode, tolerance);
            },
            [](const CImage& image, int x, int y, int) {
                return static_cast<unsigned char>(GreyOf(image, x, y) > 101 ? 255 : 0);
            }};
}

/// The value for which the sum of the squared distances from the means of both classes is least.
int PlainOtsu(const CImage& image, const Mask& region)
{
    int nBest = 0;
    double dblBest = std::numeric_limits<double>::infinity();
    for (int nValue = 0; nValue < 255; ++nValue) {
        double dblCount[2] = {}, dblSum[2] = {}, dblSquares[2] = {};
        for (int y = 0; y < image.GetHeight(); ++y) {
            for (int x = 0; x < image.GetWidth(); ++x) {
                if (!region.IsSet(x, y))
                    continue;
                const int nGrey = GreyOf(image, x, y);
                const int nClass = nGrey > nValue;
                dblCount[nClass] += 1.0;
                dblSum[nClass] += nGrey;
                dblSquares[nClass] += static_cast<double>(nGrey) * nGrey;
            }
        }
        if (dblCount[0] == 0.0 || dblCount[1] == 0.0)
            continue;
        const double within = dblSquares[0] - dblSum[0] * dblSum[0] / dblCount[0] + dblSquares[1] -
                              dblSum[1] * dblSum[1] / dblCount[1];
        if (within < dblBest * (1.0 - 1e-12)) {
            dblBest = within;
            nBest = nValue;
        }
    }
    return nBest;
}
} // namespace

class tst_Tones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalsTheModelInEveryRegion_data();
    void equalsTheModelInEveryRegion();
    void otsuPartsTheGreysOfTheRegion_data();
    void otsuPartsTheGreysOfTheRegion();
    void aSingleGreyIsWhiteUnlessItIsBlack();
    void twoThreadsEqualOne();
    void neutralTonesChangeNothing();
    void whatIsOutOfRangeFailsAndChangesNothing();
    void sixteenBitsAreRefused();
};

void tst_Tones::equalsTheModelInEveryRegion_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("channels");
    for (const char* pKind : {"invert", "tones", "threshold"}) {
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            QTest::addRow("%s, %d channels", pKind, nChannels) << QString::fromLatin1(pKind) << nChannels;
    }
}

void tst_Tones::equalsTheModelInEveryRegion()
{
    QFETCH(QString, kind);
    QFETCH(int, channels);
    const Kind tones = KindOf(kind);
    int nTurn = channels;
    for (const Size& size : kSizes) {
        const ImagePtr image = MakeNoise(size.nWidth, size.nHeight, channels, size.nRowAlignment, 23);
        QCOMPARE(FirstDifference(*image, tones.filter, tones.value, {0.0, 1.5, -1.5}, nTurn++), QString());
    }
}

void tst_Tones::otsuPartsTheGreysOfTheRegion_data()
{
    QTest::addColumn<int>("channels");
    for (int nChannels = 1; nChannels <= 4; ++nChannels)
        QTest::addRow("%d channels", nChannels) << nChannels;
}

void tst_Tones::otsuPartsTheGreysOfTheRegion()
{
    QFETCH(int, channels);
    const ImagePtr image = MakeNoise(40, 31, channels, 1, 24);
    for (const NamedShape& shape : Shapes(40, 31)) {
        const Mask region = RegionOf(*image, shape.make, ERegionMode::Inside, 0.0);
        const int nValue = PlainOtsu(*image, region);
        const ImagePtr expected = Filtered(*image, region, [&](const CImage& from, int x, int y, int) {
            return static_cast<unsigned char>(GreyOf(from, x, y) > nValue ? 255 : 0);
        });
        const ImagePtr result = CopyOf(*image);
        QCOMPARE(result->ThresholdByOtsu(shape.make(0.0).get(), ERegionMode::Inside, 0.0), 0);
        QVERIFY2(AreEqual(*result, *expected), shape.pName);
    }
}

void tst_Tones::aSingleGreyIsWhiteUnlessItIsBlack()
{
    for (const int nGrey : {0, 1, 254, 255}) {
        CImage image;
        QCOMPARE(image.Create(3, 2, 1, 8, EImageType::Interleaved, 1), 0);
        std::memset(image.GetData(), nGrey, 6);
        QCOMPARE(image.ThresholdByOtsu(nullptr, ERegionMode::All, 0.0), 0);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(int(image.GetData()[i]), nGrey > 0 ? 255 : 0);
    }
}

void tst_Tones::twoThreadsEqualOne()
{
    const ImagePtr image = MakeNoise(1801, 2400, 3, 1, 25);
    const ImagePtr result = CopyOf(*image);
    QCOMPARE(result->Invert(nullptr, ERegionMode::All, 0.0), 0);
    const Mask all = RegionOf(
        *image, [](double) { return ShapePtr(); }, ERegionMode::All, 0.0);
    QVERIFY(AreEqual(*result, *Filtered(*image, all, KindOf(QStringLiteral("invert")).value)));
}

void tst_Tones::neutralTonesChangeNothing()
{
    const ImagePtr image = MakeNoise(64, 64, 4, 1, 26);
    const ImagePtr result = CopyOf(*image);
    QCOMPARE(result->AdjustTones(0.0, 1.0, 1.0, nullptr, ERegionMode::All, 0.0), 0);
    QVERIFY(AreEqual(*result, *image));
}

void tst_Tones::whatIsOutOfRangeFailsAndChangesNothing()
{
    const ImagePtr image = MakeNoise(9, 9, 3, 1, 27);
    const ImagePtr result = CopyOf(*image);
    const double brightness[] = {-1.01, 1.01, kNaN};
    const double contrast[] = {-0.01, 10.01, kNaN};
    const double gamma[] = {0.09, 10.01, kNaN};
    for (int i = 0; i < 3; ++i) {
        QVERIFY(result->AdjustTones(brightness[i], 1.0, 1.0, nullptr, ERegionMode::All, 0.0) != 0);
        QVERIFY(result->AdjustTones(0.0, contrast[i], 1.0, nullptr, ERegionMode::All, 0.0) != 0);
        QVERIFY(result->AdjustTones(0.0, 1.0, gamma[i], nullptr, ERegionMode::All, 0.0) != 0);
        QVERIFY(!result->GetFailureReason().empty());
    }
    QVERIFY(result->Threshold(-1, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(result->Threshold(256, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(AreEqual(*result, *image));
    QCOMPARE(result->Threshold(255, nullptr, ERegionMode::All, 0.0), 0); // nothing is above 255
    QCOMPARE(int(result->GetData()[0]), 0);
}

void tst_Tones::sixteenBitsAreRefused()
{
    CImage image;
    QCOMPARE(image.Create(4, 4, 1, 16, EImageType::Interleaved, 1), 0);
    QVERIFY(image.Invert(nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(image.Threshold(1, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(image.ThresholdByOtsu(nullptr, ERegionMode::All, 0.0) != 0);
}

VANTOR_CORE_TEST_MAIN(tst_Tones)
#include "tst_Tones.moc"
