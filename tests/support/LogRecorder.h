// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/log/CLogModel.h>

#include <QObject>
#include <QStringList>
#include <utility>

/// Collects the log messages written during its life, each as "level:text".
class LogRecorder
{
public:
    LogRecorder()
    {
        Drain();
        QObject::connect(CLogModel::GetInstance(), &CLogModel::signal_NewMessage, &m_context,
                         [this](const SLogMessage& message) {
                             m_lines << QStringLiteral("%1:%2").arg(message.eLevel).arg(message.strMessage);
                         });
    }

    /// What was written since the last call, in order.
    QStringList Take()
    {
        Drain();
        return std::exchange(m_lines, {});
    }

private:
    static void Drain()
    {
        while (!CLogModel::GetInstance()->IsEmpty())
            CLogModel::GetInstance()->slot_OnTimer();
    }

    QObject m_context;
    QStringList m_lines;
};
