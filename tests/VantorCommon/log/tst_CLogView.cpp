// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogView.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace
{
const QStringList c_lstHeader = {QStringLiteral("DateTime"), QStringLiteral("Type"),
                                 QStringLiteral("Message")};

struct SFixture {
    CLogView view;
    QTableView* pTable = view.findChild<QTableView*>();
    QStandardItemModel* pModel = pTable->findChild<QStandardItemModel*>();

    void Add(ELogLevel eLevel, const QString& strText)
    {
        view.slot_NewMessage({strText, eLevel, QDateTime(QDate(2016, 5, 1), QTime(14, 3, 7))});
    }
    QStringList Row(int nRow) const
    {
        QStringList texts;
        for (int i = 0; i < pModel->columnCount(); ++i)
            texts << pModel->index(nRow, i).data().toString();
        return texts;
    }
    QStringList Header() const
    {
        QStringList labels;
        for (int i = 0; i < pModel->columnCount(); ++i)
            labels << pModel->headerData(i, Qt::Horizontal).toString();
        return labels;
    }
    bool IsInSight(int nRow) const
    {
        return pTable->viewport()->rect().contains(pTable->visualRect(pModel->index(nRow, 0)));
    }
};

void Drain()
{
    while (!CLogModel::GetInstance()->IsEmpty())
        CLogModel::GetInstance()->slot_OnTimer();
}
} // namespace

