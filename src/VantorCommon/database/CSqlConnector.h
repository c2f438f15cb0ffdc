// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <memory>

class QSqlDatabase;
class QSqlError;
class QSqlQuery;

/// Owns one named database connection and runs single statements on it. It belongs to the thread that
/// connects it. Queries on its database must be finished before it is closed, and nobody else may keep a copy
/// of the QSqlDatabase.
class VANTORCOMMON_EXPORT CSqlConnector
{
public:
    /// Without a connection.
    CSqlConnector();
    /// Closes the connection.
    ~CSqlConnector();
    CSqlConnector(const CSqlConnector&) = delete;
    CSqlConnector& operator=(const CSqlConnector&) = delete;

    /// Opens a database with one of Qt's drivers; a connection that is there already is closed first. The
    /// connection is named host + database; if this process uses that name already, it gets a number, so that
    /// no other connection is replaced.
    /// @param strDriver             "QSQLITE", "QMYSQL"; a driver that is missing fails with Qt's warning
    /// @param strHost               not used by "QSQLITE" but for the name
    /// @param strDatabase           the name of the database, for "QSQLITE" the path of its file
    /// @param strUser, strPassword  not used by "QSQLITE"
    /// @return whether it is open
    bool Connect(const QString& strDriver, const QString& strHost, const QString& strDatabase,
                 const QString& strUser, const QString& strPassword);
    /// Closes and forgets the connection, if there is one.
    void Close();

    /// The connection, owned by this object; null before Connect and after Close.
    QSqlDatabase* GetDatabase() const;

    /// @{
    /// The three transaction calls: false without a connection; true, and nothing is done, if the driver has
    /// no transactions, whether the database is open or not; false if it is not open.
    bool StartTransaction();
    bool Commit();
    bool Rollback();
    /// @}

    /// Runs one statement.
    /// @param strSql  true, and nothing is run, if it is empty or blank
    /// @param pQuery  a query made on GetDatabase(), which gets the result
    /// @param pError  if not null, it gets the error of the database after a failure. Deliberate: not the
    ///                query's; with SQLite that of the database stays empty.
    /// @return false after a failure, without a query, and while the database is not open
    bool Query(const QString& strSql, QSqlQuery* pQuery, QSqlError* pError);

private:
    /// The common part of the transaction calls; the operation is one of QSqlDatabase.
    bool RunTransactionStep(bool (QSqlDatabase::*pStep)());

    std::unique_ptr<QSqlDatabase> m_pDatabase;
};
