// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ToolParts.h"
#include "tests/support/CenterFixture.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/process/CImage2DProcessBase.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

using Vantor::Geometry::CPoint;
using Vantor::Geometry::CRectangle;

namespace
{
/// The smallest tool that there can be, with its protected parts in the open.
class TestTool : public CImage2DProcessBaseCtrl
{
public:
    using CImage2DProcessBaseCtrl::CImage2DProcessBaseCtrl;
    using CImage2DProcessBaseCtrl::CopyOf;
    using CImage2DProcessBaseCtrl::Fail;
    using CImage2DProcessBaseCtrl::ShowResult;
    using CImage2DProcessBaseCtrl::SSource;
    using CImage2DProcessBaseCtrl::TakeSource;
    bool Undo() override { return false; }
    bool Redo() override { return false; }

    bool SucceededAsInVersion10(int nResult, const std::string& strReason)
    {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        return Succeeded(nResult, strReason);
#pragma GCC diagnostic pop
    }
};

std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle(const QString& strName, double x)
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<CRectangle>(x, 2, 30, 40));
    pObject->SetName(strName);
    return pObject;
}

/// A centre with a tool, its source being Image View [0] as long as nobody chooses another one.
struct Bench {
    explicit Bench(int nColumns = 2, int nRows = 2) : fixture(nColumns, nRows) {}

    QStringList Regions() const { return ToolParts(dlg).Entries("Source ROI"); }
    void AddRectangle(int nView, const QString& strName, double x = 1)
    {
        fixture.center->AddRectangle(nView, MakeRectangle(strName, x));
    }
    unsigned int NewestUID(int nView) const
    {
        return fixture.Viewer(nView)->Get2DDrawableObjects().front()->GetUID();
    }

    CenterFixture fixture;
    mutable CImage2DProcessBaseDlg dlg{&fixture.window};
    TestTool tool{&dlg};
};
} // namespace

