// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The optional kinds in the tool panel, and the arrow.
#include <Vantor/geometry/CArrow.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <tests/support/CenterFixture.h>
#include <tests/support/EditFixture.h>
#include <tests/support/LogRecorder.h>
#include <tests/support/TestMain.h>

using Vantor::Geometry::CArrow;

namespace
{
SCenterOptions MoreShapes(bool bMore = true)
{
    SCenterOptions sOptions;
    sOptions.bMoreShapes = bMore;
    return sOptions;
}

QStringList ButtonsOf(const QWidget& dock)
{
    QStringList lstTexts;
    for (const QPushButton* pButton : dock.findChildren<QPushButton*>())
        lstTexts << pButton->text();
    return lstTexts;
}

QStringList Pressed(const QWidget& dock)
{
    QStringList lstTexts;
    for (const QPushButton* pButton : dock.findChildren<QPushButton*>())
        if (pButton->isChecked())
            lstTexts << pButton->text();
    return lstTexts;
}

const CArrow* ArrowOf(const EditFixture& f)
{
    return f.geometry.Size() > 0 ? ShapeKinds::GeometryOf<CArrow>(*f.geometry.GetAt(0)) : nullptr;
}

/// A processing tool that lists regions, and no more.
class CTool : public CImage2DProcessBaseCtrl
{
public:
    using CImage2DProcessBaseCtrl::CImage2DProcessBaseCtrl;
    bool Undo() override { return false; }
    bool Redo() override { return false; }
};
} // namespace

class tst_MoreShapes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelHasTheOptionalKindsWithTheOptionOnly()
    {
        EditFixture f;
        QCOMPARE(ButtonsOf(*f.toolDock).size(), 6);
        f.ctrl->SetOptions(MoreShapes());
        QCOMPARE(ButtonsOf(*f.toolDock).mid(6),
                 QStringList({QStringLiteral("Arrow"), QStringLiteral("Text"), QStringLiteral("Scale Bar")}));
        f.ctrl->SetOptions(MoreShapes());
        QCOMPARE(ButtonsOf(*f.toolDock).size(), 9);
        f.ctrl->SetOptions(MoreShapes(false));
        QCOMPARE(ButtonsOf(*f.toolDock).size(), 6);
        QCOMPARE(Pressed(*f.toolDock), QStringList{QStringLiteral("Select")});
    }

    void theCentreHandsTheOptionToEveryViewer()
    {
        CenterFixture f(2, 1);
        f.center->SetOptions(MoreShapes());
        for (int nView : {0, 1}) {
            f.ClickAt(nView, {10, 10});
            QVERIFY(ButtonsOf(*f.toolDock).contains(QStringLiteral("Arrow")));
        }
    }

    void anArrowIsDrawnFromTailToTipAndUndone()
    {
        EditFixture f;
        f.ctrl->SetOptions(MoreShapes());
        QCoreApplication::processEvents();
        LogRecorder log;
        f.Choose("Arrow");
        QCOMPARE(log.Take().first(), QStringLiteral("1:Arrow"));
        QCOMPARE(Pressed(*f.toolDock), QStringList{QStringLiteral("Arrow")});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.Drag({20, 30}, {120, 30});
        QVERIFY(ArrowOf(f));
        QCOMPARE(ArrowOf(f)->start().x(), 20.0);
        QCOMPARE(ArrowOf(f)->end().x(), 120.0);
        const auto pObject = f.geometry.GetAt(0);
        QCOMPARE(pObject->GetName(), QStringLiteral("Arrow_%1").arg(pObject->GetUID()));
        QCOMPARE(Pressed(*f.toolDock), QStringList{QStringLiteral("Select")});
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressRedo();
        QVERIFY(ArrowOf(f));
    }

    void anArrowIsMovedAndItsTipPulled()
    {
        EditFixture f;
        f.ctrl->SetOptions(MoreShapes());
        QCoreApplication::processEvents(); // lays the buttons out
        f.Choose("Arrow");
        f.Drag({20, 30}, {120, 30});
        f.Drag({120, 30}, {120, 100});
        QCOMPARE(ArrowOf(f)->end().y(), 100.0);
        f.Drag({70, 60}, {80, 60});
        QVERIFY(std::abs(ArrowOf(f)->start().x() - 30.0) < 1e-9);
        f.PressUndo();
        f.PressUndo();
        QCOMPARE(ArrowOf(f)->start().x(), 20.0);
        QCOMPARE(ArrowOf(f)->end().y(), 30.0);
    }

    void anArrowIsPaintedWithItsHeadAndWithoutAFrame()
    {
        EditFixture f;
        const auto pArrow = f.Add(std::make_shared<CArrow>(Vantor::Geometry::CPoint<double>(20, 75),
                                                           Vantor::Geometry::CPoint<double>(180, 75)));
        pArrow->SetDisplayName(false);
        const QImage picture = f.view->grab().toImage();
        const auto isGreen = [&](double x, double y) {
            const QPoint pixel = f.view->MapToWidget(QPointF(x, y)).toPoint();
            for (const QPoint& step : {QPoint(0, 0), QPoint(-1, 0), QPoint(0, -1), QPoint(-1, -1)})
                if (picture.pixelColor(pixel + step) == QColor(0, 255, 0))
                    return true;
            return false;
        };
        const auto barb = ArrowOf(f)->GetBarbs()[0];
        QVERIFY(isGreen(100, 75));
        QVERIFY(isGreen(barb.x(), barb.y()));
        QVERIFY(!isGreen(100, 60));
        int nGrey = 0;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                nGrey += picture.pixelColor(x, y) == QColor(100, 100, 100);
        const auto pBox = f.AddRectangle(20, 20, 160, 100);
        int nGreyOfBox = 0;
        const QImage with = f.view->grab().toImage();
        for (int x = 0; x < with.width(); ++x)
            for (int y = 0; y < with.height(); ++y)
                nGreyOfBox += with.pixelColor(x, y) == QColor(100, 100, 100);
        QVERIFY(nGreyOfBox > nGrey + 50);
        QVERIFY(nGrey < 20); // the picture beneath may have that grey
    }

    void anArrowIsNoRegionOfTheTools()
    {
        CenterFixture f(1, 1);
        f.center->SetOptions(MoreShapes());
        CImage2DProcessBaseDlg dlg(&f.window);
        CTool ctrl(&dlg);
        QCoreApplication::processEvents();
        f.PressToolButton("Arrow");
        f.Drag(0, {20, 30}, {120, 80});
        QCOMPARE(f.Counts()[0], 1);
        QCOMPARE(dlg.GetSourceROIName(), QString());
        ctrl.ChangeSourceImageView(QStringLiteral("Image View [0]")); // fills the list anew
        QCOMPARE(dlg.GetSourceROIName(), QString());
        f.DrawRectangle(0, {20, 100}, {120, 140});
        QVERIFY(dlg.GetSourceROIName().startsWith(QLatin1String("Rectangle_")));
    }
};

VANTOR_TEST_MAIN(tst_MoreShapes)
#include "tst_MoreShapes.moc"
