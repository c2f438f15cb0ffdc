// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <QStringList>
#include <functional>

/// Writes "exec a", "undo a" and, at its end, "delete a" into a list; may do something more when it runs.
class CRecordingCommand : public CCommand
{
public:
    CRecordingCommand(QStringList& lstLines, const char* szName, std::function<void()> action = {})
        : m_lstLines(lstLines), m_strName(QString::fromLatin1(szName)), m_action(std::move(action))
    {
    }
    ~CRecordingCommand() override { m_lstLines << QStringLiteral("delete ") + m_strName; }

    void exec() override { Run(QStringLiteral("exec ")); }
    void undo() override { Run(QStringLiteral("undo ")); }

private:
    void Run(const QString& strVerb)
    {
        m_lstLines << strVerb + m_strName;
        if (m_action)
            m_action();
    }

    QStringList& m_lstLines;
    QString m_strName;
    std::function<void()> m_action;
};

/// "exec a,undo b" as a list.
inline QStringList Lines(const char* szLines)
{
    return QString::fromLatin1(szLines).split(QLatin1Char(','));
}
