// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CSelectionDialog.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
struct SFixture {
    CSelectionDialog dialog;
    QComboBox* pCombo = qobject_cast<QComboBox*>(Widget(0, 1));
    QPushButton* pOk = qobject_cast<QPushButton*>(Widget(1, 0));
    QPushButton* pCancel = qobject_cast<QPushButton*>(Widget(1, 1));

    QWidget* Widget(int nRow, int nColumn) const
    {
        return dialog.layout()->itemAt(nRow)->layout()->itemAt(nColumn)->widget();
    }
    bool Open()
    {
        dialog.AddSelectionItem(QStringLiteral("Image View [0]"));
        dialog.AddSelectionItem(QStringLiteral("Image View [1]"));
        // Not modal: closing a modal dialog, Qt asks for a frame that the window manager just removed.
        dialog.show();
        dialog.activateWindow();
        return QTest::qWaitForWindowActive(&dialog);
    }
};
} // namespace

class tst_CSelectionDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasTwoRowsAndATitle()
    {
        const SFixture f;
        QCOMPARE(f.dialog.windowTitle(), QStringLiteral("Select Image View"));
        QVERIFY(qobject_cast<QVBoxLayout*>(f.dialog.layout()));
        QCOMPARE(f.dialog.layout()->count(), 2);
        QCOMPARE(qobject_cast<QLabel*>(f.Widget(0, 0))->text(), QStringLiteral("Image View: "));
        QVERIFY(f.pCombo);
        QCOMPARE(f.pOk->text(), QStringLiteral("OK"));
        QCOMPARE(f.pCancel->text(), QStringLiteral("Cancel"));
    }

    void aDialogWithNoItemsReturnsAnEmptyText()
    {
        const SFixture f;
        QCOMPARE(f.dialog.GetSelectedItem(), QString());
    }

    void itemsAreAppendedWithoutAnIcon()
    {
        SFixture f;
        f.dialog.AddSelectionItem(QStringLiteral("b"));
        f.dialog.AddSelectionItem(QStringLiteral("a"));
        f.dialog.AddSelectionItem(QStringLiteral("b"));
        QCOMPARE(f.pCombo->count(), 3);
        QCOMPARE(f.pCombo->itemText(1), QStringLiteral("a"));
        QVERIFY(f.pCombo->itemIcon(1).isNull());
        QCOMPARE(f.dialog.GetSelectedItem(), QStringLiteral("b"));
        f.pCombo->setCurrentIndex(1);
        QCOMPARE(f.dialog.GetSelectedItem(), QStringLiteral("a"));
    }

    void okAcceptsWhatTheKeysChose()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.pCombo->setFocus();
        QTest::keyClick(f.pCombo, Qt::Key_Down);
        QTest::mouseClick(f.pOk, Qt::LeftButton);
        QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
        QVERIFY(!f.dialog.isVisible());
        QCOMPARE(f.dialog.GetSelectedItem(), QStringLiteral("Image View [1]"));
    }

    void cancelRejects()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.dialog.setResult(QDialog::Accepted);
        QTest::mouseClick(f.pCancel, Qt::LeftButton);
        QCOMPARE(f.dialog.result(), int(QDialog::Rejected));
        QVERIFY(!f.dialog.isVisible());
    }

    void returnAccepts()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.pCombo->setFocus();
        QTest::keyClick(f.pCombo, Qt::Key_Return);
        QTRY_VERIFY(!f.dialog.isVisible());
        QCOMPARE(f.dialog.result(), int(QDialog::Accepted));
    }

    void escapeRejects()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.dialog.setResult(QDialog::Accepted);
        QTest::keyClick(&f.dialog, Qt::Key_Escape);
        QCOMPARE(f.dialog.result(), int(QDialog::Rejected));
    }
};

VANTOR_TEST_MAIN(tst_CSelectionDialog)
#include "tst_CSelectionDialog.moc"
