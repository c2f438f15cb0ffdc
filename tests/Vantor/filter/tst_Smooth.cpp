// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The filters that smooth: Gaussian, unsharp mask, threshold by the mean around.
#include "tests/Vantor/filter/FilterModel.h"
#include "tests/support/TestMain.h"

using namespace FilterModel;

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The mean around a byte with the weights of a Gaussian cut off at 3 sigma.
double Smoothed(const CImage& image, int x, int y, int c, double sigma)
{
    const int nRadius = static_cast<int>(std::ceil(3.0 * sigma));
    double sum = 0.0;
    double weights = 0.0;
    for (int j = -nRadius; j <= nRadius; ++j) {
        for (int i = -nRadius; i <= nRadius; ++i) {
            const double weight = std::exp(-(i * i + j * j) / (2.0 * sigma * sigma));
            sum += weight * ByteAt(image, x + i, y + j, c);
            weights += weight;
        }
    }
    return sum / weights;
}

int GreyAt(const CImage& image, int x, int y)
{
    const auto at = [&](int c) { return ByteAt(image, x, y, c); };
    return image.GetChannel() < 3 ? at(0) : (299 * at(0) + 587 * at(1) + 114 * at(2) + 500) / 1000;
}

double MeanAround(const CImage& image, int x, int y, int radius)
{
    double sum = 0.0;
    for (int j = -radius; j <= radius; ++j) {
        for (int i = -radius; i <= radius; ++i)
            sum += GreyAt(image, x + i, y + j);
    }
    return sum / ((2.0 * radius + 1.0) * (2.0 * radius + 1.0));
}

/// Where a result is more than 1 away from the exact values in the region, or changed outside of it or in
/// alpha.
QString Wrong(const CImage& image, const CImage& result, const Mask& region,
              const std::function<double(int x, int y, int c)>& exact)
{
    const int nChannels = image.GetChannel();
    const int nColors = nChannels % 2 == 0 ? nChannels - 1 : nChannels;
    for (int y = 0; y < image.GetHeight(); ++y) {
        for (int x = 0; x < image.GetWidth(); ++x) {
            for (int c = 0; c < nChannels; ++c) {
                const int nIs = result.GetPixel(x, y)[c];
                const bool bStays = c >= nColors || !region.IsSet(x, y);
                const double expected =
                    bStays ? image.GetPixel(x, y)[c] : std::clamp(exact(x, y, c), 0.0, 255.0);
                if (std::abs(nIs - expected) > (bStays ? 0.0 : 1.0))
                    return QStringLiteral("(%1, %2, %3): %4, not %5")
                        .arg(x)
                        .arg(y)
                        .arg(c)
                        .arg(nIs)
                        .arg(expected);
            }
        }
    }
    return QString();
}
} // namespace

class tst_Smooth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isWithinOneOfTheModelInEveryRegion_data();
    void isWithinOneOfTheModelInEveryRegion();
    void aWideGaussianOfManyStripsIsWithinOneOfTheModel();
    void thresholdByMeanEqualsTheModel_data();
    void thresholdByMeanEqualsTheModel();
    void aFlatImageStaysFlat();
    void whatIsOutOfRangeFailsAndChangesNothing();
    void sixteenBitsAreRefused();
};

void tst_Smooth::isWithinOneOfTheModelInEveryRegion_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<double>("sigma");
    for (int nChannels = 1; nChannels <= 4; ++nChannels) {
        for (const double sigma : {0.1, 0.8, 3.0})
            QTest::addRow("%d channels, sigma %g", nChannels, sigma) << nChannels << sigma;
    }
}

void tst_Smooth::isWithinOneOfTheModelInEveryRegion()
{
    QFETCH(int, channels);
    QFETCH(double, sigma);
    for (const Size& size : {Size{1, 1, 1}, Size{1, 9, 5}, Size{17, 23, 9}, Size{33, 20, 1}}) {
        const ImagePtr image = MakeNoise(size.nWidth, size.nHeight, channels, size.nRowAlignment, 31);
        std::vector<double> vctSmoothed;
        for (int i = 0; i < size.nWidth * size.nHeight * channels; ++i)
            vctSmoothed.push_back(Smoothed(*image, i / channels % size.nWidth, i / channels / size.nWidth,
                                           i % channels, sigma));
        const auto smoothed = [&](int x, int y, int c) {
            return vctSmoothed[static_cast<std::size_t>((y * size.nWidth + x) * channels + c)];
        };
        for (const NamedShape& shape : Shapes(size.nWidth, size.nHeight)) {
            const Mask region = RegionOf(*image, shape.make, ERegionMode::Inside, 0.0);
            const ShapePtr pShape = shape.make(0.0);
            const ImagePtr blurred = CopyOf(*image);
            QCOMPARE(blurred->GaussianBlur(sigma, pShape.get(), ERegionMode::Inside, 0.0), 0);
            QCOMPARE(Wrong(*image, *blurred, region, smoothed), QString());
            const ImagePtr sharp = CopyOf(*image);
            QCOMPARE(sharp->UnsharpMask(sigma, 1.5, pShape.get(), ERegionMode::Inside, 0.0), 0);
            QCOMPARE(Wrong(*image, *sharp, region,
                           [&](int x, int y, int c) {
                               const double v = image->GetPixel(x, y)[c];
                               return v + 1.5 * (v - smoothed(x, y, c));
                           }),
                     QString());
        }
    }
}