class tst_CLogView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // First: nobody has used the log model yet.
    void aViewMadeBeforeTheFirstMessageShowsIt()
    {
        SFixture f;
        QCOMPARE(f.pModel->rowCount(), 0);
        CLogger::Write(WARNING, "%s", "the first");
        Drain();
        QCOMPARE(f.pModel->rowCount(), 1);
        QCOMPARE(f.Row(0).mid(1), QStringList({QStringLiteral("WARNING"), QStringLiteral("the first")}));
    }

    void onlyTheChosenLevelsAreShownAlsoOfWhatIsListed()
    {
        SFixture f;
        const auto shown = [&] {
            QStringList texts;
            for (int i = 0; i < f.pModel->rowCount(); ++i)
                if (!f.pTable->isRowHidden(i))
                    texts << f.Row(i)[2];
            return texts.join(QLatin1Char(' '));
        };
        const auto addAll = [&] {
            for (auto eLevel : {NORMAL, DEBUG, WARNING, ERROR})
                f.Add(eLevel, QString::number(eLevel));
        };
        addAll();
        QCOMPARE(shown(), QStringLiteral("0 1 2 3"));
        f.view.SetLevels({WARNING, ERROR});
        QCOMPARE(shown(), QStringLiteral("2 3"));
        addAll();
        QCOMPARE(shown(), QStringLiteral("2 3 2 3"));
        f.view.SetLevels({NORMAL});
        QCOMPARE(shown(), QStringLiteral("0 0"));
        for (int i = f.pModel->rowCount(); i < 500; ++i)
            f.Add(ERROR, QString());
        f.Add(ERROR, QString()); // clears the view
        f.Add(NORMAL, QStringLiteral("0"));
        QCOMPARE(f.pModel->rowCount(), 2);
        QCOMPARE(shown(), QStringLiteral("0"));
    }

    void aViewMadeLaterShowsWhatIsAnnouncedFromThenOn()
    {
        CLogger::Write(NORMAL, "before");
        Drain();
        CLogger::Write(NORMAL, "waiting");
        SFixture f;
        CLogger::Write(NORMAL, "after");
        Drain();
        QCOMPARE(f.pModel->rowCount(), 2);
        QCOMPARE(f.Row(0).at(2), QStringLiteral("waiting"));
        QCOMPARE(f.Row(1).at(2), QStringLiteral("after"));
    }

    void twoViewsShowTheSame()
    {
        SFixture first, second;
        CLogger::Write(ERROR, "both");
        Drain();
        QCOMPARE(first.Row(0), second.Row(0));
        QCOMPARE(first.pModel->rowCount(), 1);
    }

    void theTableFillsTheViewAndHasThreeColumns()
    {
        SFixture f;
        auto* pLayout = qobject_cast<QVBoxLayout*>(f.view.layout());
        QVERIFY(pLayout);
        QCOMPARE(pLayout->spacing(), 0);
        QCOMPARE(pLayout->contentsMargins(), QMargins());
        QCOMPARE(pLayout->itemAt(0)->widget(), f.pTable);
        QCOMPARE(f.Header(), c_lstHeader);
        QCOMPARE(f.pTable->textElideMode(), Qt::ElideNone);
        QVERIFY(f.pTable->horizontalHeader()->stretchLastSection());
    }

    void aMessageIsARowColouredByItsLevel_data()
    {
        QTest::addColumn<int>("nLevel");
        QTest::addColumn<QString>("strName");
        QTest::addColumn<QColor>("color");
        QTest::newRow("NORMAL") << 0 << "NORMAL" << QColor(0, 255, 0);
        QTest::newRow("DEBUG") << 1 << "DEBUG" << QColor(255, 255, 255);
        QTest::newRow("WARNING") << 2 << "WARNING" << QColor(255, 255, 0);
        QTest::newRow("ERROR, red in all three cells") << 3 << "ERROR" << QColor(255, 0, 0);
    }

    void aMessageIsARowColouredByItsLevel()
    {
        QFETCH(int, nLevel);
        QFETCH(QString, strName);
        QFETCH(QColor, color);
        SFixture f;
        f.Add(static_cast<ELogLevel>(nLevel), QStringLiteral("100 % <b>done</b>"));
        QCOMPARE(f.Row(0), QStringList({QStringLiteral("2016-05-01 14::03::07"), strName,
                                        QStringLiteral("100 % <b>done</b>")}));
        for (int i = 0; i < 3; ++i) {
            const auto brush = f.pModel->index(0, i).data(Qt::ForegroundRole).value<QBrush>();
            QCOMPARE(brush.color(), color);
            QCOMPARE(brush.style(), Qt::SolidPattern);
        }
    }

    void anUnknownLevelKeepsTheDefaultBrush()
    {
        SFixture f;
        for (int nLevel : {-1, 4}) {
            f.Add(static_cast<ELogLevel>(nLevel), QStringLiteral("x"));
            for (int i = 0; i < 3; ++i)
                QVERIFY(!f.pModel->index(f.pModel->rowCount() - 1, i).data(Qt::ForegroundRole).isValid());
            QCOMPARE(f.Row(f.pModel->rowCount() - 1).at(1), QString());
        }
    }

    void deliberateTheTimeHasDoubledColonsUnlikeTheFiles()
    {
        SFixture f;
        const SLogMessage sMessage{QStringLiteral("x"), NORMAL,
                                   QDateTime(QDate(2016, 5, 1), QTime(14, 3, 7))};
        f.view.slot_NewMessage(sMessage);
        QCOMPARE(f.Row(0).at(0), QStringLiteral("2016-05-01 14::03::07"));
        QVERIFY(CLogModel::GetInstance()->ToString(sMessage).contains(QStringLiteral("2016-05-01 14:03:07")));
    }

    void theFiveHundredAndFirstMessageLeavesAViewOfExactlyThatRow()
    {
        SFixture f;
        for (int i = 1; i <= 500; ++i)
            f.Add(NORMAL, QString::number(i));
        QCOMPARE(f.pModel->rowCount(), 500);
        QCOMPARE(f.Row(0).at(2), QStringLiteral("1"));
        QCOMPARE(f.Row(499).at(2), QStringLiteral("500"));
        const int nWidth = f.pTable->columnWidth(0);
        f.Add(ERROR, QStringLiteral("501"));
        QCOMPARE(f.pModel->rowCount(), 1);
        QCOMPARE(f.Row(0).at(2), QStringLiteral("501"));
        QCOMPARE(f.Header(), c_lstHeader);
        QVERIFY(f.pTable->horizontalHeader()->stretchLastSection());
        QCOMPARE(f.pTable->columnWidth(0), nWidth);
    }

    void theNewestRowIsScrolledTo()
    {
        SFixture f;
        f.view.resize(500, 150);
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        for (int i = 0; i < 100; ++i) {
            f.Add(NORMAL, QString::number(i));
            QVERIFY(f.IsInSight(i));
        }
        QVERIFY(!f.IsInSight(0));
        f.pTable->verticalScrollBar()->setValue(0);
        QVERIFY(f.IsInSight(0));
        f.Add(NORMAL, QStringLiteral("new"));
        QVERIFY(f.IsInSight(100));
    }

    void aViewThatWasHiddenMeanwhileShowsTheNewestRow()
    {
        SFixture f;
        for (int i = 0; i < 100; ++i)
            f.Add(NORMAL, QString::number(i));
        f.view.resize(500, 150);
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        QTRY_VERIFY(f.IsInSight(99));
    }

    void theTableIsNotEditable()
    {
        SFixture f;
        f.view.resize(500, 150);
        f.view.show();
        f.view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.view));
        f.Add(NORMAL, QStringLiteral("kept"));
        const QModelIndex index = f.pModel->index(0, 2);
        const QPoint place = f.pTable->visualRect(index).center();
        QTest::mouseClick(f.pTable->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(f.pTable->viewport(), Qt::LeftButton, {}, place);
        QTest::keyClick(f.pTable, Qt::Key_F2);
        QTest::keyClicks(f.pTable, QStringLiteral("abc"));
        QVERIFY(f.pTable->findChildren<QLineEdit*>().isEmpty());
        QVERIFY(!(f.pModel->flags(index) & Qt::ItemIsEditable));
        QCOMPARE(index.data().toString(), QStringLiteral("kept"));
    }

    void theFirstTwoColumnsShowTheirWholeText()
    {
        SFixture f;
        f.view.resize(600, 200);
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        for (int nLevel = 0; nLevel < 4; ++nLevel)
            f.Add(static_cast<ELogLevel>(nLevel), QStringLiteral("x"));
        for (int nColumn : {0, 1}) {
            const int nWidth = f.pTable->columnWidth(nColumn);
            f.pTable->resizeColumnToContents(nColumn);
            QVERIFY(nWidth >= f.pTable->columnWidth(nColumn));
        }
    }
};

VANTOR_TEST_MAIN(tst_CLogView)
#include "tst_CLogView.moc"
