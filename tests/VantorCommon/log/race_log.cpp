// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// race_log [asker]: eight threads write 50,000 messages each, one drains, one asks whether the queue
// is empty. Built with the thread sanitizer, from the sources of the log, because Qt's own library does not
// tell it about locks; this program does, by its own QMutex.
// With the word a race is planted: the lock of the one that asks does nothing. Writers have none.

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QCoreApplication>
#include <QMutex>
#include <QStringList>
#include <QVariant>
#include <atomic>
#include <cstdio>
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>
#include <thread>
#include <vector>

namespace
{
constexpr int c_nThreads = 8;
constexpr int c_nPerThread = 50000;

thread_local bool t_bWithoutLocks = false;

using MutexCall = void (*)(QMutex*);

MutexCall CallOfQt(const char* pSymbol)
{
    return reinterpret_cast<MutexCall>(dlsym(RTLD_NEXT, pSymbol));
}
} // namespace

// These take the place of those in Qt's library for the code of the log, which is part of this program.
void QMutex::lock()
{
    static const MutexCall lockOfQt = CallOfQt("_ZN6QMutex4lockEv");
    if (t_bWithoutLocks)
        return;
    __tsan_mutex_pre_lock(this, 0);
    lockOfQt(this);
    __tsan_mutex_post_lock(this, 0, 0);
}

void QMutex::unlock()
{
    static const MutexCall unlockOfQt = CallOfQt("_ZN6QMutex6unlockEv");
    if (t_bWithoutLocks)
        return;
    __tsan_mutex_pre_unlock(this, 0);
    unlockOfQt(this);
    __tsan_mutex_post_unlock(this, 0);
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QString strPlanted = app.arguments().value(1);
    CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"),
                         QStringLiteral("")); // no file: this is about the queue
    CLogModel* pModel = CLogModel::GetInstance();
    std::vector<int> vctNext(c_nThreads, 0);
    int nTaken = 0;
    int nOutOfOrder = 0;
    QObject::connect(pModel, &CLogModel::signal_NewMessage, [&](const SLogMessage& sMessage) {
        const QStringList words = sMessage.strMessage.split(QLatin1Char(' '));
        nOutOfOrder += words.at(1).toInt() == vctNext[words.at(0).toUInt()]++ ? 0 : 1;
        ++nTaken;
    });

    std::atomic<int> nWriting{c_nThreads};
    std::vector<std::thread> vctThreads;
    for (int nThread = 0; nThread < c_nThreads; ++nThread)
        vctThreads.emplace_back([&, nThread] {
            for (int i = 0; i < c_nPerThread; ++i)
                CLogger::Write(NORMAL, "%d %d", nThread, i);
            --nWriting;
        });
    vctThreads.emplace_back([&] {
        t_bWithoutLocks = strPlanted == QLatin1String("asker");
        while (nWriting > 0)
            pModel->IsEmpty();
    });
    while (nWriting > 0 || !pModel->IsEmpty())
        pModel->slot_OnTimer();
    for (std::thread& thread : vctThreads)
        thread.join();
    std::printf("%d messages of %d, out of order %d\n", nTaken, c_nThreads * c_nPerThread, nOutOfOrder);
    return nTaken == c_nThreads * c_nPerThread && nOutOfOrder == 0 ? 0 : 1;
}
