// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/database/DatabaseSupport.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/database/CDatabaseModelFactory.h>

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace
{
using ValueMap = CDatabaseHelper::ValueMap;

const QString c_strTable = QStringLiteral("settings");
const QString c_strName = QStringLiteral("NAME");
const QString c_strValue = QStringLiteral("VALUE");
const QString c_strType = QStringLiteral("TYPE");
const QString c_strFailed = QStringLiteral("3:"); // an error without a text: SQLite's database has none

QString Insert(const QString& strName)
{
    return MakeSetting(strName, QStringLiteral("1"), QStringLiteral("int"))->ParseToInsertQuery();
}
} // namespace

class tst_CDatabaseHelper : public QObject
{
    Q_OBJECT

private:
    const QString m_strBad = QStringLiteral("INSERT INTO nowhere VALUES(1)");
    CDatabaseModelFactory m_factory;
    std::unique_ptr<QTemporaryDir> m_pDir;
    std::unique_ptr<CDatabaseHelper> m_pHelper;
    std::unique_ptr<LogRecorder> m_pLog;

    QString File() const { return m_pDir->filePath(QStringLiteral("settings.data")); }
    bool RunScript(const QByteArray& script, bool bTransaction = false)
    {
        const QString strPath = m_pDir->filePath(QStringLiteral("script.sql"));
        return WriteFile(strPath, script) && m_pHelper->RunQueryFile(strPath, bTransaction);
    }
    QStringList Names()
    {
        QStringList names = RowsOf(*m_pHelper);
        return names.replaceInStrings(QStringLiteral("=1:int"), QString());
    }

private Q_SLOTS:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        m_pHelper = std::make_unique<CDatabaseHelper>(&m_factory);
        m_pLog = std::make_unique<LogRecorder>();
        QVERIFY(m_pHelper->OpenDatabase(QStringLiteral("localhost"), File(), QString(), QString()));
        QVERIFY(m_pHelper->RunQueryFile(QStringLiteral(":/Files/database_sqlite.sql"), false));
    }
    void cleanup()
    {
        m_pHelper.reset();
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
        QCOMPARE(m_pLog->Take(), QStringList());
    }

    void aHostThatContainsLocalhostInAnyCaseSelectsSqlite_data()
    {
        QTest::addColumn<QString>("strHost");
        for (const char* pHost : {"localhost", "LOCALHOST", "LocalHost", "my.localhost.example"})
            QTest::newRow(pHost) << QString::fromLatin1(pHost);
    }

    void aHostThatContainsLocalhostInAnyCaseSelectsSqlite()
    {
        QFETCH(QString, strHost);
        CDatabaseHelper helper(&m_factory);
        const QString strFile = m_pDir->filePath(QStringLiteral("other.data"));
        QVERIFY(helper.OpenDatabase(strHost, strFile, QString(), QString()));
        QCOMPARE(QSqlDatabase::database(strHost + strFile, false).driverName(), QStringLiteral("QSQLITE"));
    }

    void everyOtherHostSelectsMySql()
    {
        CDatabaseHelper helper(&m_factory);
        // Nobody listens there.
        for (const char* pHost : {"127.0.0.2", "local.host.invalid"}) {
            const QString strHost = QString::fromLatin1(pHost);
            QVERIFY(!helper.OpenDatabase(strHost, QStringLiteral("db"), QString(), QString()));
            QCOMPARE(QSqlDatabase::database(strHost + QStringLiteral("db"), false).driverName(),
                     QStringLiteral("QMYSQL"));
        }
    }

    void withSqliteTheDatabaseIsThePathOfTheFile()
    {
        QVERIFY(QFile::exists(File()));
        QVERIFY(QFileInfo(File()).size() > 0);
    }

    void closingIsLogged()
    {
        QVERIFY(m_pHelper->Close());
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("0:Close Database")});
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
        QVERIFY(m_pHelper->Close());
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("0:Close Database")});
    }

    void aClosedDatabaseRefusesEverythingWithoutAMessage()
    {
        m_pHelper->Close();
        m_pLog->Take();
        CDatabaseHelper::RecordList records;
        QVERIFY(!m_pHelper->StartTransaction());
        QVERIFY(!m_pHelper->Commit());
        QVERIFY(!m_pHelper->RunQueries({}, false));
        QVERIFY(!m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, true));
        QVERIFY(!m_pHelper->RunQueryFile(QStringLiteral(":/Files/database_sqlite.sql"), false));
        QVERIFY(!m_pHelper->InsertToTable(MakeSetting(QString(), QString(), QString())));
        QVERIFY(!m_pHelper->InsertToTable({MakeSetting(QString(), QString(), QString())}, false));
        QVERIFY(!m_pHelper->UpdateTable(c_strTable, {{c_strValue, 1}}, {}, false));
        QVERIFY(!m_pHelper->DeleteFromTable(c_strTable, {}, false));
        QVERIFY(!m_pHelper->SelectFromTable(c_strTable, records, {}));
        QVERIFY(records.empty());
    }

    void theWhereClauseOfTwoTexts()
    {
        QCOMPARE(CDatabaseHelper::ParseWhereValues(
                     {{c_strType, QStringLiteral("b")}, {c_strName, QStringLiteral("a")}}),
                 QStringLiteral(" WHERE NAME='a' AND TYPE='b' "));
    }

    void theWhereClauseIsCutAtItsLastAndOnly()
    {
        QCOMPARE(CDatabaseHelper::ParseWhereValues({{c_strName, QStringLiteral("AND")}}),
                 QStringLiteral(" WHERE NAME='AND' "));
        QCOMPARE(CDatabaseHelper::ParseWhereValues({{QStringLiteral("ID"), 3}}),
                 QStringLiteral(" WHERE ID=3 "));
        QCOMPARE(CDatabaseHelper::ParseWhereValues({}), QString());
    }

    void theSetClauseOfAnIntegerHasNoQuotes()
    {
        QCOMPARE(CDatabaseHelper::ParseSetValues({{c_strValue, 5}}), QStringLiteral(" SET VALUE=5"));
    }

    void theSetClauseOfEveryKindOfValue()
    {
        QCOMPARE(CDatabaseHelper::ParseSetValues({{QStringLiteral("d"), QVariant()},
                                                  {QStringLiteral("c"), 2.5},
                                                  {QStringLiteral("b"), true},
                                                  {QStringLiteral("a"), QStringLiteral("5")}}),
                 QStringLiteral(" SET a='5',b=true,c=2.5,d="));
        QCOMPARE(CDatabaseHelper::ParseSetValues({}), QString());
    }

    void deliberateNothingIsEscaped()
    {
        QCOMPARE(CDatabaseHelper::ParseSetValues({{c_strValue, QStringLiteral("it's")}}),
                 QStringLiteral(" SET VALUE='it's'"));
        QCOMPARE(CDatabaseHelper::ParseWhereValues({{c_strValue, QStringLiteral("it's")}}),
                 QStringLiteral(" WHERE VALUE='it's' "));
    }

    void aSingleInsertWritesTheIdentifierBack()
    {
        const auto pFirst = MakeSetting(QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("int"));
        const auto pSecond = MakeSetting(QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("int"));
        QVERIFY(m_pHelper->InsertToTable(pFirst));
        QVERIFY(m_pHelper->InsertToTable(pSecond));
        QCOMPARE(pFirst->m_nID, 1);
        QCOMPARE(pSecond->m_nID, 2);
        QVERIFY(!m_pHelper->InsertToTable(std::shared_ptr<CDatabaseModel>()));
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    }

    void insertingAListWritesNoIdentifiersBack()
    {
        const auto pRecord = MakeSetting(QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("int"));
        QVERIFY(m_pHelper->InsertToTable(
            {pRecord, MakeSetting(QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("int"))}, true));
        QCOMPARE(pRecord->m_nID, -1);
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!m_pHelper->InsertToTable({MakeSetting(QStringLiteral("c"), QString(), QString()), nullptr},
                                          false));
        QCOMPARE(Names().size(), 2);
    }

    void insertingTwoRecordsOfTheSameNameFails()
    {
        const auto pRecord = MakeSetting(QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("int"));
        QVERIFY(m_pHelper->InsertToTable(pRecord));
        const auto pTwin = MakeSetting(QStringLiteral("a"), QStringLiteral("2"), QStringLiteral("int"));
        QVERIFY(!m_pHelper->InsertToTable(pTwin));
        QCOMPARE(pTwin->m_nID, -1);
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QVERIFY(!m_pHelper->InsertToTable({pTwin}, false));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QCOMPARE(Names(), QStringList{QStringLiteral("a")});
    }

    void updateDeleteAndSelectTouchTheRowsThatMatchAllValues()
    {
        for (const char* pName : {"a", "b", "c"})
            QVERIFY(m_pHelper->RunQueries({Insert(QString::fromLatin1(pName))}, false));
        QVERIFY(m_pHelper->UpdateTable(c_strTable, {{c_strValue, 5}, {c_strType, QStringLiteral("x")}},
                                       {{c_strName, QStringLiteral("b")}, {c_strType, QStringLiteral("int")}},
                                       true));
        QCOMPARE(RowsOf(*m_pHelper), QStringList({QStringLiteral("a=1:int"), QStringLiteral("b=5:x"),
                                                  QStringLiteral("c=1:int")}));
        QCOMPARE(RowsOf(*m_pHelper, {{c_strType, QStringLiteral("int")}}),
                 QStringList({QStringLiteral("a=1:int"), QStringLiteral("c=1:int")}));
        QVERIFY(m_pHelper->DeleteFromTable(c_strTable, {{c_strType, QStringLiteral("int")}}, false));
        QCOMPARE(RowsOf(*m_pHelper), QStringList{QStringLiteral("b=5:x")});
        QVERIFY(m_pHelper->DeleteFromTable(c_strTable, {}, true));
        QCOMPARE(RowsOf(*m_pHelper), QStringList());
    }

    void selectAppendsRecordsWithTheirIdentifiers()
    {
        CDatabaseHelper::RecordList records{nullptr};
        QVERIFY(m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, false));
        QVERIFY(m_pHelper->SelectFromTable(c_strTable, records, {}));
        QCOMPARE(records.size(), std::size_t(2));
        QCOMPARE(records.at(1)->m_nID, 1);
    }

    void selectSaysWhetherTheStatementRan()
    {
        CDatabaseHelper::RecordList records;
        QVERIFY(m_pHelper->SelectFromTable(c_strTable, records, {}));
        QVERIFY(!m_pHelper->SelectFromTable(QStringLiteral("nowhere"), records, {}));
        QVERIFY(records.empty());
    }

    void aRecordThatTheFactoryCannotMakeIsSkipped()
    {
        QVERIFY(m_pHelper->RunQueries({QStringLiteral("CREATE TABLE other (ID)"),
                                       QStringLiteral("INSERT INTO other VALUES(1)"),
                                       Insert(QStringLiteral("a"))},
                                      false));
        CDatabaseHelper::RecordList records;
        QVERIFY(m_pHelper->SelectFromTable(QStringLiteral("other"), records, {}));
        m_pHelper->SetFactory(nullptr);
        QVERIFY(m_pHelper->SelectFromTable(c_strTable, records, {}));
        QVERIFY(records.empty());
        m_pHelper->SetFactory(&m_factory);
        QVERIFY(m_pHelper->SelectFromTable(c_strTable, records, {}));
        QCOMPARE(records.size(), std::size_t(1));
    }

    void deliberateAFailureInATransactionKeepsTheStatementsBeforeIt()
    {
        QVERIFY(!m_pHelper->RunQueries(
            {Insert(QStringLiteral("good")), m_strBad, Insert(QStringLiteral("late"))}, true));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QCOMPARE(Names(), QStringList{QStringLiteral("good")});
        QVERIFY(m_pHelper->StartTransaction()); // none was left open
        QVERIFY(m_pHelper->Commit());
    }

    void aFailureWithoutATransactionStopsToo()
    {
        QVERIFY(!m_pHelper->RunQueries(
            {Insert(QStringLiteral("good")), m_strBad, Insert(QStringLiteral("late"))}, false));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QCOMPARE(Names(), QStringList{QStringLiteral("good")});
    }

    void allStatementsOfATransactionAreCommitted()
    {
        QVERIFY(m_pHelper->RunQueries({Insert(QStringLiteral("a")), QString(), Insert(QStringLiteral("b"))},
                                      true));
        m_pHelper->Close();
        m_pLog->Take();
        QVERIFY(m_pHelper->OpenDatabase(QStringLiteral("localhost"), File(), QString(), QString()));
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    }

    void anEmptyListSucceedsAndItsTransactionIsCommitted()
    {
        QVERIFY(m_pHelper->RunQueries({}, false));
        QVERIFY(m_pHelper->RunQueries({}, true));
        QVERIFY(m_pHelper->StartTransaction());
        QVERIFY(m_pHelper->Commit());
    }

    void aTransactionThatCannotStartRunsNothing()
    {
        QVERIFY(m_pHelper->StartTransaction());
        QVERIFY(!m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, true));
        QVERIFY(m_pHelper->Commit());
        QCOMPARE(Names(), QStringList());
    }

    void aCommitThatFailsIsRolledBack_data()
    {
        QTest::addColumn<bool>("bFailure");
        QTest::newRow("after success") << false;
        QTest::newRow("after a failure") << true;
    }

    void aCommitThatFailsIsRolledBack()
    {
        QFETCH(bool, bFailure);
        QVERIFY(m_pHelper->RunQueries({QStringLiteral("PRAGMA foreign_keys=ON"),
                                       QStringLiteral("CREATE TABLE child (a REFERENCES settings(ID) "
                                                      "DEFERRABLE INITIALLY DEFERRED)")},
                                      false));
        std::vector<QString> queries{Insert(QStringLiteral("a")),
                                     QStringLiteral("INSERT INTO child VALUES(99)")};
        if (bFailure)
            queries.push_back(m_strBad);
        QVERIFY(!m_pHelper->RunQueries(queries, true));
        QCOMPARE(m_pLog->Take(), bFailure ? QStringList{c_strFailed} : QStringList());
        QCOMPARE(Names(), QStringList());
        QVERIFY(m_pHelper->RunQueries({Insert(QStringLiteral("b"))}, true));
        QCOMPARE(Names(), QStringList{QStringLiteral("b")});
    }

    void aScriptOfTwoStatementsGivesThreePartsOfWhichTheEmptyOneSucceeds()
    {
        QVERIFY(RunScript(Insert(QStringLiteral("a")).toLatin1() + ";\n" +
                          Insert(QStringLiteral("b")).toLatin1() + ";\n"));
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(RunScript("", true));
        QVERIFY(RunScript(";; ;", true));
    }

    void aScriptIsReadAsLatin1UpToItsFirstZeroByte()
    {
        QVERIFY(RunScript(QByteArray("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('\xe4', '1', 'int');") +
                          '\0' + "rubbish;"));
        QCOMPARE(Names(), QStringList{QString::fromLatin1("\xe4")});
    }

    void deliberateASemicolonInsideQuotesSplitsTheScriptToo()
    {
        QVERIFY(!RunScript("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('a;b', '1', 'int')"));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QCOMPARE(Names(), QStringList());
        QVERIFY(!RunScript("SELECT 1 -- one; two\n"));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
    }

    void aScriptInATransactionKeepsWhatRanBeforeTheFailure()
    {
        QVERIFY(!RunScript(Insert(QStringLiteral("a")).toLatin1() + "; rubbish; " +
                               Insert(QStringLiteral("b")).toLatin1(),
                           true));
        QCOMPARE(m_pLog->Take(), QStringList{c_strFailed});
        QCOMPARE(Names(), QStringList{QStringLiteral("a")});
    }

    void aMissingScriptIsRefusedWithoutAMessage()
    {
        QVERIFY(!m_pHelper->RunQueryFile(m_pDir->filePath(QStringLiteral("none.sql")), true));
        QVERIFY(!m_pHelper->RunQueryFile(m_pDir->path(), false));
    }

    void theSchemaScriptEmptiesTheTable()
    {
        QVERIFY(m_pHelper->InsertToTable(
            MakeSetting(QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("int"))));
        QVERIFY(m_pHelper->RunQueryFile(QStringLiteral(":/Files/database_sqlite.sql"), true));
        QCOMPARE(Names(), QStringList());
    }

    void theTableHasFourColumnsOfTheirTypes()
    {
        QSqlQuery query(QSqlDatabase::database(QStringLiteral("localhost") + File(), false));
        QVERIFY(query.exec(QStringLiteral("PRAGMA table_info(settings)")));
        QStringList columns;
        while (query.next())
            columns << QStringLiteral("%1 %2%3%4")
                           .arg(query.value(1).toString(), query.value(2).toString(),
                                query.value(3).toBool() ? QStringLiteral(" required") : QString(),
                                query.value(5).toBool() ? QStringLiteral(" key") : QString());
        QCOMPARE(columns,
                 QStringList(
                     {QStringLiteral("ID INTEGER required key"), QStringLiteral("NAME nvarchar(45) required"),
                      QStringLiteral("VALUE TEXT required"), QStringLiteral("TYPE nvarchar(45) required")}));
    }

    void everyColumnOfTheTableIsRequired()
    {
        for (const char* pColumns : {"NAME, VALUE", "NAME, TYPE", "VALUE, TYPE"})
            QVERIFY(!m_pHelper->RunQueries({QStringLiteral("INSERT INTO settings (%1) VALUES('1', '2')")
                                                .arg(QString::fromLatin1(pColumns))},
                                           false));
        QCOMPARE(m_pLog->Take().size(), 3);
    }
};

VANTOR_TEST_MAIN(tst_CDatabaseHelper)
#include "tst_CDatabaseHelper.moc"
