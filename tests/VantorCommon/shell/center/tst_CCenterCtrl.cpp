// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/Centre.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/dock/CSelectionDialog.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QWindow>
#include <limits>

using Vantor::Algorithms::CImage;

namespace
{
const QString kPicture = QStringLiteral("png/bricks-color.png"); // 160 x 120 x 3
const QString kOther = QStringLiteral("png/PngSuite.png");       // 256 x 256 x 3
const QString kOpenFilter =
    QStringLiteral("Files (*.bmp *.BMP *.jpg *.JPG *.jpeg *.JPEG *.png *.PNG *.gif *.GIF *.tif *.TIF *.tiff "
                   "*.TIFF *.pdf *.PDF)");
const QString kSaveFilter = QStringLiteral("Files (*.bmp *.BMP *.jpg *.JPG *.jpeg *.JPEG *.png *.PNG *.gif "
                                           "*.GIF *.tif *.TIF *.tiff *.TIFF)");

std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle()
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 30, 40));
    return pObject;
}

QStringList ItemsOf(const QDialog* pDialog)
{
    const auto* pCombo = pDialog->findChild<QComboBox*>();
    QStringList lstItems;
    for (int i = 0; i < pCombo->count(); ++i)
        lstItems << pCombo->itemText(i);
    return lstItems;
}

/// Chooses the viewer with that index in the selection dialog, by keyboard.
DialogDriver::Step Choose(int nIndex)
{
    return [nIndex](QDialog* pDialog) {
        auto* pCombo = pDialog->findChild<QComboBox*>();
        pCombo->setFocus();
        for (int i = 0; i < nIndex; ++i)
            QTest::keyClick(pCombo, Qt::Key_Down);
        QTest::keyClick(pCombo, Qt::Key_Return);
    };
}

void Cancel(QDialog* pDialog)
{
    QTest::keyClick(pDialog, Qt::Key_Escape);
}

/// Enters a path into a file dialog and presses its first button, Open or Save.
void EnterPath(QDialog* pDialog, const QString& strPath)
{
    pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(strPath);
    auto* pBox = pDialog->findChild<QDialogButtonBox*>();
    QPushButton* pButton = pBox->button(QDialogButtonBox::Open);
    QTest::mouseClick(pButton ? pButton : pBox->button(QDialogButtonBox::Save), Qt::LeftButton);
}

QSize SizeOf(const std::shared_ptr<CImage>& pImage)
{
    return pImage ? QSize(pImage->GetWidth(), pImage->GetHeight()) : QSize();
}
} // namespace

