// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/view/CImageView2DToolView.h>

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
using View = CImageView2DToolView;

QPushButton* Button(const QWidget& view, const QString& strText)
{
    for (QPushButton* pButton : view.findChildren<QPushButton*>())
        if (pButton->text() == strText)
            return pButton;
    return nullptr;
}

// The texts of the pressed buttons, which should be one.
QStringList Pressed(const QWidget& view)
{
    QStringList lstTexts;
    for (const QPushButton* pButton : view.findChildren<QPushButton*>())
        if (pButton->isChecked())
            lstTexts << pButton->text();
    return lstTexts;
}

// What the controller does: the clicked view's signals set the mode.
void FollowClicks(View& view, CImageView2DToolModel& model)
{
    const auto set = [&model](EImageView2DMode eMode) {
        return [&model, eMode] { model.SetViewMode(eMode); };
    };
    QObject::connect(&view, &View::signal_SelectMode, &view, set(EImageView2DMode_Selecting));
    QObject::connect(&view, &View::signal_PanningMode, &view, set(EImageView2DMode_Panning));
    QObject::connect(&view, &View::signal_ROIRectangleSelected, &view,
                     set(EImageView2DMode_Drawing_Rectanlge));
    QObject::connect(&view, &View::signal_ROIEllipseSelected, &view, set(EImageView2DMode_Drawing_Ellipse));
    QObject::connect(&view, &View::signal_ROICircleSelected, &view, set(EImageView2DMode_Drawing_Circle));
    QObject::connect(&view, &View::signal_ROIPolygonSelected, &view, set(EImageView2DMode_Drawing_Polygon));
}
} // namespace

