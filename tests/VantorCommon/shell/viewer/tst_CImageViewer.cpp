// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewerParts.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/dock/CStatusBarModel.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3DNotSupported.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QStandardItemModel>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kViewID = 7;

/// A viewer with its views and models, but without a controller: what happens is the frame's own doing.
struct SFixture {
    QWidget window;
    CImageView2DModel images;
    CImageView2DGeometryModel objects;
    CImageView2DToolModel tool;
    CStatusBarModel progress;
    CImageViewerModel model;
    CImageViewer* pViewer = new CImageViewer(&model, kViewID, &window);
    CImageView2D* pView2D = new CImageView2D(&images, &objects, &tool, kViewID, pViewer);
    QWidget* pView3D = new CImageView3DNotSupported(pViewer);
    CStatusBarView* pStatusBar = new CStatusBarView(&progress, pViewer);
    QLineEdit* pOther = new QLineEdit(&window);
    ViewerParts parts{pViewer};

    SFixture()
    {
        auto* pLayout = new QVBoxLayout(&window);
        pLayout->addWidget(pOther);
        pLayout->addWidget(pViewer);
        pViewer->SetImageView(pView2D, pView3D, pStatusBar, &images, &tool);
        using M = CImageView2DModel;
        using V = CImageViewer;
        QObject::connect(&images, &M::signal_MousePositionChanged, pViewer, &V::slot_ChangeMousePosition);
        QObject::connect(&images, &M::signal_ChangeCurrentImage, pViewer, &V::slot_ChangeCurrentImage);
        QObject::connect(&images, &M::signal_ChangeImageList, pViewer, &V::slot_ChangeImageList);
        QObject::connect(&images, &M::signal_ChangeCurrentIndex, pViewer, &V::slot_ChangeCurrentIndex);
    }

    bool Show()
    {
        window.resize(760, 520);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        pOther->setFocus();
        return QTest::qWaitFor([this] { return pOther->hasFocus(); });
    }

    int ListWidth() const { return parts.List()->viewport()->width(); }
};

struct SButtonRow {
    const char* pIcon;
    void (CImageViewer::*pSignal)(); // null where the press goes to a slot of the frame
};

const SButtonRow kButtons[] = {
    {"2D.png", nullptr},
    {"3D.png", nullptr},
    {"selection.png", &CImageViewer::signal_SelectMode},
    {"move.png", &CImageViewer::signal_PanningMode},
    {"zoomfit.png", &CImageViewer::signal_ZoomFit},
    {"rotate-left.png", &CImageViewer::signal_RotateLeft},
    {"rotate-right.png", &CImageViewer::signal_RotateRight},
    {"previous.png", &CImageViewer::signal_Previous},
    {"next.png", &CImageViewer::signal_Next},
    {"capture.png", &CImageViewer::signal_OpenSnipTool},
    {"ruler.png", &CImageViewer::signal_Ruler},
    {"clear.png", &CImageViewer::signal_ClearImage},
    {"add.png", &CImageViewer::signal_AddImage},
    {"open-folder.png", &CImageViewer::signal_OpenFile},
    {"save_file.png", &CImageViewer::signal_SaveFile},
};

const QString kBlue = QStringLiteral("#CImageViewer_7 { border: 0.5px solid rgb(0, 100, 200); }");
const QString kNone = QStringLiteral("#CImageViewer_7 { border: 0.5px solid none; }");

void AddButtonRows()
{
    QTest::addColumn<QString>("strIcon");
    for (const SButtonRow& row : kButtons)
        QTest::newRow(row.pIcon) << QString::fromLatin1(row.pIcon);
}

std::shared_ptr<CImage> MakeNamedImage(int nWidth, int nHeight, int nChannels, const wchar_t* pName)
{
    auto pImage = MakeTestImage(nWidth, nHeight, nChannels);
    pImage->SetName(pName);
    return pImage;
}
} // namespace

