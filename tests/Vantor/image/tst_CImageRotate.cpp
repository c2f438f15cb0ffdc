// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <utility>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERotationMode;
using Point = Vantor::Geometry::CPoint<double>;

namespace
{
constexpr double kPi = 3.14159265358979323846;
constexpr ERotationMode kKeep = ERotationMode::KeepCanvas;
constexpr ERotationMode kGrow = ERotationMode::GrowCanvas;
/// Sizes around the edges of blocks and tiles.
const std::pair<int, int> kSizes[] = {{1, 1},   {1, 9},    {9, 1},     {7, 8},   {8, 8},
                                      {17, 23}, {129, 65}, {140, 200}, {256, 72}};

Point MiddleOf(const CImage& image)
{
    return {image.GetWidth() * 0.5, image.GetHeight() * 0.5};
}

std::shared_ptr<CImage> CopyOf(const CImage& image)
{
    auto copy = std::make_shared<CImage>();
    return copy->CopyFrom(&image) == 0 ? copy : nullptr;
}

/// The same size and the same bytes, those between the rows included.
bool AreEqual(const CImage& a, const CImage& b)
{
    return a.GetWidth() == b.GetWidth() && a.GetHeight() == b.GetHeight() &&
           a.GetChannel() == b.GetChannel() && a.GetStride() == b.GetStride() &&
           std::memcmp(a.GetData(), b.GetData(), static_cast<std::size_t>(a.GetStride() * a.GetHeight())) ==
               0;
}

/// Whether every pixel (x, y) of the image has the bytes that the source has at `from`, or the fill value
/// where that lies outside.
bool Follows(const CImage& image, const CImage& source, int fill,
             const std::function<std::pair<int, int>(int x, int y)>& from)
{
    for (int y = 0; y < image.GetHeight(); ++y) {
        for (int x = 0; x < image.GetWidth(); ++x) {
            const auto place = from(x, y);
            const unsigned char* pFrom = source.GetPixel(place.first, place.second);
            for (int c = 0; c < image.GetChannel(); ++c) {
                if (image.GetPixel(x, y)[c] != (pFrom ? pFrom[c] : fill))
                    return false;
            }
        }
    }
    return true;
}

/// Sample c of a pixel, as a number.
double SampleAt(const CImage& image, int x, int y, int c)
{
    const unsigned char* pPixel = image.GetPixel(x, y);
    if (image.GetBitDepth() == 8)
        return pPixel[c];
    unsigned short nValue = 0;
    std::memcpy(&nValue, pPixel + 2 * c, sizeof nValue);
    return nValue;
}

/// Bilinear value of sample c at a point of the source, which lies within it.
double ValueAt(const CImage& source, double x, double y, int c)
{
    const double u = std::min(std::max(x - 0.5, 0.0), source.GetWidth() - 1.0);
    const double v = std::min(std::max(y - 0.5, 0.0), source.GetHeight() - 1.0);
    double sum = 0.0;
    for (int j = static_cast<int>(v); j <= std::min(static_cast<int>(v) + 1, source.GetHeight() - 1); ++j) {
        for (int i = static_cast<int>(u); i <= std::min(static_cast<int>(u) + 1, source.GetWidth() - 1); ++i)
            sum += (1.0 - std::abs(u - i)) * (1.0 - std::abs(v - j)) * SampleAt(source, i, j, c);
    }
    return sum;
}

/// Compares with the plain formula of a rotation about `pivot` that brings it to `place` on the canvas. A
/// canvas that is large is looked at in places only: in every step-th pixel of every row.
QString DifferenceFromModel(const CImage& image, const CImage& source, const Point& pivot, const Point& place,
                            double angle, int fill, int step = 1)
{
    const double tolerance = 0.55; // a half is rounding
    for (int y = 0; y < image.GetHeight(); ++y) {
        for (int x = y % step; x < image.GetWidth(); x += step) {
            const double dx = x + 0.5 - place.x(), dy = y + 0.5 - place.y();
            const double u = pivot.x() + std::cos(angle) * dx + std::sin(angle) * dy;
            const double v = pivot.y() - std::sin(angle) * dx + std::cos(angle) * dy;
            const double rim = std::min({u, v, source.GetWidth() - u, source.GetHeight() - v});
            for (int c = 0; c < image.GetChannel() && std::abs(rim) > 1e-9; ++c) {
                const double expected =
                    rim > 0.0 ? ValueAt(source, u, v, c) : fill * (image.GetBitDepth() == 8 ? 1 : 257);
                if (std::abs(SampleAt(image, x, y, c) - expected) > tolerance)
                    return QStringLiteral("(%1, %2): %3 instead of %4")
                        .arg(x)
                        .arg(y)
                        .arg(SampleAt(image, x, y, c))
                        .arg(expected);
            }
        }
    }
    return {};
}

/// An image whose every byte is by chance, the hardest for an interpolation; the last one of a row is full.
std::shared_ptr<CImage> NoiseImage(int width, int height, int channels, int bitDepth)
{
    auto image = std::make_shared<CImage>();
    if (image->Create(width, height, channels, bitDepth, EImageType::Interleaved, 1) != 0)
        return nullptr;
    std::mt19937 random(7);
    for (int y = 0; y < height; ++y) {
        for (int i = 0; i < width * channels * bitDepth / 8; ++i)
            image->GetRows()[y][i] = static_cast<unsigned char>(random() % 5 == 0 ? 255 : random() % 3 * 127);
    }
    return image;
}
} // namespace

