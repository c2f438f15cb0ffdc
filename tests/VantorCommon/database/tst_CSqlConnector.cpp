// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/database/CSqlConnector.h>

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <memory>

class tst_CSqlConnector : public QObject
{
    Q_OBJECT

private:
    const QString m_strHost = QStringLiteral("localhost");
    std::unique_ptr<QTemporaryDir> m_pDir;
    QString m_strFile;

    bool Open(CSqlConnector& connector)
    {
        return connector.Connect(QStringLiteral("QSQLITE"), m_strHost, m_strFile, QStringLiteral("user"),
                                 QStringLiteral("secret"));
    }
    static bool Run(CSqlConnector& connector, const char* pSql, QSqlError* pError = nullptr)
    {
        QSqlQuery query(*connector.GetDatabase());
        return connector.Query(QString::fromLatin1(pSql), &query, pError);
    }
    static int CountRows(CSqlConnector& connector)
    {
        QSqlQuery query(*connector.GetDatabase());
        return connector.Query(QStringLiteral("SELECT COUNT(*) FROM t"), &query, nullptr) && query.next()
                   ? query.value(0).toInt()
                   : -1;
    }

private Q_SLOTS:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        m_strFile = m_pDir->filePath(QStringLiteral("a.data"));
    }
    void cleanup() { QCOMPARE(QSqlDatabase::connectionNames(), QStringList()); }

    void withoutAConnectionEverythingIsRefused()
    {
        CSqlConnector connector;
        QVERIFY(!connector.GetDatabase());
        QVERIFY(!connector.StartTransaction());
        QVERIFY(!connector.Commit());
        QVERIFY(!connector.Rollback());
        QSqlQuery query{QSqlDatabase()};
        QVERIFY(!connector.Query(QStringLiteral("SELECT 1"), &query, nullptr));
        QVERIFY(!connector.Query(QString(), &query, nullptr));
        connector.Close();
    }

    void theConnectionIsNamedHostFollowedByDatabaseAndGetsAllFourTexts()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList{m_strHost + m_strFile});
        const QSqlDatabase* pDatabase = connector.GetDatabase();
        QCOMPARE(pDatabase->connectionName(), m_strHost + m_strFile);
        QCOMPARE(pDatabase->driverName(), QStringLiteral("QSQLITE"));
        QCOMPARE(pDatabase->hostName(), m_strHost);
        QCOMPARE(pDatabase->databaseName(), m_strFile);
        QCOMPARE(pDatabase->userName(), QStringLiteral("user"));
        QCOMPARE(pDatabase->password(), QStringLiteral("secret"));
        QVERIFY(pDatabase->isOpen());
    }

    void closingForgetsTheConnectionAndASecondCloseDoesNothing()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        connector.Close();
        QVERIFY(!connector.GetDatabase());
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
        connector.Close();
    }

    void connectingAgainClosesFirst()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QVERIFY(Open(connector));
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList{m_strHost + m_strFile});
        m_strFile = m_pDir->filePath(QStringLiteral("b.data"));
        QVERIFY(Open(connector));
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList{m_strHost + m_strFile});
    }

    void twoConnectorsOnOneDatabaseDoNotTakeEachOthersConnection()
    {
        CSqlConnector first;
        QVERIFY(Open(first));
        QVERIFY(Run(first, "CREATE TABLE t (a)"));
        {
            CSqlConnector second;
            QVERIFY(Open(second));
            QVERIFY(Run(second, "INSERT INTO t VALUES(1)"));
            QVERIFY(Run(first, "INSERT INTO t VALUES(2)"));
        }
        QCOMPARE(CountRows(first), 2);
    }

    void aDatabaseThatCannotBeOpenedIsReportedByTheResult()
    {
        m_strFile = m_pDir->filePath(QStringLiteral("no/such/folder/a.data"));
        CSqlConnector connector;
        QVERIFY(!Open(connector));
        QVERIFY(connector.GetDatabase());
        QVERIFY(!connector.StartTransaction());
        QVERIFY(!connector.Commit());
        QVERIFY(!connector.Rollback());
        QVERIFY(!Run(connector, "SELECT 1"));
        QVERIFY(!Run(connector, " "));
    }

    void aDriverWithoutTransactionsSaysYesAndDoesNothingOpenOrNot()
    {
        QTest::ignoreMessage(QtWarningMsg, "QSqlDatabase: NONE driver not loaded");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("available drivers: .*")));
        CSqlConnector connector;
        QVERIFY(!connector.Connect(QStringLiteral("NONE"), m_strHost, m_strFile, QString(), QString()));
        QVERIFY(connector.StartTransaction());
        QVERIFY(connector.Commit());
        QVERIFY(connector.Rollback());
    }

    void aBlankStatementSucceedsWithoutRunning()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        for (const char* pSql : {"", " ", "\n\t \r\n"}) {
            QSqlQuery query(*connector.GetDatabase());
            QVERIFY(connector.Query(QString::fromLatin1(pSql), &query, nullptr));
            QVERIFY(query.lastQuery().isEmpty());
        }
        QVERIFY(
            connector.Query(QString(), std::make_unique<QSqlQuery>(*connector.GetDatabase()).get(), nullptr));
    }

    void aNullQueryIsRefused()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QVERIFY(!connector.Query(QStringLiteral("SELECT 1"), nullptr, nullptr));
        QVERIFY(!connector.Query(QString(), nullptr, nullptr));
    }

    void theResultIsInTheQuery()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QSqlQuery query(*connector.GetDatabase());
        QVERIFY(connector.Query(QStringLiteral("SELECT 6 * 7"), &query, nullptr));
        QVERIFY(query.next());
        QCOMPARE(query.value(0).toInt(), 42);
    }

    void deliberateTheErrorIsThatOfTheDatabaseNotOfTheQuery()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QSqlError error(QStringLiteral("untouched"));
        QSqlQuery query(*connector.GetDatabase());
        QVERIFY(connector.Query(QStringLiteral("SELECT 1"), &query, &error));
        QCOMPARE(error.driverText(), QStringLiteral("untouched"));
        QVERIFY(!connector.Query(QStringLiteral("no statement"), &query, &error));
        QVERIFY(query.lastError().isValid());
        QCOMPARE(error, connector.GetDatabase()->lastError());
        QVERIFY(error.driverText().isEmpty());
        QVERIFY(!connector.Query(QStringLiteral("no statement"), &query, nullptr));
    }

    void aTransactionIsCommittedOrRolledBack()
    {
        CSqlConnector connector;
        QVERIFY(Open(connector));
        QVERIFY(Run(connector, "CREATE TABLE t (a)"));
        QVERIFY(connector.StartTransaction());
        QVERIFY(!connector.StartTransaction());
        QVERIFY(Run(connector, "INSERT INTO t VALUES(1)"));
        QVERIFY(connector.Rollback());
        QCOMPARE(CountRows(connector), 0);
        QVERIFY(connector.StartTransaction());
        QVERIFY(Run(connector, "INSERT INTO t VALUES(1)"));
        QVERIFY(connector.Commit());
        QCOMPARE(CountRows(connector), 1);
        QVERIFY(!connector.Commit());
        QVERIFY(!connector.Rollback());
    }
};

VANTOR_TEST_MAIN(tst_CSqlConnector)
#include "tst_CSqlConnector.moc"
