// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlOpenings_p.h>

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <QFileInfo>
#include <utility>

struct CImageView2DCtrlOpenings::SPending {
    SOpening opening;
    std::weak_ptr<CJob> pJob; ///< its functions hold the opening
    std::optional<ImageFileLoad::SLoaded> loaded;
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

void CImageView2DCtrlOpenings::Read(const PendingPtr& pPending)
{
    SJob sJob;
    sJob.strTitle = QStringLiteral("Open %1").arg(QFileInfo(pPending->opening.request.strPath).fileName());
    sJob.dropped = [this, pPending] {
        pPending->bDropped = true;
        ShowReady();
    };
    pPending->pJob = CJobs::Get().Start(m_context.pCtrl, sJob,
                                        [this, pPending, request = pPending->opening.request,
                                         pAhead = CReadAhead::Get().Take(pPending->opening.request.strPath)](
                                            Vantor::CProgress&) -> CJob::Finish {
                                            ImageFileLoad::SLoaded loaded;
                                            if (pAhead)
                                                loaded.vctImages = {pAhead};
                                            else
                                                loaded = ImageFileLoad::Load(request, [](int, int) {});
                                            return [this, pPending, loaded = std::move(loaded)] {
                                                pPending->loaded = loaded;
                                                ShowReady();
                                            };
                                        });
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
