// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/Centre.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewerParts.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view3d/CImageView3D.h>

#include <QApplication>
#include <QMenu>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QVBoxLayout>

using Vantor::Algorithms::CImage;

namespace
{
constexpr int kViewID = 2;

struct SFixture {
    QWidget window;
    CToolBoxDockView toolBox{&window};
    CPropertyDockView properties{&window};
    CStatusBarDockView status{&window};
    CImageViewerModel model;
    CImageView2DToolModel tool;
    CImageViewer* pViewer = new CImageViewer(&model, kViewID, &window);
    std::unique_ptr<CImageViewerCtrl> pCtrl =
        std::make_unique<CImageViewerCtrl>(pViewer, &model, &tool, &toolBox, &properties, &status);
    CImageView2D* pView2D = pViewer->findChild<CImageView2D*>();
    CStatusBarView* pStatusBar = pViewer->findChild<CStatusBarView*>();
    ViewerParts parts{pViewer};

    SFixture()
    {
        auto* pLayout = new QVBoxLayout(&window);
        for (QWidget* pWidget : {static_cast<QWidget*>(&toolBox), static_cast<QWidget*>(&properties),
                                 static_cast<QWidget*>(&status), static_cast<QWidget*>(pViewer)})
            pLayout->addWidget(pWidget);
        pLayout->setStretch(3, 1);
    }

    bool Show()
    {
        window.resize(900, 900);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        pView2D->setFocus();
        return QTest::qWaitFor([this] { return pView2D->hasFocus(); });
    }

    void Press(const char* pIcon) const
    {
        QTest::mouseClick(parts.Button(QString::fromLatin1(pIcon)), Qt::LeftButton);
    }
};

std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle()
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 30, 40));
    return pObject;
}

const QString kDocument = QStringLiteral("pdf/11-pages.pdf");
const QString kPicture = QStringLiteral("png/bricks-color.png");
} // namespace

