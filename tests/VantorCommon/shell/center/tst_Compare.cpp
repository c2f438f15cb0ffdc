// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Comparing viewers: linked zoom and place, differences, and one image in the place of another.
#include "tests/support/Centre.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewInput.h"
#include "tests/support/ViewReference.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <cmath>

namespace
{
/// Two viewers side by side with images of 400 x 300.
struct SPair : SCentre {
    bool Show2(const QSize& second = QSize(400, 300), int nChannels = 3)
    {
        pCtrl->ChangeLayout(1, 2);
        if (!Show())
            return false;
        Put(0, MakeTestImage(400, 300, 3, 1));
        Put(1, MakeTestImage(second.width(), second.height(), nChannels, 2));
        return true;
    }
    void Put(int nView, std::shared_ptr<Vantor::Algorithms::CImage> pImage) const
    {
        Model(nView)->SetImages({std::move(pImage)});
    }
    CImageView2DModel* Model(int nView) const { return Ctrl(nView)->Get2DCtrl()->GetImageModel(); }
    QPointF Middle(int nView) const
    {
        return View2D(nView)->MapToImage(QRectF(View2D(nView)->rect()).center());
    }
    bool AreTogether(int nA = 0, int nB = 1) const
    {
        return std::abs(View2D(nA)->GetZoom() / View2D(nB)->GetZoom() - 1.0) < 1e-9 &&
               (Middle(nA) - Middle(nB)).manhattanLength() * View2D(nA)->GetZoom() < 2.5; // widget pixels
    }
    /// The cross of a view; null when it has none.
    QWidget* Cross(int nView) const
    {
        for (QObject* pChild : View2D(nView)->children())
            if (auto* pWidget = qobject_cast<QWidget*>(pChild))
                if (pWidget->size() == QSize(31, 31) && pWidget->isVisible())
                    return pWidget;
        return nullptr;
    }
    CImageView2D* Over(int nView) const { return View2D(nView)->findChild<CImageView2D*>(); }
};
} // namespace

