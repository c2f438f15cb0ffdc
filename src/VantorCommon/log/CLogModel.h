// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QDateTime>
#include <QFile>
#include <QMetaType>
#include <QMutex>
#include <QString>

class QTimer;

/// One log message. Registered with Qt's type system, so that it crosses threads in a signal.
struct SLogMessage {
    QString strMessage;        ///< the formatted text, which may hold line breaks
    ELogLevel eLevel = NORMAL; ///< how to show it
    QDateTime dtTime;          ///< the local time of the call that logged it, not of its writing
};
Q_DECLARE_METATYPE(SLogMessage)

/// The log of the process: a queue of messages that any thread fills, and a timer of the GUI thread that
/// takes one of them each 10 ms, writes it to the file of the day and announces it to the log views. So a
/// burst is drained in order at 100 messages a second, and the queue is unbounded. What is still queued when
/// the process exits is lost. Messages for a file that cannot be written are lost silently.
///
/// The model lives on the thread of the application object, whichever thread uses it first; before there is
/// an application, the messages wait in the queue.
class VANTORCOMMON_EXPORT CLogModel : public CBaseModel
{
    Q_OBJECT

public:
    /// The one instance, built on first use and destroyed at process exit; null after that. Any thread.
    static CLogModel* GetInstance();

    /// Queues a message; any thread. The time may be in any time zone, it is announced as local time.
    void AddMessage(ELogLevel eLevel, const QString& strMessage, const QDateTime& dtTime);

    /// Calls AddMessage of the one instance, from any thread and at any time. It has no effect before the
    /// instance is built and after its end, even if that comes during the call.
    static void Post(ELogLevel eLevel, const QString& strMessage, const QDateTime& dtTime);

    /// Whether no message waits. Not from a slot of signal_NewMessage, which is emitted under the same lock.
    bool IsEmpty();

    /// The log line without its line end, "[WARNING][2016-05-01 14:03:07] text"; no tag for an unknown level.
    QString ToString(const SLogMessage& sMessage) const;

    /// The bare name, "WARNING"; empty for an unknown level.
    QString ToString(const ELogLevel& eLevel) const;

    /// Opens dir/yyyy_MM_dd.txt of today for appending, unless it is open already; the folder is made if it
    /// is missing. False, and nothing is reported, if that fails or dir is empty. GUI thread.
    bool OpenLogFileCurrentDate(const QString& strDir);

Q_SIGNALS:
    /// One message taken from the queue. Emitted under the lock for taking: a slot must call neither IsEmpty
    /// nor slot_OnTimer.
    void signal_NewMessage(const SLogMessage& sMessage);

public Q_SLOTS:
    /// Writes one line to the file of the day, in the folder of the setting "GENERAL_LOG_DIR" as it is now,
    /// by default "Vantor" in the user's documents. Line breaks and control characters are written as \\n,
    /// \\x1b and so on.
    void slot_NewMessage(const SLogMessage& sMessage);
    /// Takes one message, if there is any, and announces it.
    void slot_OnTimer();
    /// Does nothing. Static, because it answers the model's own `destroyed`, which comes when the model is
    /// gone.
    static void slot_Terminate();

private:
    CLogModel();
    ~CLogModel() override;

    /// Takes the model over to the thread of the application, if there are both, and starts its timer there.
    static void StartWithApplication();

    QMutex m_mutexTake; ///< guards taking from the queue; adding needs no lock
    QFile m_file;
    QTimer* m_pTimer;
};
