// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMessageBar.h"
#include "tests/support/TestMain.h"

#include <QAccessible>
#include <QLabel>
#include <QToolButton>

class tst_CMessageBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsClosedUntilThereIsSomethingToTell()
    {
        Bar b;
        QVERIFY(!b.bar.isVisible());
        b.bar.Tell(QString());
        QVERIFY(!b.bar.isVisible());
        b.bar.Tell(QStringLiteral("one"));
        QVERIFY(b.bar.isVisible());
        QCOMPARE(b.Text(), QStringLiteral("one"));
    }

    void messagesJoinUntilItIsClosed()
    {
        Bar b;
        b.bar.Tell(QStringLiteral("one"));
        b.bar.Tell(QStringLiteral("two"));
        b.bar.Tell(QStringLiteral("one")); // the newest stands last, and once
        QCOMPARE(b.Text(), QStringLiteral("two\none"));
        b.Close();
        QVERIFY(!b.bar.isVisible());
        b.bar.Tell(QStringLiteral("three"));
        QCOMPARE(b.Text(), QStringLiteral("three"));
    }

    void aFloodOfMessagesKeepsItsSize()
    {
        Bar b;
        for (int i = 1; i <= 1000; ++i)
            b.bar.Tell(QStringLiteral("message %1").arg(i));
        QCOMPARE(b.Text().count(QLatin1Char('\n')), 3);
        QVERIFY(b.Text().startsWith(QStringLiteral("message 998\nmessage 999\nmessage 1000\n997 ")));
    }

    void whatWasToldOfAFileGoesWhenItSucceeds()
    {
        Bar b;
        b.bar.Tell(QStringLiteral("Cannot load /a.png. It is empty."));
        b.bar.Tell(QStringLiteral("Cannot load /b.png. It is empty."));
        b.bar.ForgetAbout(QStringLiteral("/a.png"));
        QCOMPARE(b.Text(), QStringLiteral("Cannot load /b.png. It is empty."));
        b.bar.ForgetAbout(QStringLiteral("/b.png"));
        QVERIFY(!b.bar.isVisible());
    }

    void whatIsOldGoesAndWhatBelongsToTheSameDoingStays()
    {
        Bar b;
        b.bar.Tell(QStringLiteral("one"));
        b.bar.ForgetOld();
        QVERIFY(b.bar.isVisible());
        QTest::keyClick(&b.window, Qt::Key_A);
        b.bar.ForgetOld();
        QVERIFY(!b.bar.isVisible());
        b.bar.Tell(QStringLiteral("two"));
        QTest::mousePress(&b.window, Qt::LeftButton);
        b.bar.Tell(QStringLiteral("three"));
        b.bar.ForgetOld();
        QCOMPARE(b.Text(), QStringLiteral("two\nthree"));
    }

    void textFromOutsideIsNoMarkup()
    {
        Bar b;
        b.bar.Tell(QStringLiteral("<b>a</b>.png"));
        QCOMPARE(b.Label()->textFormat(), Qt::PlainText);
        QCOMPARE(b.Text(), QStringLiteral("<b>a</b>.png"));
    }

    void itLeavesTheFocusWhereItIs()
    {
        Bar b;
        QWidget other(&b.window);
        other.setFocusPolicy(Qt::StrongFocus);
        other.show();
        other.setFocus();
        b.bar.Tell(QStringLiteral("one"));
        QVERIFY(other.hasFocus());
        QTest::mouseClick(b.Label(), Qt::LeftButton);
        QVERIFY(other.hasFocus());
        b.Close();
        QVERIFY(other.hasFocus());
    }

    void itsTextIsItsAccessibleName()
    {
        Bar b;
        b.bar.Tell(QStringLiteral("one"));
        QCOMPARE(QAccessible::queryAccessibleInterface(b.Label())->text(QAccessible::Name),
                 QStringLiteral("one"));
    }

private:
    struct Bar {
        Bar()
        {
            window.resize(400, 200);
            window.show();
            window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
        }
        QLabel* Label() const
        {
            for (auto* pLabel : bar.findChildren<QLabel*>())
                if (pLabel->pixmap(Qt::ReturnByValue).isNull())
                    return pLabel;
            return nullptr;
        }
        QString Text() const { return Label()->text(); }
        void Close() { QTest::mouseClick(bar.findChild<QToolButton*>(), Qt::LeftButton); }

        QWidget window;
        CMessageBar bar{&window};
    };
};

VANTOR_TEST_MAIN(tst_CMessageBar)
#include "tst_CMessageBar.moc"