class tst_Compare : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void viewersThatAreNotLinkedGoTheirOwnWays()
    {
        SPair f;
        QVERIFY(f.Show2());
        QVERIFY(!f.pCtrl->IsLinked());
        const QRect before = f.View2D(1)->GetViewPort();
        f.View2D(0)->SetZoom(5.0, QPointF(10, 10));
        QTest::mouseMove(f.View2D(0), QPoint(50, 50));
        QCOMPARE(f.View2D(1)->GetViewPort(), before);
        QVERIFY(!f.Cross(1));
    }

    void linkedViewersFollowTheLeaderThenWhoeverMoves()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.View2D(1)->SetZoom(3.0, QPointF(20, 30));
        f.pCtrl->SetLinked(true, 1);
        QVERIFY(f.pCtrl->IsLinked());
        QVERIFY(f.AreTogether());
        QVERIFY(std::abs(f.View2D(0)->GetZoom() - 3.0) < 1e-9);
        ViewInput::Wheel(*f.View2D(0), QPointF(40, 50), 360);
        QVERIFY(f.View2D(0)->GetZoom() > 4.0);
        QVERIFY(f.AreTogether());
        f.View2D(1)->CenterOn(QPointF(17, 230));
        QVERIFY(f.AreTogether());
        QVERIFY((f.Middle(0) - QPointF(17, 230)).manhattanLength() < 1.0);
        f.pCtrl->SetLinked(false, 1);
        f.View2D(1)->CenterOn(QPointF(100, 100));
        QVERIFY(!f.AreTogether());
    }

    void aFittedViewerLetsTheOthersFitTheirOwnImages()
    {
        SPair f;
        QVERIFY(f.Show2(QSize(100, 500)));
        f.pCtrl->SetLinked(true, 0);
        f.View2D(0)->SetZoom(3.0, QPointF(20, 30));
        QVERIFY(f.AreTogether());
        f.View2D(0)->slot_ZoomFit();
        QVERIFY(f.View2D(1)->IsFitted());
        QVERIFY(f.View2D(0)->GetZoom() != f.View2D(1)->GetZoom());
    }

    void anotherSizeOrImageOfOneViewerLeavesTheOthersAlone()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.pCtrl->SetLinked(true, 0);
        f.View2D(0)->SetZoom(3.0, QPointF(20, 30));
        const QRect before = f.View2D(1)->GetViewPort();
        f.Put(0, MakeTestImage(50, 60, 1));
        QVERIFY(f.View2D(0)->IsFitted());
        QCOMPARE(f.View2D(1)->GetViewPort(), before);
    }

    void onlyViewersThatAreShownAndHaveAnImageFollow()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.Put(2, MakeTestImage(400, 300, 3));
        f.Model(1)->Clear();
        f.pCtrl->SetLinked(true, 0);
        f.View2D(0)->SetZoom(3.0, QPointF(20, 30));
        QVERIFY(f.View2D(1)->IsFitted());
        QVERIFY(f.View2D(2)->IsFitted());     // hidden
        f.View2D(1)->CenterOn(QPointF(1, 1)); // leads nobody without an image
        QVERIFY(std::abs(f.View2D(0)->GetZoom() - 3.0) < 1e-9);
    }

    void aCrossMarksTheSamePointInTheOtherViewers()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.View2D(0)->SetZoom(2.0, QPointF());
        f.pCtrl->SetLinked(true, 0);
        QWidget& view = *f.View2D(0);
        ViewInput::Move(view, QPoint(61, 71));
        const QPointF point = f.View2D(0)->MapToImage(QPointF(61, 71));
        QVERIFY(!f.Cross(0));
        QVERIFY(f.Cross(1));
        QVERIFY((f.Cross(1)->geometry().center() - f.View2D(1)->MapToWidget(point)).manhattanLength() < 3.0);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&view, &leave);
        QVERIFY(!f.Cross(1));
        ViewInput::Move(view, QPoint(62, 71));
        QVERIFY(f.Cross(1));
        f.pCtrl->SetLinked(false, 0);
        QVERIFY(!f.Cross(1));
    }

    void theDifferenceIsANewImageOfTheFirstViewer()
    {
        SPair f;
        QVERIFY(f.Show2());
        const auto pA = f.Ctrl(0)->GetImage();
        const auto pB = f.Ctrl(1)->GetImage();
        f.pCtrl->AddDifference(0, 1);
        QCOMPARE(f.Model(0)->GetImageCount(), 2);
        QCOMPARE(f.Model(1)->GetImageCount(), 1);
        const auto pMade = f.Ctrl(0)->GetImage();
        QVERIFY(pMade != pA);
        for (const QPoint& at : {QPoint(0, 0), QPoint(399, 299), QPoint(57, 133)})
            for (int n = 0; n < 3; ++n)
                QCOMPARE(int(pMade->GetPixel(at.x(), at.y())[n]),
                         std::abs(pA->GetPixel(at.x(), at.y())[n] - pB->GetPixel(at.x(), at.y())[n]));
    }

    void inTheBackgroundTheDifferenceIsAJob()
    {
        SPair f;
        QVERIFY(f.Show2());
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        f.pCtrl->SetOptions(sOptions);
        f.pCtrl->AddDifference(0, 1);
        QCOMPARE(f.Model(0)->GetImageCount(), 1);
        QTRY_COMPARE(f.Model(0)->GetImageCount(), 2);
    }

    void imagesThatCannotBeComparedAreToldAndNothingChanges()
    {
        SPair f;
        QVERIFY(f.Show2(QSize(400, 301)));
        QStringList lstFailures;
        connect(f.Ctrl(0), &CImageViewerCtrl::signal_Failed, f.pView,
                [&](const QString& strFailure) { lstFailures << strFailure; });
        f.pCtrl->AddDifference(0, 1);
        QCOMPARE(lstFailures,
                 QStringList{QStringLiteral("Cannot compare the images. The images differ in size: "
                                            "400 x 300 and 400 x 301 pixels.")});
        for (const auto& [nA, nB] : {std::pair(0, 2), std::pair(2, 0), std::pair(-1, 0), std::pair(0, 9)})
            f.pCtrl->AddDifference(nA, nB); // no image, no viewer
        QCOMPARE(f.Model(0)->GetImageCount(), 1);
        QCOMPARE(lstFailures.size(), 1);
    }

    void theOtherImageIsShownAtTheSamePlaceUntilItIsHidden()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.View2D(0)->SetZoom(1.0, QPointF(20, 30));
        f.View2D(0)->CenterOn(QPointF(210, 140));
        const QImage before = ViewReference::Grab(*f.View2D(0));
        f.pCtrl->ShowOther(0, 1);
        QVERIFY(f.Over(0));
        QCOMPARE(f.Over(0)->GetViewPort(), f.View2D(0)->GetViewPort());
        const QImage shown = ViewReference::Grab(*f.View2D(0));
        QVERIFY(shown != before);
        QCOMPARE(f.View2D(0)->GetImageUID(), f.Ctrl(0)->GetImageID());
        f.View2D(0)->SetZoom(4.0, QPointF(20, 30)); // goes along
        QVERIFY(std::abs(f.Over(0)->GetZoom() - 4.0) < 1e-9);
        QVERIFY(f.Over(0)->testAttribute(Qt::WA_TransparentForMouseEvents));
        f.View2D(0)->SetZoom(1.0, QPointF(20, 30));
        f.View2D(0)->CenterOn(QPointF(210, 140));
        QCOMPARE(ViewReference::Grab(*f.View2D(0)), shown);
        f.pCtrl->HideOther();
        QVERIFY(!f.Over(0));
        QCOMPARE(ViewReference::Grab(*f.View2D(0)), before);
    }

    void withoutAnotherImageNothingIsShown()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.pCtrl->ShowOther(0, 2);
        f.pCtrl->ShowOther(0, -1);
        f.pCtrl->ShowOther(7, 0);
        f.pCtrl->ShowOther(2, 0);
        f.pCtrl->HideOther();
        for (int i = 0; i < 3; ++i)
            QVERIFY(!f.Over(i));
    }

    void aCentreThatIsDestroyedTakesTheOtherImageAlong()
    {
        SPair f;
        QVERIFY(f.Show2());
        f.pCtrl->ShowOther(0, 1);
        f.pCtrl->SetLinked(true, 0);
        f.pCtrl.reset();
        QVERIFY(!f.Over(0));
    }
};

VANTOR_TEST_MAIN(tst_Compare)
#include "tst_Compare.moc"
