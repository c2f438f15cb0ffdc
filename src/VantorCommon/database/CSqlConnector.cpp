// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/database/CSqlConnector.h>

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

namespace
{
/// host + database, with a number behind it if another connector of this process has that name.
QString FreeConnectionName(const QString& strHost, const QString& strDatabase)
{
    const QString strName = strHost + strDatabase;
    QString strFree = strName;
    for (int i = 2; QSqlDatabase::contains(strFree); ++i)
        strFree = strName + QLatin1Char('#') + QString::number(i);
    return strFree;
}
} // namespace

CSqlConnector::CSqlConnector() = default;

CSqlConnector::~CSqlConnector()
{
    Close();
}

bool CSqlConnector::Connect(const QString& strDriver, const QString& strHost, const QString& strDatabase,
                            const QString& strUser, const QString& strPassword)
{
    Close();
    const QString strName = FreeConnectionName(strHost, strDatabase);
    m_pDatabase = std::make_unique<QSqlDatabase>(QSqlDatabase::addDatabase(strDriver, strName));
    m_pDatabase->setHostName(strHost);
    m_pDatabase->setDatabaseName(strDatabase);
    m_pDatabase->setUserName(strUser);
    m_pDatabase->setPassword(strPassword);
    m_pDatabase->open();
    return m_pDatabase->isOpen();
}

void CSqlConnector::Close()
{
    if (!m_pDatabase)
        return;
    const QString strName = m_pDatabase->connectionName();
    if (m_pDatabase->isOpen())
        m_pDatabase->close();
    m_pDatabase.reset();
    QSqlDatabase::removeDatabase(strName);
}

QSqlDatabase* CSqlConnector::GetDatabase() const
{
    return m_pDatabase.get();
}

bool CSqlConnector::RunTransactionStep(bool (QSqlDatabase::*pStep)())
{
    if (!m_pDatabase || !m_pDatabase->driver())
        return false;
    if (!m_pDatabase->driver()->hasFeature(QSqlDriver::Transactions))
        return true;
    return m_pDatabase->isOpen() && (m_pDatabase.get()->*pStep)();
}

bool CSqlConnector::StartTransaction()
{
    return RunTransactionStep(&QSqlDatabase::transaction);
}

bool CSqlConnector::Commit()
{
    return RunTransactionStep(&QSqlDatabase::commit);
}

bool CSqlConnector::Rollback()
{
    return RunTransactionStep(&QSqlDatabase::rollback);
}

bool CSqlConnector::Query(const QString& strSql, QSqlQuery* pQuery, QSqlError* pError)
{
    if (!m_pDatabase || !m_pDatabase->isOpen() || !pQuery)
        return false;
    if (strSql.trimmed().isEmpty())
        return true;
    const bool bResult = pQuery->exec(strSql);
    if (!bResult && pError)
        *pError = m_pDatabase->lastError();
    return bResult;
}
