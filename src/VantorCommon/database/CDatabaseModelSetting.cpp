// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/database/CDatabaseModelSetting.h>

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

const QString CDatabaseModelSetting::TABLE_NAME = QStringLiteral("settings");
const QString CDatabaseModelSetting::COLUMN_NAME = QStringLiteral("NAME");
const QString CDatabaseModelSetting::COLUMN_VALUE = QStringLiteral("VALUE");
const QString CDatabaseModelSetting::COLUMN_TYPE = QStringLiteral("TYPE");

void CDatabaseModelSetting::ParseFromQuery(QSqlQuery* pQuery)
{
    if (!pQuery)
        return;
    const QSqlRecord record = pQuery->record();
    const int nID = record.indexOf(COLUMN_ID);
    if (nID >= 0)
        m_nID = pQuery->value(nID).toInt();

    const auto readText = [&](const QString& strColumn, QString& strField) {
        const int nIndex = record.indexOf(strColumn);
        if (nIndex >= 0)
            strField = pQuery->value(nIndex).toString();
    };
    readText(COLUMN_NAME, m_strName);
    readText(COLUMN_VALUE, m_strValue);
    readText(COLUMN_TYPE, m_strType);
}

QString CDatabaseModelSetting::ParseToInsertQuery()
{
    // One call of arg, so that a value that looks like a place marker stays unchanged.
    return QStringLiteral("INSERT INTO %1 (%2, %3, %4) VALUES('%5', '%6', '%7')")
        .arg(TABLE_NAME, COLUMN_NAME, COLUMN_VALUE, COLUMN_TYPE, m_strName, m_strValue, m_strType);
}

void CDatabaseModelSetting::SetName(const QString& strName)
{
    m_strName = strName;
}

QString CDatabaseModelSetting::GetName() const
{
    return m_strName;
}

void CDatabaseModelSetting::SetValue(const QString& strValue)
{
    m_strValue = strValue;
}

QString CDatabaseModelSetting::GetValue() const
{
    return m_strValue;
}

void CDatabaseModelSetting::SetType(const QString& strType)
{
    m_strType = strType;
}

QString CDatabaseModelSetting::GetType() const
{
    return m_strType;
}