class tst_CImageView2DToolView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sixButtonsStandInAGroupTitledROI()
    {
        CImageView2DToolModel model;
        View view(&model);
        QVERIFY(qobject_cast<QVBoxLayout*>(view.layout()));
        QCOMPARE(view.layout()->count(), 1);
        auto* pGroup = qobject_cast<QGroupBox*>(view.layout()->itemAt(0)->widget());
        QVERIFY(pGroup);
        QCOMPARE(pGroup->title(), QStringLiteral("ROI"));
        auto* pGrid = qobject_cast<QGridLayout*>(pGroup->layout());
        QVERIFY(pGrid);
        QCOMPARE(pGrid->count(), 6);
        const char* const arrTexts[3][2] = {
            {"Select", "Panning"}, {"Rect", "Circle"}, {"Ellipse", "Polygon"}};
        for (int nRow = 0; nRow < 3; ++nRow)
            for (int nColumn = 0; nColumn < 2; ++nColumn) {
                auto* pButton = qobject_cast<QPushButton*>(pGrid->itemAtPosition(nRow, nColumn)->widget());
                QVERIFY(pButton);
                QCOMPARE(pButton->text(), QString::fromLatin1(arrTexts[nRow][nColumn]));
                QVERIFY(pButton->isCheckable());
                QVERIFY(pButton->autoExclusive());
            }
    }

    void deliberateTheSixButtonsHaveTextsOnlyUntilOptionalKindsAreShown()
    {
        CImageView2DToolModel model;
        View view(&model);
        const auto lstIcons = [&view] {
            QStringList lstTexts;
            for (const QPushButton* pButton : view.findChildren<QPushButton*>())
                if (!pButton->icon().isNull())
                    lstTexts << pButton->text();
            return lstTexts;
        };
        QCOMPARE(lstIcons(), QStringList());
        view.ShowOptionalShapes(true);
        QCOMPARE(lstIcons().size(), 9);
        view.ShowOptionalShapes(false);
        QCOMPARE(lstIcons(), QStringList());
    }

    void withTheOptionalKindsEachButtonHasItsPicture()
    {
        CImageView2DToolModel model;
        View view(&model);
        view.ShowOptionalShapes(true);
        const std::pair<const char*, const char*> pictures[] = {
            {"Select", "selection"}, {"Panning", "move"},    {"Rect", "rectangle"}, {"Circle", "circle"},
            {"Ellipse", "ellipse"},  {"Polygon", "polygon"}, {"Arrow", "arrow"},    {"Text", "text"}};
        for (const auto& [szButton, szPicture] : pictures) {
            const QIcon icon(QStringLiteral(":/Image/%1.png").arg(QLatin1String(szPicture)));
            const QPushButton* pButton = Button(view, QLatin1String(szButton));
            QVERIFY2(pButton, szButton);
            QVERIFY2(!icon.pixmap(24).isNull(), szPicture);
            QCOMPARE(pButton->icon().pixmap(24).toImage(), icon.pixmap(24).toImage());
        }
    }

    void aNewViewShowsTheModelsMode()
    {
        CImageView2DToolModel model;
        View first(&model);
        QCOMPARE(Pressed(first), QStringList{QStringLiteral("Select")});
        model.SetViewMode(EImageView2DMode_Drawing_Circle);
        LogRecorder log;
        View second(&model);
        QCOMPARE(Pressed(second), QStringList{QStringLiteral("Circle")});
        QVERIFY(log.Take().isEmpty());
    }

    void aClickEmitsItsSignalOnlyAndLeavesTheModelAlone_data()
    {
        QTest::addColumn<QString>("strButton");
        QTest::addColumn<QString>("strSignal");
        const auto row = [](const char* szButton, const char* szSignal) {
            QTest::newRow(szButton) << QString::fromLatin1(szButton) << QString::fromLatin1(szSignal);
        };
        row("Select", "signal_SelectMode");
        row("Panning", "signal_PanningMode");
        row("Rect", "signal_ROIRectangleSelected");
        row("Circle", "signal_ROICircleSelected");
        row("Ellipse", "signal_ROIEllipseSelected");
        row("Polygon", "signal_ROIPolygonSelected");
    }

    void aClickEmitsItsSignalOnlyAndLeavesTheModelAlone()
    {
        QFETCH(QString, strButton);
        QFETCH(QString, strSignal);
        CImageView2DToolModel model;
        View view(&model);
        QStringList lstSignals;
        const auto record = [&](void (View::*signal)(), const char* szName) {
            connect(&view, signal, this,
                    [&lstSignals, szName] { lstSignals << QString::fromLatin1(szName); });
        };
        record(&View::signal_SelectMode, "signal_SelectMode");
        record(&View::signal_PanningMode, "signal_PanningMode");
        record(&View::signal_ROIRectangleSelected, "signal_ROIRectangleSelected");
        record(&View::signal_ROICircleSelected, "signal_ROICircleSelected");
        record(&View::signal_ROIEllipseSelected, "signal_ROIEllipseSelected");
        record(&View::signal_ROIPolygonSelected, "signal_ROIPolygonSelected");
        QTest::mouseClick(Button(view, strButton), Qt::LeftButton);
        QCOMPARE(lstSignals, QStringList{strSignal});
        QCOMPARE(model.GetViewMode(), EImageView2DMode_Selecting);
        QCOMPARE(Pressed(view).size(), 1);
        // The pressed button can be clicked again, which stays one press.
        QTest::mouseClick(Button(view, strButton), Qt::LeftButton);
        QCOMPARE(lstSignals, QStringList({strSignal, strSignal}));
        QCOMPARE(Pressed(view).size(), 1);
    }

    void aNewModeIsLoggedByItsNameAndItsButtonPressed_data()
    {
        QTest::addColumn<int>("nMode");
        QTest::addColumn<QString>("strLog");
        QTest::addColumn<QString>("strButton");
        const auto row = [](int nMode, const char* szLog, const char* szButton) {
            QTest::newRow(szLog) << nMode << QString::fromLatin1(szLog) << QString::fromLatin1(szButton);
        };
        row(0, "1:EImageView2DMode_Selecting", "Select");
        row(1, "1:EImageView2DMode_Panning", "Panning");
        row(2, "1:EImageView2DMode_Drawing_Rectanlge", "Rect");
        row(3, "1:EImageView2DMode_Drawing_Ellipse", "Ellipse");
        row(4, "1:EImageView2DMode_Drawing_Circle", "Circle");
        row(5, "1:EImageView2DMode_Drawing_Polygon", "Polygon");
    }

    void aNewModeIsLoggedByItsNameAndItsButtonPressed()
    {
        QFETCH(int, nMode);
        QFETCH(QString, strLog);
        QFETCH(QString, strButton);
        CImageView2DToolModel model;
        model.SetViewMode(nMode == 0 ? EImageView2DMode_Panning : EImageView2DMode_Selecting);
        View view(&model);
        LogRecorder log;
        model.SetViewMode(static_cast<EImageView2DMode>(nMode));
        QCOMPARE(log.Take(), QStringList{strLog});
        QCOMPARE(Pressed(view), QStringList{strButton});
        model.SetViewMode(static_cast<EImageView2DMode>(nMode));
        QVERIFY(log.Take().isEmpty());
    }

    void deliberatelyEnteringLineModeLeavesTheLastPressedButtonPressed()
    {
        CImageView2DToolModel model;
        View view(&model);
        FollowClicks(view, model);
        QTest::mouseClick(Button(view, QStringLiteral("Ellipse")), Qt::LeftButton);
        LogRecorder log;
        model.SetViewMode(EImageView2DMode_Drawing_Line);
        QCOMPARE(log.Take(), QStringList{QStringLiteral("1:EImageView2DMode_Drawing_Line")});
        QCOMPARE(Pressed(view), QStringList{QStringLiteral("Ellipse")});
        // The pressed button still leads back to its mode.
        QTest::mouseClick(Button(view, QStringLiteral("Ellipse")), Qt::LeftButton);
        QCOMPARE(model.GetViewMode(), EImageView2DMode_Drawing_Ellipse);
        QCOMPARE(Pressed(view), QStringList{QStringLiteral("Ellipse")});
    }

    void viewsThatShareAModelFollowAClickInOneOfThem()
    {
        CImageView2DToolModel model;
        View first(&model);
        View second(&model);
        FollowClicks(first, model);
        FollowClicks(second, model);
        QTest::mouseClick(Button(first, QStringLiteral("Polygon")), Qt::LeftButton);
        QCOMPARE(Pressed(first), QStringList{QStringLiteral("Polygon")});
        QCOMPARE(Pressed(second), QStringList{QStringLiteral("Polygon")});
        QTest::mouseClick(Button(second, QStringLiteral("Select")), Qt::LeftButton);
        QCOMPARE(model.GetViewMode(), EImageView2DMode_Selecting);
        QCOMPARE(Pressed(first), QStringList{QStringLiteral("Select")});
        QCOMPARE(Pressed(second), QStringList{QStringLiteral("Select")});
    }

    void aClickDoesNotTakeTheFocusFromTheImageView()
    {
        QWidget window;
        auto* pEditor = new QLineEdit;
        CImageView2DToolModel model;
        auto* pLayout = new QVBoxLayout(&window);
        auto* pView = new View(&model);
        pLayout->addWidget(pEditor);
        pLayout->addWidget(pView);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        pEditor->setFocus();
        QTRY_VERIFY(pEditor->hasFocus());
        QTest::mouseClick(Button(*pView, QStringLiteral("Rect")), Qt::LeftButton);
        QVERIFY(pEditor->hasFocus());
    }

    void withoutAModelItShowsAndEmitsWithoutHarm()
    {
        View view(nullptr);
        QSignalSpy spy(&view, &View::signal_PanningMode);
        view.slot_ChangeViewMode();
        QTest::mouseClick(Button(view, QStringLiteral("Panning")), Qt::LeftButton);
        QCOMPARE(spy.count(), 1);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DToolView)
#include "tst_CImageView2DToolView.moc"