class tst_CImageViewerCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void theTripleIsRegistered()
    {
        const SFixture f;
        QCOMPARE(CMVCManager::m_vctItems.size(), std::size_t(1));
        const SMVC& item = CMVCManager::m_vctItems.front();
        QCOMPARE(item.pModel, static_cast<const CBaseModel*>(&f.model));
        QCOMPARE(item.pView, static_cast<QWidget*>(f.pViewer));
        QCOMPARE(item.pCtrl, static_cast<CBaseCtrl*>(f.pCtrl.get()));
    }

    void itPutsBothViewsAndTheStatusBarIntoTheViewer()
    {
        SFixture f;
        QVERIFY(f.Show());
        QVERIFY(f.pView2D->isVisible());
        auto* pView3D = dynamic_cast<CImageView3D*>(f.pView2D->parentWidget()->layout()->itemAt(1)->widget());
        QVERIFY(pView3D && !pView3D->isVisible());
        QVERIFY(f.pStatusBar && !f.pStatusBar->isVisible());
        QCOMPARE(f.pCtrl->GetViewID(), kViewID);
    }

    void theViewAndTheControllersInsideAreGivenOut()
    {
        SFixture f;
        QVERIFY(f.pView2D);
        QCOMPARE(f.pCtrl->Get2DView(), f.pView2D);
        QVERIFY(f.pCtrl->Get2DCtrl());
        QVERIFY(f.pCtrl->Get3DCtrl());
        delete f.pView2D;
        QCOMPARE(f.pCtrl->Get2DView(), nullptr);
    }

    void theKeyboardIsGivenToTheViewThatIsShown()
    {
        SFixture f;
        QVERIFY(f.Show());
        auto* pView3D = f.pViewer->findChild<CImageView3D*>();
        for (QWidget* pShown : {static_cast<QWidget*>(pView3D), static_cast<QWidget*>(f.pView2D)}) {
            pShown == pView3D ? f.pViewer->slot_Press3D() : f.pViewer->slot_Press2D();
            f.toolBox.setFocus();
            QTRY_VERIFY(!pShown->hasFocus());
            f.pViewer->FocusVisibleView();
            QTRY_VERIFY(pShown->hasFocus());
        }
    }

    void anEmptyViewerAnswersWithEmptyValues()
    {
        SFixture f;
        QVERIFY(!f.pCtrl->GetImage());
        QCOMPARE(f.pCtrl->GetImageID(), 0xFFFFFFFFu);
        QVERIFY(f.pCtrl->Get2DDrawableObjects().empty());
        QVERIFY(!f.pCtrl->Delete2DDrawableObject(1));
        f.pCtrl->CloseCurrentImage();
        f.pCtrl->AddRectangle(nullptr);
        f.pCtrl->SaveFile(QStringLiteral("/nowhere/a.png"));
        f.pCtrl->LoadFile(QString());
        QVERIFY(!f.pCtrl->GetImage());
    }

    void withoutAViewerNothingHappensAndNothingLeaks()
    {
        CImageViewerCtrl ctrl(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        QCOMPARE(ctrl.GetViewID(), -1);
        QCOMPARE(static_cast<unsigned int>(ctrl.GetViewID()), 0xFFFFFFFFu);
        QVERIFY(ctrl.Get2DDrawableObjects().empty());
        ctrl.LoadFile(TestDataPath(kPicture));
        QVERIFY(ctrl.GetImage());
        ctrl.AddRectangle(MakeRectangle());
        ctrl.slot_ChangeProgressValue(50);
        QVERIFY(!ctrl.Undo());
        QVERIFY(!ctrl.Redo());
        ctrl.Convert();
    }

    void undoAndRedoReachThe2DControllerAndReturnFalse()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->AddRectangle(MakeRectangle());
        QVERIFY(!f.pCtrl->Undo());
        QVERIFY(f.pCtrl->Get2DDrawableObjects().empty());
        QVERIFY(!f.pCtrl->Redo());
        QCOMPARE(f.pCtrl->Get2DDrawableObjects().size(), std::size_t(1));
    }

    void addRectangleIsUndoable()
    {
        SFixture f;
        QVERIFY(f.Show());
        const auto pObject = MakeRectangle();
        f.pCtrl->AddRectangle(pObject);
        QCOMPARE(f.pCtrl->Get2DDrawableObjects().front(),
                 std::shared_ptr<CImageView2DDrawableObject>(pObject));
        QTest::keyClick(f.pView2D, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(f.pCtrl->Get2DDrawableObjects().empty());
    }

    void delete2DDrawableObjectFindsItByIdentifier()
    {
        SFixture f;
        const auto pObject = MakeRectangle();
        f.pCtrl->AddRectangle(pObject);
        QVERIFY(!f.pCtrl->Delete2DDrawableObject(pObject->GetUID() + 1));
        QVERIFY(f.pCtrl->Delete2DDrawableObject(pObject->GetUID()));
        QVERIFY(!f.pCtrl->Delete2DDrawableObject(pObject->GetUID()));
    }

    void convertDoesNothing()
    {
        SFixture f;
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        const unsigned int nImage = f.pCtrl->GetImageID();
        f.pCtrl->Convert();
        QCOMPARE(f.pCtrl->GetImageID(), nImage);
    }

    void loadSaveChangeAndCloseReachThe2DController()
    {
        SFixture f;
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-2][160x120x3x8]"));
        QCOMPARE(f.parts.Text(0), QStringLiteral("1. bricks-color.png"));
        QCOMPARE(f.pCtrl->GetImageID(), f.pViewer->GetCurrentImageUID());
        const QTemporaryDir dir;
        f.pCtrl->SaveFile(dir.filePath(QStringLiteral("a.png")));
        QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("a.png"))));
        const auto pOther = MakeTestImage(8, 9, 1);
        f.pCtrl->ChangeCurrentImage(pOther);
        QCOMPARE(f.pCtrl->GetImage(), pOther);
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-2][8x9x1x8]"));
        f.pCtrl->CloseCurrentImage();
        QVERIFY(!f.pCtrl->GetImage());
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-2]"));
        QCOMPARE(f.parts.List()->model()->rowCount(), 0);
    }

    void theToolButtonsChangeTheModeAndShowIt()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.Press("move.png");
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Panning);
        QVERIFY(f.parts.Button(QStringLiteral("move.png"))->isChecked());
        f.Press("ruler.png");
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Line);
        QVERIFY(!f.parts.Button(QStringLiteral("move.png"))->isChecked());
        f.Press("selection.png");
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        QVERIFY(f.parts.Button(QStringLiteral("selection.png"))->isChecked());
    }

    void theRotationButtonsTurnTheImageAndTheKeyboardUndoesIt()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        const auto pBefore = f.pCtrl->GetImage();
        f.Press("rotate-right.png");
        QCOMPARE(f.pCtrl->GetImage()->GetWidth(), 120);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.pCtrl->GetImage(), pBefore);
        f.Press("rotate-left.png");
        QCOMPARE(f.pCtrl->GetImage()->GetHeight(), 160);
    }

    void theZoomFitButtonFitsTheImage()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        const QRect fitted = f.pView2D->GetViewPort();
        QWheelEvent wheel(QPointF(50, 50), f.pView2D->mapToGlobal(QPoint(50, 50)), QPoint(), QPoint(0, 480),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(f.pView2D, &wheel);
        QVERIFY(f.pView2D->GetViewPort().width() > fitted.width());
        f.Press("zoomfit.png");
        QCOMPARE(f.pView2D->GetViewPort(), fitted);
    }

    void theFileButtonsOpenTheirDialogs_data()
    {
        QTest::addColumn<QString>("strIcon");
        QTest::addColumn<QString>("strTitle");
        QTest::newRow("open") << QStringLiteral("open-folder.png") << QStringLiteral("Load File");
        QTest::newRow("add") << QStringLiteral("add.png") << QStringLiteral("Add Images");
        QTest::newRow("save") << QStringLiteral("save_file.png") << QStringLiteral("Save Image");
    }
    void theFileButtonsOpenTheirDialogs()
    {
        QFETCH(QString, strIcon);
        QFETCH(QString, strTitle);
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        SFixture f;
        QVERIFY(f.Show());
        QString strSeen;
        const DialogDriver driver({[&](QDialog* pDialog) {
            strSeen = pDialog->windowTitle();
            pDialog->reject();
        }});
        QTest::mouseClick(f.parts.Button(strIcon), Qt::LeftButton);
        QCOMPARE(strSeen, strTitle);
    }

    void thePagesAreBrowsedAndClearedByButtons()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->LoadFile(TestDataPath(kDocument));
        const unsigned int nFirst = f.pCtrl->GetImageID();
        f.Press("next.png");
        QVERIFY(f.pCtrl->GetImageID() != nFirst);
        QCOMPARE(f.parts.List()->currentIndex().row(), 1);
        f.Press("previous.png");
        QCOMPARE(f.pCtrl->GetImageID(), nFirst);
        f.Press("clear.png");
        QVERIFY(!f.pCtrl->GetImage());
        QCOMPARE(f.parts.List()->model()->rowCount(), 0);
    }

    void clickingAThumbnailSelectsThatPageAndUndoStillWorksWithTheKeyboard()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->LoadFile(TestDataPath(kDocument));
        f.Press("rotate-right.png");
        const QRect rect = f.parts.List()->visualRect(f.parts.List()->model()->index(1, 0));
        QTest::mouseClick(f.parts.List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          rect.topLeft() + QPoint(9, 9));
        QCOMPARE(f.parts.List()->currentIndex().row(), 1);
        QVERIFY(f.pCtrl->GetImage()->GetWidth() < f.pCtrl->GetImage()->GetHeight());
        QTRY_VERIFY(f.pView2D->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        // The undone step belongs to the first page, which is shown again.
        QCOMPARE(f.parts.List()->currentIndex().row(), 0);
        QVERIFY(f.pCtrl->GetImage()->GetWidth() < f.pCtrl->GetImage()->GetHeight());
    }

    void theStatusBarIsShownStrictlyBetweenZeroAndTheMaximum()
    {
        SFixture f;
        QVERIFY(f.Show());
        const auto* pBar = f.pStatusBar->findChild<QProgressBar*>();
        f.pCtrl->slot_ChangeProgressMaxRange(10);
        QVERIFY(!f.pStatusBar->isVisible());
        f.pCtrl->slot_ChangeProgressValue(1);
        QVERIFY(f.pStatusBar->isVisible());
        QCOMPARE(pBar->maximum(), 10);
        QCOMPARE(pBar->value(), 1);
        f.pCtrl->slot_ChangeProgressValue(9);
        QVERIFY(f.pStatusBar->isVisible());
        f.pCtrl->slot_ChangeProgressValue(10);
        QVERIFY(!f.pStatusBar->isVisible());
        f.pCtrl->slot_ChangeProgressMaxRange(20);
        QVERIFY(f.pStatusBar->isVisible());
        f.pCtrl->slot_ChangeProgressValue(0);
        QVERIFY(!f.pStatusBar->isVisible());
        f.pCtrl->slot_ChangeProgressValue(-3);
        QVERIFY(!f.pStatusBar->isVisible());
    }

    void objectsAreAnnouncedWithViewAndImage()
    {
        SFixture f;
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        QStringList lstSeen;
        const auto note = [&](const char* pWhat) {
            return [&lstSeen, pWhat](int nView, unsigned int, unsigned int nUID, const QString& strName) {
                lstSeen << QStringLiteral("%1 %2 %3 %4")
                               .arg(QLatin1String(pWhat))
                               .arg(nView)
                               .arg(nUID)
                               .arg(strName);
            };
        };
        using V = CImageViewer;
        connect(f.pViewer, &V::signal_AddDrawableObjectWithViewID, this, note("add"));
        connect(f.pViewer, &V::signal_BeforeDeleteDrawableObjectWithViewID, this, note("before"));
        connect(f.pViewer, &V::signal_DeleteDrawableObjectWithViewID, this, note("delete"));
        const QSignalSpy cleared(f.pViewer, &V::signal_ClearDrawableObject);
        const QSignalSpy changed(f.pViewer, &V::signal_ChangeDrawableObjectPropertyWithViewID);
        const auto pObject = MakeRectangle();
        const QString strTail = QStringLiteral(" 2 %1 Rectangle_%1").arg(pObject->GetUID());
        f.pCtrl->AddRectangle(pObject);
        pObject->SetPen(QPen(Qt::red));
        QVERIFY(changed.count() > 0);
        f.pCtrl->Delete2DDrawableObject(pObject->GetUID());
        QCOMPARE(lstSeen, QStringList({QStringLiteral("add") + strTail, QStringLiteral("before") + strTail,
                                       QStringLiteral("delete") + strTail}));
        QCOMPARE(cleared.count(), 0);
        f.pCtrl->CloseCurrentImage();
        QCOMPARE(cleared.count(), 1);
    }

    void aGeometryActionGetsViewAndObject()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pCtrl->LoadFile(TestDataPath(kPicture));
        int nView = -1;
        unsigned int nUID = 0;
        f.pCtrl->RegisterGeometryAction(QStringLiteral("Measure"), QIcon(), [&](int nV, unsigned int nU) {
            nView = nV;
            nUID = nU;
        });
        f.pView2D->ShowContextMenuDrawableObject(QPointF(5, 5), 77);
        QTRY_VERIFY(QApplication::activePopupWidget());
        auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QCOMPARE(pMenu->actions().last()->text(), QStringLiteral("Measure"));
        QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                          pMenu->actionGeometry(pMenu->actions().last()).center());
        QTRY_COMPARE(nUID, 77u);
        QCOMPARE(nView, kViewID);
    }

    void theFocusPutsThePanelsIntoTheDocks()
    {
        SFixture f;
        QVERIFY(f.Show());
        QVERIFY(f.toolBox.widget() && f.properties.widget() && f.status.widget());
        QVERIFY(f.toolBox.widget()->isVisible());
        QVERIFY(f.properties.widget()->isVisible());
    }

    void modelViewerDocksAndControllerMayGoInAnyOrder_data()
    {
        QTest::addColumn<QString>("strOrder");
        for (const char* pOrder :
             {"CVDM", "CVMD", "VCDM", "VDCM", "DCVM", "DVCM", "MCVD", "MVDC", "DMVC", "VMCD"})
            QTest::newRow(pOrder) << QString::fromLatin1(pOrder);
    }
    void modelViewerDocksAndControllerMayGoInAnyOrder()
    {
        QFETCH(QString, strOrder);
        auto pModel = std::make_unique<CImageViewerModel>();
        auto pTool = std::make_unique<CImageView2DToolModel>();
        auto pViewer = std::make_unique<CImageViewer>(pModel.get(), 0, nullptr);
        auto pToolBox = std::make_unique<CToolBoxDockView>(nullptr);
        auto pProperties = std::make_unique<CPropertyDockView>(nullptr);
        auto pStatus = std::make_unique<CStatusBarDockView>(nullptr);
        auto pCtrl = std::make_unique<CImageViewerCtrl>(pViewer.get(), pModel.get(), pTool.get(),
                                                        pToolBox.get(), pProperties.get(), pStatus.get());
        pViewer->show();
        pCtrl->LoadFile(TestDataPath(kPicture));
        pCtrl->AddRectangle(MakeRectangle());
        for (const QChar ch : strOrder) {
            if (ch == QLatin1Char('C'))
                pCtrl.reset();
            else if (ch == QLatin1Char('V'))
                pViewer.reset();
            else if (ch == QLatin1Char('M'))
                pModel.reset(), pTool.reset();
            else
                pToolBox.reset(), pProperties.reset(), pStatus.reset();
            if (pCtrl) {
                pCtrl->slot_ChangeProgressValue(strOrder.indexOf(ch) + 1);
                pCtrl->CloseCurrentImage();
                pCtrl->Undo();
            }
            if (pViewer) {
                pViewer->slot_ChangeCurrentImage();
                pViewer->slot_Press3D();
                pViewer->slot_Press2D();
                QVERIFY(pViewer->Get2DDrawableObjects().empty());
            }
            QApplication::processEvents();
        }
    }
};

VANTOR_TEST_MAIN(tst_CImageViewerCtrl)
#include "tst_CImageViewerCtrl.moc"
