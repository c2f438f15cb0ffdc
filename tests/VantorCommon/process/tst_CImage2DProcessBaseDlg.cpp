// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ToolParts.h"
#include "tests/support/Centre.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <climits>

namespace
{
QStringList Titles(int nCount)
{
    QStringList lstTitles;
    for (int i = 0; i < nCount; ++i)
        lstTitles << QStringLiteral("Image View [%1]").arg(i);
    return lstTitles;
}

QStringList Words(const char* szWords)
{
    return QString::fromLatin1(szWords).split(QLatin1Char(' '));
}

void CheckChooserGroup(const ToolParts& parts, const char* szImage, const char* szROI)
{
    QGroupBox* pGroup = parts.Group(szImage);
    auto* pGrid = qobject_cast<QGridLayout*>(pGroup->layout());
    QVERIFY(pGrid);
    QCOMPARE(pGrid->sizeConstraint(), QLayout::SetMinAndMaxSize);
    QCOMPARE(pGrid->contentsMargins(), QMargins());
    int nRow = 0;
    for (const char* szLabel : {szImage, szROI}) {
        auto* pLabel = qobject_cast<QLabel*>(pGrid->itemAtPosition(nRow, 0)->widget());
        QCOMPARE(pLabel->text(), QString::fromLatin1(szLabel));
        QCOMPARE(pGrid->itemAtPosition(nRow, 1)->widget(), static_cast<QWidget*>(parts.Chooser(szLabel)));
        ++nRow;
    }
}
} // namespace

