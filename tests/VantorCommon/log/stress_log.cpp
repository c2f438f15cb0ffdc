// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// stress_log [--long]: what the log keeps. Eight threads write at once, and four processes write to one day's
// file. Every line of the files is read again; the program prints what was lost, and fails if that is not
// nothing.
// --long: 1,000,000 calls for each thread and 50,000 lines for each process; a fiftieth of it otherwise.

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QVariant>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace
{
constexpr int c_nThreads = 8;
constexpr int c_nProcesses = 4;
constexpr int c_nPatienceMs = 600000;
constexpr int c_nLongEvery = 20;       // lines between two that no buffer takes whole
constexpr int c_nLongLetters = 100000; // of such a line

int g_nUnreadable = 0;

void UseFolder(const QString& strDir)
{
    CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"), strDir);
}

/// The text of a message: "writer number letters xxxx...", so that a reader sees whether it is whole.
QByteArray TextOf(int nWriter, int nNumber, int nLetters)
{
    return QByteArray::number(nWriter) + ' ' + QByteArray::number(nNumber) + ' ' +
           QByteArray::number(nLetters) + ' ' + QByteArray(nLetters, static_cast<char>('a' + nWriter));
}

/// Counts the lines of each writer, and what is wrong with them.
class CLineCheck
{
public:
    explicit CLineCheck(int nWriters) : m_vctNext(static_cast<std::size_t>(nWriters), 0) {}

    void Add(const QByteArray& text)
    {
        const QList<QByteArray> words = text.split(' ');
        bool bWriter = false;
        const auto nWriter = words.at(0).toUInt(&bWriter);
        if (words.size() != 4 || !bWriter || nWriter >= m_vctNext.size() ||
            text != TextOf(static_cast<int>(nWriter), words.at(1).toInt(), words.at(2).toInt())) {
            ++m_nTorn;
            return;
        }
        ++m_nWhole;
        m_nOutOfOrder += words.at(1).toInt() == m_vctNext[nWriter] ? 0 : 1;
        m_vctNext[nWriter] = words.at(1).toInt() + 1;
    }

    /// Reads all the files of the folder, the older days first.
    void AddFiles(const QString& strDir)
    {
        for (const QFileInfo& info : QDir(strDir).entryInfoList(QDir::Files, QDir::Name)) {
            QFile file(info.filePath());
            g_nUnreadable += file.open(QIODevice::ReadOnly) ? 0 : 1;
            while (!file.atEnd()) {
                const QByteArray line = file.readLine();
                const int nText = line.indexOf("] ");
                if (!line.startsWith("[DEBUG][") || !line.endsWith('\n') || nText < 0)
                    ++m_nTorn;
                else
                    Add(line.mid(nText + 2, line.size() - nText - 3));
            }
        }
    }

    /// Prints the counts; whether they are nWanted whole lines and nothing else.
    bool Report(const char* pWhat, qint64 nWanted, qint64 nMilliseconds) const
    {
        std::printf("%-34s: %lld whole lines, lost %lld, torn %lld, out of order %lld; %.1f s\n", pWhat,
                    static_cast<long long>(m_nWhole), static_cast<long long>(nWanted - m_nWhole),
                    static_cast<long long>(m_nTorn), static_cast<long long>(m_nOutOfOrder),
                    static_cast<double>(nMilliseconds) / 1000.0);
        return m_nWhole == nWanted && m_nTorn == 0 && m_nOutOfOrder == 0 && g_nUnreadable == 0;
    }

private:
    std::vector<int> m_vctNext;
    qint64 m_nWhole = 0;
    qint64 m_nTorn = 0;
    qint64 m_nOutOfOrder = 0;
};

void Drain()
{
    while (!CLogModel::GetInstance()->IsEmpty())
        CLogModel::GetInstance()->slot_OnTimer();
}

bool EightThreads(int nPerThread)
{
    const QTemporaryDir dir;
    UseFolder(dir.path());
    CLineCheck announced(c_nThreads);
    const auto connection =
        QObject::connect(CLogModel::GetInstance(), &CLogModel::signal_NewMessage,
                         [&](const SLogMessage& sMessage) { announced.Add(sMessage.strMessage.toUtf8()); });
    QElapsedTimer timer;
    timer.start();
    std::atomic<int> nWriting{c_nThreads};
    std::vector<std::thread> vctThreads;
    for (int nThread = 0; nThread < c_nThreads; ++nThread)
        vctThreads.emplace_back([&nWriting, nPerThread, nThread] {
            for (int i = 0; i < nPerThread; ++i)
                CLogger::Write(DEBUG, "%s", TextOf(nThread, i, i % 17).constData());
            --nWriting;
        });
    while (nWriting > 0)
        Drain();
    for (std::thread& thread : vctThreads)
        thread.join();
    Drain();
    QObject::disconnect(connection);
    const qint64 nWanted = qint64(c_nThreads) * nPerThread;
    const bool bAnnounced = announced.Report("8 threads, announced", nWanted, timer.elapsed());
    CLineCheck written(c_nThreads);
    written.AddFiles(dir.path());
    return written.Report("8 threads, in the file", nWanted, timer.elapsed()) && bAnnounced;
}

/// One of the four processes: it waits for its start, then writes its lines. Some are longer than the
/// buffers of a file.
int WriteAsProcess(const QString& strDir, int nProcess, int nLines)
{
    UseFolder(strDir);
    std::puts("ready");
    std::fflush(stdout);
    if (std::getchar() == EOF)
        return 1;
    for (int i = 0; i < nLines; ++i) {
        const int nLetters = i % c_nLongEvery == 10 ? c_nLongLetters : i * 37 % 1000;
        CLogModel::GetInstance()->AddMessage(DEBUG, QString::fromLatin1(TextOf(nProcess, i, nLetters)),
                                             QDateTime::currentDateTime());
        Drain();
    }
    return 0;
}

bool FourProcesses(int nLines)
{
    const QTemporaryDir dir;
    std::vector<std::unique_ptr<QProcess>> vctProcesses;
    bool bEnded = true;
    for (int i = 0; i < c_nProcesses; ++i) {
        auto& pProcess = vctProcesses.emplace_back(std::make_unique<QProcess>());
        pProcess->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        pProcess->start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--write"), dir.path(), QString::number(i), QString::number(nLines)});
        bEnded = pProcess->waitForReadyRead(c_nPatienceMs) && bEnded;
    }
    QElapsedTimer timer;
    timer.start();
    for (auto& pProcess : vctProcesses)
        pProcess->write("go\n");
    for (auto& pProcess : vctProcesses)
        pProcess->waitForBytesWritten(c_nPatienceMs);
    for (auto& pProcess : vctProcesses)
        bEnded = pProcess->waitForFinished(c_nPatienceMs) && pProcess->exitStatus() == QProcess::NormalExit &&
                 pProcess->exitCode() == 0 && bEnded;
    CLineCheck written(c_nProcesses);
    written.AddFiles(dir.path());
    return written.Report("4 processes, one file", qint64(c_nProcesses) * nLines, timer.elapsed()) && bEnded;
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 5 && std::strcmp(argv[1], "--write") == 0)
        return WriteAsProcess(QString::fromLocal8Bit(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int nScale = argc > 1 && std::strcmp(argv[1], "--long") == 0 ? 50 : 1;
    const bool bProcesses = FourProcesses(1000 * nScale);
    const bool bThreads = EightThreads(20000 * nScale);
    std::printf("%s\n", bProcesses && bThreads ? "nothing was lost" : "SOMETHING WAS LOST");
    return bProcesses && bThreads ? 0 : 1;
}