class tst_CCenterCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void fourViewersAreRegisteredThenTheCentre()
    {
        const SCentre c;
        const auto& vctItems = CMVCManager::m_vctItems;
        QCOMPARE(vctItems.size(), std::size_t(5));
        for (int i = 0; i < 4; ++i) {
            const SMVC& item = vctItems[static_cast<std::size_t>(i)];
            QCOMPARE(item.pView, static_cast<QWidget*>(c.Viewer(i)));
            QCOMPARE(item.pView->windowTitle(), QStringLiteral("Image View [%1]").arg(i));
            QVERIFY(dynamic_cast<CImageViewerCtrl*>(item.pCtrl));
            QCOMPARE(c.Viewer(i)->GetViewID(), i);
        }
        QCOMPARE(vctItems[4].pModel, static_cast<CBaseModel*>(c.pModel.get()));
        QCOMPARE(vctItems[4].pCtrl, static_cast<CBaseCtrl*>(c.pCtrl.get()));
        QCOMPARE(vctItems[4].pView, static_cast<QWidget*>(c.pView));
    }

    void itStartsWithViewer0AloneAndItsPanelsInTheDocks()
    {
        SCentre c;
        QVERIFY(c.Show());
        for (int i = 0; i < 4; ++i)
            QCOMPARE(c.Viewer(i)->isVisible(), i == 0);
        QVERIFY(c.pToolBox->widget() && c.pToolBox->widget()->isVisible());
        QVERIFY(c.pProperties->widget() && c.pProperties->widget()->isVisible());
        const QWidget* pFirst = c.pProperties->widget();
        c.Viewer(1)->slot_Press2D();
        QVERIFY(c.pProperties->widget() != pFirst);
        c.Viewer(0)->slot_Press2D();
        QCOMPARE(c.pProperties->widget(), pFirst);
    }

    void oneToolModelIsSharedByAllViewers()
    {
        SCentre c;
        QVERIFY(c.Show());
        QTest::mouseClick(c.Parts(0).Button(QStringLiteral("move.png")), Qt::LeftButton);
        for (int i = 0; i < 4; ++i)
            QVERIFY(c.Parts(i).Button(QStringLiteral("move.png"))->isChecked());
    }

    void changeLayoutTakesTheRowFirstAndHandsTheColumnFirst()
    {
        SCentre c;
        c.pCtrl->ChangeLayout(1, 2);
        QCOMPARE(c.pModel->GetColumn(), 2);
        QCOMPARE(c.pModel->GetRow(), 1);
    }

    void theViewsLayoutSignalsChangeTheLayout()
    {
        SCentre c;
        QVERIFY(c.Show());
        const auto shown = [&] {
            int n = 0;
            for (int i = 0; i < 4; ++i)
                n += c.Viewer(i)->isVisible() ? 1 : 0;
            return n;
        };
        Q_EMIT c.pView->signal_ChangeLayout2x2();
        QCOMPARE(shown(), 4);
        Q_EMIT c.pView->signal_ChangeLayout2x1();
        QCOMPARE(shown(), 2);
        QVERIFY(c.Viewer(1)->x() > 0 && c.Viewer(1)->y() == 0);
        Q_EMIT c.pView->signal_ChangeLayout1x1();
        QCOMPARE(shown(), 1);
    }

    void changeLayout1x1TwiceLogsOnlyTheFirstTimeAndOnlyIfTheSizeWasDifferent()
    {
        SCentre c;
        LogRecorder log;
        c.pCtrl->ChangeLayout(1, 1);
        QCOMPARE(log.Take(), QStringList());
        c.pCtrl->ChangeLayout(2, 2);
        log.Take();
        c.pCtrl->ChangeLayout(1, 1);
        c.pCtrl->ChangeLayout(1, 1);
        QCOMPARE(log.Take(), QStringList(QStringLiteral("0:ChangeSize(1, 1)")));
    }

    void inLayout2x1TheSelectionDialogOffersOnlyTheTwoShownViewers()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        QStringList lstItems;
        const DialogDriver driver({[&](QDialog* pDialog) {
            QVERIFY(qobject_cast<CSelectionDialog*>(pDialog));
            lstItems = ItemsOf(pDialog);
            Choose(1)(pDialog);
        }});
        QCOMPARE(c.pCtrl->SelectMVC().pView, static_cast<QWidget*>(c.Viewer(1)));
        QCOMPARE(driver.Count(), 1);
        QCOMPARE(lstItems, QStringList({QStringLiteral("Image View [0]"), QStringLiteral("Image View [1]")}));
    }

    void inLayout2x2TheDialogOffersFour()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x2();
        QStringList lstItems;
        const DialogDriver driver({[&](QDialog* pDialog) {
            lstItems = ItemsOf(pDialog);
            Choose(3)(pDialog);
        }});
        const SMVCItem item = c.pCtrl->SelectMVC();
        QCOMPARE(item.pView, static_cast<QWidget*>(c.Viewer(3)));
        QCOMPARE(item.pCtrl, static_cast<CBaseCtrl*>(c.Ctrl(3)));
        QVERIFY(item.pModel);
        QCOMPARE(lstItems.size(), 4);
        QCOMPARE(lstItems.last(), QStringLiteral("Image View [3]"));
    }

    void aSingleCellNeedsNoDialog()
    {
        SCentre c;
        QVERIFY(c.Show());
        const DialogDriver driver({});
        QCOMPARE(c.pCtrl->SelectMVC().pView, static_cast<QWidget*>(c.Viewer(0)));
        QCOMPARE(driver.Count(), 0);
    }

    void oddGridsOfferAViewerForEachCellWithinReason_data()
    {
        constexpr int kHuge = std::numeric_limits<int>::max();
        QTest::addColumn<int>("nRows");
        QTest::addColumn<int>("nColumns");
        QTest::addColumn<int>("nItems"); // 0: no dialog
        QTest::newRow("0x0") << 0 << 0 << 0;
        QTest::newRow("-1x-4") << -1 << -4 << 0;
        QTest::newRow("-2x2") << -2 << 2 << 0;
        QTest::newRow("1x3") << 1 << 3 << 3;
        QTest::newRow("3x3") << 3 << 3 << 9;
        QTest::newRow("huge") << kHuge << kHuge << 64;
        QTest::newRow("product wraps to 0 in 32 bits") << 65536 << 65536 << 64;
    }
    void oddGridsOfferAViewerForEachCellWithinReason()
    {
        QFETCH(int, nRows);
        QFETCH(int, nColumns);
        QFETCH(int, nItems);
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->ChangeLayout(nRows, nColumns);
        int nSeen = 0;
        const DialogDriver driver({[&](QDialog* pDialog) {
            nSeen = ItemsOf(pDialog).size();
            Cancel(pDialog);
        }});
        const SMVCItem item = c.pCtrl->SelectMVC();
        QCOMPARE(item.pView, nItems == 0 ? static_cast<QWidget*>(c.Viewer(0)) : nullptr);
        QCOMPARE(nSeen, nItems);
        QVERIFY(!c.pCtrl->FindImage(QStringLiteral("Image View [4]")));
    }

    void aChosenNamePastTheListGivesTheEmptyItem()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->ChangeLayout(3, 3);
        const DialogDriver driver({Choose(4), Choose(3)});
        const SMVCItem item = c.pCtrl->SelectMVC();
        QVERIFY(!item.pModel && !item.pCtrl && !item.pView);
        QCOMPARE(c.pCtrl->SelectMVC().pView, static_cast<QWidget*>(c.Viewer(3)));
        QCOMPARE(driver.Count(), 2);
    }

    void openFileGoesToTheChosenViewer()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(TestDataPath(kPicture));
        QCOMPARE(SizeOf(c.Ctrl(0)->GetImage()), QSize(160, 120));
        c.pCtrl->slot_ChangeLayout2x2();
        const DialogDriver driver({Choose(2)});
        c.pCtrl->slot_OpenFilePath(TestDataPath(kOther));
        QCOMPARE(SizeOf(c.Ctrl(2)->GetImage()), QSize(256, 256));
        QCOMPARE(SizeOf(c.Ctrl(0)->GetImage()), QSize(160, 120));
    }

    void aCancelledDialogOpensNothing()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        const DialogDriver driver({Cancel, [](QDialog* pDialog) { pDialog->close(); }, Cancel});
        c.pCtrl->OpenFile(TestDataPath(kPicture));
        int nViewID = 5;
        unsigned int nImageID = 5;
        c.pCtrl->OpenFileWithViewIDImageID(TestDataPath(kPicture), nViewID, nImageID);
        QCOMPARE(nViewID, -1);
        QCOMPARE(nImageID, 0xFFFFFFFFu);
        c.pCtrl->slot_SaveFile();
        QCOMPARE(driver.Count(), 3);
        for (int i = 0; i < 4; ++i)
            QVERIFY(!c.Ctrl(i)->GetImage());
    }

    void openFileWithViewIDImageIDTellsWhereItWentWhetherOrNotItLoaded()
    {
        SCentre c;
        QVERIFY(c.Show());
        int nViewID = 5;
        unsigned int nImageID = 5;
        c.pCtrl->OpenFileWithViewIDImageID(QStringLiteral("/nowhere/a.png"), nViewID, nImageID);
        QCOMPARE(nViewID, 0);
        QCOMPARE(nImageID, 0xFFFFFFFFu);
        c.pCtrl->OpenFileWithViewIDImageID(TestDataPath(kPicture), nViewID, nImageID);
        QCOMPARE(nViewID, 0);
        QCOMPARE(nImageID, c.Ctrl(0)->GetImageID());
    }

    void slot_SelectFilesWithAFolderFollowedByTwoImageFilesOpensOnlyTheFirstImageFile()
    {
        SCentre c;
        c.pCtrl->slot_SelectFiles({QFileInfo(TestDataPath(QStringLiteral("png"))),
                                   QFileInfo(TestDataPath(kPicture)), QFileInfo(TestDataPath(kOther))});
        QCOMPARE(SizeOf(c.Ctrl(0)->GetImage()), QSize(160, 120));
        QCOMPARE(c.Parts(0).List()->model()->rowCount(), 1);
        c.pCtrl->slot_SelectFiles({QFileInfo(TestDataPath(QStringLiteral("png"))), QFileInfo()});
        c.pCtrl->slot_SelectFiles({});
        QCOMPARE(SizeOf(c.Ctrl(0)->GetImage()), QSize(160, 120));
    }

    void theOpenDialogHasItsCaptionAndFiltersAndOpensTheChoice()
    {
        SCentre c;
        QVERIFY(c.Show());
        const DialogDriver driver({[&](QDialog* pDialog) {
            auto* pFiles = qobject_cast<QFileDialog*>(pDialog);
            QVERIFY(pFiles);
            QCOMPARE(pFiles->windowTitle(), QStringLiteral("Open File"));
            QCOMPARE(pFiles->parentWidget(), static_cast<QWidget*>(c.pView));
            QCOMPARE(pFiles->nameFilters(), QStringList({kOpenFilter, QStringLiteral("All files (*.*)")}));
            EnterPath(pDialog, TestDataPath(kPicture));
        }});
        c.pCtrl->slot_OpenFile();
        QCOMPARE(driver.Count(), 1);
        QCOMPARE(SizeOf(c.Ctrl(0)->GetImage()), QSize(160, 120));
    }

    void aButtonIsDownWhileItIsHeldAndUpAfterTheDialogThatItOpened()
    {
        SCentre c;
        QVERIFY(c.Show());
        QWindow* pWindow = c.window.windowHandle();
        const auto press = [&](const char* pIcon) {
            QPushButton* pButton = c.Parts(0).Button(QString::fromLatin1(pIcon));
            QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier,
                              pButton->mapTo(&c.window, pButton->rect().center()));
            return pButton;
        };
        QPushButton* pPlain = press("zoomfit.png");
        QVERIFY(pPlain->isDown());
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, pPlain->mapTo(&c.window, QPoint(3, 3)));
        QVERIFY(!pPlain->isDown());
        const DialogDriver driver({[&](QDialog* pDialog) {
            QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, QPoint(3, 3));
            Cancel(pDialog);
        }});
        const QPushButton* pOpen = press("open-folder.png");
        QCOMPARE(driver.Count(), 1);
        QVERIFY(!pOpen->isDown());
        QTRY_VERIFY(c.View2D(0)->hasFocus());
    }

    void aCancelledOpenDialogAsksNothingMore()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x2();
        const DialogDriver driver({Cancel});
        c.pCtrl->slot_OpenFile();
        QCOMPARE(driver.Count(), 1);
    }

    void theSaveDialogHasItsCaptionFilterAndSuffixAndSavesTheChoice()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(TestDataPath(kPicture));
        const QTemporaryDir dir;
        const DialogDriver driver({[&](QDialog* pDialog) {
            auto* pFiles = qobject_cast<QFileDialog*>(pDialog);
            QVERIFY(pFiles);
            QCOMPARE(pFiles->windowTitle(), QStringLiteral("Save Image"));
            QCOMPARE(pFiles->parentWidget(), static_cast<QWidget*>(c.pView));
            QCOMPARE(pFiles->nameFilters(), QStringList(kSaveFilter));
            QCOMPARE(pFiles->defaultSuffix(), QStringLiteral("bmp"));
            QCOMPARE(pFiles->acceptMode(), QFileDialog::AcceptSave);
            EnterPath(pDialog, dir.filePath(QStringLiteral("saved")));
        }});
        c.pCtrl->slot_SaveFile();
        QCOMPARE(driver.Count(), 1);
        CImage image;
        QCOMPARE(image.Load(dir.filePath(QStringLiteral("saved.bmp")).toStdWString()), 0);
        QCOMPARE(image.GetWidth(), 160);
    }

    void aNameWithoutASuffixGetsBmpInAFolderWithADotToo()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(TestDataPath(kPicture));
        const QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/v1.0-XXXXXX"));
        const DialogDriver driver(
            {[&](QDialog* pDialog) { EnterPath(pDialog, dir.filePath(QStringLiteral("scan"))); }});
        c.pCtrl->slot_SaveFile();
        QCOMPARE(driver.Count(), 1);
        CImage image;
        QCOMPARE(image.Load(dir.filePath(QStringLiteral("scan.bmp")).toStdWString()), 0);
        QCOMPARE(image.GetWidth(), 160);
    }

    void saveAsksForTheViewerFirst()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        c.Ctrl(1)->LoadFile(TestDataPath(kOther));
        const QTemporaryDir dir;
        const QString strPath = dir.filePath(QStringLiteral("b.png"));
        const DialogDriver driver({Choose(1), [&](QDialog* pDialog) { EnterPath(pDialog, strPath); }});
        c.pCtrl->slot_SaveFile();
        QCOMPARE(driver.Count(), 2);
        CImage image;
        QCOMPARE(image.Load(strPath.toStdWString()), 0);
        QCOMPARE(image.GetWidth(), 256);
    }

    void inLayout1x1FindImageReturnsTheImageOfViewer0ForAnyNameAtAll()
    {
        SCentre c;
        c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
        c.Ctrl(3)->LoadFile(TestDataPath(kOther));
        for (const char* pName : {"Image View [0]", "Image View [3]", "anything", ""})
            QCOMPARE(c.pCtrl->FindImage(QString::fromLatin1(pName)), c.Ctrl(0)->GetImage());
    }

    void in2x2FindImageGoesByTheName()
    {
        SCentre c;
        c.pCtrl->slot_ChangeLayout2x2();
        c.Ctrl(3)->LoadFile(TestDataPath(kOther));
        QVERIFY(c.Ctrl(3)->GetImage());
        QCOMPARE(c.pCtrl->FindImage(QStringLiteral("Image View [3]")), c.Ctrl(3)->GetImage());
        QVERIFY(!c.pCtrl->FindImage(QStringLiteral("Image View [4]")));
        QVERIFY(!c.pCtrl->FindImage(QStringLiteral("image view [3]")));
        c.pCtrl->slot_ChangeLayout2x1();
        QVERIFY(!c.pCtrl->FindImage(QStringLiteral("Image View [3]")));
    }

    void closeAndAddGoByTheViewIdentifier()
    {
        SCentre c;
        c.Ctrl(1)->LoadFile(TestDataPath(kPicture));
        const auto pObject = MakeRectangle();
        c.pCtrl->AddRectangle(1, pObject);
        c.pCtrl->AddRectangle(9, MakeRectangle());
        QCOMPARE(c.Ctrl(1)->Get2DDrawableObjects().size(), std::size_t(1));
        QVERIFY(c.Ctrl(0)->Get2DDrawableObjects().empty());
        c.pCtrl->CloseCurrentImage(9);
        c.pCtrl->CloseCurrentImage(-1);
        QVERIFY(c.Ctrl(1)->GetImage());
        c.pCtrl->CloseCurrentImage(1);
        QVERIFY(!c.Ctrl(1)->GetImage());
    }

    void objectsAreReachedByTheIndexOfTheViewer()
    {
        SCentre c;
        const auto pObject = MakeRectangle();
        const unsigned int nUID = pObject->GetUID();
        c.pCtrl->AddRectangle(2, pObject);
        QCOMPARE(c.pCtrl->Get2DDrawableObject(2, nUID), std::shared_ptr<CImageView2DDrawableObject>(pObject));
        QVERIFY(!c.pCtrl->Get2DDrawableObject(2, nUID + 1));
        for (const int nIndex :
             {-1, 0, 1, 3, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            QVERIFY(!c.pCtrl->Get2DDrawableObject(nIndex, nUID));
            QVERIFY(!c.pCtrl->Delete2DDrawableObject(nIndex, nUID));
        }
        QVERIFY(!c.pCtrl->Delete2DDrawableObject(2, nUID + 1));
        QVERIFY(c.pCtrl->Delete2DDrawableObject(2, nUID));
        QVERIFY(!c.pCtrl->Get2DDrawableObject(2, nUID));
    }

    void theViewRelaysTheSignalsOfEveryViewer()
    {
        SCentre c;
        QSignalSpy added(c.pView, &CCenterView::signal_AddDrawableObjectWithViewID);
        QSignalSpy before(c.pView, &CCenterView::signal_BeforeDeleteDrawableObjectWithViewID);
        QSignalSpy deleted(c.pView, &CCenterView::signal_DeleteDrawableObjectWithViewID);
        QSignalSpy changed(c.pView, &CCenterView::signal_ChangeDrawableObjectPropertyWithViewID);
        for (int i = 0; i < 4; ++i) {
            const auto pObject = MakeRectangle();
            const unsigned int nUID = pObject->GetUID();
            const QVariantList ids{i, 0xFFFFFFFFu, nUID};
            c.pCtrl->AddRectangle(i, pObject);
            QCOMPARE(added.count(), i + 1);
            QCOMPARE(added.last(), ids + QVariantList{pObject->GetName()});
            changed.clear();
            pObject->SetPen(QPen(Qt::green));
            QCOMPARE(changed.count(), 1);
            QCOMPARE(changed.last(), ids);
            c.pCtrl->Delete2DDrawableObject(i, nUID);
            QCOMPARE(before.count(), i + 1);
            QCOMPARE(before.last(), ids);
            QCOMPARE(deleted.last(), ids);
        }
    }

    void nobodyInTheLibraryEmitsTheCentresActive()
    {
        SCentre c;
        const QSignalSpy spy(c.pView, &CCenterView::signal_Active);
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        QTest::mouseClick(c.View2D(1), Qt::LeftButton);
        QCOMPARE(spy.count(), 0);
    }

    void convertAsksEveryViewerAndChangesNothing()
    {
        SCentre c;
        c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
        const unsigned int nImage = c.Ctrl(0)->GetImageID();
        c.pCtrl->slot_Convert();
        QCOMPARE(c.Ctrl(0)->GetImageID(), nImage);
    }

    void aGeometryActionIsInTheMenuOfEveryViewer()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x2();
        QList<QPair<int, unsigned int>> lstCalls;
        c.pCtrl->RegisterGeometryAction(
            QStringLiteral("Measure"), QIcon(),
            [&](int nView, unsigned int nUID) { lstCalls << qMakePair(nView, nUID); });
        for (int i = 0; i < 4; ++i) {
            c.View2D(i)->ShowContextMenuDrawableObject(QPointF(), 10u + static_cast<unsigned int>(i));
            QTRY_VERIFY(QApplication::activePopupWidget());
            auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                              pMenu->actionGeometry(pMenu->actions().last()).center());
            QTRY_COMPARE(lstCalls.size(), i + 1);
            QCOMPARE(lstCalls.last(), qMakePair(i, 10u + static_cast<unsigned int>(i)));
            QTRY_VERIFY(!QApplication::activePopupWidget());
        }
    }

    void undoActsOnlyInTheFocusedViewer()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        c.pCtrl->AddRectangle(0, MakeRectangle());
        c.pCtrl->AddRectangle(1, MakeRectangle());
        const auto counts = [&] {
            return QList<int>{int(c.Ctrl(0)->Get2DDrawableObjects().size()),
                              int(c.Ctrl(1)->Get2DDrawableObjects().size())};
        };
        c.pToolBox->setFocus();
        QVERIFY(!c.pCtrl->Undo());
        QCOMPARE(counts(), QList<int>({1, 1}));
        QTest::mouseClick(c.View2D(1), Qt::LeftButton);
        QTRY_VERIFY(c.View2D(1)->hasFocus());
        QVERIFY(!c.pCtrl->Undo());
        QCOMPARE(counts(), QList<int>({1, 0}));
        QVERIFY(!c.pCtrl->Redo());
        QCOMPARE(counts(), QList<int>({1, 1}));
        QTest::mouseClick(c.Parts(0).Button(QStringLiteral("zoomfit.png")), Qt::LeftButton);
        QTRY_VERIFY(c.View2D(0)->hasFocus());
        c.pCtrl->Undo();
        QCOMPARE(counts(), QList<int>({0, 1}));
    }

    void clickingInAnotherViewerSwapsThePanelsInTheDocks_data()
    {
        QTest::addColumn<QString>("strWhere");
        for (const char* pWhere : {"view", "button", "title", "tab"})
            QTest::newRow(pWhere) << QString::fromLatin1(pWhere);
    }
    void clickingInAnotherViewerSwapsThePanelsInTheDocks()
    {
        QFETCH(QString, strWhere);
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        const auto activate = [&](int nIndex) {
            QWidget* pTarget = c.View2D(nIndex);
            if (strWhere == QStringLiteral("button"))
                pTarget = c.Parts(nIndex).Button(QStringLiteral("zoomfit.png"));
            else if (strWhere == QStringLiteral("title"))
                pTarget = c.Parts(nIndex).Title();
            if (strWhere == QStringLiteral("tab"))
                pTarget->setFocus(Qt::TabFocusReason);
            else
                QTest::mouseClick(pTarget, Qt::LeftButton);
            return QList<QWidget*>{c.pToolBox->widget(), c.pProperties->widget(), c.pStatus->widget()};
        };
        activate(1);
        const QList<QWidget*> lstFirst = activate(0);
        const QList<QWidget*> lstSecond = activate(1);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(lstFirst[i] && lstSecond[i] && lstFirst[i] != lstSecond[i]);
            QVERIFY(lstSecond[i]->isVisible());
            QVERIFY(!lstFirst[i]->isVisible());
        }
        QCOMPARE(activate(0), lstFirst);
        // No panel opens a window of its own.
        for (const QWidget* pTop : QApplication::topLevelWidgets())
            QVERIFY(pTop == &c.window || !pTop->isVisible());
    }

    void partsMayGoInAnyOrder_data()
    {
        QTest::addColumn<QString>("strOrder");
        for (const char* pOrder : {"CVMD", "VCMD", "DCVM", "DVCM", "MVCD", "MCDV", "VMDC", "DMVC"})
            QTest::newRow(pOrder) << QString::fromLatin1(pOrder);
    }
    void partsMayGoInAnyOrder()
    {
        QFETCH(QString, strOrder);
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->slot_ChangeLayout2x1();
        c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
        c.pCtrl->AddRectangle(1, MakeRectangle());
        for (const QChar ch : strOrder) {
            if (ch == QLatin1Char('C')) {
                c.pCtrl.reset();
            } else if (ch == QLatin1Char('V')) {
                delete c.pView;
                c.pView = nullptr;
            } else if (ch == QLatin1Char('M')) {
                c.pModel.reset();
            } else {
                delete c.pToolBox;
                delete c.pProperties;
                delete c.pStatus;
            }
            QApplication::processEvents();
            if (!c.pCtrl)
                continue;
            c.pCtrl->Undo();
            c.pCtrl->CloseCurrentImage(1);
            c.pCtrl->AddRectangle(1, MakeRectangle());
            if (c.pView && c.pModel)
                continue;
            c.pCtrl->ChangeLayout(1, 1);
            QVERIFY(!c.pCtrl->SelectMVC().pCtrl);
            QVERIFY(!c.pCtrl->FindImage(QStringLiteral("Image View [0]")));
            c.pCtrl->OpenFile(TestDataPath(kPicture));
            c.pCtrl->slot_SaveFile();
        }
    }

    void twoCentresCanLiveInOneProcessOneAfterTheOther()
    {
        for (int i = 0; i < 2; ++i) {
            SCentre c;
            QVERIFY(c.Show());
            c.pCtrl->OpenFile(TestDataPath(kPicture));
            QCOMPARE(SizeOf(c.pCtrl->FindImage(QString())), QSize(160, 120));
            QCOMPARE(CMVCManager::m_vctItems.size(), std::size_t(5));
        }
    }

    void withoutModelViewAndDocksNothingHappens()
    {
        CCenterCtrl ctrl(nullptr, nullptr, nullptr, nullptr, nullptr);
        ctrl.ChangeLayout(2, 2);
        QVERIFY(!ctrl.SelectMVC().pCtrl);
        QVERIFY(!ctrl.FindImage(QString()));
        ctrl.OpenFile(TestDataPath(kPicture));
        ctrl.AddRectangle(0, MakeRectangle());
        QVERIFY(!ctrl.Undo());
    }
};

VANTOR_TEST_MAIN(tst_CCenterCtrl)
#include "tst_CCenterCtrl.moc"
