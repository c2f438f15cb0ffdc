// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>

class QSqlQuery;

/// Base of all records: one row of a table as an object. Plain data, used by one thread at a time.
class VANTORCOMMON_EXPORT CDatabaseModel
{
public:
    static const QString COLUMN_ID; ///< "ID", the column of the identifier in every table

    virtual ~CDatabaseModel();

    /// Reads the query's current row. A missing column leaves its field unchanged; a null query changes
    /// nothing.
    virtual void ParseFromQuery(QSqlQuery* pQuery) = 0;

    /// The statement that adds the record to its table, without the identifier, which the database assigns.
    virtual QString ParseToInsertQuery() = 0;

    int m_nID = -1; ///< identifier of the row; -1 until it is read or inserted
};
