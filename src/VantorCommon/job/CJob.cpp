// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/job/CJob.h>

#include <QObject>
#include <utility>

CJob::CJob(QObject* pReceiver, SJob sJob, Work work)
    : m_sJob(std::move(sJob)), m_pReceiver(pReceiver), m_pKey(pReceiver), m_work(std::move(work))
{
}
