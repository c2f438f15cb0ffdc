// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QProcess>

/// A session bus of the test's own; make it before the application, which would connect to another one.
class CPrivateBus
{
public:
    CPrivateBus()
    {
        m_daemon.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (m_daemon.waitForStarted() && m_daemon.waitForReadyRead())
            qputenv("DBUS_SESSION_BUS_ADDRESS", m_daemon.readLine().trimmed());
    }
    ~CPrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

private:
    QProcess m_daemon;
};
