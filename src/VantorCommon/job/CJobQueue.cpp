// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/job/CJobQueue.h>

#include <utility>

CJobQueue::CJobQueue()
{
    m_thread.setMaxThreadCount(1);
}

CJobQueue::~CJobQueue()
{
    Wait();
}

void CJobQueue::Start(std::function<void()> task)
{
    m_thread.start(std::move(task));
}

void CJobQueue::Wait()
{
    m_thread.waitForDone();
}
