// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/thread/CVThread.h>

#include <VantorCommon/thread/IVRunnable.h>

CVThread::CVThread(IVRunnable* pRunnable) : m_pRunnable(pRunnable)
{
    connect(this, &QThread::finished, this, &CVThread::slot_Finished);
}

CVThread::~CVThread() = default;

void CVThread::run()
{
    if (m_pRunnable)
        m_pRunnable->run();
}

void CVThread::slot_Finished()
{
    if (m_pRunnable)
        m_pRunnable->~IVRunnable();
}
