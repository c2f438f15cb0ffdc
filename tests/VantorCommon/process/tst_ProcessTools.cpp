// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// What the tools have in common, asked of each of them.
#include "ToolBench.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogger.h>

#include <QLineEdit>
#include <QStringListModel>
#include <functional>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;

namespace
{
using RegionPtr = std::shared_ptr<Vantor::Geometry::CGeometry>;

/// How the centre opens a tool, and the title of its window.
struct SHow {
    void (CCenterCtrl::*pSlot)();
    const char* szTitle;

    void open(CCenterCtrl& center) const { (center.*pSlot)(); }
};
template <class Tool> constexpr SHow kHow{};
template <> constexpr SHow kHow<MedianTool>{&CCenterCtrl::slot_OpenMedianTool, "Median Filter"};
template <> constexpr SHow kHow<SobelTool>{&CCenterCtrl::slot_OpenSobelTool, "Sobel Filter"};
template <> constexpr SHow kHow<OCRTool>{&CCenterCtrl::slot_OpenOCRTool, "OCR"};

struct SExpected {
    QStringList lstKeys;                                  ///< of the values 0, 1, 2
    std::function<int(CImage&, const RegionPtr&)> filter; ///< what a run with the default type calls
};

template <class Tool> SExpected Expected();
template <> SExpected Expected<MedianTool>()
{
    return {{QStringLiteral("EImage2DProcessMedian3x3"), QStringLiteral("EImage2DProcessMedian5x5"),
             QStringLiteral("EImage2DProcessMedianNxN")},
            [](CImage& image, const RegionPtr& pRegion) {
                return image.MedianFilter(1, 1, pRegion.get(), static_cast<ERegionMode>(1), 0.0);
            }};
}
template <> SExpected Expected<SobelTool>()
{
    return {{QStringLiteral("EImage2DProcessSobelX"), QStringLiteral("EImage2DProcessSobelY"),
             QStringLiteral("EImage2DProcessSobelXY")},
            [](CImage& image, const RegionPtr& pRegion) {
                return image.SobelX(pRegion.get(), static_cast<ERegionMode>(1), 0.0);
            }};
}

QByteArray Filtered(const SExpected& expected, const CImage& image, const RegionPtr& pRegion)
{
    return PixelsAfter(image, [&](CImage& copy) { QCOMPARE(expected.filter(copy, pRegion), 0); });
}

QStringList TimeLines(LogRecorder& log)
{
    return log.Take().filter(QStringLiteral("Processing Time"));
}

bool HasFocus(const QWidget* pWindow)
{
    return QTest::qWaitFor([&] { return QApplication::activeWindow() == pWindow; });
}

/// What every tool does alike.
template <class Tool> struct Checks {
    using Bench = ToolBench<Tool>;
    using Model = typename Tool::Model;
    using Dlg = typename Tool::Dlg;
    using Ctrl = typename Tool::Ctrl;

    static void aValueThatIsNoTextIsSentAsText()
    {
        Bench b;
        QSignalSpy spy(&b.dlg, &Dlg::signal_ChangeData);
        b.parts.Rows()->item(0, 1)->setData(7, Qt::DisplayRole);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0], (QVariantList{0, QStringLiteral("7")}));
        QStandardItemModel other(1, 2);
        b.dlg.slot_DataChanged(other.index(0, 1), other.index(0, 1), {});
        b.dlg.slot_DataChanged({}, {}, {});
        QCOMPARE(spy.count(), 1);
    }

    static void withoutAModelNothingIsSentAndNothingRuns()
    {
        CenterFixture fixture(1, 1);
        Dlg dlg(nullptr, &fixture.window);
        Ctrl ctrl(nullptr, &dlg);
        ToolParts parts(dlg);
        QSignalSpy spy(&dlg, &Dlg::signal_ChangeData);
        parts.Rows()->item(0, 1)->setText(QStringLiteral("new"));
        QCOMPARE(spy.count(), 0);
        const auto pImage = fixture.Ctrl(0)->GetImage();
        QVERIFY(parts.Show());
        parts.ClickRun();
        ctrl.slot_ChangeData(0, QStringLiteral("new"));
        QVERIFY(fixture.Ctrl(0)->GetImage() == pImage);
        QCOMPARE(parts.Message(), QString());
        Model model;
        Ctrl alone(&model, nullptr);
        Tool::Run(alone);
        QVERIFY(fixture.Ctrl(0)->GetImage() == pImage);
    }

    static void runWithoutABoundViewerChangesAndShowsNothing()
    {
        Bench b;
        const auto pImage = b.Image();
        b.ctrl.ChangeSourceImageView(QStringLiteral("nobody"));
        LogRecorder log;
        b.parts.ClickRun();
        QVERIFY(b.Image() == pImage);
        QCOMPARE(b.parts.Message(), QString());
        QCOMPARE(log.Take(), QStringList());
        QCOMPARE(b.ctrl.GetFailureReason(), QStringLiteral("No source viewer is chosen."));
    }

    static void runOnAViewerWithoutImageChangesAndShowsNothing()
    {
        Bench b;
        b.fixture.Ctrl(0)->CloseCurrentImage();
        LogRecorder log;
        b.parts.ClickRun();
        QVERIFY(!b.Image());
        QCOMPARE(b.parts.Message(), QString());
        QCOMPARE(log.Take(), QStringList());
    }

    static void aRunWritesOneLineWithTheTimeAndShowsIt()
    {
        Bench b;
        LogRecorder log;
        b.parts.ClickRun();
        const QString strMessage = b.parts.Message();
        const QRegularExpression form(QStringLiteral("^Processing Time \\d+ ms$"));
        QVERIFY(form.match(strMessage).hasMatch());
        QCOMPARE(TimeLines(log), QStringList(QStringLiteral("%1:").arg(NORMAL) + strMessage));
    }

    static void returnInTheTreeStartsNoRun()
    {
        Bench b;
        QSignalSpy spy(&b.dlg, &Dlg::signal_Run);
        b.parts.Click(b.parts.Tree()->viewport(), b.parts.CellCentre(1));
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
            b.parts.Key(key);
        b.parts.Chooser("Source Image")->setFocus();
        b.parts.Key(Qt::Key_Return);
        QCOMPARE(spy.count(), 0);
        QVERIFY(b.dlg.isVisible());
        b.parts.ClickRun();
        QCOMPARE(spy.count(), 1);
    }

    static void runIsPressedByKeyOnItself()
    {
        Bench b;
        QSignalSpy spy(&b.dlg, &Dlg::signal_Run);
        b.parts.RunButton()->setFocus();
        b.parts.Key(Qt::Key_Space);
        QCOMPARE(spy.count(), 1);
    }

    static void undoAndRedoOfTheToolItselfDoNothing()
    {
        Bench b;
        b.parts.ClickRun();
        const auto pImage = b.Image();
        QVERIFY(!b.ctrl.Undo());
        QVERIFY(!b.ctrl.Redo());
        QVERIFY(b.Image() == pImage);
    }

    static void theCentreMakesOneDialogAndShowsItAgain()
    {
        CenterFixture fixture(1, 1);
        kHow<Tool>.open(*fixture.center);
        QList<Dlg*> lstDialogs = fixture.centerView->template findChildren<Dlg*>();
        QCOMPARE(lstDialogs.size(), 1);
        Dlg* pDlg = lstDialogs.front();
        QVERIFY(HasFocus(pDlg));
        QVERIFY(pDlg->isWindow() && !pDlg->isModal());
        QCOMPARE(pDlg->windowTitle(), QString::fromLatin1(kHow<Tool>.szTitle));
        QCOMPARE(ToolParts(*pDlg).Entries("Source Image"), QStringList(QStringLiteral("Image View [0]")));
        QTest::keyClick(pDlg->windowHandle(), Qt::Key_Escape);
        QVERIFY(!pDlg->isVisible());
        kHow<Tool>.open(*fixture.center);
        QVERIFY(HasFocus(pDlg));
        QVERIFY(Activate(fixture.window));
        kHow<Tool>.open(*fixture.center);
        QVERIFY(HasFocus(pDlg));
        QCOMPARE(fixture.centerView->template findChildren<Dlg*>().size(), 1);
    }

    static void theToolOfTheCentreRunsAndRegionsAreDrawnWhileItIsOpen()
    {
        CenterFixture fixture(1, 1);
        kHow<Tool>.open(*fixture.center);
        auto* pDlg = fixture.centerView->template findChild<Dlg*>();
        QVERIFY(HasFocus(pDlg));
        QVERIFY(Activate(fixture.window));
        fixture.DrawRectangle(0, {20, 30}, {90, 80});
        ToolParts parts(*pDlg);
        QCOMPARE(parts.Entries("Source ROI").size(), 1);
        QVERIFY(parts.Show());
        parts.ClickRun();
        QVERIFY(parts.Message().startsWith(QStringLiteral("Processing Time")));
    }

    static void theToolIsGoneBeforeTheControllersOfTheViewers()
    {
        CenterFixture fixture(1, 1);
        kHow<Tool>.open(*fixture.center);
        QStringList lstGone;
        const auto watch = [&](QObject* pObject, const QString& strName) {
            QObject::connect(pObject, &QObject::destroyed, pObject,
                             [&lstGone, strName] { lstGone << strName; });
        };
        watch(fixture.Ctrl(0), QStringLiteral("viewer"));
        watch(fixture.centerView->template findChild<Dlg*>(), QStringLiteral("dialog"));
        fixture.center.reset();
        QCOMPARE(lstGone, QStringList({QStringLiteral("dialog"), QStringLiteral("viewer")}));
    }

    static void aDialogThatDiedIsMadeAnew()
    {
        CenterFixture fixture(1, 1);
        kHow<Tool>.open(*fixture.center);
        delete fixture.centerView->template findChild<Dlg*>();
        kHow<Tool>.open(*fixture.center);
        auto* pDlg = fixture.centerView->template findChild<Dlg*>();
        QVERIFY(pDlg);
        QVERIFY(HasFocus(pDlg));
        ToolParts parts(*pDlg);
        parts.ClickRun();
        QVERIFY(parts.Message().startsWith(QStringLiteral("Processing Time")));
    }
};

