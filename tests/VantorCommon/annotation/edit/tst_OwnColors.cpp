// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Annotations in their own pen and brush, and the panel that changes them.
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>

namespace
{
const QColor kBlue(0, 0, 255);
const QColor kGreen(0, 255, 0);

class COwnColors : public EditFixture
{
public:
    explicit COwnColors(bool bOn = true)
    {
        SCenterOptions sOptions;
        sOptions.bOwnColors = bOn;
        ctrl->SetOptions(sOptions);
    }
    QColor At(double x, double y) const
    {
        return view->grab().toImage().pixelColor(view->MapToWidget(QPointF(x, y)).toPoint());
    }
    /// Unnamed, not selected.
    ObjectPtr AddBox()
    {
        const ObjectPtr pObject = AddRectangle(20, 20, 100, 80);
        pObject->SetDisplayName(false);
        return pObject;
    }
    template <class T> T* Editor(const char* szName) const
    {
        for (T* pWidget : propertyDock->findChildren<T*>())
            if (pWidget->accessibleName() == QLatin1String(szName))
                return pWidget;
        return nullptr;
    }
    QDoubleSpinBox* Width() const { return Editor<QDoubleSpinBox>("Width"); }
    QCheckBox* Filled() const { return propertyDock->findChild<QCheckBox*>(); }
    /// Presses a colour button and accepts another colour in its dialog.
    void ChooseColor(const char* szButton, const QColor& color)
    {
        Editor<QPushButton>(szButton)->click();
        auto* pDialog = propertyDock->findChild<QColorDialog*>();
        QVERIFY(pDialog);
        pDialog->setCurrentColor(color);
        pDialog->accept();
        QTRY_VERIFY(!propertyDock->findChild<QColorDialog*>());
        view->setFocus();
    }
    void Undo()
    {
        host.activateWindow();
        view->setFocus();
        QTRY_VERIFY(view->hasFocus());
        QVERIFY(ctrl->Undo());
    }
};
} // namespace

