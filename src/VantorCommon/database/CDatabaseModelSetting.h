// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/database/CDatabaseModel.h>

/// One row of the table of settings: a named value in its text form, with the name of its type.
class VANTORCOMMON_EXPORT CDatabaseModelSetting : public CDatabaseModel
{
public:
    static const QString TABLE_NAME;   ///< "settings"
    static const QString COLUMN_NAME;  ///< "NAME", unique in the table
    static const QString COLUMN_VALUE; ///< "VALUE"
    static const QString COLUMN_TYPE;  ///< "TYPE"

    void ParseFromQuery(QSqlQuery* pQuery) override;

    /// Deliberate: the statement puts the three texts between single quotes and escapes nothing. A text that
    /// holds a single quote makes a broken statement: callers keep quotes out.
    QString ParseToInsertQuery() override;

    /// @{
    /// The three columns; empty at the start. The type is "bool", "int", "double", "string" or empty.
    void SetName(const QString& strName);
    QString GetName() const;
    void SetValue(const QString& strValue);
    QString GetValue() const;
    void SetType(const QString& strType);
    QString GetType() const;
    /// @}

private:
    QString m_strName;
    QString m_strValue;
    QString m_strType;
};
