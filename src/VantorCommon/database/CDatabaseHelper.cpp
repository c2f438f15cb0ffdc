// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/database/CDatabaseHelper.h>

#include <VantorCommon/database/CDatabaseModel.h>
#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/database/CSqlConnector.h>
#include <VantorCommon/log/CLogger.h>

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace
{
/// A text between single quotes, anything else bare.
QString ValueText(const QVariant& value)
{
    if (value.type() == QVariant::String)
        return QLatin1Char('\'') + value.toString() + QLatin1Char('\'');
    return value.toString();
}
} // namespace

CDatabaseHelper::CDatabaseHelper(CDatabaseModelFactory* pFactory)
    : m_pConnector(std::make_unique<CSqlConnector>()), m_pFactory(pFactory)
{
}

CDatabaseHelper::~CDatabaseHelper() = default;

void CDatabaseHelper::SetFactory(CDatabaseModelFactory* pFactory)
{
    m_pFactory = pFactory;
}

bool CDatabaseHelper::OpenDatabase(const QString& strHost, const QString& strDatabase, const QString& strUser,
                                   const QString& strPassword)
{
    const bool bLocal = strHost.contains(QLatin1String("localhost"), Qt::CaseInsensitive);
    const QString strDriver = bLocal ? QStringLiteral("QSQLITE") : QStringLiteral("QMYSQL");
    return m_pConnector->Connect(strDriver, strHost, strDatabase, strUser, strPassword);
}

bool CDatabaseHelper::Close()
{
    m_pConnector->Close();
    CLogger::Write(NORMAL, "Close Database");
    return true;
}

bool CDatabaseHelper::StartTransaction()
{
    return m_pConnector->StartTransaction();
}

bool CDatabaseHelper::Commit()
{
    return m_pConnector->Commit();
}

bool CDatabaseHelper::RunInOrder(const std::vector<QString>& vecQueries)
{
    for (const QString& strQuery : vecQueries) {
        QSqlQuery query(*m_pConnector->GetDatabase());
        QSqlError error;
        if (m_pConnector->Query(strQuery, &query, &error))
            continue;
        CLogger::Write(ERROR, "%s", qUtf8Printable(error.text()));
        return false;
    }
    return true;
}

bool CDatabaseHelper::RunQueries(const std::vector<QString>& vecQueries, bool bTransaction)
{
    if (!m_pConnector->GetDatabase())
        return false;
    if (!bTransaction)
        return RunInOrder(vecQueries);
    if (!m_pConnector->StartTransaction())
        return false;
    const bool bAllRan = RunInOrder(vecQueries);
    if (m_pConnector->Commit())
        return bAllRan;
    m_pConnector->Rollback();
    return false;
}

bool CDatabaseHelper::RunQueryFile(const QString& strPath, bool bTransaction)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray script = file.readAll();
    file.close();
    const QStringList lstParts = QString::fromLatin1(script.constData()).split(QLatin1Char(';'));
    return RunQueries({lstParts.begin(), lstParts.end()}, bTransaction);
}

bool CDatabaseHelper::InsertToTable(std::shared_ptr<CDatabaseModel> pRecord)
{
    if (!pRecord || !m_pConnector->GetDatabase())
        return false;
    QSqlQuery query(*m_pConnector->GetDatabase());
    QSqlError error;
    if (!m_pConnector->Query(pRecord->ParseToInsertQuery(), &query, &error)) {
        CLogger::Write(ERROR, "%s", qUtf8Printable(error.text()));
        return false;
    }
    const QVariant id = query.lastInsertId();
    if (!id.isNull())
        pRecord->m_nID = id.toInt();
    return true;
}

bool CDatabaseHelper::InsertToTable(const RecordList& vecRecords, bool bTransaction)
{
    std::vector<QString> vecQueries;
    for (const auto& pRecord : vecRecords) {
        if (!pRecord)
            return false;
        vecQueries.push_back(pRecord->ParseToInsertQuery());
    }
    return RunQueries(vecQueries, bTransaction);
}

bool CDatabaseHelper::UpdateTable(const QString& strTable, const ValueMap& mapSet, const ValueMap& mapWhere,
                                  bool bTransaction)
{
    const QString strSql =
        QStringLiteral("UPDATE ") + strTable + ParseSetValues(mapSet) + ParseWhereValues(mapWhere);
    return RunQueries({strSql}, bTransaction);
}

bool CDatabaseHelper::DeleteFromTable(const QString& strTable, const ValueMap& mapWhere, bool bTransaction)
{
    return RunQueries({QStringLiteral("DELETE FROM ") + strTable + ParseWhereValues(mapWhere)}, bTransaction);
}

bool CDatabaseHelper::SelectFromTable(const QString& strTable, RecordList& vecRecords,
                                      const ValueMap& mapWhere)
{
    if (!m_pConnector->GetDatabase())
        return false;
    QSqlQuery query(*m_pConnector->GetDatabase());
    const QString strSql = QStringLiteral("SELECT * FROM ") + strTable + ParseWhereValues(mapWhere);
    if (!m_pConnector->Query(strSql, &query, nullptr))
        return false;
    while (query.next()) {
        const auto pRecord = m_pFactory ? m_pFactory->Create(strTable) : nullptr;
        if (!pRecord)
            continue;
        pRecord->ParseFromQuery(&query);
        vecRecords.push_back(pRecord);
    }
    return !query.lastError().isValid();
}

QString CDatabaseHelper::ParseWhereValues(const ValueMap& mapValues)
{
    if (mapValues.empty())
        return {};
    const QString strAnd = QStringLiteral("AND");
    QString strClause = QStringLiteral(" WHERE ");
    for (const auto& [strColumn, value] : mapValues)
        strClause +=
            strColumn + QLatin1Char('=') + ValueText(value) + QLatin1Char(' ') + strAnd + QLatin1Char(' ');
    return strClause.left(strClause.lastIndexOf(strAnd)); // the blank before the last "AND" stays
}

QString CDatabaseHelper::ParseSetValues(const ValueMap& mapValues)
{
    if (mapValues.empty())
        return {};
    QString strClause = QStringLiteral(" SET ");
    for (const auto& [strColumn, value] : mapValues)
        strClause += strColumn + QLatin1Char('=') + ValueText(value) + QLatin1Char(',');
    strClause.chop(1);
    return strClause;
}
