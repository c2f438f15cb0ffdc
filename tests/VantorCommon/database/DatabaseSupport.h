// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/database/CDatabaseHelper.h>
#include <VantorCommon/database/CDatabaseModelSetting.h>

#include <QFile>
#include <QString>
#include <QStringList>
#include <memory>

inline std::shared_ptr<CDatabaseModelSetting> MakeSetting(const QString& strName, const QString& strValue,
                                                          const QString& strType)
{
    auto pSetting = std::make_shared<CDatabaseModelSetting>();
    pSetting->SetName(strName);
    pSetting->SetValue(strValue);
    pSetting->SetType(strType);
    return pSetting;
}

/// The rows of the table of settings, each as "name=value:type", as the helper reads them.
inline QStringList RowsOf(CDatabaseHelper& helper, const CDatabaseHelper::ValueMap& mapWhere = {})
{
    CDatabaseHelper::RecordList records;
    if (!helper.SelectFromTable(CDatabaseModelSetting::TABLE_NAME, records, mapWhere))
        return {QStringLiteral("the select failed")};
    QStringList rows;
    for (const auto& pRecord : records) {
        const auto pSetting = std::dynamic_pointer_cast<CDatabaseModelSetting>(pRecord);
        rows << pSetting->GetName() + QLatin1Char('=') + pSetting->GetValue() + QLatin1Char(':') +
                    pSetting->GetType();
    }
    return rows;
}

inline bool WriteFile(const QString& strPath, const QByteArray& bytes)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
