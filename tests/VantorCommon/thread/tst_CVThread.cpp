// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/thread/CVThread.h>
#include <VantorCommon/thread/IVRunnable.h>

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QSemaphore>
#include <QSignalSpy>
#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>

namespace
{
/// What happened to the work, kept outside it, so that it can be read when the work is gone.
struct SRecord {
    int nRuns = 0;
    int nDestroyed = 0;
    Qt::HANDLE runThread = nullptr;
    Qt::HANDLE destroyThread = nullptr;
    bool bRunReturned = false;
    bool bReturnedBeforeDestruction = false;
};

class CWork : public IVRunnable
{
public:
    explicit CWork(SRecord& record, QSemaphore* pGate = nullptr) : m_record(record), m_pGate(pGate) {}
    ~CWork() override
    {
        ++m_record.nDestroyed;
        m_record.destroyThread = QThread::currentThreadId();
        m_record.bReturnedBeforeDestruction = m_record.bRunReturned;
    }
    void run() override
    {
        ++m_record.nRuns;
        m_record.runThread = QThread::currentThreadId();
        if (m_pGate)
            m_pGate->acquire();
        m_record.bRunReturned = true;
    }

private:
    SRecord& m_record;
    QSemaphore* m_pGate;
};

/// Storage for a work object that the test owns; the guard bytes behind it show whether it was given back.
struct SStorage {
    alignas(CWork) unsigned char bytes[sizeof(CWork)];
    unsigned char guard[64];

    SStorage() { std::fill(std::begin(guard), std::end(guard), static_cast<unsigned char>(0xA5)); }
    CWork* Make(SRecord& record, QSemaphore* pGate = nullptr) { return new (bytes) CWork(record, pGate); }
    bool IsWhole() const
    {
        return std::all_of(std::begin(guard), std::end(guard), [](unsigned char c) { return c == 0xA5; });
    }
};
} // namespace

class tst_CVThread : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aThreadWithANullRunnableStartsAndFinishesAtOnceWithoutAnyCall();
    void theWorkRunsOnceOnAThreadOfItsOwn();
    void afterFinishedTheDestructorHasRunExactlyOnceAndTheMemoryIsStillAllocated();
    void theWorkEndsOnTheOwnersThreadAfterRunHasReturned();
    void deliberateThePointerIsKeptAfterFinished();
    void deliberateTheDestructorOfTheThreadDoesNotTouchTheWork();
    void theThreadHasNoParent();
    void theInterfaceIsAbstractWithAVirtualDestructor();
};

void tst_CVThread::aThreadWithANullRunnableStartsAndFinishesAtOnceWithoutAnyCall()
{
    CVThread thread(nullptr);
    QSignalSpy finished(&thread, &QThread::finished);
    thread.start();
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(thread.isFinished());
    thread.run();           // also when called directly,
    thread.slot_Finished(); // there is nothing to call
    QVERIFY(thread.wait());
}

void tst_CVThread::theWorkRunsOnceOnAThreadOfItsOwn()
{
    SRecord record;
    SStorage storage;
    CVThread thread(storage.Make(record));
    QCOMPARE(record.nRuns, 0);
    thread.start();
    QTRY_COMPARE(record.nDestroyed, 1);
    QVERIFY(thread.wait());
    QCOMPARE(record.nRuns, 1);
    QVERIFY(record.runThread != QThread::currentThreadId());
}

void tst_CVThread::afterFinishedTheDestructorHasRunExactlyOnceAndTheMemoryIsStillAllocated()
{
    SRecord record;
    // From the heap: had the thread freed it, the address sanitizer would see the read and the second free.
    const auto storage = std::make_unique<SStorage>();
    {
        CVThread thread(storage->Make(record));
        thread.start();
        QTRY_COMPARE(record.nDestroyed, 1);
        QVERIFY(thread.wait());
        QCoreApplication::processEvents();
        QCOMPARE(record.nDestroyed, 1);
    }
    QCOMPARE(record.nDestroyed, 1); // not again with the thread object
    QVERIFY(storage->IsWhole());
    // The memory can be used for the next piece of work.
    storage->Make(record)->~CWork();
    QCOMPARE(record.nDestroyed, 2);
}

void tst_CVThread::theWorkEndsOnTheOwnersThreadAfterRunHasReturned()
{
    SRecord record;
    SStorage storage;
    QSemaphore gate;
    CVThread thread(storage.Make(record, &gate));
    thread.start();
    QCoreApplication::processEvents();
    QCOMPARE(record.nDestroyed, 0); // still at work
    gate.release();
    QVERIFY(thread.wait());
    QCOMPARE(record.nDestroyed, 0); // done, but the link is queued
    QTRY_COMPARE(record.nDestroyed, 1);
    QCOMPARE(record.destroyThread, QThread::currentThreadId());
    QVERIFY(record.bReturnedBeforeDestruction);
}

void tst_CVThread::deliberateThePointerIsKeptAfterFinished()
{
    SRecord record;
    SStorage storage;
    CVThread thread(storage.Make(record));
    thread.slot_Finished();
    QCOMPARE(record.nDestroyed, 1);
    storage.Make(record); // a new object in the same place is reached through the same pointer
    thread.slot_Finished();
    QCOMPARE(record.nDestroyed, 2);
}

void tst_CVThread::deliberateTheDestructorOfTheThreadDoesNotTouchTheWork()
{
    SRecord record;
    SStorage storage;
    CWork* pWork = storage.Make(record);
    {
        CVThread thread(pWork);
        thread.start();
        QVERIFY(thread.wait());
    } // finished() has not been delivered
    QCoreApplication::processEvents();
    QCOMPARE(record.nRuns, 1);
    QCOMPARE(record.nDestroyed, 0);
    pWork->~CWork();
}

void tst_CVThread::theThreadHasNoParent()
{
    CVThread thread(nullptr);
    QVERIFY(!thread.parent());
    QCOMPARE(thread.thread(), QThread::currentThread());
}

void tst_CVThread::theInterfaceIsAbstractWithAVirtualDestructor()
{
    QVERIFY(std::is_abstract<IVRunnable>::value);
    QVERIFY(std::has_virtual_destructor<IVRunnable>::value);
    QCOMPARE(sizeof(IVRunnable), sizeof(void*)); // no data
}

VANTOR_TEST_MAIN(tst_CVThread)
#include "tst_CVThread.moc"