class tst_CImage2DProcessBaseCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void itIsBoundToWhatTheDialogShowsFirst()
    {
        Bench b;
        QCOMPARE(b.tool.GetSourceView(), b.fixture.Viewer(0));
        QCOMPARE(b.tool.GetSourceViewCtrl(), b.fixture.Ctrl(0));
        QCOMPARE(b.tool.parent(), static_cast<QObject*>(nullptr));
    }

    void withoutADialogItIsUnboundAndDoesNothing()
    {
        CenterFixture fixture(1, 1);
        TestTool tool(nullptr);
        QCOMPARE(tool.GetSourceView(), static_cast<CImageViewer*>(nullptr));
        tool.ChangeSourceImageView(QStringLiteral("Image View [0]"));
        QCOMPARE(tool.GetSourceView(), fixture.Viewer(0));
        LogRecorder log;
        fixture.center->AddRectangle(0, MakeRectangle(QStringLiteral("r"), 1));
        log.Take();
        tool.StartProcess();
        tool.EndProcess();
        QCOMPARE(log.Take(), QStringList());
        QVERIFY(!tool.TakeSource().pImage);
    }

    void withoutACentreItIsUnbound()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        TestTool tool(&dlg);
        QVERIFY(!tool.GetSourceView());
        QVERIFY(!tool.GetSourceViewCtrl());
        QVERIFY(!tool.TakeSource().pImage);
        QCOMPARE(tool.GetFailureReason(), QStringLiteral("No source viewer is chosen."));
    }

    void thePersonBindsItToAnotherViewer()
    {
        Bench b;
        b.AddRectangle(1, QStringLiteral("there"));
        ToolParts parts(b.dlg);
        QVERIFY(parts.Show());
        parts.Chooser("Source Image")->setFocus();
        parts.Key(Qt::Key_Down);
        QCOMPARE(b.tool.GetSourceView(), b.fixture.Viewer(1));
        QCOMPARE(b.tool.GetSourceViewCtrl(), b.fixture.Ctrl(1));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("there")));
    }

    void workingOnAViewerChoosesItInTheDialogWithItsSelectedShape()
    {
        Bench b;
        b.AddRectangle(1, QStringLiteral("first"));
        b.AddRectangle(1, QStringLiteral("second"));
        const auto vctObjects = b.fixture.Viewer(1)->Get2DDrawableObjects();
        QCOMPARE(vctObjects.size(), std::size_t(2));
        for (const auto& pChosen : vctObjects) {
            for (const auto& pObject : vctObjects)
                pObject->SetSelected(pObject == pChosen);
            b.tool.WorkOn(QStringLiteral("Image View [1]"));
            QCOMPARE(b.tool.GetSourceView(), b.fixture.Viewer(1));
            QCOMPARE(b.dlg.GetSourceImage(), QStringLiteral("Image View [1]"));
            QCOMPARE(b.dlg.GetSourceROIName(), pChosen->GetName());
        }
        for (const auto& pObject : vctObjects)
            pObject->SetSelected(false);
        b.tool.WorkOn(QStringLiteral("Image View [1]"));
        QCOMPARE(b.dlg.GetSourceROIIndex(), -1);
        QCOMPARE(b.Regions().size(), 2);
    }

    void anUnknownTitleUnbindsAndLeavesTheListOfRegions()
    {
        Bench b;
        b.AddRectangle(0, QStringLiteral("a"));
        b.tool.ChangeSourceImageView(QStringLiteral("image view [0]"));
        QVERIFY(!b.tool.GetSourceView());
        QVERIFY(!b.tool.GetSourceViewCtrl());
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("a")));
        b.AddRectangle(0, QStringLiteral("b"));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("a")));
        QVERIFY(!b.tool.CopyOf(b.tool.TakeSource()));
    }

    void aRecordThatIsNoViewerUnbinds()
    {
        Bench b;
        QWidget other;
        other.setWindowTitle(QStringLiteral("Image View [9]"));
        CMVCManager::PushMVC(nullptr, &other, nullptr);
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [9]"));
        QVERIFY(!b.tool.GetSourceView());
    }

    void ofTwoViewersWithTheTitleTheFirstIsTaken()
    {
        Bench b(1, 1);
        CCenterModel model;
        CCenterView view(&model, nullptr);
        CCenterCtrl second(&model, &view, nullptr, nullptr, nullptr);
        b.tool.slot_ChangeSourceImageView(QStringLiteral("Image View [0]"));
        QCOMPARE(b.tool.GetSourceView(), b.fixture.Viewer(0));
    }

    void bindingListsTheShapesInTheOrderOfTheViewer()
    {
        Bench b;
        b.AddRectangle(1, QStringLiteral("old"));
        b.AddRectangle(1, QStringLiteral("new"));
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [1]"));
        QStringList lstNames;
        for (const auto& pObject : b.fixture.Viewer(1)->Get2DDrawableObjects())
            lstNames << pObject->GetName();
        QCOMPARE(b.Regions(), lstNames);
        QCOMPARE(b.Regions().size(), 2);
    }

    void theViewerLeftIsHeardNoMore()
    {
        Bench b;
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [1]"));
        b.AddRectangle(0, QStringLiteral("a"));
        QCOMPARE(b.Regions(), QStringList());
        b.AddRectangle(1, QStringLiteral("b"));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("b")));
        b.AddRectangle(0, QStringLiteral("b"));
        QVERIFY(b.fixture.center->Delete2DDrawableObject(0, b.NewestUID(0)));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("b")));
        b.fixture.Ctrl(0)->CloseCurrentImage();
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("b")));
    }

    void bindingTheSameViewerTwiceHearsItOnce()
    {
        Bench b;
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [0]"));
        b.AddRectangle(0, QStringLiteral("a"));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("a")));
    }

    void everyShapeThatIsDrawnShowsAtTheEndOfTheList_data()
    {
        QTest::addColumn<QByteArray>("tool");
        for (const char* szTool : {"Rect", "Ellipse", "Circle"})
            QTest::newRow(szTool) << QByteArray(szTool);
    }
    void everyShapeThatIsDrawnShowsAtTheEndOfTheList()
    {
        QFETCH(QByteArray, tool);
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("first"));
        b.fixture.PressToolButton(tool);
        b.fixture.Drag(0, {60, 20}, {100, 50});
        const QString strName = b.fixture.Viewer(0)->Get2DDrawableObjects().front()->GetName();
        QCOMPARE(b.Regions(), QStringList({QStringLiteral("first"), strName}));
    }

    void aPolygonThatIsDrawnShowsInTheList()
    {
        Bench b(1, 1);
        b.fixture.PressToolButton("Polygon");
        for (const QPointF& point : {QPointF(20, 20), QPointF(80, 20), QPointF(50, 70), QPointF(20, 20)})
            b.fixture.ClickAt(0, point);
        QCOMPARE(b.Regions().size(), 1);
        QVERIFY(b.Regions().front().startsWith(QStringLiteral("Polygon")));
    }

    void aLineShowsInTheList()
    {
        Bench b(1, 1);
        auto pLine = std::make_shared<CImageView2DDrawableGeometry>();
        pLine->SetData(
            std::make_shared<Vantor::Geometry::CLine>(CPoint<double>(1, 2), CPoint<double>(30, 40)));
        b.fixture.View(0)->GetGeometryModel()->AddObject(pLine);
        QCOMPARE(b.Regions(), QStringList(pLine->GetName()));
    }

    void aRulerAndATextNeverShow()
    {
        Bench b(1, 1);
        b.fixture.PressFrameButton(0, "Ruler");
        b.fixture.Drag(0, {60, 20}, {100, 50});
        QCOMPARE(b.fixture.Counts()[0], 1);
        QCOMPARE(b.Regions(), QStringList());
        auto pText = std::make_shared<CImageView2DDrawableText>();
        b.fixture.View(0)->GetGeometryModel()->AddObject(pText);
        QCOMPARE(b.fixture.Counts()[0], 2);
        QCOMPARE(b.Regions(), QStringList());
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [0]"));
        QCOMPARE(b.Regions(), QStringList());
    }

    void anAdditionThatTheViewerDoesNotHoldAddsNothing()
    {
        Bench b(1, 1);
        b.tool.slot_AddDrawableObjectWithViewID(0, 0, 0xFFFFFFF0u, QStringLiteral("ghost"));
        QCOMPARE(b.Regions(), QStringList());
    }

    void deliberateViewAndImageOfAnAdditionAreNotCompared()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("a"));
        b.tool.slot_AddDrawableObjectWithViewID(77, 77, b.NewestUID(0), QStringLiteral("other"));
        QCOMPARE(b.Regions(), QStringList({QStringLiteral("a"), QStringLiteral("a")}));
    }

    void deletingAnObjectRemovesOnlyTheFirstEntryWithItsName()
    {
        Bench b(1, 1);
        for (const char* szName : {"a", "b", "b"})
            b.AddRectangle(0, QString::fromLatin1(szName));
        QVERIFY(b.fixture.center->Delete2DDrawableObject(0, b.NewestUID(0)));
        QCOMPARE(b.Regions(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    }

    void deliberateARenamedRegionKeepsItsEntry()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("before"));
        b.fixture.Viewer(0)->Get2DDrawableObjects().front()->SetName(QStringLiteral("after"));
        b.tool.slot_ChangeDrawableObjectProperty(b.NewestUID(0));
        QCOMPARE(b.Regions(), QStringList(QStringLiteral("before")));
    }

    void theListIsFilledAnewWhenTheObjectsAreCleared()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("a"));
        b.fixture.View(0)->GetGeometryModel()->ClearObject();
        QCOMPARE(b.Regions(), QStringList());
        b.AddRectangle(0, QStringLiteral("b"));
        b.fixture.LoadInto(0, 1);
        QCOMPARE(b.Regions(), QStringList());
    }

    void theSourceIsTheCurrentImageWithTheChosenRegion()
    {
        Bench b(1, 1);
        QVERIFY(b.tool.TakeSource().pImage == b.fixture.Ctrl(0)->GetImage());
        QVERIFY(!b.tool.TakeSource().pRegion);
        b.AddRectangle(0, QStringLiteral("a"), 5);
        b.AddRectangle(0, QStringLiteral("b"), 50);
        b.dlg.SetSourceROIIndex(1);
        const auto pRegion = std::dynamic_pointer_cast<CRectangle>(b.tool.TakeSource().pRegion);
        QVERIFY(pRegion);
        QCOMPARE(pRegion->x(), 50.0);
        QCOMPARE(b.tool.GetFailureReason(), QString());
    }

    void ofTwoRegionsWithTheNameTheLastOfTheViewerIsTaken()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("same"), 5);
        b.AddRectangle(0, QStringLiteral("same"), 50);
        const auto vctObjects = b.fixture.Viewer(0)->Get2DDrawableObjects();
        const auto pLast = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(vctObjects.back());
        QCOMPARE(vctObjects.size(), std::size_t(2));
        QVERIFY(b.tool.TakeSource().pRegion == pLast->GetData());
    }

    void aRegionThatIsGoneUnderItsNameIsNoRegion()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("before"));
        b.fixture.Viewer(0)->Get2DDrawableObjects().front()->SetName(QStringLiteral("after"));
        QVERIFY(b.tool.TakeSource().pImage);
        QVERIFY(!b.tool.TakeSource().pRegion);
    }

    void anEmptyListTextIsNoRegionEvenIfAShapeHasNoName()
    {
        Bench b(1, 1);
        b.AddRectangle(0, QStringLiteral("a"));
        b.fixture.Viewer(0)->Get2DDrawableObjects().front()->SetName(QString());
        b.dlg.ClearSourceROI();
        QVERIFY(!b.tool.TakeSource().pRegion);
    }

    void aViewerWithoutImageGivesNoSource()
    {
        Bench b;
        b.fixture.Ctrl(0)->CloseCurrentImage();
        QVERIFY(!b.fixture.Ctrl(0)->GetImage());
        const auto source = b.tool.TakeSource();
        QVERIFY(!source.pImage);
        QVERIFY(!b.tool.CopyOf(source));
        QCOMPARE(b.tool.GetFailureReason(), QStringLiteral("The source viewer shows no image."));
    }

    void theCopyIsAnotherImageWithTheSamePixels()
    {
        Bench b(1, 1);
        const auto source = b.tool.TakeSource();
        const auto pCopy = b.tool.CopyOf(source);
        QVERIFY(pCopy && pCopy != source.pImage);
        QVERIFY(pCopy->GetUID() != source.pImage->GetUID());
        QCOMPARE(PixelsOf(*pCopy), PixelsOf(*source.pImage));
    }

    void theTimeOfARunIsShownAndLoggedOnce()
    {
        Bench b(1, 1);
        LogRecorder log;
        b.tool.StartProcess();
        b.tool.EndProcess();
        const QString strMessage = ToolParts(b.dlg).Message();
        QVERIFY(QRegularExpression(QStringLiteral("^Processing Time \\d+ ms$")).match(strMessage).hasMatch());
        QCOMPARE(log.Take(), QStringList(QStringLiteral("%1:").arg(NORMAL) + strMessage));
    }

    void theTimeIsThatSinceTheLastStart()
    {
        Bench b(1, 1);
        const auto shownTime = [&] {
            b.tool.EndProcess();
            return ToolParts(b.dlg).Message().section(QLatin1Char(' '), 2, 2).toInt();
        };
        b.tool.StartProcess();
        QTRY_VERIFY(shownTime() >= 30);
        b.tool.StartProcess();
        QVERIFY(shownTime() < 30);
    }

    void aTimeWithoutAStartIsZero()
    {
        Bench b(1, 1);
        b.tool.EndProcess();
        QCOMPARE(ToolParts(b.dlg).Message(), QStringLiteral("Processing Time 0 ms"));
    }

    void theResultBecomesTheCurrentImageOfTheSource()
    {
        Bench b;
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [1]"));
        const auto pOther = b.fixture.Ctrl(0)->GetImage();
        const auto pResult = MakeTestImage(20, 10, 3, 9);
        b.tool.StartProcess();
        b.tool.ShowResult(pResult);
        QVERIFY(b.fixture.Ctrl(1)->GetImage() == pResult);
        QVERIFY(b.fixture.Ctrl(0)->GetImage() == pOther);
        QVERIFY(ToolParts(b.dlg).Message().startsWith(QStringLiteral("Processing Time ")));
    }

    void aFailureEndsTheRunOnceAndTellsWhy()
    {
        Bench b(1, 1);
        QSignalSpy ended(&b.tool, &CImage2DProcessBaseCtrl::signal_Ended);
        QSignalSpy failed(&b.tool, &CImage2DProcessBaseCtrl::signal_Failed);
        b.tool.Fail(QStringLiteral("before the start"));
        QCOMPARE(ended.size(), 0);
        b.tool.StartProcess();
        b.tool.Fail(QStringLiteral("no reason"));
        QCOMPARE(ended.size(), 1);
        QCOMPARE(failed.size(), 2);
        QCOMPARE(failed[1][0].toString(), QStringLiteral("no reason"));
        QCOMPARE(b.tool.GetFailureReason(), QStringLiteral("no reason"));
        b.tool.EndProcess();
        QCOMPARE(ended.size(), 1);
    }

    void toolsOfVersion10StillFailByTheirResult()
    {
        Bench b(1, 1);
        QSignalSpy failed(&b.tool, &CImage2DProcessBaseCtrl::signal_Failed);
        QVERIFY(b.tool.SucceededAsInVersion10(0, "unused"));
        QCOMPARE(failed.size(), 0);
        QVERIFY(!b.tool.SucceededAsInVersion10(1, "a reason"));
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(), QStringLiteral("a reason"));
    }

    void aLayoutWithoutTheSourceKeepsTheBinding()
    {
        Bench b;
        b.tool.ChangeSourceImageView(QStringLiteral("Image View [3]"));
        b.fixture.center->slot_ChangeLayout1x1();
        QCOMPARE(b.tool.GetSourceView(), b.fixture.Viewer(3));
    }

    void theBindingIsDroppedWhenTheViewerDies()
    {
        CImage2DProcessBaseDlg* pDlg = nullptr;
        std::unique_ptr<TestTool> pTool;
        QWidget owner;
        {
            CenterFixture fixture(1, 1);
            pDlg = new CImage2DProcessBaseDlg(&owner);
            pTool = std::make_unique<TestTool>(pDlg);
            QVERIFY(pTool->GetSourceView());
        }
        QVERIFY(!pTool->GetSourceView());
        QVERIFY(!pTool->GetSourceViewCtrl());
        QVERIFY(!pTool->TakeSource().pImage);
        delete pDlg;
        pTool->EndProcess();
    }

    void theBaseOfOperationsIsPolymorphic()
    {
        struct Operation : CImage2DProcessBase {
            explicit Operation(bool& bGone) : gone(bGone) {}
            ~Operation() override { gone = true; }
            bool& gone;
        };
        bool bGone = false;
        std::unique_ptr<CImage2DProcessBase> pBase = std::make_unique<Operation>(bGone);
        pBase.reset();
        QVERIFY(bGone);
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessBaseCtrl)
#include "tst_CImage2DProcessBaseCtrl.moc"
