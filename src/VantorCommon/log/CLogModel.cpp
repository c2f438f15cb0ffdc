// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/log/CLogModel.h>

#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/log/MessageQueue_p.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <Vantor/Messages.h>

#include <QCoreApplication>
#include <QDir>
#include <QMutexLocker>
#include <QTextStream>
#include <QThread>
#include <QTimer>
#include <atomic>

namespace
{
constexpr int c_nDrainIntervalMs = 10;

/// Set when the library is loaded, because a codec's message may be the first line.
[[maybe_unused]] const bool c_bMessagesAreLogged = [] {
    Vantor::SetMessageSink([](const char* text) { CLogger::Write(NORMAL, "%s", text); });
    return true;
}();

/// The model while it lives, otherwise null. The pointer has no destructor, so it is valid at any time.
std::atomic<CLogModel*> g_pModel{nullptr};

/// The queue. It outlives the model, because other threads may still push while the process exits.
MessageQueue<SLogMessage>& Queue()
{
    static auto* const pQueue = new MessageQueue<SLogMessage>; // never deleted
    return *pQueue;
}

bool IsKnown(ELogLevel eLevel)
{
    return eLevel >= NORMAL && eLevel <= ERROR;
}

/// The text with every character escaped that would break or garble its line: \n, \r, \t, \x1b, \u2028.
/// Backslashes stay, because of paths.
QString EscapeControls(const QString& strText)
{
    QString strResult;
    strResult.reserve(strText.size());
    for (const QChar ch : strText) {
        const ushort nCode = ch.unicode();
        if (ch == QLatin1Char('\n'))
            strResult += QLatin1String("\\n");
        else if (ch == QLatin1Char('\r'))
            strResult += QLatin1String("\\r");
        else if (ch == QLatin1Char('\t'))
            strResult += QLatin1String("\\t");
        else if (ch.category() == QChar::Other_Control)
            strResult += QStringLiteral("\\x%1").arg(nCode, 2, 16, QLatin1Char('0'));
        else if (nCode == QChar::LineSeparator || nCode == QChar::ParagraphSeparator)
            strResult += QStringLiteral("\\u%1").arg(nCode, 4, 16, QLatin1Char('0'));
        else
            strResult += ch;
    }
    return strResult;
}
} // namespace

CLogModel* CLogModel::GetInstance()
{
    static CLogModel instance;
    return g_pModel;
}

CLogModel::CLogModel() : m_pTimer(new QTimer(this))
{
    qRegisterMetaType<SLogMessage>();
    qRegisterMetaType<SLogMessage>("SLogMessage&");
    connect(this, &CLogModel::signal_NewMessage, this, &CLogModel::slot_NewMessage);
    connect(this, &QObject::destroyed, this, &CLogModel::slot_Terminate);
    connect(m_pTimer, &QTimer::timeout, this, &CLogModel::slot_OnTimer);
    m_pTimer->setInterval(c_nDrainIntervalMs);

    // A model without a thread can move to the application's thread from any thread.
    moveToThread(nullptr);
    g_pModel = this;
    // A timer started before there is an application never fires. So every application starts it, one that
    // exists already at once; the second call is for one that another thread makes at this very moment.
    qAddPreRoutine(&CLogModel::StartWithApplication);
    if (!thread())
        StartWithApplication();
}

CLogModel::~CLogModel()
{
    g_pModel = nullptr;
    // Messages that running calls add after this stay in the queue, which nobody reads any more.
    for (bool bLeft = true; bLeft;) {
        SLogMessage sMessage;
        QMutexLocker lock(&m_mutexTake);
        bLeft = Queue().Take(sMessage);
    }
    // Nothing may call its slots when only the QObject part is left.
    disconnect(this, &QObject::destroyed, this, nullptr);
    m_pTimer->stop();
    delete m_pTimer;
}

void CLogModel::StartWithApplication()
{
    CLogModel* pModel = g_pModel;
    QCoreApplication* pApplication = QCoreApplication::instance();
    if (!pModel || !pApplication)
        return;
    if (pApplication->thread() != QThread::currentThread()) {
        QMetaObject::invokeMethod(pApplication, &CLogModel::StartWithApplication, Qt::QueuedConnection);
        return;
    }
    pModel->moveToThread(pApplication->thread());
    // Queued, because the thread may not be ready for timers while the application is still being
    // constructed.
    QMetaObject::invokeMethod(pModel->m_pTimer, qOverload<>(&QTimer::start), Qt::QueuedConnection);
}

void CLogModel::Post(ELogLevel eLevel, const QString& strMessage, const QDateTime& dtTime)
{
    if (g_pModel)
        Queue().Push(SLogMessage{strMessage, eLevel, dtTime});
}

void CLogModel::AddMessage(ELogLevel eLevel, const QString& strMessage, const QDateTime& dtTime)
{
    Post(eLevel, strMessage, dtTime);
}

bool CLogModel::IsEmpty()
{
    QMutexLocker lock(&m_mutexTake);
    return Queue().IsEmpty();
}

QString CLogModel::ToString(const SLogMessage& sMessage) const
{
    const QString strTag = IsKnown(sMessage.eLevel)
                               ? QLatin1Char('[') + ToString(sMessage.eLevel) + QLatin1Char(']')
                               : QString();
    return strTag + QLatin1Char('[') + sMessage.dtTime.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) +
           QStringLiteral("] ") + sMessage.strMessage;
}

QString CLogModel::ToString(const ELogLevel& eLevel) const
{
    switch (eLevel) {
    case NORMAL:
        return QStringLiteral("NORMAL");
    case DEBUG:
        return QStringLiteral("DEBUG");
    case WARNING:
        return QStringLiteral("WARNING");
    case ERROR:
        return QStringLiteral("ERROR");
    }
    return {};
}

bool CLogModel::OpenLogFileCurrentDate(const QString& strDir)
{
    if (strDir.isEmpty() || (!QDir(strDir).exists() && !QDir().mkpath(strDir)))
        return false;
    const QString strPath = strDir + QDir::separator() +
                            QDate::currentDate().toString(QStringLiteral("yyyy_MM_dd")) +
                            QStringLiteral(".txt");
    if (m_file.isOpen() && m_file.fileName() == strPath && QFile::exists(strPath))
        return true;
    if (m_file.isOpen())
        m_file.close();
    m_file.setFileName(strPath);
    return m_file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Text);
}

void CLogModel::slot_NewMessage(const SLogMessage& sMessage)
{
    if (!OpenLogFileCurrentDate(CSettingManager::GetFolder(CSettingManager::kLogFolder)))
        return;
    QTextStream stream(&m_file);
    stream.setCodec("UTF-8");
    // One write: the stream passes a text that is longer than its buffer to the file at once, and lines of
    // other processes must not come between the text and its end.
    stream << EscapeControls(ToString(sMessage)) + QLatin1Char('\n');
    stream.flush();
}

void CLogModel::slot_OnTimer()
{
    QMutexLocker lock(&m_mutexTake);
    SLogMessage sMessage;
    if (!Queue().Take(sMessage))
        return;
    sMessage.dtTime = sMessage.dtTime.toLocalTime();
    Q_EMIT signal_NewMessage(sMessage);
}

void CLogModel::slot_Terminate()
{
}
