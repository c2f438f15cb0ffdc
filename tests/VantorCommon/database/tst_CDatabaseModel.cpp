// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/database/CDatabaseModelSetting.h>
#include <VantorCommon/database/CSqlConnector.h>

#include <QApplication>
#include <QFile>
#include <QSqlQuery>

class tst_CDatabaseModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNamesOfTableAndColumns()
    {
        QCOMPARE(CDatabaseModel::COLUMN_ID, QStringLiteral("ID"));
        QCOMPARE(CDatabaseModelSetting::TABLE_NAME, QStringLiteral("settings"));
        QCOMPARE(CDatabaseModelSetting::COLUMN_NAME, QStringLiteral("NAME"));
        QCOMPARE(CDatabaseModelSetting::COLUMN_VALUE, QStringLiteral("VALUE"));
        QCOMPARE(CDatabaseModelSetting::COLUMN_TYPE, QStringLiteral("TYPE"));
    }

    void theFactoryMakesASettingRecordWithTheIdentifierMinusOneAndNothingForAnotherTable()
    {
        CDatabaseModelFactory factory;
        const auto pRecord = factory.Create(QStringLiteral("settings"));
        QVERIFY(std::dynamic_pointer_cast<CDatabaseModelSetting>(pRecord));
        QCOMPARE(pRecord->m_nID, -1);
        QVERIFY(pRecord != factory.Create(QStringLiteral("settings")));
        QVERIFY(!factory.Create(QStringLiteral("other")));
        QVERIFY(!factory.Create(QStringLiteral("Settings")));
        QVERIFY(!factory.Create(QString()));
    }

    void aSettingStartsEmptyAndKeepsWhatIsSet()
    {
        CDatabaseModelSetting setting;
        QVERIFY(setting.GetName().isEmpty() && setting.GetValue().isEmpty() && setting.GetType().isEmpty());
        setting.SetName(QStringLiteral("n"));
        setting.SetValue(QStringLiteral("v"));
        setting.SetType(QStringLiteral("t"));
        QCOMPARE(setting.GetName(), QStringLiteral("n"));
        QCOMPARE(setting.GetValue(), QStringLiteral("v"));
        QCOMPARE(setting.GetType(), QStringLiteral("t"));
    }

    void theInsertStatementOfARecord()
    {
        CDatabaseModelSetting setting;
        setting.m_nID = 7;
        setting.SetName(QStringLiteral("A"));
        setting.SetValue(QStringLiteral("1"));
        setting.SetType(QStringLiteral("bool"));
        QCOMPARE(setting.ParseToInsertQuery(),
                 QStringLiteral("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('A', '1', 'bool')"));
    }

    void placeMarkersInAValueStayWhatTheyAre()
    {
        CDatabaseModelSetting setting;
        setting.SetName(QStringLiteral("%s %1 %7"));
        setting.SetValue(QString::fromUtf8("%n \u1ea3nh \U0001F30D"));
        QCOMPARE(setting.ParseToInsertQuery(),
                 QString::fromUtf8("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('%s %1 %7', "
                                   "'%n \u1ea3nh \U0001F30D', '')"));
    }

    void deliberateAQuoteInAValueMakesABrokenStatement()
    {
        CDatabaseModelSetting setting;
        setting.SetName(QStringLiteral("A"));
        setting.SetValue(QStringLiteral("it's"));
        QCOMPARE(setting.ParseToInsertQuery(),
                 QStringLiteral("INSERT INTO settings (NAME, VALUE, TYPE) VALUES('A', 'it's', '')"));
    }

    void aRecordIsFilledFromTheColumnsThatAreThere()
    {
        CSqlConnector connector;
        QVERIFY(connector.Connect(QStringLiteral("QSQLITE"), QString(), QStringLiteral(":memory:"), QString(),
                                  QString()));
        CDatabaseModelSetting setting;
        setting.SetType(QStringLiteral("kept"));
        setting.ParseFromQuery(nullptr);
        QCOMPARE(setting.m_nID, -1);

        QSqlQuery query(*connector.GetDatabase());
        QVERIFY(query.exec(QStringLiteral("SELECT 300 AS VALUE, 5 AS ID, 'x' AS NAME")));
        QVERIFY(query.next());
        setting.ParseFromQuery(&query);
        QCOMPARE(setting.m_nID, 5);
        QCOMPARE(setting.GetName(), QStringLiteral("x"));
        QCOMPARE(setting.GetValue(), QStringLiteral("300"));
        QCOMPARE(setting.GetType(), QStringLiteral("kept"));

        QVERIFY(query.exec(QStringLiteral("SELECT 'int' AS TYPE, 1 AS OTHER")));
        QVERIFY(query.next());
        setting.ParseFromQuery(&query);
        QCOMPARE(setting.m_nID, 5);
        QCOMPARE(setting.GetName(), QStringLiteral("x"));
        QCOMPARE(setting.GetValue(), QStringLiteral("300"));
        QCOMPARE(setting.GetType(), QStringLiteral("int"));
    }

    void theSchemaScriptDropsAndCreatesTheTable()
    {
        QFile file(QStringLiteral(":/Files/database_sqlite.sql"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString strScript = QString::fromLatin1(file.readAll()).simplified();
        QVERIFY2(strScript.startsWith(
                     QStringLiteral("DROP TABLE IF EXISTS `settings`; CREATE TABLE `settings` (")),
                 qPrintable(strScript));
        QVERIFY2(strScript.endsWith(QStringLiteral("PRIMARY KEY (`ID` AUTOINCREMENT) );")),
                 qPrintable(strScript));
        QCOMPARE(strScript.count(QLatin1Char(';')), 2);
    }
};

VANTOR_TEST_MAIN(tst_CDatabaseModel)
#include "tst_CDatabaseModel.moc"
