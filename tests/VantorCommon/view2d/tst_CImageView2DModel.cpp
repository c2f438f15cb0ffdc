// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

using ImagePtr = CImageView2DModel::ImagePtr;

namespace
{
/// Writes down the signals of a model in the order in which they come, as in "list current index ".
class CRecorder
{
public:
    explicit CRecorder(CImageView2DModel& model)
    {
        const auto watch = [this, &model](auto pSignal, const QString& strName) {
            QObject::connect(&model, pSignal, &model, [this, strName] { m_strSignals += strName; });
        };
        watch(&CImageView2DModel::signal_MousePositionChanged, QStringLiteral("mouse "));
        watch(&CImageView2DModel::signal_ChangeImageList, QStringLiteral("list "));
        watch(&CImageView2DModel::signal_ChangeCurrentIndex, QStringLiteral("index "));
        watch(&CImageView2DModel::signal_ChangeCurrentImage, QStringLiteral("current "));
    }

    QString Take() { return std::exchange(m_strSignals, QString()); }

private:
    QString m_strSignals;
};

/// What was logged since the last call, each line as "<level> <text>" and all joined by '|'.
QString TakeLog()
{
    QStringList lstLines;
    CLogModel* pLog = CLogModel::GetInstance();
    const auto connection =
        QObject::connect(pLog, &CLogModel::signal_NewMessage, pLog, [&lstLines](const SLogMessage& sMessage) {
            lstLines << QString::number(sMessage.eLevel) + QLatin1Char(' ') + sMessage.strMessage;
        });
    while (!pLog->IsEmpty())
        pLog->slot_OnTimer();
    QObject::disconnect(connection);
    return lstLines.join(QLatin1Char('|'));
}

/// Some different images, and a model that holds them with the first one current.
struct SFixture {
    std::vector<ImagePtr> vctImages;
    CImageView2DModel model;
    CRecorder recorder{model};

    explicit SFixture(int nCount)
    {
        for (int i = 0; i < nCount; ++i)
            vctImages.push_back(MakeTestImage(2 + i, 2, 3));
        model.SetImages(vctImages);
        recorder.Take();
        TakeLog();
    }

    /// Reaches an index of -1 with an empty list.
    void CloseAll()
    {
        while (model.GetImageCount() > 0)
            model.CloseCurrentImage();
        recorder.Take();
    }
};

const QString kNothing;
} // namespace

