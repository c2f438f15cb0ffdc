// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/database/DatabaseSupport.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/MySqlServer.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/database/CSqlConnector.h>

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace
{
const QString c_strHost = QStringLiteral("127.0.0.1");
const QString c_strDatabase = QStringLiteral("testdb");
const QString c_strUser = QStringLiteral("tester");
const QString c_strPassword = QStringLiteral("secret");
const QString c_strTable = QStringLiteral("settings");

// The library's own script is in SQLite's dialect.
const char c_pSchema[] =
    "DROP TABLE IF EXISTS `settings`;\n"
    "CREATE TABLE `settings` (`ID` INTEGER NOT NULL AUTO_INCREMENT,\n"
    "`NAME` nvarchar(45) NOT NULL UNIQUE, `VALUE` TEXT NOT NULL, `TYPE` nvarchar(45) NOT NULL,\n"
    "PRIMARY KEY (`ID`)) ENGINE=InnoDB;\n";

QString Insert(const QString& strName)
{
    return MakeSetting(strName, QStringLiteral("1"), QStringLiteral("int"))->ParseToInsertQuery();
}
} // namespace

class tst_CDatabaseHelperMySql : public QObject
{
    Q_OBJECT

private:
    const QString m_strBad = QStringLiteral("INSERT INTO nowhere VALUES(1)");
    CDatabaseModelFactory m_factory;
    QTemporaryDir m_dir;
    std::unique_ptr<MySqlServer> m_pServer;
    std::unique_ptr<CDatabaseHelper> m_pHelper;
    std::unique_ptr<LogRecorder> m_pLog;

    bool RunScript(const QByteArray& script, bool bTransaction)
    {
        const QString strPath = m_dir.filePath(QStringLiteral("script.sql"));
        return WriteFile(strPath, script) && m_pHelper->RunQueryFile(strPath, bTransaction);
    }
    QStringList Names()
    {
        QStringList names = RowsOf(*m_pHelper);
        return names.replaceInStrings(QStringLiteral("=1:int"), QString());
    }
    /// Unlike SQLite's, the error of this database has a text; what it says is the server's affair.
    bool OneErrorWithATextWasLogged()
    {
        const QStringList lines = m_pLog->Take();
        return lines.size() == 1 && lines.at(0).startsWith(QStringLiteral("3:")) && lines.at(0).size() > 2;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_pServer = std::make_unique<MySqlServer>();
        const QString strProblem = m_pServer->Start();
        QVERIFY2(strProblem.isEmpty(), qPrintable(strProblem));
    }
    void init()
    {
        m_pHelper = std::make_unique<CDatabaseHelper>(&m_factory);
        m_pLog = std::make_unique<LogRecorder>();
        QVERIFY(m_pHelper->OpenDatabase(c_strHost, c_strDatabase, c_strUser, c_strPassword));
        QVERIFY(RunScript(c_pSchema, false));
    }
    void cleanup()
    {
        m_pHelper.reset();
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
        QCOMPARE(m_pLog->Take(), QStringList());
    }
    void cleanupTestCase() { m_pServer.reset(); }

    void aHostWithoutTheWordSelectsTheMySqlDriver()
    {
        const QSqlDatabase database = QSqlDatabase::database(c_strHost + c_strDatabase, false);
        QCOMPARE(database.driverName(), QStringLiteral("QMYSQL"));
        QCOMPARE(database.hostName(), c_strHost);
        QCOMPARE(database.databaseName(), c_strDatabase);
        QCOMPARE(database.userName(), c_strUser);
        QVERIFY(database.isOpen());
    }

    void aWrongPasswordIsRefused()
    {
        CDatabaseHelper helper(&m_factory);
        QVERIFY(!helper.OpenDatabase(c_strHost, c_strDatabase, c_strUser, QStringLiteral("wrong")));
        QVERIFY(!helper.OpenDatabase(c_strHost, QStringLiteral("nodb"), c_strUser, c_strPassword));
        QVERIFY(helper.OpenDatabase(c_strHost, c_strDatabase, c_strUser, c_strPassword));
    }

    void aClosedConnectionHasNoTransactionsAndSaysYes()
    {
        CSqlConnector connector;
        QVERIFY(!connector.Connect(QStringLiteral("QMYSQL"), c_strHost, c_strDatabase, c_strUser, QString()));
        QVERIFY(connector.StartTransaction());
        QVERIFY(connector.Commit());
        QVERIFY(connector.Rollback());
    }

    void theErrorTextIsTheDatabases()
    {
        CSqlConnector connector;
        QVERIFY(
            connector.Connect(QStringLiteral("QMYSQL"), c_strHost, c_strDatabase, c_strUser, c_strPassword));
        QSqlQuery query(*connector.GetDatabase());
        QSqlError error;
        QVERIFY(!connector.Query(m_strBad, &query, &error));
        QCOMPARE(error, connector.GetDatabase()->lastError());
    }

