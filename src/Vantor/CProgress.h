// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <atomic>

namespace Vantor
{

/// How far a piece of work is, and whether it is to end early: the thread that works tells and asks, others
/// watch. Any thread, without locks.
///
/// Loading, saving, rotating and filtering an image and reading its text use the progress that their thread
/// has got by a CScope; cancelled, they fail. A filter that is cancelled leaves its image half done.
class VANTOR_EXPORT CProgress
{
public:
    /// Gives the thread a progress as long as the object lives, and then the former one back.
    class VANTOR_EXPORT CScope
    {
    public:
        /// @param pProgress  not owned, outlives the object; null: the thread has none
        explicit CScope(CProgress* pProgress);
        ~CScope();
        CScope(const CScope&) = delete;
        CScope& operator=(const CScope&) = delete;

    private:
        CProgress* m_pFormer;
    };

    CProgress() = default;
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    /// @param dblDone  0 to 1; a work of several parts may begin anew
    void SetDone(double dblDone) { m_dblDone.store(dblDone, std::memory_order_relaxed); }
    double GetDone() const { return m_dblDone.load(std::memory_order_relaxed); } ///< 0 to 1
    /// Asks the work to end. @return false when it is too late: Commit has succeeded
    bool Cancel();
    /// Whether that was asked, in time.
    bool IsCancelled() const { return m_eState.load(std::memory_order_acquire) == EState_Cancelled; }
    /// The work is about to do what nobody can take back. @return false when it must not: it was cancelled
    bool Commit();

    /// The progress of this thread; null when it has none.
    static CProgress* OfThread();
    /// SetDone of this thread's progress, if it has one. @return whether to go on
    static bool Tell(double dblDone);
    /// Whether this thread's work is to end.
    static bool IsThreadCancelled();

private:
    enum EState { EState_Open, EState_Cancelled, EState_Committed };

    bool Leave(EState eState);

    std::atomic<double> m_dblDone{0.0};
    std::atomic<EState> m_eState{EState_Open};
};

/// Why what was cancelled has failed.
constexpr const char* kCancelled = "It was cancelled.";

} // namespace Vantor
