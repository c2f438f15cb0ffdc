// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlOpenings_p.h>

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/job/FreeMemory_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <QFileInfo>
#include <algorithm>
#include <utility>

struct CImageView2DCtrlOpenings::SPending {
    SOpening opening;
    std::weak_ptr<CJob> pJob; ///< its functions hold the opening
    std::optional<ImageFileLoad::SLoaded> loaded;
    qint64 nMemory = 0; ///< in bytes, when more is needed than was free; the question is asked then
    bool bDropped = false;
};

CImageView2DCtrlOpenings::CImageView2DCtrlOpenings(const SImageView2DCtrlContext& context, Show show)
    : m_context(context), m_show(std::move(show))
{
}

CImageView2DCtrlOpenings::~CImageView2DCtrlOpenings() = default;

void CImageView2DCtrlOpenings::CancelAll()
{
    // Empty first: what is cancelled looks for its place.
    const std::deque<PendingPtr> cancelled = std::exchange(m_pending, {});
    for (const PendingPtr& pPending : cancelled)
        if (const CJobs::JobPtr pJob = pPending->pJob.lock())
            CJobs::Get().Cancel(pJob);
}

void CImageView2DCtrlOpenings::Start(SOpening opening)
{
    if (opening.bReplace)
        CancelAll();
    const auto pPending = std::make_shared<SPending>();
    pPending->opening = std::move(opening);
    m_pending.push_back(pPending);
    Read(pPending);
}

/// On another thread. A file that needs more memory than there is comes back once, for the question.
CJob::Finish CImageView2DCtrlOpenings::Load(const PendingPtr& pPending,
                                            const ImageFileLoad::SRequest& request, bool bAsked)
{
    const qint64 nMemory = bAsked ? 0 : ImageFileLoad::MemoryFor(request);
    if (nMemory > 0 && nMemory > FreeMemory())
        return [this, pPending, nMemory] {
            pPending->nMemory = nMemory;
            Read(pPending);
        };
    return [this, pPending, loaded = ImageFileLoad::Load(request, [](int, int) {})] {
        pPending->loaded = loaded;
        ShowReady();
    };
}

void CImageView2DCtrlOpenings::Drop(const PendingPtr& pPending)
{
    pPending->bDropped = true;
    ShowReady();
}

/// Starting may ask, and in the meantime everything may be given up, and the controller go.
void CImageView2DCtrlOpenings::Read(const PendingPtr& pPending)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const ImageFileLoad::SRequest request = pPending->opening.request;
    const bool bAsked = pPending->nMemory > 0;
    SJob sJob;
    sJob.strTitle = QStringLiteral("Open %1").arg(QFileInfo(request.strPath).fileName());
    sJob.nMemory = pPending->nMemory;
    sJob.dropped = [this, pPending] { Drop(pPending); };
    const auto work = [=, pAhead = CReadAhead::Get().Take(request.strPath)](Vantor::CProgress&) {
        if (!pAhead)
            return Load(pPending, request, bAsked);
        return CJob::Finish([this, pPending, pAhead] {
            pPending->loaded = ImageFileLoad::SLoaded();
            pPending->loaded->vctImages = {pAhead};
            ShowReady();
        });
    };
    const CJobs::JobPtr pJob = CJobs::Get().Start(pCtrl, sJob, work);
    if (!pCtrl)
        return;
    pPending->pJob = pJob;
    if (!pJob)
        Drop(pPending);
    else if (std::find(m_pending.begin(), m_pending.end(), pPending) == m_pending.end())
        CJobs::Get().Cancel(pJob);
}

/// Showing may ask the user, and other files arrive meanwhile; and the controller may go.
void CImageView2DCtrlOpenings::ShowReady()
{
    if (std::exchange(m_bShowing, true))
        return;
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    while (!m_pending.empty() && (m_pending.front()->loaded || m_pending.front()->bDropped)) {
        const PendingPtr pFirst = m_pending.front();
        const Show show = m_show;
        const bool bDone = pFirst->bDropped || show(pFirst->opening, *pFirst->loaded);
        if (!pCtrl)
            return;
        if (m_pending.empty() || m_pending.front() != pFirst)
            continue; // everything was given up meanwhile
        if (bDone) {
            m_pending.pop_front();
            continue;
        }
        pFirst->loaded.reset();
        Read(pFirst);
    }
    m_bShowing = false;
}
