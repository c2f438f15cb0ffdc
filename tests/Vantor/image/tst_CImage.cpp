// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QFile>
#include <atomic>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr EImageType kInterleaved = EImageType::Interleaved;

std::size_t BytesOf(const CImage& image)
{
    return static_cast<std::size_t>(image.GetStride()) * static_cast<std::size_t>(image.GetHeight());
}

bool AllBytesAre(const CImage& image, int value)
{
    const unsigned char* p = image.GetData();
    return p[0] == value && std::memcmp(p, p + 1, BytesOf(image) - 1) == 0;
}

/// Resident memory of the process in MiB.
long ResidentMiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    constexpr long kPagesPerMiB = 256;
    return file.readAll().split(' ').at(1).toLong() / kPagesPerMiB;
}
} // namespace

class tst_CImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewImageIsEmpty()
    {
        const CImage image;
        QCOMPARE(image.GetWidth(), 0);
        QCOMPARE(image.GetHeight(), 0);
        QVERIFY(!image.GetData());
        QVERIFY(!image.GetRows());
        QVERIFY(!image.GetColumnOffsets());
        QVERIFY(!image.GetPixel(0, 0));
    }

    void createMakesAZeroFilledImage()
    {
        for (int nChannels = 1; nChannels <= 4; ++nChannels) {
            for (int nBitDepth : {8, 16}) {
                CImage image;
                QCOMPARE(image.Create(13, 7, nChannels, nBitDepth, kInterleaved, 4), 0);
                QCOMPARE(image.GetWidth(), 13);
                QCOMPARE(image.GetHeight(), 7);
                QCOMPARE(image.GetChannel(), nChannels);
                QCOMPARE(image.GetBitDepth(), nBitDepth);
                QVERIFY(image.GetImageType() == kInterleaved);
                QVERIFY(AllBytesAre(image, 0));
            }
        }
    }

    void rowsBeginAtMultiplesOfTheAlignment()
    {
        for (int nAlignment : {1, 2, 3, 4, 7, 16, 64, 4096}) {
            CImage image;
            QCOMPARE(image.Create(5, 3, 3, 8, kInterleaved, nAlignment), 0);
            QCOMPARE(image.GetStride(), (15 + nAlignment - 1) / nAlignment * nAlignment);
            for (int y = 0; y < 3; ++y)
                QCOMPARE(image.GetRows()[y], image.GetData() + y * image.GetStride());
        }
    }

    void twoChannelsHaveAStrideOfThreeBytesAPixel()
    {
        CImage image;
        QCOMPARE(image.Create(10, 2, 2, 8, kInterleaved, 1), 0);
        QCOMPARE(image.GetStride(), 30);
        QCOMPARE(image.GetColumnOffsets()[9], std::size_t(18));
        QCOMPARE(image.Create(10, 2, 2, 16, kInterleaved, 1), 0);
        QCOMPARE(image.GetStride(), 40);
    }

    void pixelsAreFoundInsideAndNullOutside()
    {
        CImage image;
        QCOMPARE(image.Create(5, 3, 3, 8, kInterleaved, 4), 0);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 5; ++x) {
                QCOMPARE(image.GetPixel(x, y), image.GetRows()[y] + image.GetColumnOffsets()[x]);
                QCOMPARE(image.GetPixel(x, y), image.GetData() + y * 16 + x * 3);
            }
        }
        const CImage& constant = image;
        QCOMPARE(constant.GetPixel(4, 2), image.GetPixel(4, 2));
        for (const auto& [x, y] : {std::pair(-1, 0), std::pair(0, -1), std::pair(5, 0), std::pair(0, 3),
                                   std::pair(INT_MAX, INT_MAX), std::pair(INT_MIN, INT_MIN)}) {
            QVERIFY(!image.GetPixel(x, y));
            QVERIFY(!constant.GetPixel(x, y));
        }
    }

    void badSizesLeaveTheImageAsItWas()
    {
        const auto image = MakeTestImage(5, 4, 3);
        const auto copy = MakeTestImage(5, 4, 3);
        const unsigned char* pData = image->GetData();
        QVERIFY(image->Create(0, 4, 3, 8, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, -1, 3, 8, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, 4, 0, 8, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, 4, 5, 8, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, 4, 3, 7, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, 4, 3, 32, kInterleaved, 4) != 0);
        QVERIFY(image->Create(5, 4, 3, 8, static_cast<EImageType>(1), 4) != 0);
        QVERIFY(image->Create(5, 4, 3, 8, kInterleaved, 0) != 0);
        QVERIFY(image->Create(5, 4, 3, 8, kInterleaved, 4097) != 0);
        QCOMPARE(image->GetData(), const_cast<unsigned char*>(pData));
        QCOMPARE(image->GetWidth(), 5);
        QCOMPARE(std::memcmp(image->GetData(), copy->GetData(), BytesOf(*copy)), 0);
    }

    void sizesThatOverflowAreRefused()
    {
        CImage image;
        QVERIFY(image.Create(INT_MAX, INT_MAX, 4, 16, kInterleaved, 4096) != 0);
        QVERIFY(image.Create(INT_MAX, 1, 1, 16, kInterleaved, 1) != 0);
        QVERIFY(image.Create(INT_MAX, 1, 2, 8, kInterleaved, 1) != 0);
        QVERIFY(image.Create(INT_MAX, 1, 1, 8, kInterleaved, 4096) != 0);
        QVERIFY(image.Create(INT_MAX / 4, INT_MAX, 4, 8, kInterleaved, 1) != 0);
        QVERIFY(!image.GetData());
    }

    void createKeepsNameAndFolder()
    {
        CImage image;
        image.SetName(L"a.png");
        image.SetFolder(L"/somewhere");
        QCOMPARE(image.Create(2, 2, 1, 8, kInterleaved, 1), 0);
        QVERIFY(image.GetName() == L"a.png");
        QVERIFY(image.GetFolder() == L"/somewhere");
    }

    void copyFromTakesPixelsNameAndFolderButNotTheIdentifier()
    {
        for (int nChannels = 1; nChannels <= 4; ++nChannels) {
            const auto source = MakeTestImage(37, 11, nChannels);
            source->SetName(L"a.png");
            source->SetFolder(L"/somewhere");
            CImage copy;
            const unsigned int nUID = copy.GetUID();
            QCOMPARE(copy.CopyFrom(source.get()), 0);
            QCOMPARE(copy.GetUID(), nUID);
            QVERIFY(copy.GetUID() != source->GetUID());
            QVERIFY(copy.GetName() == L"a.png");
            QVERIFY(copy.GetFolder() == L"/somewhere");
            QCOMPARE(copy.GetStride(), source->GetStride());
            QCOMPARE(copy.GetChannel(), nChannels);
            QVERIFY(copy.GetData() != source->GetData());
            QCOMPARE(std::memcmp(copy.GetData(), source->GetData(), BytesOf(*source)), 0);
            copy.GetPixel(3, 3)[0] ^= 1;
            QCOMPARE(source->GetPixel(3, 3)[0], TestImageByte(3, 3, 0));
        }
    }

    void theResolutionOfAPageGoesWithItsCopiesAndNotWithAFile()
    {
        CImage image, copy;
        QCOMPARE(image.GetPageResolution(), 0.0);
        image.SetPageResolution(144.5);
        QCOMPARE(image.GetPageResolution(), 144.5);
        QCOMPARE(image.Create(2, 2, 1, 8, kInterleaved, 1), 0);
        QCOMPARE(copy.CopyFrom(&image), 0);
        QCOMPARE(copy.GetPageResolution(), 144.5);
        QVERIFY(copy.Load(L"/nowhere/a.png") != 0);
        QCOMPARE(copy.GetPageResolution(), 144.5);
        QCOMPARE(copy.Load(TestDataPath(QStringLiteral("png/basn2c08.png")).toStdWString()), 0);
        QCOMPARE(copy.GetPageResolution(), 0.0);
        for (const double dpi : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
            image.SetPageResolution(dpi);
            QCOMPARE(image.GetPageResolution(), 0.0);
        }
    }

    void copyFromKeepsTheRowAlignment()
    {
        CImage source, copy;
        QCOMPARE(source.Create(5, 3, 3, 8, kInterleaved, 64), 0);
        QCOMPARE(copy.CopyFrom(&source), 0);
        QCOMPARE(copy.GetStride(), 64);
    }

    void copyFromNullFailsAndFromItselfDoesNothing()
    {
        const auto image = MakeTestImage(5, 4, 3);
        image->SetName(L"name");
        image->SetFolder(L"/folder");
        const unsigned char* pData = image->GetData();
        const auto isAsBefore = [&] {
            return image->GetData() == pData && SamePixels(*image, *MakeTestImage(5, 4, 3)) &&
                   image->GetName() == L"name" && image->GetFolder() == L"/folder";
        };
        QVERIFY(image->CopyFrom(nullptr) != 0);
        QVERIFY(isAsBefore());
        QCOMPARE(image->CopyFrom(image.get()), 0);
        QVERIFY(isAsBefore());
    }

    void copyFromAnEmptyImageEmpties()
    {
        const auto image = MakeTestImage(5, 4, 3);
        const CImage empty;
        QCOMPARE(image->CopyFrom(&empty), 0);
        QVERIFY(!image->GetData());
        QVERIFY(!image->GetRows());
        QCOMPARE(image->GetWidth(), 0);
    }

    void aLargeBufferIsUsedAgainAndStillZeroFilled()
    {
        const unsigned char* pFirst = nullptr;
        {
            CImage image;
            QCOMPARE(image.Create(4000, 3000, 1, 8, kInterleaved, 4), 0);
            std::memset(image.GetData(), 0xAB, BytesOf(image));
            pFirst = image.GetData();
        }
        CImage image;
        QCOMPARE(image.Create(3000, 4000, 1, 8, kInterleaved, 4), 0);
        QCOMPARE(image.GetData(), const_cast<unsigned char*>(pFirst));
        QVERIFY(AllBytesAre(image, 0));
    }

    void aLargeCopyIsEqualInFreshAndInUsedMemory()
    {
        CImage source;
        QCOMPARE(source.Create(3001, 2003, 3, 8, kInterleaved, 1), 0); // not a whole number of large pages
        for (std::size_t i = 0; i < BytesOf(source); ++i)
            source.GetData()[i] = static_cast<unsigned char>(i % 251);
        std::vector<std::unique_ptr<CImage>> vctCopies;
        for (int i = 0; i < 8; ++i) { // more than are kept when they are released
            vctCopies.push_back(std::make_unique<CImage>());
            QCOMPARE(vctCopies.back()->CopyFrom(&source), 0);
        }
        for (const auto& copy : vctCopies)
            QVERIFY(std::memcmp(copy->GetData(), source.GetData(), BytesOf(source)) == 0);
        std::memset(vctCopies.back()->GetData(), 0xAB, BytesOf(source));
        const unsigned char* pUsed = vctCopies.back()->GetData();
        vctCopies.pop_back();
        CImage copy;
        QCOMPARE(copy.CopyFrom(&source), 0);
        QCOMPARE(copy.GetData(), const_cast<unsigned char*>(pUsed));
        QVERIFY(std::memcmp(copy.GetData(), source.GetData(), BytesOf(source)) == 0);
    }

    void whatIsKeptOfReleasedBuffersIsBounded()
    {
        const long nBefore = ResidentMiB();
        QVERIFY(nBefore > 0);
        {
            std::vector<std::unique_ptr<CImage>> vctImages;
            for (int i = 0; i < 7; ++i) {
                vctImages.push_back(std::make_unique<CImage>());
                QCOMPARE(vctImages.back()->Create(10000, 10000 + i, 1, 8, kInterleaved, 1), 0);
            }
            QVERIFY(ResidentMiB() > nBefore + 600);
        }
#ifndef __SANITIZE_ADDRESS__ // it keeps freed memory itself for a while
        QVERIFY2(ResidentMiB() < nBefore + 512 + 64, qPrintable(QString::number(ResidentMiB() - nBefore)));
#endif
    }

    void imagesComeAndGoOnManyThreads()
    {
        std::vector<std::thread> vctThreads;
        std::atomic<int> nErrors{0};
        for (int nThread = 0; nThread < 4; ++nThread) {
            vctThreads.emplace_back([nThread, &nErrors] {
                for (int i = 0; i < 20; ++i) {
                    CImage image, copy;
                    if (image.Create(2000, 2000 + 300 * (i % 5), 1 + i % 3, 8, kInterleaved, 4) != 0 ||
                        !AllBytesAre(image, 0))
                        ++nErrors;
                    std::memset(image.GetData(), nThread + 1, BytesOf(image));
                    if (copy.CopyFrom(&image) != 0 || !AllBytesAre(copy, nThread + 1))
                        ++nErrors;
                }
            });
        }
        for (std::thread& thread : vctThreads)
            thread.join();
        QCOMPARE(nErrors.load(), 0);
    }

    void theDecodeLimitIsOneGibibyteUntilItIsSet()
    {
        QCOMPARE(CImage::GetDecodeLimit(), std::size_t(1) << 30);
        CImage::SetDecodeLimit(1000);
        QCOMPARE(CImage::GetDecodeLimit(), std::size_t(1000));
        CImage::SetDecodeLimit(std::size_t(1) << 30);
    }
};

VANTOR_CORE_TEST_MAIN(tst_CImage)
#include "tst_CImage.moc"
