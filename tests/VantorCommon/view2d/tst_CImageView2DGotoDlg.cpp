// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/view2d/CImageView2DGotoDlg.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace
{
/// A dialog over an image of 640 x 480 pixels, on the screen and active.
struct SFixture {
    CImageView2DGotoDlg dialog;
    QSpinBox* pSpinX = qobject_cast<QSpinBox*>(Widget(1));
    QSpinBox* pSpinY = qobject_cast<QSpinBox*>(Widget(3));
    QPushButton* pGoTo = qobject_cast<QPushButton*>(Widget(4));

    SFixture()
    {
        dialog.SetMinimumX(0);
        dialog.SetMaximumX(639);
        dialog.SetMinimumY(0);
        dialog.SetMaximumY(479);
    }
    QWidget* Widget(int nIndex) const { return dialog.layout()->itemAt(nIndex)->widget(); }
    bool Open()
    {
        // Not modal: closing a modal dialog, Qt asks for a frame that the window manager just removed.
        dialog.show();
        dialog.activateWindow();
        return QTest::qWaitForWindowActive(&dialog);
    }
    void Type(QSpinBox* pSpin, const QString& strText) const
    {
        QTest::mouseClick(pSpin->findChild<QWidget*>(QStringLiteral("qt_spinbox_lineedit")), Qt::LeftButton);
        pSpin->selectAll();
        QTest::keyClicks(pSpin, strText);
    }
};
} // namespace

class tst_CImageView2DGotoDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRowHoldsTwoLabelledSpinBoxesAndAButton()
    {
        const SFixture f;
        QVERIFY(qobject_cast<QHBoxLayout*>(f.dialog.layout()));
        QCOMPARE(f.dialog.layout()->count(), 5);
        QCOMPARE(qobject_cast<QLabel*>(f.Widget(0))->text(), QStringLiteral("X:"));
        QVERIFY(f.pSpinX);
        QCOMPARE(qobject_cast<QLabel*>(f.Widget(2))->text(), QStringLiteral("Y:"));
        QVERIFY(f.pSpinY);
        QVERIFY(f.pGoTo);
        QCOMPARE(f.pGoTo->text(), QStringLiteral("Go To"));
    }

    void theRangesBelongToTheirSpinBoxes()
    {
        SFixture f;
        f.dialog.SetMinimumX(-5);
        f.dialog.SetMinimumY(3);
        QCOMPARE(f.pSpinX->minimum(), -5);
        QCOMPARE(f.pSpinX->maximum(), 639);
        QCOMPARE(f.pSpinY->minimum(), 3);
        QCOMPARE(f.pSpinY->maximum(), 479);
        QCOMPARE(f.dialog.GetY(), 3);
    }

    void typedValuesAreReadBackAndLimitedByTheRange()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.Type(f.pSpinX, QStringLiteral("123"));
        f.Type(f.pSpinY, QStringLiteral("4567")); // the last digit does not fit
        QCOMPARE(f.dialog.GetX(), 123);
        QCOMPARE(f.dialog.GetY(), 456);
    }

    void thePressOfTheButtonAccepts()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.Type(f.pSpinX, QStringLiteral("12"));
        QTest::mousePress(f.pGoTo, Qt::LeftButton); // before any release
        QVERIFY(!f.dialog.isVisible());
        QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
        QCOMPARE(f.dialog.GetX(), 12);
        QTest::mouseRelease(f.pGoTo, Qt::LeftButton);
    }

    void returnInASpinBoxAccepts()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.Type(f.pSpinY, QStringLiteral("77"));
        QTest::keyClick(f.pSpinY, Qt::Key_Return);
        QTRY_VERIFY(!f.dialog.isVisible());
        QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
        QCOMPARE(f.dialog.GetY(), 77);
    }

    void escapeRejects()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.dialog.setResult(QDialog::Accepted);
        QTest::keyClick(&f.dialog, Qt::Key_Escape);
        QVERIFY(!f.dialog.isVisible());
        QCOMPARE(f.dialog.result(), int(QDialog::Rejected));
    }

    void withoutSpinBoxesTheValuesAreZero()
    {
        SFixture f;
        f.pSpinX->setValue(5);
        f.pSpinY->setValue(6);
        QCOMPARE(f.dialog.GetX(), 5);
        QCOMPARE(f.dialog.GetY(), 6);
        delete f.pSpinX;
        delete f.pSpinY;
        f.dialog.SetMinimumX(1);
        f.dialog.SetMaximumX(2);
        f.dialog.SetMinimumY(1);
        f.dialog.SetMaximumY(2);
        QCOMPARE(f.dialog.GetX(), 0);
        QCOMPARE(f.dialog.GetY(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DGotoDlg)
#include "tst_CImageView2DGotoDlg.moc"