void tst_Smooth::aWideGaussianOfManyStripsIsWithinOneOfTheModel()
{
    // Strips are as high as twice the radius, 150 rows here; some pixels on both sides of each
    // seam.
    constexpr double kSigma = 25.0;
    const ImagePtr image = MakeNoise(40, 500, 1, 1, 32);
    const ImagePtr blurred = CopyOf(*image);
    QCOMPARE(blurred->GaussianBlur(kSigma, nullptr, ERegionMode::All, 0.0), 0);
    for (const int y : {0, 149, 150, 151, 299, 300, 449, 450, 499}) {
        for (const int x : {0, 17, 39})
            QVERIFY(std::abs(blurred->GetPixel(x, y)[0] - Smoothed(*image, x, y, 0, kSigma)) <= 1.0);
    }
}

void tst_Smooth::thresholdByMeanEqualsTheModel_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("radius");
    QTest::addColumn<double>("offset");
    QTest::newRow("grey") << 1 << 3 << 7.0;
    QTest::newRow("grey, alpha") << 2 << 1 << -2.5;
    QTest::newRow("RGB") << 3 << 5 << 0.0;
    QTest::newRow("RGBA, wider than the image") << 4 << 25 << 3.0;
    QTest::newRow("no radius") << 1 << 0 << 1.0;
}

void tst_Smooth::thresholdByMeanEqualsTheModel()
{
    QFETCH(int, channels);
    QFETCH(int, radius);
    QFETCH(double, offset);
    const ImagePtr image = MakeNoise(31, 22, channels, 3, 33);
    const ImagePtr modelled = Modelled(*image, [&](const CImage& from, int x, int y, int) {
        const bool bAbove = GreyAt(from, x, y) > MeanAround(from, x, y, radius) - offset;
        return static_cast<unsigned char>(bAbove ? 255 : 0);
    });
    for (const NamedShape& shape : Shapes(31, 22)) {
        const Mask region = RegionOf(*image, shape.make, ERegionMode::Outside, 0.0);
        const ImagePtr result = CopyOf(*image);
        QCOMPARE(result->ThresholdByMean(radius, offset, shape.make(0.0).get(), ERegionMode::Outside, 0.0),
                 0);
        QVERIFY2(AreEqual(*result, *Merged(*image, *modelled, region)), shape.pName);
    }
}

void tst_Smooth::aFlatImageStaysFlat()
{
    for (const int nValue : {0, 1, 128, 255}) {
        CImage image; // without padding
        QCOMPARE(image.Create(300, 200, 3, 8, EImageType::Interleaved, 1), 0);
        std::memset(image.GetData(), nValue, BytesOf(image));
        QCOMPARE(image.GaussianBlur(100.0, nullptr, ERegionMode::All, 0.0), 0);
        QCOMPARE(image.UnsharpMask(100.0, 10.0, nullptr, ERegionMode::All, 0.0), 0);
        const unsigned char* const pData = image.GetData();
        QCOMPARE(std::count(pData, pData + BytesOf(image), nValue), std::ptrdiff_t(BytesOf(image)));
    }
}

void tst_Smooth::whatIsOutOfRangeFailsAndChangesNothing()
{
    const ImagePtr image = MakeNoise(9, 9, 3, 1, 34);
    const ImagePtr result = CopyOf(*image);
    for (const double sigma : {0.09, 100.1, -1.0, kNaN}) {
        QVERIFY(result->GaussianBlur(sigma, nullptr, ERegionMode::All, 0.0) != 0);
        QVERIFY(!result->GetFailureReason().empty());
        QVERIFY(result->UnsharpMask(sigma, 1.0, nullptr, ERegionMode::All, 0.0) != 0);
    }
    for (const double amount : {-0.1, 10.1, kNaN})
        QVERIFY(result->UnsharpMask(1.0, amount, nullptr, ERegionMode::All, 0.0) != 0);
    for (const int nRadius : {-1, 1001})
        QVERIFY(result->ThresholdByMean(nRadius, 0.0, nullptr, ERegionMode::All, 0.0) != 0);
    for (const double offset : {-255.5, 255.5, kNaN})
        QVERIFY(result->ThresholdByMean(1, offset, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(AreEqual(*result, *image));
}

void tst_Smooth::sixteenBitsAreRefused()
{
    CImage image;
    QCOMPARE(image.Create(4, 4, 1, 16, EImageType::Interleaved, 1), 0);
    QVERIFY(image.GaussianBlur(1.0, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(image.UnsharpMask(1.0, 1.0, nullptr, ERegionMode::All, 0.0) != 0);
    QVERIFY(image.ThresholdByMean(1, 0.0, nullptr, ERegionMode::All, 0.0) != 0);
}

VANTOR_CORE_TEST_MAIN(tst_Smooth)
#include "tst_Smooth.moc"