    void aSingleInsertWritesTheIdentifierBackAndAListDoesNot()
    {
        const auto pFirst = MakeSetting(QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("int"));
        const auto pSecond = MakeSetting(QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("int"));
        const auto pThird = MakeSetting(QStringLiteral("c"), QStringLiteral("1"), QStringLiteral("int"));
        QVERIFY(m_pHelper->InsertToTable(pFirst));
        QVERIFY(m_pHelper->InsertToTable(pSecond));
        QVERIFY(m_pHelper->InsertToTable({pThird}, true));
        QCOMPARE(pFirst->m_nID, 1);
        QCOMPARE(pSecond->m_nID, 2);
        QCOMPARE(pThird->m_nID, -1);
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    }

    void insertingTwoRecordsOfTheSameNameFails()
    {
        QVERIFY(m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, false));
        QVERIFY(!m_pHelper->InsertToTable(
            MakeSetting(QStringLiteral("a"), QStringLiteral("2"), QStringLiteral("int"))));
        m_pLog->Take();
        QCOMPARE(Names(), QStringList{QStringLiteral("a")});
    }

    void updateDeleteAndSelectTouchTheRowsThatMatchAllValues()
    {
        for (const char* pName : {"a", "b", "c"})
            QVERIFY(m_pHelper->RunQueries({Insert(QString::fromLatin1(pName))}, false));
        const QString strName = QStringLiteral("NAME"), strType = QStringLiteral("TYPE");
        QVERIFY(
            m_pHelper->UpdateTable(c_strTable, {{QStringLiteral("VALUE"), 5}, {strType, QStringLiteral("x")}},
                                   {{strName, QStringLiteral("b")}, {strType, QStringLiteral("int")}}, true));
        QCOMPARE(RowsOf(*m_pHelper, {{strType, QStringLiteral("x")}}), QStringList{QStringLiteral("b=5:x")});
        QVERIFY(m_pHelper->DeleteFromTable(c_strTable, {{strType, QStringLiteral("int")}}, true));
        QCOMPARE(RowsOf(*m_pHelper), QStringList{QStringLiteral("b=5:x")});
        QVERIFY(m_pHelper->DeleteFromTable(c_strTable, {}, false));
        QCOMPARE(RowsOf(*m_pHelper), QStringList());
    }

    void textsComeBackAsTheyWere()
    {
        const QString strText = QString::fromUtf8("%s \u1ea3nh \u8a9e");
        QVERIFY(
            m_pHelper->InsertToTable(MakeSetting(QStringLiteral("a"), strText, QStringLiteral("string"))));
        QCOMPARE(RowsOf(*m_pHelper), QStringList{QStringLiteral("a=") + strText + QStringLiteral(":string")});
    }

    void selectSaysWhetherTheStatementRan()
    {
        CDatabaseHelper::RecordList records;
        QVERIFY(m_pHelper->SelectFromTable(c_strTable, records, {}));
        QVERIFY(!m_pHelper->SelectFromTable(QStringLiteral("nowhere"), records, {}));
    }

    void deliberateAFailureInATransactionKeepsTheStatementsBeforeIt()
    {
        QVERIFY(!m_pHelper->RunQueries(
            {Insert(QStringLiteral("good")), m_strBad, Insert(QStringLiteral("late"))}, true));
        m_pLog->Take();
        QCOMPARE(Names(), QStringList{QStringLiteral("good")});
        // For another connection too: it was committed.
        CDatabaseHelper other(&m_factory);
        QVERIFY(other.OpenDatabase(c_strHost, c_strDatabase, c_strUser, c_strPassword));
        QCOMPARE(RowsOf(other), QStringList{QStringLiteral("good=1:int")});
    }

    void whatRunsInATransactionIsSeenByOthersOnlyAfterTheCommit()
    {
        CDatabaseHelper other(&m_factory);
        QVERIFY(other.OpenDatabase(c_strHost, c_strDatabase, c_strUser, c_strPassword));
        QVERIFY(m_pHelper->StartTransaction());
        QVERIFY(m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, false));
        QCOMPARE(RowsOf(other), QStringList());
        QVERIFY(m_pHelper->Commit());
        QCOMPARE(RowsOf(other), QStringList{QStringLiteral("a=1:int")});
    }

    void aScriptIsSplitAtEverySemicolon()
    {
        QVERIFY(RunScript(Insert(QStringLiteral("a")).toLatin1() + ";\n" +
                              Insert(QStringLiteral("b")).toLatin1() + ";\n",
                          true));
        QCOMPARE(Names(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!RunScript("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('a;b', '1', 'int')", true));
        m_pLog->Take();
        QCOMPARE(Names().size(), 2);
    }

    void closingIsLogged()
    {
        QVERIFY(m_pHelper->Close());
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("0:Close Database")});
        QVERIFY(!m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, false));
    }

    // Last: it stops the server.
    void aServerThatGoesAwayGivesFalseAndNoCrash()
    {
        m_pServer.reset();
        QVERIFY(!m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, false));
        QVERIFY(!m_pHelper->RunQueries({Insert(QStringLiteral("a"))}, true));
        CDatabaseHelper::RecordList records;
        QVERIFY(!m_pHelper->SelectFromTable(c_strTable, records, {}));
        m_pLog->Take();
        CDatabaseHelper other(&m_factory);
        QVERIFY(!other.OpenDatabase(c_strHost, c_strDatabase, c_strUser, c_strPassword));
    }
};

VANTOR_TEST_MAIN(tst_CDatabaseHelperMySql)
#include "tst_CDatabaseHelperMySql.moc"