/// What the filters do alike: one parameter, the type, and a new image.
template <class Tool> struct FilterChecks {
    using Enum = typename Tool::Enum;
    using Bench = ToolBench<Tool>;
    using Model = typename Tool::Model;
    using Dlg = typename Tool::Dlg;
    using Ctrl = typename Tool::Ctrl;

    static void theTypesHaveTheirKeysAndValuesAndTheFirstIsTheDefault()
    {
        const QMetaEnum keys = QMetaEnum::fromType<Enum>();
        QCOMPARE(keys.keyCount(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(QString::fromLatin1(keys.valueToKey(i)), Expected<Tool>().lstKeys[i]);
        Model model;
        QCOMPARE(static_cast<int>(model.GetType()), 0);
        model.SetType(static_cast<Enum>(2));
        QCOMPARE(static_cast<int>(model.GetType()), 2);
        QVERIFY(!model.parent());
        static_assert(std::is_same<std::underlying_type_t<Enum>, int>::value, "holds -1");
    }

    static void theTreeHasOneRowWithTheTypeOfTheModel()
    {
        Model model;
        model.SetType(static_cast<Enum>(1));
        Dlg dlg(&model, nullptr);
        const ToolParts parts(dlg);
        QCOMPARE(parts.Rows()->rowCount(), 1);
        QCOMPARE(parts.Rows()->columnCount(), 2);
        QCOMPARE(parts.Cell(0, 0), QStringLiteral("Type"));
        QCOMPARE(parts.Cell(0, 1), Expected<Tool>().lstKeys[1]);
        QVERIFY(parts.Tree()->isHeaderHidden());
        QVERIFY(dynamic_cast<typename Tool::Delegate*>(parts.Tree()->itemDelegateForColumn(1)));
        QVERIFY(!parts.Tree()->itemDelegateForColumn(0));
    }

    static void theSectionsAreFilledAsTheToolNeedsThem()
    {
        Model model;
        Dlg dlg(&model, nullptr);
        const ToolParts parts(dlg);
        QVERIFY(parts.Group("Result")->findChildren<QWidget*>().isEmpty());
        QCOMPARE(parts.Group("Button")->findChildren<QPushButton*>().size(), 1);
        QCOMPARE(parts.RunButton()->text(), QStringLiteral("Run"));
        QCOMPARE(parts.RunButton()->sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
        QCOMPARE(parts.RunButton()->sizePolicy().verticalPolicy(), QSizePolicy::Maximum);
        for (const char* szGroup : {"Parameter", "Button"}) {
            QCOMPARE(parts.Group(szGroup)->layout()->contentsMargins(), QMargins());
            QCOMPARE(parts.Group(szGroup)->layout()->spacing(), 0);
        }
    }

    static void onlyTheCellOfTheValueHasAnEditorOfTheDelegate()
    {
        const typename Tool::Delegate delegate;
        QStandardItemModel rows(2, 3);
        QStringListModel strings({QStringLiteral("a")});
        QWidget parent;
        const QStyleOptionViewItem option;
        for (int nRow = 0; nRow < 2; ++nRow)
            for (int nColumn = 0; nColumn < 3; ++nColumn) {
                const auto* pEditor = delegate.createEditor(&parent, option, rows.index(nRow, nColumn));
                QCOMPARE(pEditor != nullptr, nRow == 0 && nColumn == 1);
            }
        QVERIFY(!delegate.createEditor(&parent, option, strings.index(0, 0)));
        QVERIFY(!delegate.createEditor(&parent, option, QModelIndex()));
    }

    static void theDelegateWritesTheKeyIntoTheFirstRowOnly()
    {
        const typename Tool::Delegate delegate;
        QStandardItemModel rows(2, 2);
        QComboBox combo;
        combo.addItems({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")});
        combo.setCurrentIndex(2);
        QLineEdit line(QStringLiteral("text"));
        delegate.setModelData(&line, &rows, rows.index(0, 1));
        delegate.setModelData(&combo, &rows, rows.index(1, 1));
        QVERIFY(!rows.index(0, 1).data().isValid());
        QVERIFY(!rows.index(1, 1).data().isValid());
        delegate.setModelData(&combo, &rows, rows.index(0, 1));
        QCOMPARE(rows.index(0, 1).data(Qt::EditRole).toString(), Expected<Tool>().lstKeys[2]);
    }

    static void theTypeIsChosenByDoubleClickAndKeys()
    {
        Bench b;
        auto* pCombo = qobject_cast<QComboBox*>(b.parts.OpenEditor(1));
        QVERIFY(pCombo);
        QStringList lstEntries;
        for (int i = 0; i < pCombo->count(); ++i)
            lstEntries << pCombo->itemText(i);
        QCOMPARE(lstEntries, Expected<Tool>().lstKeys);
        b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Return);
        QTRY_VERIFY(!b.parts.Editor());
        QCOMPARE(static_cast<int>(b.model.GetType()), 1);
        QCOMPARE(b.parts.Cell(0, 1), Expected<Tool>().lstKeys[1]);
    }

    static void deliberateTheEditorOpensOnTheFirstTypeWhateverIsStored()
    {
        Bench b;
        b.ctrl.slot_ChangeData(0, Expected<Tool>().lstKeys[2]);
        b.parts.Rows()->item(0, 1)->setText(Expected<Tool>().lstKeys[2]);
        auto* pCombo = qobject_cast<QComboBox*>(b.parts.OpenEditor(1));
        QVERIFY(pCombo);
        QCOMPARE(pCombo->currentText(), Expected<Tool>().lstKeys[0]);
        b.parts.Key(Qt::Key_Escape);
        QTRY_VERIFY(!b.parts.Editor());
        QVERIFY(b.dlg.isVisible());
        QCOMPARE(static_cast<int>(b.model.GetType()), 2);
        QCOMPARE(b.parts.Cell(0, 1), Expected<Tool>().lstKeys[2]);
    }

    static void deliberateANewLabelIsSentLikeAValueAndStoresMinus1()
    {
        Bench b;
        QSignalSpy spy(&b.dlg, &Dlg::signal_ChangeData);
        QVERIFY(b.parts.OpenEditor(0));
        b.parts.Type(QStringLiteral("Kind"));
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(spy.count(), 1);
        QCOMPARE(spy[0], (QVariantList{0, QStringLiteral("Kind")}));
        QCOMPARE(static_cast<int>(b.model.GetType()), -1);
    }

    static void otherCodesAreIgnored()
    {
        Bench b;
        for (const int nCode : {1, -1, 2})
            b.ctrl.slot_ChangeData(nCode, Expected<Tool>().lstKeys[1]);
        QCOMPARE(static_cast<int>(b.model.GetType()), 0);
        b.ctrl.slot_ChangeData(0, Expected<Tool>().lstKeys[1]);
        QCOMPARE(static_cast<int>(b.model.GetType()), 1);
    }

    static void withoutARegionTheWholeImageIsProcessed()
    {
        Bench b;
        const auto pBefore = b.Image();
        const QByteArray before = b.Pixels();
        b.parts.ClickRun();
        QVERIFY(b.Image() != pBefore);
        QCOMPARE(PixelsOf(*pBefore), before);
        QVERIFY(b.Pixels() != before);
        QCOMPARE(b.Pixels(), Filtered(Expected<Tool>(), *pBefore, nullptr));
        QCOMPARE(b.ctrl.GetFailureReason(), QString());
    }

    static void withARegionOnlyItsPixelsAreProcessed()
    {
        Bench b;
        const auto pBefore = b.Image();
        b.DrawRegion();
        QCOMPARE(b.parts.Entries("Source ROI").size(), 1);
        const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(
            b.fixture.Viewer(0)->Get2DDrawableObjects().front());
        const RegionPtr pRegion = pShape->GetData();
        b.parts.ClickRun();
        QVERIFY(b.Pixels() != PixelsOf(*pBefore));
        QVERIFY(b.Pixels() != Filtered(Expected<Tool>(), *pBefore, nullptr));
        QCOMPARE(b.Pixels(), Filtered(Expected<Tool>(), *pBefore, pRegion));
        for (const QPoint& outside : {QPoint(19, 50), QPoint(91, 50), QPoint(50, 29), QPoint(50, 81)})
            for (int c = 0; c < 3; ++c)
                QCOMPARE(b.Image()->GetPixel(outside.x(), outside.y())[c],
                         pBefore->GetPixel(outside.x(), outside.y())[c]);
    }

    static void aRunOnAnotherSourceLeavesTheFirst()
    {
        Bench b(2, 1);
        b.parts.Chooser("Source Image")->setFocus();
        b.parts.Key(Qt::Key_Down);
        const auto pFirst = b.fixture.Ctrl(0)->GetImage();
        const auto pSecond = b.fixture.Ctrl(1)->GetImage();
        b.parts.ClickRun();
        QVERIFY(b.fixture.Ctrl(0)->GetImage() == pFirst);
        QCOMPARE(PixelsOf(*b.fixture.Ctrl(1)->GetImage()), Filtered(Expected<Tool>(), *pSecond, nullptr));
    }

    static void aRunClearsTheListOfRegionsAndUndoByKeysBringsImageAndRegionsBack()
    {
        Bench b;
        const auto pBefore = b.Image();
        b.DrawRegion();
        QCOMPARE(b.parts.Entries("Source ROI").size(), 1);
        const QStringList lstRegions = b.parts.Entries("Source ROI");
        const auto pShape = b.fixture.Viewer(0)->Get2DDrawableObjects().front();
        b.parts.ClickRun();
        QCOMPARE(b.fixture.Counts()[0], 0);
        QCOMPARE(b.parts.Entries("Source ROI"), QStringList());
        const auto pAfter = b.Image();
        b.PressUndo();
        QVERIFY(b.Image() == pBefore);
        QCOMPARE(b.fixture.Counts()[0], 1);
        QVERIFY(b.fixture.Viewer(0)->Get2DDrawableObjects().front() == pShape);
        QCOMPARE(b.parts.Entries("Source ROI"), lstRegions);
        b.fixture.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(b.Image() == pAfter);
        QCOMPARE(b.parts.Entries("Source ROI"), QStringList());
    }

    static void undoneInTheViewTheSameRunCanBeRepeated()
    {
        Bench b;
        const auto pBefore = b.Image();
        b.DrawRegion();
        QCOMPARE(b.parts.Entries("Source ROI").size(), 1);
        b.parts.ClickRun();
        const QByteArray first = b.Pixels();
        b.PressUndo();
        QVERIFY(b.Image() == pBefore);
        QVERIFY(b.parts.Show());
        b.parts.ClickRun();
        QCOMPARE(b.Pixels(), first);
    }
};

using Check = void (*)();

struct SNamedCheck {
    const char* szName;
    Check run;
};

#define CHECK(name)                                                                                          \
    {                                                                                                        \
#name, &C::name                                                                                      \
    }
template <class Tool> std::vector<SNamedCheck> AllChecks()
{
    using C = Checks<Tool>;
    return {
        CHECK(aValueThatIsNoTextIsSentAsText),
        CHECK(withoutAModelNothingIsSentAndNothingRuns),
        CHECK(runWithoutABoundViewerChangesAndShowsNothing),
        CHECK(runOnAViewerWithoutImageChangesAndShowsNothing),
        CHECK(aRunWritesOneLineWithTheTimeAndShowsIt),
        CHECK(returnInTheTreeStartsNoRun),
        CHECK(runIsPressedByKeyOnItself),
        CHECK(undoAndRedoOfTheToolItselfDoNothing),
        CHECK(theCentreMakesOneDialogAndShowsItAgain),
        CHECK(theToolOfTheCentreRunsAndRegionsAreDrawnWhileItIsOpen),
        CHECK(theToolIsGoneBeforeTheControllersOfTheViewers),
        CHECK(aDialogThatDiedIsMadeAnew),
    };
}

template <class Tool> std::vector<SNamedCheck> AllFilterChecks()
{
    using C = FilterChecks<Tool>;
    return {
        CHECK(theTypesHaveTheirKeysAndValuesAndTheFirstIsTheDefault),
        CHECK(theTreeHasOneRowWithTheTypeOfTheModel),
        CHECK(theSectionsAreFilledAsTheToolNeedsThem),
        CHECK(onlyTheCellOfTheValueHasAnEditorOfTheDelegate),
        CHECK(theDelegateWritesTheKeyIntoTheFirstRowOnly),
        CHECK(theTypeIsChosenByDoubleClickAndKeys),
        CHECK(deliberateTheEditorOpensOnTheFirstTypeWhateverIsStored),
        CHECK(deliberateANewLabelIsSentLikeAValueAndStoresMinus1),
        CHECK(otherCodesAreIgnored),
        CHECK(withoutARegionTheWholeImageIsProcessed),
        CHECK(withARegionOnlyItsPixelsAreProcessed),
        CHECK(aRunOnAnotherSourceLeavesTheFirst),
        CHECK(aRunClearsTheListOfRegionsAndUndoByKeysBringsImageAndRegionsBack),
        CHECK(undoneInTheViewTheSameRunCanBeRepeated),
    };
}
#undef CHECK
} // namespace

Q_DECLARE_METATYPE(Check)

class tst_ProcessTools : public QObject
{
    Q_OBJECT

private:
    static void AddRows(const char* szTool, const std::vector<SNamedCheck>& vctChecks)
    {
        for (const SNamedCheck& check : vctChecks)
            QTest::addRow("%s: %s", szTool, check.szName) << check.run;
    }

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void eachTool_data()
    {
        QTest::addColumn<Check>("check");
        AddRows("median", AllChecks<MedianTool>());
        AddRows("Sobel", AllChecks<SobelTool>());
        AddRows("OCR", AllChecks<OCRTool>());
    }
    void eachTool()
    {
        QFETCH(Check, check);
        check();
    }

    void eachFilter_data()
    {
        QTest::addColumn<Check>("check");
        AddRows("median", AllFilterChecks<MedianTool>());
        AddRows("Sobel", AllFilterChecks<SobelTool>());
    }
    void eachFilter() { eachTool(); }
    void aDialogThatDiesWithAnOpenEditorLeavesTheTypeAlone()
    {
        DieWithAnOpenType<MedianTool>();
        DieWithAnOpenType<SobelTool>();
    }

    void aDialogThatDiesWithAnOpenEditorLeavesTheLanguageAlone()
    {
        CImage2DProcessOCRModel model;
        model.SetLanguageCode(QStringLiteral("vie"));
        DieWithAnOpenEditor<OCRTool>(model);
        QCOMPARE(model.GetLanguageCode(), QStringLiteral("vie"));
    }

private:
    /// The first value's editor is open, with its last entry, while the dialog goes and its controller stays.
    template <class Tool> static void DieWithAnOpenEditor(typename Tool::Model& model)
    {
        const CenterFixture fixture(1, 1);
        auto pDlg = std::make_unique<typename Tool::Dlg>(&model, nullptr);
        const typename Tool::Ctrl ctrl(&model, pDlg.get());
        ToolParts parts(*pDlg);
        QVERIFY(parts.Show());
        auto* pEditor = qobject_cast<QComboBox*>(parts.OpenEditor(1));
        QVERIFY(pEditor);
        pEditor->setCurrentIndex(pEditor->count() - 1);
        pDlg.reset();
    }

    template <class Tool> static void DieWithAnOpenType()
    {
        typename Tool::Model model;
        model.SetType(static_cast<typename Tool::Enum>(1));
        DieWithAnOpenEditor<Tool>(model);
        QCOMPARE(static_cast<int>(model.GetType()), 1);
    }
};

VANTOR_TEST_MAIN(tst_ProcessTools)
#include "tst_ProcessTools.moc"