class tst_OwnColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deliberatelyPenAndBrushAreNotPaintedWithoutTheOption()
    {
        COwnColors f(false);
        const auto pBox = f.AddBox();
        const QImage before = f.view->grab().toImage();
        pBox->SetPen(QPen(kBlue, 5));
        pBox->SetBrushFilled(QBrush(kBlue));
        QCOMPARE(f.view->grab().toImage(), before);
        QVERIFY(!f.Width());
    }

    void withTheOptionTheyAre()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        const QColor inside = f.At(70, 60);
        pBox->SetPen(QPen(kBlue, 9));
        QCOMPARE(f.At(70, 21.5), kBlue); // three widget pixels off the middle of the line
        QVERIFY(f.At(70, 60) != inside); // a pen alone: no fill
        pBox->SetBrushFilled(QBrush(QColor(255, 255, 0)));
        QCOMPARE(f.At(70, 60), QColor(255, 255, 0));
    }

    void theWidthCountsWidgetPixelsWhateverTheZoom()
    {
        for (int nWidth : {200, 50}) {
            COwnColors f;
            f.images.SetImages({MakeTestImage(nWidth, nWidth * 3 / 4, 3)});
            const auto pBox = f.AddRectangle(nWidth / 4.0, nWidth / 4.0, nWidth / 2.0, nWidth / 4.0);
            pBox->SetDisplayName(false);
            pBox->SetPen(QPen(kBlue, 10));
            const QImage picture = f.view->grab().toImage();
            const int x = f.view->MapToWidget(QPointF(nWidth / 2.0, 0)).toPoint().x();
            int nBlue = 0; // the upper line, above its middle
            const int nMiddle = f.view->MapToWidget(QPointF(0, nWidth / 4.0)).toPoint().y();
            for (int y = 0; y < nMiddle - 1; ++y)
                nBlue += picture.pixelColor(x, y) == kBlue;
            QVERIFY2(nBlue >= 3 && nBlue <= 5, qPrintable(QString::number(nBlue)));
        }
    }

    void whatHasNoneOfItsOwnStaysGreen()
    {
        COwnColors f;
        f.AddBox();
        const QImage with = f.view->grab().toImage();
        COwnColors g(false);
        g.AddBox();
        QCOMPARE(with, g.view->grab().toImage());
    }

    void theHandlesTellTheSelection()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        pBox->SetPen(QPen(kBlue));
        const auto count = [&](const QColor& color) {
            const QImage picture = f.view->grab().toImage();
            const QPoint handle = f.view->MapToWidget(QPointF(20, 20)).toPoint();
            int nCount = 0;
            for (int x = handle.x() - 4; x <= handle.x() + 4; ++x)
                for (int y = handle.y() - 4; y <= handle.y() + 4; ++y)
                    nCount += picture.pixelColor(x, y) == color;
            return nCount;
        };
        QVERIFY(count(kGreen) >= 8);
        pBox->SetSelected(true);
        QVERIFY(count(QColor(255, 0, 0)) >= 8);
        QCOMPARE(count(kGreen), 0);
    }

    void thePanelShowsTheFirstSelectedAndIsGreyWithoutOne()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        QTRY_VERIFY(!f.Width()->isEnabled());
        pBox->SetSelected(true);
        QTRY_VERIFY(f.Width()->isEnabled());
        QCOMPARE(f.Width()->value(), 1.0);
        QVERIFY(f.Filled()->isChecked());
        pBox->SetPen(QPen(kBlue, 7));
        QTRY_COMPARE(f.Width()->value(), 7.0);
        QVERIFY(!f.Filled()->isChecked());
        QVERIFY(!f.ctrl->CanUndo()); // showing is no change
    }

    void aColourIsOneUndoableStepForAllThatAreSelected()
    {
        COwnColors f;
        const auto pA = f.AddBox();
        const auto pB = f.AddBox();
        const auto pC = f.AddBox();
        pA->SetSelected(true);
        pB->SetSelected(true);
        QTRY_VERIFY(f.Width()->isEnabled());
        f.ChooseColor("Color", kBlue);
        for (const auto& pObject : {pA, pB}) {
            QCOMPARE(pObject->GetPen().color(), kBlue);
            QCOMPARE(pObject->GetBrushFilled().color(), QColor(0, 0, 255, 50)); // the common fill follows
        }
        QCOMPARE(pC->GetPen().style(), Qt::NoPen);
        f.Undo();
        for (const auto& pObject : {pA, pB}) {
            QCOMPARE(pObject->GetPen(), QPen(Qt::NoPen));
            QCOMPARE(pObject->GetBrushFilled(), QBrush(Qt::NoBrush));
        }
        QVERIFY(!f.ctrl->CanUndo());
        QVERIFY(f.ctrl->Redo());
        QCOMPARE(pA->GetPen().color(), kBlue);
    }

    void aWidthIsOneStepAndTheSameWidthIsNone()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        pBox->SetSelected(true);
        QTRY_VERIFY(f.Width()->isEnabled());
        f.Width()->setValue(6);
        QCOMPARE(pBox->GetPen().widthF(), 6.0);
        QCOMPARE(pBox->GetPen().color(), kGreen);
        f.Width()->setValue(6);
        f.Undo();
        QCOMPARE(pBox->GetPen(), QPen(Qt::NoPen));
        QVERIFY(!f.ctrl->CanUndo());
        QTRY_COMPARE(f.Width()->value(), 1.0);
    }

    void theFillIsTakenAwayChosenAndBroughtBack()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        pBox->SetSelected(true);
        QTRY_VERIFY(f.Filled()->isEnabled());
        f.Filled()->click();
        QCOMPARE(pBox->GetBrushFilled().style(), Qt::NoBrush);
        QCOMPARE(pBox->GetPen().color(), kGreen);
        QTRY_VERIFY(!f.Editor<QPushButton>("Fill color")->isEnabled());
        f.Filled()->click();
        QCOMPARE(pBox->GetBrushFilled().color(), QColor(0, 255, 0, 50));
        QTRY_VERIFY(f.Editor<QPushButton>("Fill color")->isEnabled());
        f.ChooseColor("Fill color", QColor(9, 8, 7, 200));
        QCOMPARE(pBox->GetBrushFilled().color(), QColor(9, 8, 7, 200));
        f.Undo();
        f.Undo();
        f.Undo();
        QCOMPARE(pBox->GetPen(), QPen(Qt::NoPen));
        QVERIFY(!f.ctrl->CanUndo());
    }

    void theOptionCanBeTakenBack()
    {
        COwnColors f;
        const auto pBox = f.AddBox();
        const QImage common = f.view->grab().toImage();
        pBox->SetPen(QPen(kBlue, 5));
        QVERIFY(f.view->grab().toImage() != common);
        f.ctrl->SetOptions({});
        QCOMPARE(f.view->grab().toImage(), common);
        QVERIFY(!f.Width()->isVisible());
    }
};

VANTOR_TEST_MAIN(tst_OwnColors)
#include "tst_OwnColors.moc"