class tst_CImageRotate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positiveIsClockwiseOnTheScreen()
    {
        CImage image;
        QCOMPARE(image.Create(101, 101, 1, 8, EImageType::Interleaved, 1), 0);
        image.GetPixel(90, 50)[0] = 255; // at the right
        const auto turned = CopyOf(image);
        QCOMPARE(turned->Rotate(MiddleOf(image), kPi / 2, 0.0, kKeep), 0);
        QCOMPARE(int(turned->GetPixel(50, 90)[0]), 255); // goes to the bottom
        const auto tilted = CopyOf(image);
        QCOMPARE(tilted->Rotate(MiddleOf(image), kPi / 6, 0.0, kKeep), 0);
        int nBelow = 0;
        for (int y = 51; y < 101; ++y)
            for (int x = 51; x < 101; ++x)
                nBelow += tilted->GetPixel(x, y)[0];
        QVERIFY(nBelow > 128);
    }

    void aQuarterTurnChangesWidthAndHeightAndIsExact()
    {
        for (const auto& [nWidth, nHeight] : kSizes) {
            for (int nChannels = 1; nChannels <= 4; ++nChannels) {
                const auto source = MakeTestImage(nWidth, nHeight, nChannels);
                const int w = nWidth, h = nHeight;
                const auto right = CopyOf(*source);
                QCOMPARE(right->Rotate(MiddleOf(*source), kPi / 2, 0.0, kGrow), 0);
                QCOMPARE(right->GetWidth(), h);
                QCOMPARE(right->GetHeight(), w);
                QVERIFY(Follows(*right, *source, 0, [h](int x, int y) { return std::pair(y, h - 1 - x); }));
                const auto left = CopyOf(*source);
                QCOMPARE(left->Rotate(MiddleOf(*source), -kPi / 2, 0.0, kGrow), 0);
                QVERIFY(Follows(*left, *source, 0, [w](int x, int y) { return std::pair(w - 1 - y, x); }));
                const auto half = CopyOf(*source);
                QCOMPARE(half->Rotate(MiddleOf(*source), kPi, 0.0, kGrow), 0);
                QVERIFY(Follows(*half, *source, 0,
                                [w, h](int x, int y) { return std::pair(w - 1 - x, h - 1 - y); }));
            }
        }
    }

    void leftThenRightGivesBackTheImage()
    {
        for (const auto& [nWidth, nHeight] : kSizes) {
            for (int nChannels = 1; nChannels <= 4; ++nChannels) {
                const auto source = MakeTestImage(nWidth, nHeight, nChannels);
                const auto image = CopyOf(*source);
                QCOMPARE(image->Rotate(MiddleOf(*image), -kPi / 2, 0.0, kGrow), 0);
                QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 2, 0.0, kGrow), 0);
                QVERIFY(AreEqual(*image, *source));
            }
        }
    }

    void sixteenBitPixelsTurnToo()
    {
        for (int nChannels = 1; nChannels <= 4; ++nChannels) {
            CImage source;
            QCOMPARE(source.Create(37, 21, nChannels, 16, EImageType::Interleaved, 3), 0);
            for (int y = 0; y < 21; ++y)
                for (int x = 0; x < 37; ++x)
                    for (int n = 0; n < 2 * nChannels; ++n)
                        source.GetPixel(x, y)[n] = TestImageByte(x, y, n);
            const auto image = CopyOf(source);
            QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 2, 0.0, kGrow), 0);
            for (int y = 0; y < 37; ++y)
                for (int x = 0; x < 21; ++x)
                    QCOMPARE(std::memcmp(image->GetPixel(x, y), source.GetPixel(y, 20 - x),
                                         static_cast<std::size_t>(2 * nChannels)),
                             0);
            QCOMPARE(image->Rotate(MiddleOf(*image), -kPi / 2, 0.0, kGrow), 0);
            QVERIFY(AreEqual(*image, source));
        }
    }

    void sixteenBitSamplesAreInterpolatedAsNumbers()
    {
        CImage image;
        QCOMPARE(image.Create(9, 9, 1, 16, EImageType::Interleaved, 3), 0);
        const unsigned short nValue = 0x12FF;
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 9; ++x)
                std::memcpy(image.GetPixel(x, y), &nValue, sizeof nValue);
        QCOMPARE(image.Rotate(MiddleOf(image), 0.4, 0.0, kKeep), 0);
        QCOMPARE(std::memcmp(image.GetPixel(4, 4), &nValue, sizeof nValue), 0);
        QCOMPARE(std::memcmp(image.GetPixel(3, 5), &nValue, sizeof nValue), 0);
    }

    void anglesWithinTheToleranceAndBeyondATurnAreQuarterTurns()
    {
        const auto source = MakeTestImage(17, 23, 3);
        const auto expected = CopyOf(*source);
        QCOMPARE(expected->Rotate(MiddleOf(*source), kPi / 2, 0.0, kGrow), 0);
        for (double angle : {kPi / 2 + 5e-10, kPi / 2 - 5e-10, 2.5 * kPi, -1.5 * kPi, 40.5 * kPi}) {
            const auto image = CopyOf(*source);
            QCOMPARE(image->Rotate(MiddleOf(*source), angle, 0.0, kGrow), 0);
            QVERIFY(AreEqual(*image, *expected));
        }
        for (double angle : {0.0, 1e-10, 2 * kPi, -4 * kPi}) {
            const auto image = CopyOf(*source);
            QCOMPARE(image->Rotate(Point(3.0, 4.0), angle, 99.0, kKeep), 0);
            QVERIFY(AreEqual(*image, *source));
        }
    }

    void onAKeptCanvasAQuarterTurnMovesWholePixelsAndFillsTheRest()
    {
        // The centre and the canvas agree with the pixel grid here: no half pixels.
        for (const auto& [nX, nY] : {std::pair(10, 8), std::pair(3, 5), std::pair(-20, 40)}) {
            for (int nChannels = 1; nChannels <= 4; ++nChannels) {
                const auto source = MakeTestImage(20, 16, nChannels);
                const int cx = nX, cy = nY;
                const auto right = CopyOf(*source);
                QCOMPARE(right->Rotate(Point(cx, cy), kPi / 2, 77.0, kKeep), 0);
                QCOMPARE(right->GetWidth(), 20);
                QVERIFY(Follows(*right, *source, 77,
                                [=](int x, int y) { return std::pair(cx + y - cy, cy - (x - cx) - 1); }));
                const auto left = CopyOf(*source);
                QCOMPARE(left->Rotate(Point(cx, cy), -kPi / 2, 77.0, kKeep), 0);
                QVERIFY(Follows(*left, *source, 77,
                                [=](int x, int y) { return std::pair(cx - (y - cy) - 1, cy + x - cx); }));
                const auto half = CopyOf(*source);
                QCOMPARE(half->Rotate(Point(cx, cy), kPi, 77.0, kKeep), 0);
                QVERIFY(Follows(*half, *source, 77,
                                [=](int x, int y) { return std::pair(2 * cx - 1 - x, 2 * cy - 1 - y); }));
            }
        }
    }

    void onAKeptCanvasRightThenLeftGivesBackWhatWasNotCutOff()
    {
        for (const auto& [nWidth, nHeight] : {std::pair(20, 17), std::pair(17, 20), std::pair(19, 19)}) {
            const auto source = MakeTestImage(nWidth, nHeight, 3);
            const auto image = CopyOf(*source);
            QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 2, 0.0, kKeep), 0);
            QCOMPARE(image->Rotate(MiddleOf(*image), -kPi / 2, 0.0, kKeep), 0);
            for (int y = 3; y < nHeight - 3; ++y)
                for (int x = 3; x < nWidth - 3; ++x)
                    QCOMPARE(std::memcmp(image->GetPixel(x, y), source->GetPixel(x, y), 3), 0);
        }
    }

    void otherAnglesAgreeWithABilinearModel()
    {
        for (double angle : {0.3, -1.1, 2.0, 3.0, kPi / 4, kPi / 2 + 1e-6}) {
            for (int nChannels = 1; nChannels <= 4; ++nChannels) {
                for (const auto& [nWidth, nHeight] : {std::pair(13, 8), std::pair(1, 7), std::pair(9, 9)}) {
                    const auto source = MakeTestImage(nWidth, nHeight, nChannels);
                    const auto kept = CopyOf(*source);
                    QCOMPARE(kept->Rotate(Point(4.25, 1.5), angle, 200.0, kKeep), 0);
                    QCOMPARE(kept->GetWidth(), nWidth);
                    QCOMPARE(kept->GetHeight(), nHeight);
                    QCOMPARE(
                        DifferenceFromModel(*kept, *source, Point(4.25, 1.5), Point(4.25, 1.5), angle, 200),
                        QString());
                    const auto grown = CopyOf(*source);
                    QCOMPARE(grown->Rotate(Point(4.25, 1.5), angle, 200.0, kGrow), 0);
                    QCOMPARE(
                        DifferenceFromModel(*grown, *source, MiddleOf(*source), MiddleOf(*grown), angle, 200),
                        QString());
                }
            }
        }
    }

    void samplesOf16BitsAgreeWithTheModelToo()
    {
        for (double angle : {0.3, -2.0}) {
            for (int nChannels = 1; nChannels <= 4; ++nChannels) {
                const auto source = NoiseImage(61, 47, nChannels, 16);
                const auto image = CopyOf(*source);
                QCOMPARE(image->Rotate(Point(20.0, 30.5), angle, 200.0, kKeep), 0);
                QCOMPARE(
                    DifferenceFromModel(*image, *source, Point(20.0, 30.5), Point(20.0, 30.5), angle, 200),
                    QString());
            }
        }
    }

    void largeImagesAgreeWithTheModelAtEveryAngle()
    {
        // So large that two threads share the work, and wider than the strips that it is done in.
        for (const auto& [angle, nChannels] :
             {std::pair(0.001, 3), std::pair(0.8, 4), std::pair(1.5, 1), std::pair(-3.0, 2)}) {
            const auto source = NoiseImage(3001, 2003, nChannels, 8);
            const auto image = CopyOf(*source);
            QCOMPARE(image->Rotate(MiddleOf(*source), angle, 9.0, kGrow), 0);
            QCOMPARE(DifferenceFromModel(*image, *source, MiddleOf(*source), MiddleOf(*image), angle, 9, 37),
                     QString());
        }
    }

    void theEndsOfAVeryLongRowAreAsExactAsItsMiddle()
    {
        for (int nDepth : {8, 16}) {
            const auto source = NoiseImage(1000000, 4, 1, nDepth);
            const double angle = 4e-6; // 4 rows from end to end
            for (const Point& centre : {Point(3.0, 2.0), Point(1000000.0, 1.0)}) {
                const auto image = CopyOf(*source);
                QCOMPARE(image->Rotate(centre, angle, 9.0, kKeep), 0);
                QCOMPARE(DifferenceFromModel(*image, *source, centre, centre, angle, 9, 61), QString());
            }
            const auto column = NoiseImage(4, 1000000, 1, nDepth);
            const auto image = CopyOf(*column);
            QCOMPARE(image->Rotate(MiddleOf(*column), angle, 9.0, kKeep), 0);
            QCOMPARE(DifferenceFromModel(*image, *column, MiddleOf(*column), MiddleOf(*column), angle, 9, 5),
                     QString());
        }
    }

    void aFlatImageStaysFlat()
    {
        for (int nValue = 0; nValue < 256; ++nValue) {
            CImage image;
            QCOMPARE(image.Create(40, 40, 1, 8, EImageType::Interleaved, 1), 0);
            std::memset(image.GetData(), nValue, 1600);
            QCOMPARE(image.Rotate(MiddleOf(image), 0.3, nValue, kGrow), 0);
            for (int i = 0; i < image.GetStride() * image.GetHeight(); ++i)
                QCOMPARE(int(image.GetData()[i]), nValue);
        }
    }

    void aGrownCanvasHoldsTheWholeImage()
    {
        for (double angle : {0.3, -1.1, 2.0, kPi / 4}) {
            const auto image = MakeTestImage(30, 20, 1);
            QCOMPARE(image->Rotate(Point(0.0, 0.0), angle, 0.0, kGrow), 0);
            const double c = std::abs(std::cos(angle)), s = std::abs(std::sin(angle));
            QVERIFY(image->GetWidth() >= 30 * c + 20 * s - 1e-3 && image->GetWidth() < 30 * c + 20 * s + 1);
            QVERIFY(image->GetHeight() >= 30 * s + 20 * c - 1e-3 && image->GetHeight() < 30 * s + 20 * c + 1);
        }
    }

    void theFillValueIsRoundedAndClamped()
    {
        for (const auto& [fill, nExpected] : {std::pair(12.6, 13), std::pair(-5.0, 0), std::pair(1e9, 255)}) {
            const auto image = MakeTestImage(9, 9, 3);
            QCOMPARE(image->Rotate(Point(4.5, 4.5), 0.7, fill, kGrow), 0);
            QCOMPARE(int(image->GetPixel(0, 0)[0]), nExpected);
            QCOMPARE(int(image->GetPixel(0, 0)[2]), nExpected);
        }
    }

    void theBytesBetweenTheRowsAreZero()
    {
        // Three attempts, so that recycled memory is met.
        for (int i = 0; i < 3; ++i) {
            const auto image = MakeTestImage(2001, 2001, 3);
            QCOMPARE(image->Rotate(MiddleOf(*image), i == 1 ? 0.5 : kPi / 2, 255.0, kKeep), 0);
            for (int y = 0; y < 2001; ++y)
                QCOMPARE(int(image->GetRows()[y][6003]), 0);
        }
    }

    void nameFolderAndIdentifierStay()
    {
        const auto image = MakeTestImage(5, 4, 3);
        image->SetName(L"a.png");
        image->SetFolder(L"/somewhere");
        const unsigned int nUID = image->GetUID();
        QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 2, 0.0, kGrow), 0);
        QVERIFY(image->GetName() == L"a.png");
        QVERIFY(image->GetFolder() == L"/somewhere");
        QCOMPARE(image->GetUID(), nUID);
    }

    void badInputFailsAndLeavesTheImage()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        const auto source = MakeTestImage(9, 7, 3);
        const auto image = CopyOf(*source);
        for (double bad : {nan, inf, -inf}) {
            QVERIFY(image->Rotate(Point(bad, 1.0), kPi / 2, 0.0, kGrow) != 0);
            QVERIFY(image->Rotate(Point(1.0, bad), 0.3, 0.0, kKeep) != 0);
            QVERIFY(image->Rotate(Point(1.0, 1.0), bad, 0.0, kGrow) != 0);
            QVERIFY(image->Rotate(Point(1.0, 1.0), kPi / 2, bad, kGrow) != 0);
        }
        QVERIFY(image->Rotate(Point(1e300, 1.0), kPi / 2, 0.0, kGrow) != 0);
        QVERIFY(image->Rotate(Point(1.0, 1.0), kPi / 2, 0.0, static_cast<ERotationMode>(2)) != 0);
        QVERIFY(AreEqual(*image, *source));
        CImage empty;
        QVERIFY(empty.Rotate(Point(0.0, 0.0), kPi / 2, 0.0, kGrow) != 0);
    }

    void aFarCentreLeavesNothingOnAKeptCanvas()
    {
        for (double angle : {kPi / 2, -kPi / 2, kPi, 0.3}) {
            const auto image = MakeTestImage(9, 7, 2);
            QCOMPARE(image->Rotate(Point(2e9, -2e9), angle, 5.0, kKeep), 0);
            QVERIFY(Follows(*image, *image, 5, [](int, int) { return std::pair(-1, -1); }));
        }
    }

    void aResultBeyondTheDecodeLimitIsRefused()
    {
        const auto source = MakeTestImage(100, 100, 3);
        const auto image = CopyOf(*source);
        CImage::SetDecodeLimit(30100);
        QVERIFY(image->Rotate(MiddleOf(*image), kPi / 4, 0.0, kGrow) != 0);
        QVERIFY(AreEqual(*image, *source));
        CImage::SetDecodeLimit(10);
        // What does not grow is always allowed.
        QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 2, 0.0, kGrow), 0);
        QCOMPARE(image->Rotate(MiddleOf(*image), kPi / 4, 0.0, kKeep), 0);
        CImage::SetDecodeLimit(std::size_t(1) << 30);
        // Very long: the canvas of a tilted line of 100,000 pixels would take 15 GB.
        const auto line = MakeTestImage(100000, 1, 3);
        QVERIFY(line->Rotate(Point(0.0, 0.0), kPi / 4, 0.0, kGrow) != 0);
        QCOMPARE(line->GetWidth(), 100000);
    }
    // Sides of 3, 4 and 5 and the like: the turned image has whole sizes, which rounding errors must not
    // enlarge.
    void aCanvasOfAWholeSizeDoesNotGrowForARoundingError()
    {
        const int kTriples[][3] = {{3, 4, 5}, {5, 12, 13}, {8, 15, 17}, {20, 21, 29}};
        for (const auto& sides : kTriples) {
            const int a = sides[0], b = sides[1], c = sides[2];
            for (int nWidth = 1; nWidth <= 6; ++nWidth) {
                for (int nHeight = 1; nHeight <= 6; ++nHeight) {
                    for (const double angle : {std::atan2(b, a), std::atan2(a, -b), -std::atan2(a, b)}) {
                        const auto image = MakeTestImage(nWidth * c, nHeight * c, 1);
                        QCOMPARE(image->Rotate(MiddleOf(*image), angle, 0.0, kGrow), 0);
                        const bool bSteep = angle == std::atan2(b, a);
                        const int s = bSteep ? b : a;
                        QCOMPARE(image->GetWidth(), nWidth * (a + b - s) + nHeight * s);
                        QCOMPARE(image->GetHeight(), nWidth * s + nHeight * (a + b - s));
                    }
                }
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CImageRotate)
#include "tst_CImageRotate.moc"
