// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <cstring>
#include <functional>
#include <map>
#include <thread>

// The beginning and the end of the log model, each in a process of its own: the test starts itself with the
// name of a scenario and the folder of the log files.
namespace
{
constexpr int c_nStillQueued = 2;
constexpr int c_nWrongThread = 3;

/// Writes after main has ended and, being older than the model, after the model's end.
class CLateWriter
{
public:
    ~CLateWriter()
    {
        if (m_bWrite)
            for (int i = 0; i < 100; ++i)
                CLogger::Write(ERROR, "late %d", i);
    }
    bool m_bWrite = false;
};
CLateWriter g_lateWriter;

/// Runs the events until the queue is empty.
int DrainByTimer()
{
    QElapsedTimer timer;
    timer.start();
    while (!CLogModel::GetInstance()->IsEmpty()) {
        if (timer.hasExpired(20000))
            return c_nStillQueued;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    return CLogModel::GetInstance()->thread() == QThread::currentThread() ? 0 : c_nWrongThread;
}

void WriteOnAnotherThread(const char* pText)
{
    std::thread([pText] { CLogger::Write(NORMAL, "%s", pText); }).join();
}

using Scenario = std::function<int(int&, char**)>;

const std::map<QByteArray, Scenario>& Scenarios()
{
    static const std::map<QByteArray, Scenario> mapScenarios = {
        {"first line before the application",
         [](int& argc, char** argv) {
             CLogger::Write(NORMAL, "early");
             QCoreApplication app(argc, argv);
             return DrainByTimer();
         }},
        {"first line on another thread before the application",
         [](int& argc, char** argv) {
             WriteOnAnotherThread("early");
             QCoreApplication app(argc, argv);
             return DrainByTimer();
         }},
        {"first line on another thread",
         [](int& argc, char** argv) {
             QCoreApplication app(argc, argv);
             WriteOnAnotherThread("early");
             return DrainByTimer();
         }},
        {"a second application",
         [](int& argc, char** argv) {
             CLogger::Write(NORMAL, "early");
             int nResult = 0;
             {
                 QCoreApplication app(argc, argv);
                 nResult = DrainByTimer();
             }
             CLogger::Write(NORMAL, "between");
             QCoreApplication app(argc, argv);
             return nResult + 10 * DrainByTimer();
         }},
        {"messages still queued at exit",
         [](int& argc, char** argv) {
             QCoreApplication app(argc, argv);
             CLogger::Write(NORMAL, "early");
             const int nResult = DrainByTimer();
             for (int i = 0; i < 1000; ++i)
                 CLogger::Write(NORMAL, "lost");
             return nResult;
         }},
        {"lines after main",
         [](int& argc, char** argv) {
             QCoreApplication app(argc, argv);
             g_lateWriter.m_bWrite = true;
             CLogger::Write(NORMAL, "early");
             return DrainByTimer();
         }},
        {"first line after main",
         [](int&, char**) {
             g_lateWriter.m_bWrite = true;
             return 0;
         }},
        {"threads that write while the process exits",
         [](int& argc, char** argv) {
             QCoreApplication app(argc, argv);
             CLogger::Write(NORMAL, "early");
             const int nResult = DrainByTimer();
             for (int i = 0; i < 4; ++i)
                 std::thread([] {
                     for (;;)
                         CLogger::Write(NORMAL, "at exit");
                 }).detach();
             return nResult;
         }},
    };
    return mapScenarios;
}
} // namespace

class tst_CLogModelLifetime : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

private Q_SLOTS:
    void theModelServesAndEndsInEveryProcess_data()
    {
        QTest::addColumn<QStringList>("texts");
        const QStringList early{QStringLiteral("early")};
        QTest::newRow("first line before the application") << early;
        QTest::newRow("first line on another thread before the application") << early;
        QTest::newRow("first line on another thread") << early;
        QTest::newRow("a second application")
            << QStringList{QStringLiteral("early"), QStringLiteral("between")};
        QTest::newRow("messages still queued at exit") << early;
        QTest::newRow("lines after main") << early;
        QTest::newRow("first line after main") << QStringList();
        QTest::newRow("threads that write while the process exits") << early;
    }

    void theModelServesAndEndsInEveryProcess()
    {
        QFETCH(QStringList, texts);
        const QString strScenario = QString::fromLatin1(QTest::currentDataTag());
        const QString strDir = m_dir.filePath(strScenario);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--scenario"), strScenario, strDir});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.readAll(), QByteArray());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);

        QStringList written;
        for (const QFileInfo& info : QDir(strDir).entryInfoList(QDir::Files, QDir::Name)) {
            QFile file(info.filePath());
            QVERIFY(file.open(QIODevice::ReadOnly));
            while (!file.atEnd())
                written += QString::fromUtf8(file.readLine()).section(QLatin1String("] "), 1).trimmed();
        }
        QCOMPARE(written, texts);
    }
};

int main(int argc, char* argv[])
{
    if (argc == 4 && std::strcmp(argv[1], "--scenario") == 0) {
        CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"), QString::fromLocal8Bit(argv[3]));
        return Scenarios().at(argv[2])(argc, argv);
    }
    QCoreApplication app(argc, argv);
    tst_CLogModelLifetime test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CLogModelLifetime.moc"
