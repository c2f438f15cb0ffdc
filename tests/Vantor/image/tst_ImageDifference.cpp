// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageDifference.h>

#include <QtTest/QtTest>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::MakeDifference;

namespace
{
/// Any samples, by a number.
void FillAny(CImage& image, unsigned nSeed)
{
    for (int i = 0; i < image.GetStride() * image.GetHeight(); ++i)
        image.GetData()[i] = static_cast<unsigned char>((nSeed = nSeed * 1103515245u + 12345u) >> 16);
}

std::shared_ptr<CImage> Make(int nWidth, int nHeight, int nChannels)
{
    auto pImage = std::make_shared<CImage>();
    pImage->Create(nWidth, nHeight, nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
    FillAny(*pImage, 7);
    return pImage;
}

int SampleAt(const CImage& image, int x, int y, int nChannel)
{
    if (image.GetBitDepth() == 8)
        return image.GetPixel(x, y)[nChannel];
    unsigned short nValue;
    std::memcpy(&nValue, image.GetPixel(x, y) + 2 * nChannel, 2);
    return nValue;
}
} // namespace

class tst_ImageDifference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySampleIsTheDistance_data()
    {
        QTest::addColumn<int>("nChannels");
        QTest::addColumn<int>("nBits");
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            for (int nBits : {8, 16})
                QTest::addRow("%d channels of %d bits", nChannels, nBits) << nChannels << nBits;
    }

    void everySampleIsTheDistance()
    {
        QFETCH(int, nChannels);
        QFETCH(int, nBits);
        CImage a;
        CImage b;
        CImage result;
        for (CImage* pImage : {&a, &b}) {
            QCOMPARE(pImage->Create(13, 7, nChannels, nBits, Vantor::Algorithms::EImageType::Interleaved, 8),
                     0);
            FillAny(*pImage, pImage == &a ? 1 : 2);
        }
        QCOMPARE(MakeDifference(a, b, result), std::string());
        const bool bAlpha = nChannels % 2 == 0;
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 13; ++x)
                for (int n = 0; n < nChannels; ++n) {
                    const auto distance = [&](int nChannel) {
                        return std::abs(SampleAt(a, x, y, nChannel) - SampleAt(b, x, y, nChannel));
                    };
                    int nExpected = bAlpha ? std::max(distance(n), distance(nChannels - 1)) : distance(n);
                    if (bAlpha && n == nChannels - 1)
                        nExpected = nBits == 8 ? 255 : 65535;
                    QCOMPARE(SampleAt(result, x, y, n), nExpected);
                }
    }

    void equalImagesGiveBlack()
    {
        const auto pImage = Make(31, 17, 3);
        CImage result;
        QCOMPARE(MakeDifference(*pImage, *pImage, result), std::string());
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 31; ++x)
                for (int n = 0; n < 3; ++n)
                    QCOMPARE(int(result.GetPixel(x, y)[n]), 0);
    }

    void whatCannotBeComparedIsToldAndChangesNothing()
    {
        const auto pImage = Make(20, 10, 3);
        CImage result;
        QCOMPARE(result.CopyFrom(Make(5, 5, 1).get()), 0);
        const CImage empty;
        QCOMPARE(MakeDifference(*pImage, empty, result), std::string("There are not two images to compare."));
        QCOMPARE(MakeDifference(*pImage, *Make(20, 11, 3), result),
                 std::string("The images differ in size: 20 x 10 and 20 x 11 pixels."));
        QCOMPARE(MakeDifference(*pImage, *Make(20, 10, 4), result),
                 std::string("The images differ in the number of channels: 3 and 4."));
        CImage wide;
        QCOMPARE(wide.Create(20, 10, 3, 16, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        QCOMPARE(MakeDifference(*pImage, wide, result),
                 std::string("The images differ in the bits per channel: 8 and 16."));
        QCOMPARE(MakeDifference(*pImage, *pImage, *pImage),
                 std::string("The difference needs an image of its own."));
        QCOMPARE(result.GetWidth(), 5);
        QCOMPARE(pImage->GetWidth(), 20);
    }
};

VANTOR_CORE_TEST_MAIN(tst_ImageDifference)
#include "tst_ImageDifference.moc"
