// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <QVariant>
#include <map>
#include <memory>
#include <vector>

class CDatabaseModel;
class CDatabaseModelFactory;
class CSqlConnector;

/// One database, SQLite or MySQL: runs lists of statements and scripts, and builds simple statements from
/// maps of column values. It belongs to the thread that opens it.
///
/// Deliberate: the statements are built by joining texts and nothing is escaped. A text between single quotes
/// ends at the next single quote. So the rule for callers: table and column names are constants of the
/// program, and every value that holds a single quote (for MySQL a backslash too) is refused before it gets
/// here.
///
/// It logs a failed statement with the text of the database's error, which is empty for SQLite, but neither a
/// missing file nor a database that is not open.
class VANTORCOMMON_EXPORT CDatabaseHelper
{
public:
    using ValueMap = std::map<QString, QVariant>; ///< values by column name, walked in the order of the names
    /// Records of one table, shared with their readers.
    using RecordList = std::vector<std::shared_ptr<CDatabaseModel>>;

    /// @param pFactory  makes the records of SelectFromTable; not owned, may be null
    explicit CDatabaseHelper(CDatabaseModelFactory* pFactory);
    /// Closes the database.
    ~CDatabaseHelper();
    CDatabaseHelper(const CDatabaseHelper&) = delete;
    CDatabaseHelper& operator=(const CDatabaseHelper&) = delete;

    /// Sets the factory of further records; not owned, may be null.
    void SetFactory(CDatabaseModelFactory* pFactory);

    /// Opens a SQLite file if the host contains "localhost" in any case, otherwise a MySQL database.
    /// @param strHost               a host name; the standard port of MySQL is used
    /// @param strDatabase           with SQLite the path of the file, which appears with the first write
    /// @param strUser, strPassword  not used with SQLite; never logged
    /// @return whether it is open
    bool OpenDatabase(const QString& strHost, const QString& strDatabase, const QString& strUser,
                      const QString& strPassword);
    /// Closes the database and logs it; true, also if none was open.
    bool Close();

    /// @{
    /// Like those of CSqlConnector; false while no database is open.
    bool StartTransaction();
    bool Commit();
    /// @}

    /// Runs the statements in order up to the first failure; empty and blank ones succeed. Deliberate: a
    /// failure within a transaction does not take back the statements that ran before it; they are committed.
    /// @param vecQueries    one statement each
    /// @param bTransaction  run them in one transaction
    /// @return whether all ran, and were committed
    bool RunQueries(const std::vector<QString>& vecQueries, bool bTransaction);

    /// Runs a script: the file up to its first zero byte, as Latin-1 text. Deliberate: it is split at every
    /// semicolon, inside quotes and comments too.
    bool RunQueryFile(const QString& strPath, bool bTransaction);

    /// Adds the record and stores the identifier that the database assigned in it. False without a record, an
    /// open database or success; the record then stays as it is.
    bool InsertToTable(std::shared_ptr<CDatabaseModel> pRecord);
    /// Adds the records in order; their identifiers stay as they are. An empty pointer among them: nothing is
    /// run, false.
    bool InsertToTable(const RecordList& vecRecords, bool bTransaction);

    /// Sets columns in all rows that match every value of the where map; an empty one matches all rows.
    bool UpdateTable(const QString& strTable, const ValueMap& mapSet, const ValueMap& mapWhere,
                     bool bTransaction);
    /// Deletes all rows that match; an empty where map matches all rows.
    bool DeleteFromTable(const QString& strTable, const ValueMap& mapWhere, bool bTransaction);

    /// Appends a record for each row that matches. A row whose record the factory cannot make is skipped.
    /// @param strTable    a constant of the program
    /// @param vecRecords  keeps what it holds
    /// @param mapWhere    an empty one matches all rows
    /// @return whether the statement ran to its end; no rows are no failure
    bool SelectFromTable(const QString& strTable, RecordList& vecRecords, const ValueMap& mapWhere);

    /// " WHERE A=1 AND B='x' ", with one blank at the end; empty for an empty map.
    static QString ParseWhereValues(const ValueMap& mapValues);
    /// " SET A=1,B='x'"; empty for an empty map.
    static QString ParseSetValues(const ValueMap& mapValues);

private:
    bool RunInOrder(const std::vector<QString>& vecQueries);

    std::unique_ptr<CSqlConnector> m_pConnector;
    CDatabaseModelFactory* m_pFactory;
};
