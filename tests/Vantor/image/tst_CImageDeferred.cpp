// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage's pixels that come when they are needed.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/CPixelSource.h>

#include <QTemporaryDir>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

using Vantor::CProgress;
using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CPixelSource;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;

namespace
{
constexpr int kWidth = 37;
constexpr int kHeight = 21;

/// Makes test images and counts them. It can be held up, and can refuse.
class CSource : public CPixelSource
{
public:
    EMade Make(CImage& image, std::string& strReason) override
    {
        ++nMade;
        std::unique_lock<std::mutex> lock(m_mutex);
        m_open.wait(lock, [this] { return m_bOpen; });
        if (eMade != EMade_Done) {
            strReason = "It is torn.";
            return eMade;
        }
        image.CopyFrom(MakeTestImage(nWidth, kHeight, 3, 5).get());
        return EMade_Done;
    }
    void HoldUp(bool bHold)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bOpen = !bHold;
        m_open.notify_all();
    }

    std::atomic<int> nMade{0};
    EMade eMade = EMade_Done;
    int nWidth = kWidth;

private:
    std::mutex m_mutex;
    std::condition_variable m_open;
    bool m_bOpen = true;
};

struct SDeferredImage {
    SDeferredImage() { image.Defer(kWidth, kHeight, 3, pSource); }
    const CImage& Const() const { return image; }

    std::shared_ptr<CSource> pSource = std::make_shared<CSource>();
    CImage image;
};

std::shared_ptr<CImage> Expected()
{
    return MakeTestImage(kWidth, kHeight, 3, 5);
}

/// Reads a pixel by each way of reading; 0 for none.
using Reader = int (*)(const CImage& image);
const std::vector<std::pair<const char*, Reader>> kReaders{
    {"GetData", [](const CImage& image) { return int(image.GetData()[0]); }},
    {"GetRows", [](const CImage& image) { return int(image.GetRows()[0][0]); }},
    {"GetPixel", [](const CImage& image) { return int(image.GetPixel(0, 0)[0]); }},
    {"GetColumnOffsets", [](const CImage& image) { return int(image.GetColumnOffsets()[1]) + 2; }},
    {"CopyFrom",
     [](const CImage& image) {
         CImage copy;
         return copy.CopyFrom(&image) == 0 && !copy.IsDeferred() ? int(std::as_const(copy).GetData()[0]) : 0;
     }},
};
} // namespace

