// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>

namespace Vantor
{

namespace
{
thread_local CProgress* t_pProgress = nullptr;
} // namespace

CProgress::CScope::CScope(CProgress* pProgress) : m_pFormer(t_pProgress)
{
    t_pProgress = pProgress;
}

CProgress::CScope::~CScope()
{
    t_pProgress = m_pFormer;
}

/// From open to another state; the first who asks decides.
bool CProgress::Leave(EState eState)
{
    EState eFormer = EState_Open;
    return m_eState.compare_exchange_strong(eFormer, eState, std::memory_order_acq_rel) || eFormer == eState;
}

bool CProgress::Cancel()
{
    return Leave(EState_Cancelled);
}

bool CProgress::Commit()
{
    return Leave(EState_Committed);
}

CProgress* CProgress::OfThread()
{
    return t_pProgress;
}

bool CProgress::Tell(double dblDone)
{
    if (!t_pProgress)
        return true;
    t_pProgress->SetDone(dblDone);
    return !t_pProgress->IsCancelled();
}

bool CProgress::IsThreadCancelled()
{
    return t_pProgress && t_pProgress->IsCancelled();
}

} // namespace Vantor