class tst_CImageView2DModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { TakeLog(); }

    void aNewModelIsEmpty()
    {
        const CImageView2DModel model;
        QCOMPARE(model.GetMousePosition(), QPointF(0, 0));
        QCOMPARE(model.GetImageCount(), 0);
        QCOMPARE(model.GetCurrentIndex(), 0);
        QVERIFY(!model.GetCurrentImage());
        QVERIFY(!model.GetImage(0));
    }

    void setMousePositionStoresAndEmits()
    {
        SFixture f(0);
        f.model.SetMousePosition(QPointF(-3.5, 1e6));
        QCOMPARE(f.model.GetMousePosition(), QPointF(-3.5, 1e6));
        QCOMPARE(f.recorder.Take(), QStringLiteral("mouse "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void setMousePositionWithinTheFuzzyToleranceEmitsNothing()
    {
        SFixture f(0);
        f.model.SetMousePosition(QPointF(5e-13, 0)); // absolute against zero
        QCOMPARE(f.recorder.Take(), kNothing);
        f.model.SetMousePosition(QPointF(1000, 1000));
        f.recorder.Take();
        f.model.SetMousePosition(QPointF(1000, 1000));
        f.model.SetMousePosition(QPointF(1000 * (1 + 1e-13), 1000));
        QCOMPARE(f.recorder.Take(), kNothing);
        QVERIFY(f.model.GetMousePosition().x() == 1000.0);
    }

    void setMousePositionBeyondTheFuzzyToleranceEmits()
    {
        SFixture f(0);
        f.model.SetMousePosition(QPointF(1e-11, 0));
        QCOMPARE(f.recorder.Take(), QStringLiteral("mouse "));
        f.model.SetMousePosition(QPointF(1000, 1000));
        f.recorder.Take();
        f.model.SetMousePosition(QPointF(1000 * (1 + 1e-11), 1000));
        QCOMPARE(f.recorder.Take(), QStringLiteral("mouse "));
    }

    void aForgottenMousePositionIsToldAndTheNextOneIsAnnouncedWhateverItIs()
    {
        SFixture f(0);
        f.model.SetMousePosition(QPointF(3, 4));
        f.recorder.Take();
        const QSignalSpy spy(&f.model, &CImageView2DModel::signal_MousePositionForgotten);
        f.model.ForgetMousePosition();
        QCOMPARE(spy.count(), 1);
        QCOMPARE(f.recorder.Take(), kNothing);
        f.model.SetMousePosition(QPointF(3, 4));
        QCOMPARE(f.recorder.Take(), QStringLiteral("mouse "));
        f.model.SetMousePosition(QPointF(3, 4));
        QCOMPARE(f.recorder.Take(), kNothing);
    }

    void getImageIsNullOutsideTheList()
    {
        SFixture f(2);
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetImage(0), f.vctImages[0]);
        QCOMPARE(f.model.GetImage(1), f.vctImages[1]);
        QVERIFY(!f.model.GetImage(2));
        QVERIFY(!f.model.GetImage(-1));
        QVERIFY(!f.model.GetImage(std::numeric_limits<int>::min()));
        QVERIFY(!f.model.GetImage(std::numeric_limits<int>::max()));
    }

    void getCurrentImageFollowsTheIndex()
    {
        SFixture f(2);
        QCOMPARE(f.model.GetCurrentImage(), f.vctImages[0]);
        f.model.SetCurrentIndex(1);
        QCOMPARE(f.model.GetCurrentImage(), f.vctImages[1]);
    }

    void setImageReplacesAnEntryThatIsNotCurrent()
    {
        SFixture f(3);
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetImage(pNew, 2);
        QCOMPARE(f.model.GetImage(2), pNew);
        QCOMPARE(f.model.GetCurrentImage(), f.vctImages[0]);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Set Image At 2"));
    }

    void setImageOfTheCurrentEntryAnnouncesTheCurrentImageToo()
    {
        SFixture f(3);
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetImage(pNew, 0);
        QCOMPARE(f.model.GetCurrentImage(), pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Set Image At 0"));
    }

    void setImageOutOfRangeDoesNothingAndLogsNothing()
    {
        SFixture f(2);
        f.model.SetImage(MakeTestImage(9, 9, 1), 2);
        f.model.SetImage(MakeTestImage(9, 9, 1), -1);
        QCOMPARE(f.model.GetImage(0), f.vctImages[0]);
        QCOMPARE(f.model.GetImage(1), f.vctImages[1]);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void setImagesReplacesTheListAndShowsTheFirst()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(2);
        f.recorder.Take();
        TakeLog();
        std::vector<ImagePtr> vctOther{MakeTestImage(7, 7, 1), MakeTestImage(8, 8, 1)};
        f.model.SetImages(vctOther);
        const ImagePtr pFirst = vctOther[0];
        vctOther[0].reset(); // the model holds a copy of the list
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.model.GetCurrentImage(), pFirst);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void pushImageAppendsAndShowsIt()
    {
        SFixture f(2);
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.PushImage(pNew);
        QCOMPARE(f.model.GetImageCount(), 3);
        QCOMPARE(f.model.GetCurrentIndex(), 2);
        QCOMPARE(f.model.GetCurrentImage(), pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current index "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Push Image"));
    }

    void aNullEntryMayBePushed()
    {
        SFixture f(0);
        f.model.PushImage(nullptr);
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QVERIFY(!f.model.GetCurrentImage());
    }

    void setCurrentIndexShowsAnotherImage()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(2);
        QCOMPARE(f.model.GetCurrentIndex(), 2);
        QCOMPARE(f.recorder.Take(), QStringLiteral("index current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Set Current Index 2"));
    }

    void setCurrentIndexWithTheCurrentValueEmitsNothing()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(0);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void setCurrentIndexOutOfRangeDoesNothing()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(3);
        f.model.SetCurrentIndex(-1);
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void nextStepsForward()
    {
        SFixture f(3);
        f.model.Next();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.recorder.Take(), QStringLiteral("index current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Next Image At 1"));
    }

    void nextOnTheLastImageDoesNothingAndLogsNothing()
    {
        SFixture f(2);
        f.model.SetCurrentIndex(1);
        f.recorder.Take();
        TakeLog();
        f.model.Next();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void nextActsOnlyOnAnIndexInRange()
    {
        SFixture f(1);
        f.CloseAll();
        f.model.SetCurrentImage(MakeTestImage(9, 9, 1));
        f.recorder.Take();
        f.model.Next();
        QCOMPARE(f.model.GetCurrentIndex(), -1);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void previousStepsBack()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(2);
        f.recorder.Take();
        TakeLog();
        f.model.Previous();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.recorder.Take(), QStringLiteral("index current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Previous Image At 1"));
    }

    void previousOnTheFirstImageDoesNothingAndLogsNothing()
    {
        SFixture f(2);
        f.model.Previous();
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void nextAndPreviousOnAnEmptyListDoNothing()
    {
        SFixture f(0);
        f.model.Next();
        f.model.Previous();
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void setCurrentImageReplacesTheEntry()
    {
        SFixture f(2);
        f.model.SetCurrentIndex(1);
        f.recorder.Take();
        TakeLog();
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetCurrentImage(pNew);
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetImage(1), pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void setCurrentImageOnANewModelMakesItTheOnlyImage()
    {
        SFixture f(0);
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetCurrentImage(pNew);
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.model.GetCurrentImage(), pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void closingTheOnlyImageLeavesAnEmptyListAndIndexMinusOne()
    {
        SFixture f(1);
        f.model.CloseCurrentImage();
        QCOMPARE(f.model.GetImageCount(), 0);
        QCOMPARE(f.model.GetCurrentIndex(), -1);
        QVERIFY(!f.model.GetCurrentImage());
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void setCurrentImageDeliberatelyLeavesTheIndexAtMinusOne()
    {
        SFixture f(1);
        f.CloseAll();
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetCurrentImage(pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.model.GetImage(0), pNew);
        QCOMPARE(f.model.GetCurrentIndex(), -1);
        QVERIFY(!f.model.GetCurrentImage());
        // A second one drops the first: the list is cleared, not appended to.
        const ImagePtr pSecond = MakeTestImage(8, 8, 1);
        f.model.SetCurrentImage(pSecond);
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.model.GetImage(0), pSecond);
    }

    void anIndexOfMinusOneIsResetByFourOperations_data()
    {
        QTest::addColumn<int>("nOperation");
        QTest::newRow("SetCurrentIndex(0)") << 0;
        QTest::newRow("SetImages") << 1;
        QTest::newRow("PushImage") << 2;
        QTest::newRow("Clear") << 3;
    }

    void anIndexOfMinusOneIsResetByFourOperations()
    {
        QFETCH(int, nOperation);
        SFixture f(1);
        f.CloseAll();
        const ImagePtr pFirst = MakeTestImage(9, 9, 1);
        const ImagePtr pSecond = MakeTestImage(8, 8, 1);
        f.model.SetCurrentImage(pFirst);
        if (nOperation == 0)
            f.model.SetCurrentIndex(0);
        else if (nOperation == 1)
            f.model.SetImages({pSecond});
        else if (nOperation == 2)
            f.model.PushImage(pSecond);
        else
            f.model.Clear();
        const ImagePtr expected[] = {pFirst, pSecond, pSecond, nullptr};
        QCOMPARE(f.model.GetCurrentImage(), expected[nOperation]);
        QCOMPARE(f.model.GetCurrentIndex(), nOperation == 2 ? 1 : 0);
    }

    void closeCurrentImageOnAnEmptyListEmitsNothing()
    {
        SFixture f(0);
        f.model.CloseCurrentImage();
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), kNothing);
        QCOMPARE(TakeLog(), kNothing);
    }

    void closeCurrentImageWithAnOutOfRangeIndexOnlyDecrementsTheIndex()
    {
        SFixture f(1);
        f.CloseAll();
        const ImagePtr pNew = MakeTestImage(9, 9, 1);
        f.model.SetCurrentImage(pNew);
        f.recorder.Take();
        f.model.CloseCurrentImage();
        QCOMPARE(f.model.GetCurrentIndex(), -2);
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.model.GetImage(0), pNew);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void closeCurrentImageShowsTheFollowingOne()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(1);
        f.recorder.Take();
        TakeLog();
        f.model.CloseCurrentImage();
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.model.GetCurrentImage(), f.vctImages[2]);
        QCOMPARE(f.model.GetImage(0), f.vctImages[0]);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), kNothing);
    }

    void closingTheLastImageShowsThePreviousOne()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(2);
        f.model.CloseCurrentImage();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.model.GetCurrentImage(), f.vctImages[1]);
    }

    void clearEmptiesTheList()
    {
        SFixture f(3);
        f.model.SetCurrentIndex(2);
        f.recorder.Take();
        TakeLog();
        f.model.Clear();
        QCOMPARE(f.model.GetImageCount(), 0);
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Clear"));
    }

    void clearActsOnAnEmptyListToo()
    {
        SFixture f(1);
        f.CloseAll();
        f.model.Clear();
        QCOMPARE(f.model.GetCurrentIndex(), 0);
        QCOMPARE(f.recorder.Take(), QStringLiteral("list current "));
        QCOMPARE(TakeLog(), QStringLiteral("0 Clear"));
    }

    void imagesAreSharedAndReleased()
    {
        const ImagePtr pImage = MakeTestImage(4, 4, 1);
        CImageView2DModel first;
        CImageView2DModel second;
        first.PushImage(pImage);
        second.PushImage(pImage);
        QCOMPARE(pImage.use_count(), 3L);
        first.CloseCurrentImage();
        second.SetCurrentImage(nullptr);
        QCOMPARE(pImage.use_count(), 1L);
    }

    void noMutexIsHeldWhileASignalGoesOut()
    {
        SFixture f(2);
        std::vector<std::future<int>> vctReads; // kept: the end of a future waits for its read
        int nReadInTime = 0;
        const auto read = [&] {
            vctReads.push_back(std::async(std::launch::async, [&f] {
                f.model.GetCurrentImage();
                f.model.GetImage(0);
                return f.model.GetImageCount() + f.model.GetCurrentIndex();
            }));
            if (vctReads.back().wait_for(std::chrono::seconds(5)) == std::future_status::ready)
                ++nReadInTime;
        };
        QObject::connect(&f.model, &CImageView2DModel::signal_ChangeImageList, &f.model, read);
        QObject::connect(&f.model, &CImageView2DModel::signal_ChangeCurrentIndex, &f.model, read);
        QObject::connect(&f.model, &CImageView2DModel::signal_ChangeCurrentImage, &f.model, read);
        f.model.SetImage(MakeTestImage(9, 9, 1), 0);     // 2 signals
        f.model.SetCurrentIndex(1);                      // 2
        f.model.Previous();                              // 2
        f.model.Next();                                  // 2
        f.model.SetCurrentImage(MakeTestImage(9, 9, 1)); // 1
        f.model.CloseCurrentImage();                     // 2
        f.model.PushImage(MakeTestImage(9, 9, 1));       // 3
        f.model.Clear();                                 // 2
        f.model.SetCurrentImage(MakeTestImage(9, 9, 1)); // 2
        QCOMPARE(nReadInTime, 18);
    }

    void anotherThreadReadsTheListWhileItChanges()
    {
        SFixture f(2);
        std::atomic<bool> bStop{false};
        std::atomic<long> nPixels{0};
        std::thread reader([&] {
            while (!bStop)
                if (const ImagePtr pImage = f.model.GetCurrentImage())
                    nPixels += pImage->GetWidth();
        });
        for (int i = 0; i < 20000 || nPixels == 0; ++i) {
            f.model.SetImages(f.vctImages);
            f.model.CloseCurrentImage();
        }
        bStop = true;
        reader.join();
        QVERIFY(nPixels > 0);
        QCOMPARE(f.model.GetImageCount(), 1);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DModel)
#include "tst_CImageView2DModel.moc"