class tst_CImageDeferred : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatAndNameAreThereBeforeThePixels()
    {
        SDeferredImage d;
        d.image.SetName(L"page");
        d.image.SetPageResolution(144.0);
        QCOMPARE(d.image.GetWidth(), kWidth);
        QCOMPARE(d.image.GetHeight(), kHeight);
        QCOMPARE(d.image.GetChannel(), 3);
        QCOMPARE(d.image.GetBitDepth(), 8);
        QCOMPARE(d.image.GetImageType(), EImageType::Interleaved);
        QCOMPARE(d.image.GetStride(), 112);
        QVERIFY(d.image.GetNotes().empty());
        QVERIFY(d.image.IsDeferred());
        QVERIFY(!d.image.HasPixels());
        QCOMPARE(d.pSource->nMade.load(), 0);
        QVERIFY(d.image.GetName() == L"page" && d.image.GetPageResolution() == 144.0);
    }

    void badSizesAndNoSourceAreRefused()
    {
        SDeferredImage d;
        QVERIFY(d.image.Defer(0, 5, 3, d.pSource) != 0);
        QVERIFY(d.image.Defer(5, 0, 3, d.pSource) != 0);
        QVERIFY(d.image.Defer(5, 5, 5, d.pSource) != 0);
        QVERIFY(d.image.Defer(5, 5, 3, nullptr) != 0);
        QCOMPARE(d.image.GetWidth(), kWidth);
        QVERIFY(!CImage().IsDeferred() && !CImage().HasPixels() && Expected()->HasPixels());
    }

    void everyWayOfReadingGetsThePixelsOnce_data()
    {
        QTest::addColumn<int>("reader");
        for (int i = 0; i < int(kReaders.size()); ++i)
            QTest::newRow(kReaders[std::size_t(i)].first) << i;
    }
    void everyWayOfReadingGetsThePixelsOnce()
    {
        QFETCH(int, reader);
        SDeferredImage d;
        for (int i = 0; i < 3; ++i)
            QCOMPARE(kReaders[std::size_t(reader)].second(d.image), 5);
        QCOMPARE(d.pSource->nMade.load(), 1);
        QVERIFY(d.image.IsDeferred() && d.image.HasPixels());
        QVERIFY(SamePixels(d.image, *Expected()));
    }

    void aSaveReadsThem()
    {
        const QTemporaryDir folder;
        const std::wstring strPath = folder.filePath(QStringLiteral("a.png")).toStdWString();
        SDeferredImage d;
        QCOMPARE(d.Const().Save(strPath), 0);
        CImage loaded;
        QCOMPARE(loaded.Load(strPath), 0);
        QVERIFY(SamePixels(loaded, *Expected()));
        QVERIFY(d.image.IsDeferred());
    }

    void outsideThereIsNoPixelToWaitFor()
    {
        SDeferredImage d;
        QVERIFY(!d.Const().GetPixel(-1, 0) && !d.Const().GetPixel(0, kHeight));
        QCOMPARE(d.pSource->nMade.load(), 0);
    }

    void droppedPixelsComeBackEqual()
    {
        SDeferredImage d;
        QVERIFY(!d.image.DropPixels());
        for (int i = 1; i <= 3; ++i) {
            QVERIFY(SamePixels(d.image, *Expected()));
            QCOMPARE(d.pSource->nMade.load(), i);
            QVERIFY(d.image.DropPixels());
            QVERIFY(!d.image.HasPixels() && d.image.IsDeferred() && !d.image.DropPixels());
        }
    }

    void whoCouldChangeThePixelsKeepsThem_data()
    {
        using Change = void (*)(CImage&);
        static const std::vector<std::pair<const char*, Change>> s_changes{
            {"GetData", [](CImage& image) { *image.GetData() = 7; }},
            {"GetRows", [](CImage& image) { *image.GetRows()[0] = 7; }},
            {"GetPixel", [](CImage& image) { *image.GetPixel(0, 0) = 7; }},
            {"Invert", [](CImage& image) { image.Invert(nullptr, ERegionMode::All, 0.0); }},
            {"FlipVertically", [](CImage& image) { image.FlipVertically(); }},
            {"Crop", [](CImage& image) { image.Crop(1, 1, 5, 5); }},
            {"ToGrey", [](CImage& image) { image.ToGrey(); }},
            {"MedianFilter", [](CImage& image) { image.MedianFilter(1, 1, nullptr, ERegionMode::All, 0.0); }},
            {"Rotate",
             [](CImage& image) {
                 image.Rotate({0.0, 0.0}, 1.5707963267948966, 0.0,
                              Vantor::Algorithms::ERotationMode::GrowCanvas);
             }},
            {"Create", [](CImage& image) { image.Create(3, 3, 1, 8, EImageType::Interleaved, 1); }},
        };
        QTest::addColumn<void*>("change");
        for (const auto& each : s_changes)
            QTest::newRow(each.first) << reinterpret_cast<void*>(each.second);
    }
    void whoCouldChangeThePixelsKeepsThem()
    {
        QFETCH(void*, change);
        const auto apply = reinterpret_cast<void (*)(CImage&)>(change);
        SDeferredImage d;
        const auto pExpected = Expected();
        apply(*pExpected);
        apply(d.image);
        QVERIFY(!d.image.IsDeferred());
        QVERIFY(d.image.HasPixels());
        QVERIFY(!d.image.DropPixels());
        QVERIFY(SamePixels(d.image, *pExpected));
        QVERIFY(d.pSource->nMade <= 1);
    }

    void pixelsThatCannotBeMadeAreWhiteAndSayWhy()
    {
        SDeferredImage d;
        d.pSource->eMade = CPixelSource::EMade_Failed;
        const unsigned char* pData = d.Const().GetData();
        QVERIFY(pData);
        for (int i = 0; i < d.image.GetStride() * kHeight; ++i)
            QCOMPARE(int(pData[i]), 255);
        QCOMPARE(d.image.GetNotes().size(), std::size_t(1));
        QCOMPARE(d.image.GetNotes()[0], std::string("It is torn."));
        QVERIFY(d.image.DropPixels());
        QCOMPARE(int(*d.Const().GetPixel(5, 5)), 255);
        QCOMPARE(d.image.GetNotes().size(), std::size_t(1));
        QCOMPARE(d.pSource->nMade.load(), 1); // it is not asked again
    }

    void pixelsOfAnotherSizeAreNotTaken()
    {
        SDeferredImage d;
        d.pSource->nWidth = kWidth + 1;
        QCOMPARE(int(*d.Const().GetPixel(0, 0)), 255);
        QCOMPARE(d.image.GetWidth(), kWidth);
        QCOMPARE(d.image.GetNotes().size(), std::size_t(1));
    }

    void whatCameToNothingIsTriedAgain()
    {
        SDeferredImage d;
        d.pSource->eMade = CPixelSource::EMade_Nothing;
        QVERIFY(!d.Const().GetData() && !d.Const().GetRows() && !d.Const().GetPixel(0, 0));
        CImage copy;
        QVERIFY(copy.CopyFrom(&d.image) != 0);
        QCOMPARE(copy.GetFailureReason(), std::string("There is not enough memory for the copy."));
        QVERIFY(copy.GetWidth() == 0 && !d.image.HasPixels() && d.image.GetNotes().empty());
        d.pSource->eMade = CPixelSource::EMade_Done;
        QVERIFY(SamePixels(d.image, *Expected()));
    }

    void severalThreadsReadOneImage()
    {
        for (int nRound = 0; nRound < 50; ++nRound) {
            SDeferredImage d;
            std::atomic<int> nGood{0};
            std::vector<std::thread> vctThreads;
            for (std::size_t i = 0; i < 8; ++i)
                vctThreads.emplace_back([&, i] {
                    if (kReaders[i % kReaders.size()].second(d.image) == 5)
                        ++nGood;
                });
            for (std::thread& thread : vctThreads)
                thread.join();
            QCOMPARE(nGood.load(), 8);
            QCOMPARE(d.pSource->nMade.load(), 1);
        }
    }

    void aThreadThatIsCancelledDoesNotWaitForAnother()
    {
        SDeferredImage d;
        d.pSource->HoldUp(true);
        std::thread first([&] { static_cast<void>(d.Const().GetData()); });
        while (d.pSource->nMade == 0)
            std::this_thread::yield();
        CProgress progress;
        std::string strReason;
        std::thread second([&] {
            const CProgress::CScope scope(&progress);
            CImage copy;
            if (copy.CopyFrom(&d.image) != 0)
                strReason = copy.GetFailureReason();
        });
        progress.Cancel();
        second.join();
        QCOMPARE(strReason, std::string(Vantor::kCancelled));
        d.pSource->HoldUp(false);
        first.join();
        QVERIFY(SamePixels(d.image, *Expected()));
    }

    void theSourceGoesWithItsImages()
    {
        std::weak_ptr<CSource> pWatched;
        {
            SDeferredImage d;
            pWatched = d.pSource;
            CImage other;
            QCOMPARE(other.Defer(5, 5, 3, std::exchange(d.pSource, nullptr)), 0);
            QVERIFY(!pWatched.expired());
        }
        QVERIFY(pWatched.expired());
    }
};

VANTOR_CORE_TEST_MAIN(tst_CImageDeferred)
#include "tst_CImageDeferred.moc"
