// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <random>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kWidth = 7;
constexpr int kHeight = 5;

std::unique_ptr<CImage> MakeNoise(int nChannels, int nBits, int nWidth = kWidth, int nHeight = kHeight)
{
    auto pImage = std::make_unique<CImage>();
    if (pImage->Create(nWidth, nHeight, nChannels, nBits, EImageType::Interleaved, 4) != 0)
        return nullptr;
    std::mt19937 random(static_cast<unsigned>(nChannels * 100 + nBits));
    for (int y = 0; y < nHeight; ++y)
        for (int i = 0; i < nWidth * nChannels * nBits / 8; ++i)
            pImage->GetRows()[y][i] = static_cast<unsigned char>(random());
    return pImage;
}

int Sample(const CImage& image, int x, int y, int c)
{
    const unsigned char* pPixel = image.GetPixel(x, y);
    if (image.GetBitDepth() == 8)
        return pPixel[c];
    std::uint16_t nValue;
    std::memcpy(&nValue, pPixel + 2 * c, 2);
    return nValue;
}

using Expected = std::function<int(int x, int y, int c)>;

/// Every sample is the expected one, the size is, and whatever is not pixels is as it was.
void Compare(const CImage& image, const CImage& before, int nWidth, int nHeight, int nChannels,
             const Expected& expected)
{
    QCOMPARE(image.GetWidth(), nWidth);
    QCOMPARE(image.GetHeight(), nHeight);
    QCOMPARE(image.GetChannel(), nChannels);
    QCOMPARE(image.GetBitDepth(), before.GetBitDepth());
    QVERIFY(image.GetName() == before.GetName() && image.GetFolder() == before.GetFolder());
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x)
            for (int c = 0; c < nChannels; ++c)
                QCOMPARE(Sample(image, x, y, c), expected(x, y, c));
}

/// Copies the image, runs the edit on it, and holds the result against a plain model.
void Check(const CImage& image, const std::function<int(CImage&)>& edit, int nWidth, int nHeight,
           int nChannels, const Expected& expected)
{
    CImage copy;
    QCOMPARE(copy.CopyFrom(&image), 0);
    QCOMPARE(edit(copy), 0);
    QCOMPARE(copy.GetFailureReason(), std::string());
    Compare(copy, image, nWidth, nHeight, nChannels, expected);
}
} // namespace

class tst_CImageEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flipsMirrorEveryFormat_data() { Formats(); }
    void flipsMirrorEveryFormat()
    {
        QFETCH(int, channels);
        QFETCH(int, bits);
        const auto pImage = MakeNoise(channels, bits);
        pImage->SetName(L"name");
        pImage->SetFolder(L"folder");
        Check(
            *pImage, [](CImage& image) { return image.FlipHorizontally(); }, kWidth, kHeight, channels,
            [&](int x, int y, int c) { return Sample(*pImage, kWidth - 1 - x, y, c); });
        Check(
            *pImage, [](CImage& image) { return image.FlipVertically(); }, kWidth, kHeight, channels,
            [&](int x, int y, int c) { return Sample(*pImage, x, kHeight - 1 - y, c); });
    }

    void flipsOfEvenSizesMirrorToo()
    {
        const auto pImage = MakeNoise(3, 8, 6, 4);
        Check(
            *pImage, [](CImage& image) { return image.FlipHorizontally(); }, 6, 4, 3,
            [&](int x, int y, int c) { return Sample(*pImage, 5 - x, y, c); });
        Check(
            *pImage, [](CImage& image) { return image.FlipVertically(); }, 6, 4, 3,
            [&](int x, int y, int c) { return Sample(*pImage, x, 3 - y, c); });
    }

    void aCropKeepsWhatTheRectangleCovers_data() { Formats(); }
    void aCropKeepsWhatTheRectangleCovers()
    {
        QFETCH(int, channels);
        QFETCH(int, bits);
        const auto pImage = MakeNoise(channels, bits);
        pImage->SetName(L"name");
        Check(
            *pImage, [](CImage& image) { return image.Crop(2, 1, 4, 3); }, 4, 3, channels,
            [&](int x, int y, int c) { return Sample(*pImage, x + 2, y + 1, c); });
        Check(
            *pImage, [](CImage& image) { return image.Crop(-3, -2, 5, 4); }, 2, 2, channels,
            [&](int x, int y, int c) { return Sample(*pImage, x, y, c); });
        Check(
            *pImage, [](CImage& image) { return image.Crop(5, 3, INT_MAX, INT_MAX); }, 2, 2, channels,
            [&](int x, int y, int c) { return Sample(*pImage, x + 5, y + 3, c); });
    }

    void aCropToNoPixelFailsAndChangesNothing()
    {
        const auto pImage = MakeNoise(3, 8);
        CImage copy;
        QCOMPARE(copy.CopyFrom(pImage.get()), 0);
        const int arrRects[][4] = {{0, 0, 0, 3},
                                   {0, 0, 3, 0},
                                   {kWidth, 0, 3, 3},
                                   {0, kHeight, 3, 3},
                                   {-5, 0, 5, 3},
                                   {0, 0, -1, 3},
                                   {INT_MIN, 0, 9, 9},
                                   {INT_MAX, 0, INT_MAX, 9},
                                   {0, INT_MIN, 9, INT_MIN}};
        for (const auto& rect : arrRects) {
            QVERIFY(copy.Crop(rect[0], rect[1], rect[2], rect[3]) != 0);
            QCOMPARE(copy.GetFailureReason(), std::string("The part to keep has no pixels in the image."));
            Compare(copy, *pImage, kWidth, kHeight, 3,
                    [&](int x, int y, int c) { return Sample(*pImage, x, y, c); });
        }
    }

    void greyIsTheWeightedSumAndAlphaStays_data() { Formats(); }
    void greyIsTheWeightedSumAndAlphaStays()
    {
        QFETCH(int, channels);
        QFETCH(int, bits);
        const auto pImage = MakeNoise(channels, bits);
        const int nLeft = channels < 3 ? channels : channels - 2;
        Check(
            *pImage, [](CImage& image) { return image.ToGrey(); }, kWidth, kHeight, nLeft,
            [&](int x, int y, int c) {
                if (channels < 3 || c == 1)
                    return Sample(*pImage, x, y, channels < 3 ? c : 3);
                const auto at = [&](int nChannel) { return Sample(*pImage, x, y, nChannel); };
                return static_cast<int>(
                    std::lround((299.0 * at(0) + 587.0 * at(1) + 114.0 * at(2)) / 1000.0));
            });
    }

    void anEmptyImageHasNothingToChange()
    {
        const std::function<int(CImage&)> edits[] = {
            [](CImage& image) { return image.Crop(0, 0, 1, 1); },
            [](CImage& image) { return image.FlipHorizontally(); },
            [](CImage& image) { return image.FlipVertically(); },
            [](CImage& image) { return image.ToGrey(); },
        };
        for (const auto& edit : edits) {
            CImage image;
            QVERIFY(edit(image) != 0);
            QCOMPARE(image.GetFailureReason(), std::string("There is no image to change."));
        }
    }

private:
    static void Formats()
    {
        QTest::addColumn<int>("channels");
        QTest::addColumn<int>("bits");
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            for (const int nBits : {8, 16})
                QTest::addRow("%d channels of %d bits", nChannels, nBits) << nChannels << nBits;
    }
};

VANTOR_CORE_TEST_MAIN(tst_CImageEdits)
#include "tst_CImageEdits.moc"
