// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

/// A MariaDB server of the test's own: private data folder and socket, port 3306 on 127.0.0.1 (the connector
/// has no port). Two passes at once on one machine would meet on that port, so it is locked by a file. The
/// database "testdb" belongs to the user "tester" with the password "secret".
class MySqlServer
{
public:
    ~MySqlServer()
    {
        if (m_server.state() != QProcess::NotRunning) {
            Run(QStringLiteral("mariadb-admin"), Client({QStringLiteral("shutdown")}));
            if (!m_server.waitForFinished(c_nPatienceMs)) {
                m_server.kill();
                m_server.waitForFinished();
            }
        }
        if (m_nLock >= 0)
            close(m_nLock);
    }

    /// Empty on success, otherwise what went wrong.
    QString Start()
    {
        m_nLock = open("/tmp/vantor-test-port-3306.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (m_nLock < 0 || flock(m_nLock, LOCK_EX) != 0)
            return QStringLiteral("the port cannot be locked");
        const QString strUser =
            QStringLiteral("--user=") + Output(QStringLiteral("id"), {QStringLiteral("-un")});
        const QString strData = QStringLiteral("--datadir=") + m_dir.filePath(QStringLiteral("data"));
        if (!Run(QStringLiteral("mariadb-install-db"),
                 {QStringLiteral("--no-defaults"), strUser, strData,
                  QStringLiteral("--auth-root-authentication-method=normal"),
                  QStringLiteral("--skip-test-db")}))
            return QStringLiteral("mariadb-install-db: ") + m_strError;
        m_server.setStandardOutputFile(QProcess::nullDevice());
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start(Program(QStringLiteral("mariadbd")),
                       {QStringLiteral("--no-defaults"), strUser, strData, Socket(),
                        QStringLiteral("--pid-file=") + m_dir.filePath(QStringLiteral("pid")),
                        QStringLiteral("--port=3306"), QStringLiteral("--bind-address=127.0.0.1"),
                        QStringLiteral("--skip-log-bin"), QStringLiteral("--innodb-buffer-pool-size=32M"),
                        QStringLiteral("--innodb-flush-log-at-trx-commit=0"),
                        QStringLiteral("--skip-name-resolve"), QStringLiteral("--log-error=") + ErrorLog()});
        if (!WaitUntilItAnswers())
            return QStringLiteral("mariadbd: ") + m_strError;
        const QString strSql = QStringLiteral("CREATE DATABASE testdb CHARACTER SET utf8mb4;"
                                              "CREATE USER 'tester'@'127.0.0.1' IDENTIFIED BY 'secret';"
                                              "GRANT ALL ON testdb.* TO 'tester'@'127.0.0.1';");
        return Run(QStringLiteral("mariadb"), Client({QStringLiteral("-e"), strSql})) ? QString()
                                                                                      : m_strError;
    }

private:
    static constexpr int c_nPatienceMs = 60000;

    QString Socket() const { return QStringLiteral("--socket=") + m_dir.filePath(QStringLiteral("s.sock")); }
    QString ErrorLog() const { return m_dir.filePath(QStringLiteral("error.log")); }
    QStringList Client(const QStringList& arguments) const
    {
        return QStringList{QStringLiteral("--no-defaults"), Socket(), QStringLiteral("-uroot")} + arguments;
    }

    /// The server itself lies beside the administrators' commands, which a user's path may lack.
    static QString Program(const QString& strName)
    {
        const QString strAdmin = QStringLiteral("/usr/sbin/") + strName;
        return QFile::exists(strAdmin) ? strAdmin : strName;
    }

    QString Output(const QString& strProgram, const QStringList& arguments)
    {
        QProcess process;
        process.start(Program(strProgram), arguments);
        const bool bFinished = process.waitForFinished(c_nPatienceMs);
        m_strError = QString::fromLocal8Bit(process.readAllStandardError()) + process.errorString();
        m_bSuccess = bFinished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
    }

    bool Run(const QString& strProgram, const QStringList& arguments)
    {
        Output(strProgram, arguments);
        return m_bSuccess;
    }

    bool WaitUntilItAnswers()
    {
        const QDeadlineTimer deadline(c_nPatienceMs);
        while (!deadline.hasExpired()) {
            if (m_server.waitForFinished(100) || m_server.state() == QProcess::NotRunning)
                break;
            if (Run(QStringLiteral("mariadb-admin"), Client({QStringLiteral("ping")})))
                return true;
        }
        QFile log(ErrorLog());
        m_strError = log.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(log.readAll().right(2000))
                                                   : m_server.errorString();
        return false;
    }

    QTemporaryDir m_dir;
    QProcess m_server;
    QString m_strError;
    bool m_bSuccess = false;
    int m_nLock = -1;
};
