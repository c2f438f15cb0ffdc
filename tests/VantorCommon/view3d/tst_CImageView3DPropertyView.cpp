// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view3d/View3DParameters.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CPropertyDockView.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

namespace
{
/// The panel's boxes as a person finds them: by group and label, top to bottom.
struct SRow {
    QString strGroup;
    QLabel* pLabel;
    QDoubleSpinBox* pBox;
};

QList<SRow> RowsOf(const CImageView3DPropertyView& view)
{
    QList<SRow> rows;
    for (const auto* pGroup : view.findChildren<QGroupBox*>()) {
        const auto* pLayout = qobject_cast<QFormLayout*>(pGroup->layout());
        for (int i = 0; i < pLayout->rowCount(); ++i)
            rows.append(
                {pGroup->title(), qobject_cast<QLabel*>(pLayout->itemAt(i, QFormLayout::LabelRole)->widget()),
                 qobject_cast<QDoubleSpinBox*>(pLayout->itemAt(i, QFormLayout::FieldRole)->widget())});
    }
    return rows;
}

/// A panel whose edits reach the model, as the controller connects it.
struct SFixture {
    CImageView3DModel model;
    CPropertyDockView dock;
    CImageView3DCtrl ctrl{&model, nullptr, nullptr, nullptr, &dock, nullptr};
    CImageView3DPropertyView* pView = nullptr;
    QList<SRow> rows;

    SFixture()
    {
        ctrl.slot_Active3DView();
        pView = qobject_cast<CImageView3DPropertyView*>(dock.widget());
        rows = RowsOf(*pView);
    }
    QDoubleSpinBox* Box(const char* pLabel) const
    {
        for (const SRow& row : rows)
            if (row.pLabel->text() == QLatin1String(pLabel))
                return row.pBox;
        return nullptr;
    }
};

void AddRows()
{
    QTest::addColumn<int>("nRow");
    for (int i = 0; i < kExpectedCount; ++i)
        QTest::newRow(kExpected[i].pLabel) << i;
}
} // namespace

