// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
const QString c_strKeyX = QStringLiteral("GENERAL_PDF_RESOLUTION_X");
const QString c_strKeyY = QStringLiteral("GENERAL_PDF_RESOLUTION_Y");

struct SFixture {
    CSettingDlg dialog;
    QTabWidget* pTabs = dialog.findChild<QTabWidget*>();
    QSpinBox* pX = dialog.findChild<QSpinBox*>(c_strKeyX);
    QSpinBox* pY = dialog.findChild<QSpinBox*>(c_strKeyY);
    QSignalSpy spy{&dialog, &CSettingDlg::signal_UpdateSetingParameter};

    bool Open()
    {
        dialog.show();
        dialog.activateWindow();
        return QTest::qWaitForWindowActive(&dialog);
    }
    /// What was announced, as "key=value" with the value's type.
    QStringList Announced()
    {
        QStringList lines;
        for (const auto& arguments : spy) {
            const QVariant value = arguments.at(1).value<QVariant>();
            lines << arguments.at(0).toString() + QLatin1Char('=') + value.toString() + QLatin1Char(':') +
                         QString::fromLatin1(value.typeName());
        }
        spy.clear();
        return lines;
    }
};
} // namespace

class tst_CSettingDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        CSettingManager::Set(c_strKeyX, QVariant());
        CSettingManager::Set(c_strKeyY, QVariant());
    }

    void theTabGeneralHoldsAGroupWithTwoRowsAtItsTop()
    {
        SFixture f;
        QCOMPARE(f.dialog.windowTitle(), QStringLiteral("Settings"));
        QVERIFY(qobject_cast<QVBoxLayout*>(f.dialog.layout()));
        QCOMPARE(f.dialog.layout()->count(), 1);
        QCOMPARE(f.dialog.layout()->itemAt(0)->widget(), f.pTabs);
        QCOMPARE(f.pTabs->count(), 1);
        QCOMPARE(f.pTabs->tabText(0), QStringLiteral("General"));
        const auto groups = f.pTabs->widget(0)->findChildren<QGroupBox*>();
        QCOMPARE(groups.size(), 1);
        QCOMPARE(groups.at(0)->title(), QStringLiteral("PDF"));
        QStringList labels;
        for (const QLabel* pLabel : groups.at(0)->findChildren<QLabel*>())
            labels << pLabel->text();
        QCOMPARE(labels, QStringList({QStringLiteral("Resolution X:"), QStringLiteral("Resolution Y:")}));
        QCOMPARE(groups.at(0)->findChildren<QSpinBox*>(), QList<QSpinBox*>({f.pX, f.pY}));

        f.dialog.resize(400, 600);
        QVERIFY(f.Open());
        QVERIFY(groups.at(0)->y() < 30);
        QVERIFY(groups.at(0)->height() < 200);
        QVERIFY(f.pX->y() < f.pY->y());
    }

    void theBoxesTakeZeroToNinetyNineHundredNinetyNineInStepsOfOne()
    {
        SFixture f;
        for (const QSpinBox* pBox : {f.pX, f.pY}) {
            QCOMPARE(pBox->minimum(), 0);
            QCOMPARE(pBox->maximum(), 9999);
            QCOMPARE(pBox->singleStep(), 1);
        }
    }

    void onAFreshStoreTheDialogShowsZero()
    {
        SFixture f;
        f.dialog.UpdateParameter();
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 0);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionY(), 0);
    }

    void aSecondCreateViewDoesNothing()
    {
        SFixture f;
        f.dialog.CreateView();
        QCOMPARE(f.pTabs->count(), 1);
        QCOMPARE(f.dialog.findChildren<QSpinBox*>(), QList<QSpinBox*>({f.pX, f.pY}));
    }

    void theSettingsAreShownWithoutBeingAnnounced()
    {
        SFixture f;
        CSettingManager::Set(c_strKeyX, 300);
        CSettingManager::Set(c_strKeyY, QStringLiteral("150"));
        f.dialog.UpdateParameter();
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 300);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionY(), 150);
        QCOMPARE(f.Announced(), QStringList());
    }

    void aStoredValueOutsideTheBoxIsShownAtItsEndAndNotAnnounced()
    {
        SFixture f;
        CSettingManager::Set(c_strKeyX, 123456);
        CSettingManager::Set(c_strKeyY, -5);
        f.dialog.UpdateParameter();
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 9999);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionY(), 0);
        CSettingManager::Set(c_strKeyX, QStringLiteral("no number"));
        f.dialog.UpdateParameter();
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 0);
        QCOMPARE(f.Announced(), QStringList());
    }

    void whatIsTypedIsAnnouncedKeyByKey()
    {
        SFixture f;
        QVERIFY(f.Open());
        f.pX->setFocus();
        f.pX->selectAll();
        QTest::keyClicks(f.pX, QStringLiteral("300"));
        QCOMPARE(f.Announced(),
                 QStringList({c_strKeyX + QStringLiteral("=3:int"), c_strKeyX + QStringLiteral("=30:int"),
                              c_strKeyX + QStringLiteral("=300:int")}));
        QTest::keyClick(f.pX, Qt::Key_Tab);
        QVERIFY(f.pY->hasFocus());
        QTest::keyClick(f.pY, Qt::Key_Up);
        QCOMPARE(f.Announced(), QStringList{c_strKeyY + QStringLiteral("=1:int")});
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 300);
    }

    void aRefreshDuringAnAnnouncementLeavesTheBoxOfTheUserAlone()
    {
        SFixture f;
        connect(&f.dialog, &CSettingDlg::signal_UpdateSetingParameter, &f.dialog,
                [&] { f.dialog.UpdateParameter(); });
        QVERIFY(f.Open());
        f.pX->setFocus();
        f.pX->selectAll();
        QTest::keyClicks(f.pX, QStringLiteral("300"));
        QCOMPARE(f.pX->value(), 300);
        QCOMPARE(f.Announced().size(), 3);
    }

    void anEditThatWasStoredStaysShownUntilTheSettingItselfChanges()
    {
        SFixture f;
        const auto storing = connect(&f.dialog, &CSettingDlg::signal_UpdateSetingParameter, &f.dialog,
                                     [&] { f.dialog.UpdateParameter(); });
        f.pX->setValue(300);
        f.pY->setValue(150);
        f.dialog.UpdateParameter();
        QCOMPARE(f.pX->value(), 300);
        QCOMPARE(f.pY->value(), 150);
        disconnect(storing);
        CSettingManager::Set(c_strKeyX, 200);
        f.dialog.UpdateParameter();
        QCOMPARE(f.pX->value(), 200);
        QCOMPARE(f.pY->value(), 150);
    }

    void anEditThatNobodyStoredGivesWayToTheNextRefresh()
    {
        SFixture f;
        f.pX->setValue(300);
        f.dialog.UpdateParameter();
        QCOMPARE(f.pX->value(), 0);
    }

    void anEditorOfAFurtherTabTakesPartByItsObjectName()
    {
        SFixture f;
        auto* pPage = new QWidget;
        auto* pNumber = new QDoubleSpinBox(pPage);
        pNumber->setObjectName(QStringLiteral("MY_NUMBER"));
        auto* pText = new QLineEdit(pPage);
        pText->setObjectName(QStringLiteral("MY_TEXT"));
        connect(pNumber, qOverload<double>(&QDoubleSpinBox::valueChanged), &f.dialog,
                &CSettingDlg::slot_ChangeValueDouble);
        connect(pText, &QLineEdit::textChanged, &f.dialog, &CSettingDlg::slot_ChangeValueString);
        f.dialog.AddSettingTab(pPage, QStringLiteral("Mine"));
        QCOMPARE(f.pTabs->count(), 2);
        QCOMPARE(f.pTabs->tabText(1), QStringLiteral("Mine"));
        QCOMPARE(f.pTabs->widget(1), pPage);
        pNumber->setValue(2.5);
        pText->setText(QStringLiteral("abc"));
        QCOMPARE(f.Announced(), QStringList({QStringLiteral("MY_NUMBER=2.5:double"),
                                             QStringLiteral("MY_TEXT=abc:QString")}));
    }

    void withoutAKeyNothingIsAnnounced()
    {
        SFixture f;
        f.dialog.slot_ChangeValueInt(5);
        QLineEdit nameless;
        connect(&nameless, &QLineEdit::textChanged, &f.dialog, &CSettingDlg::slot_ChangeValueString);
        nameless.setText(QStringLiteral("abc"));
        QCOMPARE(f.Announced(), QStringList());
        f.dialog.AddSettingTab(nullptr, QStringLiteral("None"));
        QCOMPARE(f.pTabs->count(), 1);
    }
};

VANTOR_TEST_MAIN(tst_CSettingDlg)
#include "tst_CSettingDlg.moc"