class tst_CImageViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsABoxedFrameWithANameThatTakesTheFocus()
    {
        const SFixture f;
        QCOMPARE(f.pViewer->objectName(), QStringLiteral("CImageViewer_7"));
        QCOMPARE(f.pViewer->frameShape(), QFrame::Box);
        QCOMPARE(f.pViewer->focusPolicy(), Qt::StrongFocus);
        QCOMPARE(f.pViewer->GetViewID(), kViewID);
        const auto* pLayout = qobject_cast<QVBoxLayout*>(f.pViewer->layout());
        QVERIFY(pLayout);
        QCOMPARE(pLayout->spacing(), 0);
        QCOMPARE(pLayout->contentsMargins(), QMargins());
        QCOMPARE(f.parts.Splitter()->orientation(), Qt::Horizontal);
        QCOMPARE(f.parts.Splitter()->widget(0), f.parts.List());
        QVERIFY(f.parts.Splitter()->widget(1)->isAncestorOf(f.pView2D));
    }

    void aViewerWithoutViewsAnswersWithEmptyValues()
    {
        CImageViewerModel model;
        CImageViewer viewer(&model, 3, nullptr);
        QCOMPARE(viewer.GetCurrentImageUID(), 0xFFFFFFFFu);
        QVERIFY(viewer.Get2DDrawableObjects().empty());
        viewer.slot_Press2D();
        viewer.slot_Press3D();
        viewer.slot_ChangeCurrentImage();
        viewer.slot_ChangeMousePosition();
        viewer.slot_ChangeImageList();
        viewer.slot_ChangeCurrentIndex();
        viewer.slot_ChangeViewMode();
        viewer.slot_ChangeViewType();
        viewer.slot_SplitterMoved(0, 0);
        QCOMPARE(ViewerParts(&viewer).Title()->text(), QStringLiteral("[View-3]"));
        QCOMPARE(ViewerParts(&viewer).Status()->text(), QString());
    }

    void missingViewsAndModelsDoNoHarm()
    {
        CImageViewer viewer(nullptr, 0, nullptr);
        viewer.SetImageView(nullptr, nullptr, nullptr, nullptr, nullptr);
        viewer.slot_Press3D();
        for (QPushButton* pButton : ViewerParts(&viewer).Buttons())
            QTest::mouseClick(pButton, Qt::LeftButton);
        QCOMPARE(viewer.GetCurrentImageUID(), 0xFFFFFFFFu);
    }

    void setImageViewShowsThe2DViewAndHidesTheOthers()
    {
        SFixture f;
        QVERIFY(f.Show());
        QVERIFY(f.pView2D->isVisible());
        QVERIFY(!f.pView3D->isVisible());
        QVERIFY(!f.pStatusBar->isVisible());
        QCOMPARE(f.pStatusBar->parentWidget(), static_cast<QWidget*>(f.pViewer));
        QVERIFY(f.pViewer->layout()->indexOf(f.pStatusBar) >= 0);
        QVERIFY(f.parts.Button(QStringLiteral("2D.png"))->isChecked());
        const auto* pHost = qobject_cast<QHBoxLayout*>(f.pView2D->parentWidget()->layout());
        QVERIFY(pHost && pHost->indexOf(f.pView3D) >= 0);
        QCOMPARE(pHost->contentsMargins(), QMargins());
        QCOMPARE(pHost->spacing(), 0);
    }

    void setImageViewShowsTheStateOfTheToolModelOnce()
    {
        CImageView2DToolModel tool;
        tool.SetViewMode(EImageView2DMode_Panning);
        CImageViewer viewer(nullptr, 0, nullptr);
        viewer.SetImageView(nullptr, nullptr, nullptr, nullptr, &tool);
        QVERIFY(ViewerParts(&viewer).Button(QStringLiteral("move.png"))->isChecked());
        QVERIFY(!ViewerParts(&viewer).Button(QStringLiteral("selection.png"))->isChecked());
        tool.SetViewMode(EImageView2DMode_Selecting);
        QVERIFY(ViewerParts(&viewer).Button(QStringLiteral("selection.png"))->isChecked());
    }

    void onASystemWithoutOpenGLTheViewerShowsThePlaceholderTextInPlaceOfThe3DView()
    {
        SFixture f;
        QVERIFY(f.Show());
        QTest::mouseClick(f.parts.Button(QStringLiteral("3D.png")), Qt::LeftButton);
        auto* pLabel = f.pView3D->findChild<QLabel*>();
        QVERIFY(pLabel->isVisible());
        QCOMPARE(pLabel->text(), QStringLiteral("System doesnot support OpenGL"));
    }

    void thereAreFifteenButtons() { QCOMPARE(SFixture().parts.Buttons().size(), 15); }

    void buttonsStandInOneRowAndThoseWithoutRoomInAMenu_data()
    {
        QTest::addColumn<int>("nWidth");
        QTest::addColumn<int>("nShown");
        QTest::newRow("wide") << 800 << 15;
        QTest::newRow("room for all and no more") << 422 << 15; // the frame has a border
        QTest::newRow("half") << 400 << 13;
        QTest::newRow("narrow") << 200 << 6;
        QTest::newRow("room for two") << 60 << 1;
    }
    void buttonsStandInOneRowAndThoseWithoutRoomInAMenu()
    {
        QFETCH(int, nWidth);
        QFETCH(int, nShown);
        SFixture f;
        QVERIFY(f.Show());
        f.window.layout()->removeWidget(f.pViewer);
        f.pViewer->setGeometry(0, 40, nWidth, 400);
        QCOMPARE(f.pViewer->width(), nWidth);
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QWidgetList lstShown;
        for (QPushButton* pButton : f.parts.Buttons())
            if (pButton->isVisible())
                lstShown << pButton;
        QCOMPARE(lstShown.size(), nShown);
        auto* pMore = f.pViewer->findChild<QToolButton*>();
        QCOMPARE(pMore->isVisible(), nShown < 15);
        if (pMore->isVisible())
            lstShown << pMore;
        QRegion covered;
        for (const QWidget* pButton : lstShown) {
            const QRect rect(pButton->mapTo(f.pViewer, QPoint()), pButton->size());
            QCOMPARE(rect.size(), QSize(28, 28));
            QVERIFY(f.pViewer->contentsRect().contains(rect));
            QVERIFY(!covered.intersects(rect));
            covered += rect;
        }
        QCOMPARE(covered.boundingRect().height(), 28);
        Q_EMIT pMore->menu()->aboutToShow();
        QCOMPARE(pMore->menu()->actions().size(), 15 - nShown);
    }

    void anEntryOfTheMenuPressesItsButton()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.window.resize(150, 520);
        auto* pMore = f.pViewer->findChild<QToolButton*>();
        QTRY_VERIFY(pMore->isVisible());
        const QSignalSpy spy(f.pViewer, &CImageViewer::signal_SaveFile);
        Q_EMIT pMore->menu()->aboutToShow();
        QAction* pLast = pMore->menu()->actions().constLast();
        QCOMPARE(pLast->text(), f.parts.Button(QStringLiteral("save_file.png"))->toolTip());
        pLast->trigger();
        QCOMPARE(spy.count(), 1);
        QTRY_VERIFY(f.pView2D->hasFocus());
        f.tool.SetViewMode(EImageView2DMode_Panning);
        Q_EMIT pMore->menu()->aboutToShow();
        QStringList lstChecked;
        for (const QAction* pEntry : pMore->menu()->actions())
            if (pEntry->isChecked())
                lstChecked << pEntry->text();
        QCOMPARE(lstChecked, QStringList(QStringLiteral("Pan")));
    }

    void aViewerCanBeAsNarrowAsTwoButtonsAndItsCellCanVanish()
    {
        SFixture f;
        QVERIFY(f.pViewer->minimumSizeHint().width() <= 2 * 28 + 2 * f.pViewer->frameWidth());
        QVERIFY(f.Show());
        f.window.layout()->removeWidget(f.pViewer);
        f.pViewer->setGeometry(0, 40, 0, 0);
        QCOMPARE(f.pViewer->size(), QSize(0, 0));
    }

    void inASmallViewerThePictureHasMostOfTheRoomUntilThePersonMovesTheSplitter()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.window.layout()->removeWidget(f.pViewer);
        f.pViewer->setGeometry(0, 40, 215, 190);
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const QSize view = f.pView2D->size();
        QVERIFY2(view.width() * view.height() > 215 * 190 / 2, qPrintable(QString::number(view.width())));
        QVERIFY(f.parts.List()->width() <= 215 / 5);
        f.parts.Splitter()->setSizes({120, 90});
        Q_EMIT f.parts.Splitter()->splitterMoved(120, 1);
        f.pViewer->resize(230, 190);
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QVERIFY(f.parts.List()->width() > 100);
    }

    void theTitleCanBeReadOnADarkWindow()
    {
        const QPalette before = QApplication::palette();
        QPalette dark = before;
        dark.setColor(QPalette::Window, QColor(40, 40, 40));
        QApplication::setPalette(dark);
        SFixture f;
        QVERIFY(f.Show());
        const QImage seen = f.parts.Title()->grab().toImage();
        QApplication::setPalette(before);
        QCOMPARE(f.parts.Title()->styleSheet(), QStringLiteral("QLabel{color: green;}"));
        const QColor ground = seen.pixelColor(0, 0);
        QVERIFY2(ground.lightness() > 230, qPrintable(ground.name()));
    }

    void everyButtonHasAPictureAToolTipAnAccessibleNameAndItsSignal_data() { AddButtonRows(); }
    void everyButtonHasAPictureAToolTipAnAccessibleNameAndItsSignal()
    {
        QFETCH(QString, strIcon);
        SFixture f;
        QVERIFY(f.Show());
        QPushButton* pButton = f.parts.Button(strIcon);
        QVERIFY(pButton);
        QVERIFY(pButton->isVisible());
        QVERIFY(!pButton->toolTip().isEmpty());
        QVERIFY(!pButton->accessibleName().isEmpty());

        std::map<QString, std::unique_ptr<QSignalSpy>> mapSpies; // by the icon
        for (const SButtonRow& row : kButtons)
            if (row.pSignal)
                mapSpies[QString::fromLatin1(row.pIcon)] =
                    std::make_unique<QSignalSpy>(f.pViewer, row.pSignal);
        QCOMPARE(mapSpies.size(), std::size_t(13));
        QTest::mousePress(pButton, Qt::LeftButton);
        for (const auto& [strOther, pSpy] : mapSpies)
            QCOMPARE(pSpy->count(), strOther == strIcon ? 1 : 0);
        QTest::mouseRelease(pButton, Qt::LeftButton);
        for (const auto& [strOther, pSpy] : mapSpies)
            QCOMPARE(pSpy->count(), strOther == strIcon ? 1 : 0);
    }

    void toolTipsAreAllDifferent()
    {
        const SFixture f;
        QStringList lstTips;
        for (const QPushButton* pButton : f.parts.Buttons())
            lstTips << pButton->toolTip();
        QCOMPARE(lstTips.removeDuplicates(), 0);
    }

    void afterAPressOnAnyButtonTheVisibleViewHasTheFocus_data() { AddButtonRows(); }
    void afterAPressOnAnyButtonTheVisibleViewHasTheFocus()
    {
        QFETCH(QString, strIcon);
        SFixture f;
        QVERIFY(f.Show());
        QTest::mouseClick(f.parts.Button(strIcon), Qt::LeftButton);
        QWidget* pVisible = f.pView2D->isVisible() ? static_cast<QWidget*>(f.pView2D) : f.pView3D;
        QVERIFY(pVisible->isVisible());
        QTRY_VERIFY(pVisible->hasFocus());
        QCOMPARE(f.pViewer->styleSheet(), kBlue);
    }

    void selectAndPanningShowTheModelAndNothingElse()
    {
        SFixture f;
        QVERIFY(f.Show());
        QPushButton* pSelect = f.parts.Button(QStringLiteral("selection.png"));
        QPushButton* pPanning = f.parts.Button(QStringLiteral("move.png"));
        QVERIFY(pSelect->isCheckable() && pPanning->isCheckable());
        QVERIFY(pSelect->isChecked() && !pPanning->isChecked());
        QTest::mouseClick(pPanning, Qt::LeftButton);
        QTest::mouseClick(pSelect, Qt::LeftButton);
        QVERIFY(pSelect->isChecked() && !pPanning->isChecked());
        f.tool.SetViewMode(EImageView2DMode_Panning);
        QVERIFY(!pSelect->isChecked() && pPanning->isChecked());
        QTest::mouseClick(pPanning, Qt::LeftButton);
        QVERIFY(pPanning->isChecked());
    }

    void drawingModesLeaveSelectAndPanningUnchecked()
    {
        SFixture f;
        for (int nMode = EImageView2DMode_Drawing_Rectanlge; nMode <= EImageView2DMode_Drawing_Line;
             ++nMode) {
            f.tool.SetViewMode(static_cast<EImageView2DMode>(nMode));
            QVERIFY(!f.parts.Button(QStringLiteral("selection.png"))->isChecked());
            QVERIFY(!f.parts.Button(QStringLiteral("move.png"))->isChecked());
        }
    }

    void the2DAndThe3DButtonAreExclusiveAndShowTheirView()
    {
        SFixture f;
        QVERIFY(f.Show());
        QPushButton* p2D = f.parts.Button(QStringLiteral("2D.png"));
        QPushButton* p3D = f.parts.Button(QStringLiteral("3D.png"));
        for (int i = 0; i < 2; ++i) {
            QTest::mouseClick(p3D, Qt::LeftButton);
            QVERIFY(p3D->isChecked() && !p2D->isChecked());
            QVERIFY(f.pView3D->isVisible() && !f.pView2D->isVisible());
            QTest::mouseClick(p2D, Qt::LeftButton);
            QTest::mouseClick(p2D, Qt::LeftButton);
            QVERIFY(p2D->isChecked() && !p3D->isChecked());
            QVERIFY(f.pView2D->isVisible() && !f.pView3D->isVisible());
        }
    }

    void theViewTypeChecksItsButton()
    {
        SFixture f;
        f.tool.SetViewType(EImageView2DType_3D);
        QVERIFY(f.parts.Button(QStringLiteral("3D.png"))->isChecked());
        QVERIFY(!f.parts.Button(QStringLiteral("2D.png"))->isChecked());
        f.tool.SetViewType(EImageView2DType_2D);
        QVERIFY(f.parts.Button(QStringLiteral("2D.png"))->isChecked());
    }

    void anotherViewTypeIsIgnored()
    {
        SFixture f;
        for (const EImageView2DType eShown : {EImageView2DType_3D, EImageView2DType_2D}) {
            f.tool.SetViewType(eShown);
            for (const int nType : {2, -1, 1000}) {
                f.tool.SetViewType(static_cast<EImageView2DType>(nType));
                QCOMPARE(f.parts.Button(QStringLiteral("2D.png"))->isChecked(),
                         eShown == EImageView2DType_2D);
                QCOMPARE(f.parts.Button(QStringLiteral("3D.png"))->isChecked(),
                         eShown == EImageView2DType_3D);
            }
        }
    }

    void the2DViewSwitchesTo3D()
    {
        SFixture f;
        QVERIFY(f.Show());
        Q_EMIT f.pView2D->signal_Switch2DTo3D();
        QVERIFY(f.pView3D->isVisible() && !f.pView2D->isVisible());
    }

    void theTitleTellsViewSizeChannelsAndDepth()
    {
        SFixture f;
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-7]"));
        f.images.SetImages({MakeTestImage(40, 30, 3)});
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-7][40x30x3x8]"));
        f.images.Clear();
        QCOMPARE(f.parts.Title()->text(), QStringLiteral("[View-7]"));
    }

    void theReadoutTellsThePixelByChannelCount_data()
    {
        QTest::addColumn<int>("nChannels");
        QTest::addColumn<QString>("strText");
        // The bytes of pixel (2, 3): 37 x 2 + 59 x 3 + 101 c = 251, 352, 453, 554, mod 256.
        QTest::newRow("1") << 1 << QStringLiteral("[X=2; Y=3] [V=251]");
        QTest::newRow("3") << 3 << QStringLiteral("[X=2; Y=3] [V=251;96;197]");
        QTest::newRow("4") << 4 << QStringLiteral("[X=2; Y=3] [V=251;96;197;42]");
    }
    void theReadoutTellsThePixelByChannelCount()
    {
        QFETCH(int, nChannels);
        QFETCH(QString, strText);
        SFixture f;
        f.images.SetImages({MakeTestImage(5, 6, nChannels)});
        f.images.SetMousePosition(QPointF(2.99, 3.99));
        QCOMPARE(f.parts.Status()->text(), strText);
    }

    void statusReadoutOfATwoChannelImageLeavesTheStatusLabelEmpty()
    {
        SFixture f;
        f.images.SetImages({MakeTestImage(5, 6, 3), MakeTestImage(5, 6, 2)});
        f.images.SetMousePosition(QPointF(2, 3));
        QVERIFY(!f.parts.Status()->text().isEmpty());
        f.images.SetCurrentIndex(1);
        f.images.SetMousePosition(QPointF(1, 1));
        QCOMPARE(f.parts.Status()->text(), QString());
    }

    void aPositionOutsideTheImageEmptiesTheReadout_data()
    {
        QTest::addColumn<QPointF>("pos");
        QTest::newRow("left") << QPointF(-1, 3);
        QTest::newRow("below") << QPointF(2, 6);
        QTest::newRow("far") << QPointF(1e300, 1e300);
        QTest::newRow("nan") << QPointF(-1e300, qQNaN());
    }
    void aPositionOutsideTheImageEmptiesTheReadout()
    {
        QFETCH(QPointF, pos);
        SFixture f;
        f.images.SetImages({MakeTestImage(5, 6, 3)});
        f.images.SetMousePosition(QPointF(2, 3));
        QVERIFY(!f.parts.Status()->text().isEmpty());
        f.images.SetMousePosition(pos);
        QCOMPARE(f.parts.Status()->text(), QString());
    }

    void thumbnailsAreNumberedNamedAndAsWideAsTheList()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeNamedImage(400, 100, 3, L"a.png"), MakeNamedImage(10, 20, 1, L"b.png")});
        QCOMPARE(f.parts.List()->model()->rowCount(), 2);
        QCOMPARE(f.parts.Text(0), QStringLiteral("1. a.png"));
        QCOMPARE(f.parts.Text(1), QStringLiteral("2. b.png"));
        const int nWidth = f.ListWidth();
        QVERIFY(nWidth > 20);
        QCOMPARE(f.parts.Thumbnail(0).size(), QSize(nWidth, qRound(nWidth / 4.0)));
        QCOMPARE(f.parts.Thumbnail(1).size(), QSize(nWidth, nWidth * 2));
    }

    void imagesThatCannotBeShownGetNoItem()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({nullptr, std::make_shared<CImage>(), MakeNamedImage(10, 20, 1, L"b.png")});
        QCOMPARE(f.parts.List()->model()->rowCount(), 1);
        QCOMPARE(f.parts.Text(0), QStringLiteral("3. b.png"));
        f.window.resize(1100, 600);
        f.pViewer->slot_SplitterMoved(0, 1);
        QCOMPARE(f.parts.Thumbnail(0).size(), QSize(f.ListWidth(), f.ListWidth() * 2));
    }

    void aVeryTallImageHasAThumbnailOfBoundedHeight()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(1, 100000, 1)});
        QCOMPARE(f.parts.Thumbnail(0).width(), 1);
        QVERIFY(f.parts.Thumbnail(0).height() <= 4096);
    }

    void resizingTheFrameRescalesEveryThumbnailToTheListWidth()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(40, 30, 3), MakeTestImage(10, 20, 1)});
        f.parts.Splitter()->setStretchFactor(0, 1);
        const int nBefore = f.ListWidth();
        f.window.resize(1200, 500);
        QTRY_VERIFY(f.ListWidth() > nBefore);
        QTRY_COMPARE(f.parts.Thumbnail(0).width(), f.ListWidth());
        QCOMPARE(f.parts.Thumbnail(1).width(), f.ListWidth());
    }

    void movingTheSplitterRescalesEveryThumbnailToTheListWidth()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(40, 30, 3), MakeTestImage(10, 20, 1)});
        const int nBefore = f.ListWidth();
        QSplitterHandle* pHandle = f.parts.Splitter()->handle(1);
        QWindow* pWindow = f.window.windowHandle();
        const QPoint from = pHandle->mapTo(&f.window, pHandle->rect().center());
        QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(pWindow, from + QPoint(30, 0));
        QTest::mouseMove(pWindow, from + QPoint(60, 0));
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, from + QPoint(60, 0));
        QTRY_VERIFY(f.ListWidth() > nBefore + 40);
        QTRY_COMPARE(f.parts.Thumbnail(0).width(), f.ListWidth());
        QCOMPARE(f.parts.Thumbnail(1).width(), f.ListWidth());
    }

    void thumbnailsMadeBeforeTheFirstShowFitTheListAfterIt()
    {
        SFixture f;
        f.images.SetImages({MakeTestImage(40, 30, 3)});
        QVERIFY(f.Show());
        QTRY_COMPARE(f.parts.Thumbnail(0).width(), f.ListWidth());
    }

    void imagesOpenedWhileTheListIsFoldedAwayAreThereWhenItIsUnfolded()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.parts.Splitter()->setSizes({0, 600});
        QTRY_VERIFY(f.ListWidth() < 1 || f.parts.List()->visibleRegion().isEmpty());
        f.images.SetImages({MakeNamedImage(40, 30, 3, L"a.png"), MakeTestImage(10, 20, 1)});
        f.parts.Splitter()->setSizes({120, 480});
        QTRY_VERIFY(f.ListWidth() > 60);
        QCOMPARE(f.parts.List()->model()->rowCount(), 2);
        QCOMPARE(f.parts.Text(0), QStringLiteral("1. a.png"));
        QTRY_COMPARE(f.parts.Thumbnail(0).width(), f.ListWidth());
    }

    void thumbnailsFollowTheListHoweverItsWidthChanges()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(40, 30, 3)});
        const int nBefore = f.ListWidth();
        f.parts.Splitter()->setSizes({250, 400}); // announces no move
        QTRY_VERIFY(f.ListWidth() > nBefore);
        QTRY_COMPARE(f.parts.Thumbnail(0).width(), f.ListWidth());
    }

    void thumbnailsOwnTheirPixels()
    {
        SFixture f;
        QVERIFY(f.Show());
        auto pImage = MakeTestImage(f.ListWidth(), 4, 3);
        f.images.SetImages({pImage});
        const QImage before = f.parts.Thumbnail(0).toImage().copy();
        std::fill_n(pImage->GetData(), pImage->GetStride() * pImage->GetHeight(),
                    static_cast<unsigned char>(9));
        QCOMPARE(f.parts.Thumbnail(0).toImage(), before);
    }

    void aChangedCurrentImageReplacesItsThumbnailAlone()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(40, 40, 3), MakeTestImage(40, 40, 3)});
        const QImage first = f.parts.Thumbnail(0).toImage();
        f.images.SetCurrentIndex(1);
        int nLayoutChanges = 0;
        connect(f.parts.List()->model(), &QAbstractItemModel::layoutChanged, this, [&] { ++nLayoutChanges; });
        f.images.SetCurrentImage(MakeTestImage(40, 20, 1));
        QCOMPARE(f.parts.Thumbnail(1).height(), qRound(f.ListWidth() / 2.0));
        QCOMPARE(f.parts.Thumbnail(0).toImage(), first);
        QCOMPARE(nLayoutChanges, 1);
    }

    void theRowOfTheCurrentImageIsSelected()
    {
        SFixture f;
        f.images.SetImages({MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1)});
        QCOMPARE(f.parts.List()->currentIndex().row(), 0);
        f.images.SetCurrentIndex(2);
        QCOMPARE(f.parts.List()->currentIndex().row(), 2);
        f.images.CloseCurrentImage();
        QCOMPARE(f.parts.List()->currentIndex().row(), 1);
        f.images.PushImage(MakeTestImage(4, 4, 1));
        QCOMPARE(f.parts.List()->currentIndex().row(), 2);
        f.images.Clear();
        QCOMPARE(f.parts.List()->currentIndex().row(), -1);
    }

    void clickingAThumbnailSelectsThatImageAndTheViewKeepsTheKeyboard()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1)});
        QSignalSpy spy(f.pViewer, &CImageViewer::signal_SelectImage);
        const QRect rect = f.parts.List()->visualRect(f.parts.List()->model()->index(1, 0));
        QTest::mouseClick(f.parts.List()->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 1);
        QTRY_VERIFY(f.pView2D->hasFocus());
    }

    void afterAClickOnAThumbnailTheArrowKeysWalkInTheList()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.images.SetImages({MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1), MakeTestImage(4, 4, 1)});
        QObject::connect(f.pViewer, &CImageViewer::signal_SelectImage, &f.images,
                         &CImageView2DModel::SetCurrentIndex);
        QTest::mouseClick(f.pView2D, Qt::LeftButton);
        QTRY_VERIFY(f.pView2D->hasFocus());
        QTest::keyClick(f.pView2D, Qt::Key_Down);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        const QRect rect = f.parts.List()->visualRect(f.parts.List()->model()->index(1, 0));
        QTest::mouseClick(f.parts.List()->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        QTRY_VERIFY(f.pView2D->hasFocus());
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QTest::keyClick(f.pView2D, Qt::Key_Down);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        QTest::keyClick(f.pView2D, Qt::Key_Home);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QTest::mouseClick(f.pView2D, Qt::LeftButton);
        QTest::keyClick(f.pView2D, Qt::Key_Down);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
    }

    void aThumbnailsToolTipIsTheWholeName()
    {
        SFixture f;
        f.images.SetImages({MakeNamedImage(4, 4, 1, L"a photograph with a long name.png")});
        QCOMPARE(f.parts.List()->model()->index(0, 0).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("a photograph with a long name.png"));
    }

    void aForgottenMousePositionEmptiesTheReadout()
    {
        SFixture f;
        f.images.SetImages({MakeTestImage(4, 4, 1)});
        f.images.SetMousePosition(QPointF(1, 2));
        QVERIFY(f.parts.Status()->text().startsWith(QStringLiteral("[X=1; Y=2]")));
        f.images.ForgetMousePosition();
        QCOMPARE(f.parts.Status()->text(), QString());
        f.images.SetMousePosition(QPointF(1, 2)); // the same place, known again
        QVERIFY(f.parts.Status()->text().startsWith(QStringLiteral("[X=1; Y=2]")));
    }

    void theBlueBorderFollowsTheFocusOfTheFrame()
    {
        SFixture f;
        QVERIFY(f.Show());
        LogRecorder log;
        f.pViewer->setFocus(Qt::TabFocusReason);
        QTRY_COMPARE(f.pViewer->styleSheet(), kBlue);
        f.pOther->setFocus();
        QTRY_COMPARE(f.pViewer->styleSheet(), kNone);
        QCOMPARE(log.Take(),
                 QStringList({QStringLiteral("1:Focus In  7"), QStringLiteral("1:Focus Out  7")}));
    }

    void theBlueBorderFollowsTheFocusOfTheViews()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pView2D->setFocus();
        QTRY_COMPARE(f.pViewer->styleSheet(), kBlue);
        f.pOther->setFocus();
        QTRY_COMPARE(f.pViewer->styleSheet(), kNone);
        f.pViewer->slot_Press3D();
        f.pView3D->setFocus();
        QTRY_COMPARE(f.pViewer->styleSheet(), kBlue);
    }

    void aPressOnTheFrameIsLoggedAndGivesTheVisibleViewTheFocus()
    {
        SFixture f;
        QVERIFY(f.Show());
        LogRecorder log;
        QTest::mouseClick(f.parts.Title(), Qt::LeftButton);
        QTRY_VERIFY(f.pView2D->hasFocus());
        QCOMPARE(f.pViewer->styleSheet(), kBlue);
        QCOMPARE(log.Take(), QStringList({QStringLiteral("1:Focus In  7"), QStringLiteral("1:Focus Out  7"),
                                          QStringLiteral("1:mousePressEvent 7")}));
    }

    void anObjectAddedWithAnEmptyNameIsNotRelayedWithTheViewID()
    {
        SFixture f;
        const QSignalSpy added(f.pViewer, &CImageViewer::signal_AddDrawableObjectWithViewID);
        const QSignalSpy deleted(f.pViewer, &CImageViewer::signal_DeleteDrawableObjectWithViewID);
        const QSignalSpy before(f.pViewer, &CImageViewer::signal_BeforeDeleteDrawableObjectWithViewID);
        f.pViewer->slot_AddDrawableObject(5, QString());
        f.pViewer->slot_DeleteDrawableObject(5, QString());
        f.pViewer->slot_BeforeDeleteDrawableObject(5, QString());
        QCOMPARE(added.count() + deleted.count() + before.count(), 0);
    }

    void namedObjectsAreRelayedWithViewAndImage()
    {
        SFixture f;
        f.images.SetImages({MakeTestImage(4, 4, 1)});
        const unsigned int nImage = f.images.GetCurrentImage()->GetUID();
        QCOMPARE(f.pViewer->GetCurrentImageUID(), nImage);
        const QVariantList expected{kViewID, nImage, 5u, QStringLiteral("a")};
        QSignalSpy added(f.pViewer, &CImageViewer::signal_AddDrawableObjectWithViewID);
        QSignalSpy deleted(f.pViewer, &CImageViewer::signal_DeleteDrawableObjectWithViewID);
        QSignalSpy before(f.pViewer, &CImageViewer::signal_BeforeDeleteDrawableObjectWithViewID);
        f.pViewer->slot_AddDrawableObject(5, QStringLiteral("a"));
        f.pViewer->slot_DeleteDrawableObject(5, QStringLiteral("a"));
        f.pViewer->slot_BeforeDeleteDrawableObject(5, QStringLiteral("a"));
        for (QSignalSpy* pSpy : {&added, &deleted, &before}) {
            QCOMPARE(pSpy->count(), 1);
            QCOMPARE(pSpy->at(0), expected);
        }
    }

    void aChangedPropertyIsAnnouncedPlainlyFirstThenWithTheViewID()
    {
        SFixture f;
        QStringList lstOrder;
        connect(f.pViewer, &CImageViewer::signal_ChangeDrawableObjectProperty, this,
                [&](unsigned int nUID) { lstOrder << QStringLiteral("plain %1").arg(nUID); });
        connect(f.pViewer, &CImageViewer::signal_ChangeDrawableObjectPropertyWithViewID, this,
                [&](int nView, unsigned int nImage, unsigned int nUID) {
                    lstOrder << QStringLiteral("%1 %2 %3").arg(nView).arg(nImage).arg(nUID);
                });
        f.pViewer->slot_ChangeDrawableObjectProperty(5);
        QCOMPARE(lstOrder, QStringList({QStringLiteral("plain 5"), QStringLiteral("7 4294967295 5")}));
    }

    void theObjectsAreThoseOfTheGeometryModel()
    {
        SFixture f;
        auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
        pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 3, 4));
        f.objects.AddObject(pObject);
        QCOMPARE(f.pViewer->Get2DDrawableObjects().size(), std::size_t(1));
        QCOMPARE(f.pViewer->Get2DDrawableObjects().front(),
                 std::shared_ptr<CImageView2DDrawableObject>(pObject));
    }

    void modelsMayDieFirst()
    {
        CImageViewer viewer(nullptr, 0, nullptr);
        {
            CImageView2DModel images;
            CImageView2DToolModel tool;
            viewer.SetImageView(nullptr, nullptr, nullptr, &images, &tool);
            images.SetImages({MakeTestImage(4, 4, 1)});
            viewer.slot_ChangeImageList();
        }
        viewer.resize(500, 300);
        viewer.slot_SplitterMoved(0, 1);
        viewer.slot_ChangeCurrentImage();
        viewer.slot_ChangeViewMode();
        QCOMPARE(ViewerParts(&viewer).Title()->text(), QStringLiteral("[View-0]"));
    }
};

VANTOR_TEST_MAIN(tst_CImageViewer)
#include "tst_CImageViewer.moc"