class tst_CImageView3DPropertyView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowHasItsGroupLabelRangeAndStep_data() { AddRows(); }

    void everyRowHasItsGroupLabelRangeAndStep()
    {
        QFETCH(int, nRow);
        CImageView3DModel model;
        const CImageView3DPropertyView view(&model, nullptr);
        const QList<SRow> rows = RowsOf(view);
        QCOMPARE(rows.size(), kExpectedCount);
        const SExpectedParameter& expected = kExpected[nRow];
        QCOMPARE(rows[nRow].strGroup, QString::fromLatin1(expected.pGroup));
        QCOMPARE(rows[nRow].pLabel->text(), QString::fromLatin1(expected.pLabel));
        const QDoubleSpinBox& box = *rows[nRow].pBox;
        QCOMPARE(box.minimum(), expected.dblMinimum);
        QCOMPARE(box.maximum(), expected.dblMaximum);
        QCOMPARE(box.singleStep(), expected.dblStep);
        QCOMPARE(box.decimals(), 2);
        const QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
        for (const QWidget* pWidget :
             {static_cast<const QWidget*>(&box), static_cast<const QWidget*>(rows[nRow].pLabel)}) {
            QCOMPARE(pWidget->sizePolicy().horizontalPolicy(), expanding.horizontalPolicy());
            QCOMPARE(pWidget->sizePolicy().verticalPolicy(), expanding.verticalPolicy());
        }
    }

    void theBoxesOpenShowingTheDefaults()
    {
        CImageView3DModel model;
        const CImageView3DPropertyView view(&model, nullptr);
        const double values[] = {-73, 0, 19, 0, 0, 0, 1, 1, 1, 0, 0, 5, 0.5, 0.5, 0, 0, 1, 0, 22, 0.1, 100};
        const QList<SRow> rows = RowsOf(view);
        for (int i = 0; i < kExpectedCount; ++i)
            QCOMPARE(rows[i].pBox->value(), values[i]);
        QCOMPARE(model.GetNear(), 0.1F);
    }

    void anEditIsAnnouncedBySignalAndReachesTheModelBySlot_data() { AddRows(); }

    void anEditIsAnnouncedBySignalAndReachesTheModelBySlot()
    {
        QFETCH(int, nRow);
        const SExpectedParameter& expected = kExpected[nRow];
        SFixture fixture;
        QSignalSpy spy(fixture.pView, expected.pSignal);
        fixture.rows[nRow].pBox->setValue(7.25);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.takeFirst().at(0).toDouble(), 7.25);
        QCOMPARE((fixture.model.*expected.pGetter)(), 7.25F);
        (fixture.ctrl.*expected.pSlot)(8.5);
        QCOMPARE((fixture.model.*expected.pGetter)(), 8.5F);
        QCOMPARE(fixture.rows[nRow].pBox->value(), 8.5);
    }

    void withoutAConnectionAnEditChangesNothing()
    {
        CImageView3DModel model;
        const CImageView3DPropertyView view(&model, nullptr);
        RowsOf(view)[0].pBox->setValue(10);
        QCOMPARE(model.GetRotateX(), -73.0F);
    }

    void entering150InCamPosZStopsAt9999()
    {
        SFixture fixture;
        fixture.Box("CamPos Z: ")->setValue(150);
        QCOMPARE(fixture.Box("CamPos Z: ")->value(), 99.99);
        QCOMPARE(fixture.model.GetCameraPositionZ(), 99.99F);
    }

    void aNumberBeyondTheRangeIsTypedWholeAndEndsAtTheLimit_data()
    {
        QTest::addColumn<QString>("strLabel");
        QTest::addColumn<QString>("strTyped");
        QTest::addColumn<double>("dblLimit");
        QTest::newRow("above") << QStringLiteral("CamPos Z: ") << QStringLiteral("150") << 99.99;
        QTest::newRow("above, with decimals") << QStringLiteral("FOV: ") << QStringLiteral("120.5") << 90.0;
        QTest::newRow("below") << QStringLiteral("Near: ") << QStringLiteral("-2000") << -1000.0;
        QTest::newRow("as long as a line")
            << QStringLiteral("Far: ") << QString(300, QLatin1Char('9')) << 1000.0;
    }

    void aNumberBeyondTheRangeIsTypedWholeAndEndsAtTheLimit()
    {
        QFETCH(QString, strLabel);
        QFETCH(QString, strTyped);
        QFETCH(double, dblLimit);
        SFixture fixture;
        QDoubleSpinBox* pBox = fixture.Box(strLabel.toLatin1().constData());
        pBox->selectAll();
        QTest::keyClicks(pBox, strTyped);
        QCOMPARE(pBox->findChild<QLineEdit*>()->text(), strTyped);
        QTest::keyClick(pBox, Qt::Key_Return);
        QCOMPARE(pBox->value(), dblLimit);
        QCOMPARE(pBox->findChild<QLineEdit*>()->text(), pBox->textFromValue(dblLimit));
    }

    void lettersAreNotTaken()
    {
        SFixture fixture;
        QDoubleSpinBox* pBox = fixture.Box("CamPos Z: ");
        pBox->selectAll();
        QTest::keyClicks(pBox, QStringLiteral("1x5nan"));
        QTest::keyClick(pBox, Qt::Key_Return);
        QCOMPARE(pBox->value(), 15.0);
    }

    void deliberateTheRangeOfALengthIsLopsided()
    {
        SFixture fixture;
        fixture.Box("Translate X: ")->setValue(-1500);
        QCOMPARE(fixture.model.GetTranslateX(), -1000.0F);
        fixture.Box("Translate X: ")->setValue(1500);
        QCOMPARE(fixture.model.GetTranslateX(), 99.99F);
    }

    void aChangeOfTheModelRefreshesTheBoxesAndTheExchangeStopsThere()
    {
        SFixture fixture;
        QSignalSpy spy(&fixture.model, &CImageView3DModel::signal_ChangeTransformMatrix);
        fixture.ctrl.slot_ChangeRotateY(12.3);
        QCOMPARE(fixture.Box("Rotate Y: ")->value(), 12.3);
        QCOMPARE(spy.count(), 1);
    }

    void aValueOutsideTheRangeComesBackClamped()
    {
        SFixture fixture;
        fixture.model.SetRotateX(-95.0F);
        QCOMPARE(fixture.Box("Rotate X: ")->value(), -90.0);
        QCOMPARE(fixture.model.GetRotateX(), -90.0F);
    }

    void deliberateAValueOutsideTheRangeStaysWhenTheBoxShowsTheClampedOne()
    {
        SFixture fixture;
        fixture.model.SetRotateX(-90.0F);
        fixture.model.SetRotateX(-95.0F);
        QCOMPARE(fixture.Box("Rotate X: ")->value(), -90.0);
        QCOMPARE(fixture.model.GetRotateX(), -95.0F);
    }

    void typingANumberKeyByKeyEndsWithThatNumber_data()
    {
        QTest::addColumn<QString>("strLabel");
        QTest::addColumn<QString>("strTyped");
        QTest::addColumn<double>("dblValue");
        QTest::newRow("two decimals") << QStringLiteral("CamPos Z: ") << QStringLiteral("12.75") << 12.75;
        QTest::newRow("negative") << QStringLiteral("Rotate X: ") << QStringLiteral("-45.5") << -45.5;
        QTest::newRow("below one") << QStringLiteral("Near: ") << QStringLiteral("0.25") << 0.25;
    }

    void typingANumberKeyByKeyEndsWithThatNumber()
    {
        QFETCH(QString, strLabel);
        QFETCH(QString, strTyped);
        QFETCH(double, dblValue);
        SFixture fixture;
        QDoubleSpinBox* pBox = fixture.Box(strLabel.toLatin1().constData());
        pBox->selectAll();
        QTest::keyClicks(pBox, strTyped);
        QCOMPARE(pBox->findChild<QLineEdit*>()->text(), strTyped);
        QCOMPARE(pBox->value(), dblValue);
        QTest::keyClick(pBox, Qt::Key_Return);
        QCOMPARE(pBox->value(), dblValue);
    }

    void withoutAModelThePanelIsThere()
    {
        CImageView3DPropertyView view(nullptr, nullptr);
        view.UpdateValue();
        QCOMPARE(RowsOf(view).size(), kExpectedCount);
    }
};

VANTOR_TEST_MAIN(tst_CImageView3DPropertyView)
#include "tst_CImageView3DPropertyView.moc"