class tst_CImage2DProcessBaseDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasItsSectionsFromTopToBottom()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        ToolParts parts(dlg);
        QVERIFY(parts.Show());
        const auto top = [&](const char* szTitle) { return parts.Group(szTitle)->mapTo(&dlg, QPoint()).y(); };
        QCOMPARE(top("Source Image"), top("Target Image"));
        QVERIFY(top("Source Image") < top("Parameter"));
        QCOMPARE(top("Parameter"), top("Result"));
        QVERIFY(top("Parameter") < top("Button"));
        QVERIFY(top("Button") < top("Message"));
        QCOMPARE(dlg.layout()->contentsMargins(), QMargins());
        QVERIFY(qobject_cast<QVBoxLayout*>(dlg.layout()));
    }

    void eachChooserStandsBesideItsLabel()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        CheckChooserGroup(ToolParts(dlg), "Source Image", "Source ROI");
        CheckChooserGroup(ToolParts(dlg), "Target Image", "Target ROI");
    }

    void aDerivedDialogHearsOfNoEditAnyMoreWhileItIsDestroyed()
    {
        // With an editor open, which writes its value back when it dies.
        struct CDerived : CImage2DProcessBaseDlg {
            CDerived(int& nEdits) : CImage2DProcessBaseDlg(nullptr)
            {
                const auto* pRows = AddParameterTree({{QStringLiteral("Threshold"), QStringLiteral("1")}},
                                                     new QStyledItemDelegate(this));
                connect(pRows, &QStandardItemModel::dataChanged, this, [&nEdits] { ++nEdits; });
            }
        };
        for (const bool bDestroy : {false, true}) {
            int nEdits = 0;
            auto pDlg = std::make_unique<CDerived>(nEdits);
            ToolParts parts(*pDlg);
            QVERIFY(parts.Show());
            auto* pEditor = qobject_cast<QLineEdit*>(parts.OpenEditor(1));
            QVERIFY(pEditor);
            pEditor->setText(QStringLiteral("2"));
            QCOMPARE(nEdits, 0);
            if (bDestroy)
                pDlg.reset();
            else
                pDlg->hide();
            QCOMPARE(nEdits, bDestroy ? 0 : 1);
        }
    }

    void parameterAndResultTakeTheRoom()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        ToolParts parts(dlg);
        const QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
        for (QWidget* pWidget :
             {static_cast<QWidget*>(parts.Group("Parameter")), static_cast<QWidget*>(parts.Group("Result")),
              parts.Group("Result")->parentWidget()}) {
            QCOMPARE(pWidget->sizePolicy().horizontalPolicy(), expanding.horizontalPolicy());
            QCOMPARE(pWidget->sizePolicy().verticalPolicy(), expanding.verticalPolicy());
        }
    }

    void itWantsToBe600By300()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        QCOMPARE(dlg.sizeHint(), QSize(600, 300));
    }

    void withoutACentreTheSourceListStaysEmpty()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        dlg.ChangeImageViewNumber();
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), QStringList());
        QCOMPARE(dlg.GetSourceImage(), QString());
    }

    void aCentreOf2x2ListsFourViewersAndOf1x1OnlyTheFirst()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x2();
        CImage2DProcessBaseDlg dlg(&c.window);
        ToolParts parts(dlg);
        QCOMPARE(parts.Entries("Source Image"), Titles(4));
        QCOMPARE(dlg.GetSourceImage(), QStringLiteral("Image View [0]"));
        c.pCtrl->slot_ChangeLayout1x1();
        QCOMPARE(parts.Entries("Source Image"), Titles(1));
        c.pCtrl->slot_ChangeLayout2x1();
        QCOMPARE(parts.Entries("Source Image"), Titles(2));
    }

    void theChosenViewerStaysChosenInAnotherLayout()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x1();
        CImage2DProcessBaseDlg dlg(&c.window);
        ToolParts(dlg).Chooser("Source Image")->setCurrentIndex(1);
        c.pCtrl->slot_ChangeLayout2x2();
        QCOMPARE(dlg.GetSourceImage(), QStringLiteral("Image View [1]"));
        c.pCtrl->slot_ChangeLayout1x1();
        QCOMPARE(dlg.GetSourceImage(), QStringLiteral("Image View [0]"));
    }

    void aCentreWithoutCellsEmptiesTheList()
    {
        SCentre c;
        CImage2DProcessBaseDlg dlg(&c.window);
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), Titles(1));
        c.pModel->ChangeSize(0, 2);
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), QStringList());
        c.pModel->ChangeSize(-1, 2);
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), QStringList());
    }

    void aCentreOfAbsurdSizeEndsTheListSomewhere()
    {
        SCentre c;
        CImage2DProcessBaseDlg dlg(&c.window);
        c.pModel->ChangeSize(INT_MAX, INT_MAX);
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), Titles(1024));
    }

    void theCentreRegisteredFirstIsTheOneThatCounts()
    {
        SCentre first;
        SCentre second;
        CImage2DProcessBaseDlg dlg(&first.window);
        second.pCtrl->slot_ChangeLayout2x2();
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), Titles(1));
        first.pCtrl->slot_ChangeLayout2x1();
        QCOMPARE(ToolParts(dlg).Entries("Source Image"), Titles(2));
    }

    void aViewerChosenByThePersonIsAnnounced()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x2();
        CImage2DProcessBaseDlg dlg(&c.window);
        ToolParts parts(dlg);
        QVERIFY(parts.Show());
        QSignalSpy spy(&dlg, &CImage2DProcessBaseDlg::signal_ChangeSourceImageView);
        QComboBox* pCombo = parts.Chooser("Source Image");
        pCombo->setFocus();
        parts.Key(Qt::Key_Down);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toString(), QStringLiteral("Image View [1]"));
        pCombo->setCurrentIndex(3);
        c.pCtrl->slot_ChangeLayout2x1();
        QCOMPARE(spy.count(), 1); // code is not a person
    }

    void aViewerIsChosenByMouse()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x2();
        CImage2DProcessBaseDlg dlg(&c.window);
        ToolParts parts(dlg);
        QVERIFY(parts.Show());
        QSignalSpy spy(&dlg, &CImage2DProcessBaseDlg::signal_ChangeSourceImageView);
        QComboBox* pCombo = parts.Chooser("Source Image");
        parts.Click(pCombo, pCombo->rect().center());
        QTRY_VERIFY(pCombo->view()->isVisible());
        QWidget* pList = pCombo->view()->viewport();
        const QPoint entry = pCombo->view()->visualRect(pCombo->model()->index(2, 0)).center();
        const auto choose = [&] { // a popup takes no release right after the press that opened it
            if (pList->isVisible()) {
                QTest::mouseMove(pList, entry);
                QTest::mouseClick(pList, Qt::LeftButton, Qt::NoModifier, entry);
            }
            return spy.count() == 1;
        };
        QTRY_VERIFY(choose());
        QCOMPARE(dlg.GetSourceImage(), QStringLiteral("Image View [2]"));
    }

    void theListOfRegionsKeepsItsOrder()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        ToolParts parts(dlg);
        dlg.AddSourceROI(QStringLiteral("old"));
        dlg.SetSourceROITitle({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("b")});
        QCOMPARE(parts.Entries("Source ROI"), Words("b a b"));
        dlg.AddSourceROI(QStringLiteral("c"));
        QCOMPARE(parts.Entries("Source ROI"), Words("b a b c"));
        dlg.ClearSourceROI();
        QCOMPARE(parts.Entries("Source ROI"), QStringList());
    }

    void deletingARegionRemovesOnlyTheFirstOfItsName()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        ToolParts parts(dlg);
        dlg.SetSourceROITitle({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("b")});
        dlg.DeleteSourceROI(QStringLiteral("b"));
        QCOMPARE(parts.Entries("Source ROI"), Words("a b"));
        dlg.DeleteSourceROI(QStringLiteral("B"));
        dlg.DeleteSourceROI(QStringLiteral("none"));
        dlg.DeleteSourceROI(QStringLiteral(""));
        QCOMPARE(parts.Entries("Source ROI"), Words("a b"));
    }

    void anIndexAtOrAboveTheCountIsIgnored()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        QCOMPARE(dlg.GetSourceROIIndex(), -1);
        QCOMPARE(dlg.GetSourceROIName(), QString());
        dlg.SetSourceROIIndex(0);
        QCOMPARE(dlg.GetSourceROIIndex(), -1);
        dlg.SetSourceROITitle({QStringLiteral("a"), QStringLiteral("b")});
        dlg.SetSourceROIIndex(1);
        QCOMPARE(dlg.GetSourceROIIndex(), 1);
        QCOMPARE(dlg.GetSourceROIName(), QStringLiteral("b"));
        dlg.SetSourceROIIndex(2);
        dlg.SetSourceROIIndex(INT_MAX);
        QCOMPARE(dlg.GetSourceROIIndex(), 1);
        dlg.SetSourceROIIndex(-1);
        QCOMPARE(dlg.GetSourceROIIndex(), -1);
        QCOMPARE(dlg.GetSourceROIName(), QString());
    }

    void theButtonWholeImageChoosesNoRegionAndLeavesThemListed()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        dlg.SetSourceROITitle({QStringLiteral("a"), QStringLiteral("b")});
        ToolParts parts(dlg);
        QVERIFY(parts.Show());
        auto* pWhole = parts.Group("Source Image")->findChild<QPushButton*>();
        QCOMPARE(pWhole->text(), QStringLiteral("Whole image"));
        parts.Click(pWhole, pWhole->rect().center());
        QCOMPARE(dlg.GetSourceROIIndex(), -1);
        QCOMPARE(dlg.GetSourceROIName(), QString());
        QCOMPARE(parts.Entries("Source ROI").size(), 2);
        dlg.AddSourceROI(QStringLiteral("c"));
        QCOMPARE(dlg.GetSourceROIIndex(), -1);
    }

    void theMessageIsShownAsItIs()
    {
        CImage2DProcessBaseDlg dlg(nullptr);
        dlg.SetMessage(QStringLiteral("<b>100%s</b>"));
        QCOMPARE(ToolParts(dlg).Message(), QStringLiteral("<b>100%s</b>"));
        QCOMPARE(ToolParts(dlg).Group("Message")->findChild<QLabel*>()->textFormat(), Qt::PlainText);
    }

    void deliberateTheTargetChoosersStayEmptyAndGreyed()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x2();
        CImage2DProcessBaseDlg dlg(&c.window);
        dlg.AddSourceROI(QStringLiteral("a"));
        for (const char* szLabel : {"Target Image", "Target ROI"}) {
            QCOMPARE(ToolParts(dlg).Chooser(szLabel)->count(), 0);
            QVERIFY(!ToolParts(dlg).Chooser(szLabel)->isEnabled());
        }
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessBaseDlg)
#include "tst_CImage2DProcessBaseDlg.moc"
