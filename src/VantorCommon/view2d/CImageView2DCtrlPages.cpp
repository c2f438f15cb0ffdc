// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlPages_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CPageMemory.h>

#include <algorithm>
#include <vector>

using Vantor::Algorithms::CImage;

namespace
{
/// Of all controllers together.
constexpr int kMaxAhead = 2;
/// Of one controller: somebody who pages fast asks for more pages than a document has readers.
constexpr std::size_t kMaxRunning = 3;

bool IsWaitedFor(const std::shared_ptr<CImage>& pImage)
{
    return pImage && pImage->IsDeferred() && !pImage->HasPixels();
}

/// As it was given when the document was opened, at least if that was not in the root folder.
QString PathOf(const CImage& image)
{
    const QString strName = QString::fromStdWString(image.GetName());
    const QString strFolder = QString::fromStdWString(image.GetFolder());
    return strFolder.isEmpty() ? strName : strFolder + QLatin1Char('/') + strName;
}

/// All that there are, in a row: the one that was served last stands last.
std::vector<CImageView2DCtrlPages*>& Everybody()
{
    static std::vector<CImageView2DCtrlPages*> s_vctAll;
    return s_vctAll;
}

int g_nAhead = 0; ///< jobs for images that are not current
} // namespace

CImageView2DCtrlPages::CImageView2DCtrlPages(const SImageView2DCtrlContext& context) : m_context(context)
{
    Everybody().push_back(this);
    const CImageView2DModel* pModel = context.pModel;
    if (!pModel)
        return;
    const auto on = [this, pModel](auto pSignal, auto pFunction) {
        QObject::connect(pModel, pSignal, &m_receiver, [this, pFunction] { (this->*pFunction)(); });
    };
    on(&CImageView2DModel::signal_ChangeImageList, &CImageView2DCtrlPages::FollowList);
    on(&CImageView2DModel::signal_ChangeCurrentImage, &CImageView2DCtrlPages::FollowCurrent);
    on(&CImageView2DModel::signal_ChangeCurrentIndex, &CImageView2DCtrlPages::FollowCurrent);
    QObject::connect(pModel, &CImageView2DModel::signal_PixelsWanted, &m_receiver, [this](int nIndex) {
        Want(nIndex);
        Continue();
    });
}

/// The jobs are cancelled with their receiver, and their ends are not heard of any more.
CImageView2DCtrlPages::~CImageView2DCtrlPages()
{
    auto& vctAll = Everybody();
    vctAll.erase(std::remove(vctAll.begin(), vctAll.end(), this), vctAll.end());
    for (const auto& [nUID, running] : m_running)
        g_nAhead -= running.bAhead ? 1 : 0;
    ContinueAll();
}

void CImageView2DCtrlPages::Want(int nIndex)
{
    const ImagePtr pImage = m_context.pModel->GetImage(nIndex);
    if (IsWaitedFor(pImage) && m_running.count(pImage->GetUID()) == 0)
        m_wanted.insert(nIndex);
}

void CImageView2DCtrlPages::FollowList()
{
    CImageView2DModel* pModel = m_context.pModel;
    std::unordered_set<unsigned int> present;
    m_wanted.clear();
    bool bDeferred = false;
    for (int i = 0; i < pModel->GetImageCount(); ++i) {
        const ImagePtr pImage = pModel->GetImage(i);
        if (!pImage || !pImage->IsDeferred())
            continue;
        bDeferred = true;
        present.insert(pImage->GetUID());
        if (m_rendered.count(pImage->GetUID()) == 0)
            Want(i);
    }
    for (auto it = m_rendered.begin(); it != m_rendered.end();)
        it = present.count(*it) != 0 ? std::next(it) : m_rendered.erase(it);
    for (const auto& [nUID, running] : m_running)
        if (present.count(nUID) == 0)
            CJobs::Get().Cancel(running.pJob);
    if (bDeferred)
        CPageMemory::Get().Watch(pModel);
    FollowCurrent();
}

void CImageView2DCtrlPages::FollowCurrent()
{
    const int nCurrent = m_context.pModel->GetCurrentIndex();
    for (const int nIndex : {nCurrent, nCurrent + 1, nCurrent - 1})
        Want(nIndex);
    const ImagePtr pCurrent = m_context.pModel->GetCurrentImage();
    const bool bPage = pCurrent && pCurrent->IsDeferred();
    if (bPage)
        CPageMemory::Get().Use(*pCurrent);
    Continue();
    const unsigned int nShown = bPage ? pCurrent->GetUID() : 0;
    if (nShown == m_nShown)
        return;
    m_nShown = nShown;
    m_bTold = false;
    if (bPage && pCurrent->HasPixels())
        TellWhy(*pCurrent);
}

/// The wanted index that is nearest to the current one, the following one of two; -1 without any.
int CImageView2DCtrlPages::NearestWanted() const
{
    const int nCurrent = m_context.pModel->GetCurrentIndex();
    const auto itNext = m_wanted.lower_bound(nCurrent);
    if (itNext == m_wanted.begin())
        return itNext != m_wanted.end() ? *itNext : -1;
    const int nBefore = *std::prev(itNext);
    return itNext != m_wanted.end() && *itNext - nCurrent <= nCurrent - nBefore ? *itNext : nBefore;
}

void CImageView2DCtrlPages::Continue()
{
    if (!m_context.pModel)
        return;
    for (int nIndex = NearestWanted(); nIndex >= 0; nIndex = NearestWanted()) {
        const bool bAhead = nIndex != m_context.pModel->GetCurrentIndex();
        if (m_running.size() >= kMaxRunning || (bAhead && g_nAhead >= kMaxAhead))
            return;
        m_wanted.erase(nIndex);
        Render(nIndex, bAhead);
    }
}

void CImageView2DCtrlPages::Render(int nIndex, bool bAhead)
{
    const ImagePtr pImage = m_context.pModel->GetImage(nIndex);
    if (!pImage)
        return;
    const unsigned int nUID = pImage->GetUID();
    SJob sJob;
    sJob.bWaits = true;
    sJob.dropped = [this, nUID] { End(nUID); };
    g_nAhead += bAhead ? 1 : 0;
    SRunning& running = m_running[nUID];
    running.bAhead = bAhead;
    running.nBytes = CPageMemory::BytesOf(*pImage);
    CPageMemory::Get().Trim(Coming());
    running.pJob = CJobs::Get().Start(&m_receiver, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
        static_cast<void>(std::as_const(*pImage).GetData());
        return [=] {
            End(nUID);
            Tell(pImage);
        };
    });
}

/// The pixels have come, or there is no memory for them. Whoever hears of it may delete the controller.
void CImageView2DCtrlPages::Tell(const ImagePtr& pImage)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QPointer<CImageView2DModel> pModel = m_context.pModel;
    const bool bFirst = m_rendered.insert(pImage->GetUID()).second;
    CPageMemory::Get().Use(*pImage);
    CPageMemory::Get().Trim(Coming());
    for (int i = 0; pModel && i < pModel->GetImageCount(); ++i)
        if (pModel->GetImage(i) == pImage)
            pModel->TellPixels(i);
    if (pCtrl && (bFirst || (pImage->GetUID() == m_nShown && !m_bTold)))
        TellWhy(*pImage);
}

/// Why a page has no drawing, if it has none. Whoever hears of it may delete the controller.
void CImageView2DCtrlPages::TellWhy(const CImage& image)
{
    QString strReason;
    if (!image.HasPixels())
        strReason = QStringLiteral("There is not enough memory for the page.");
    else if (!image.GetNotes().empty())
        strReason = QString::fromStdString(image.GetNotes().front());
    m_bTold = m_bTold || image.GetUID() == m_nShown;
    if (!strReason.isEmpty())
        Q_EMIT m_context.pCtrl->signal_Failed(
            QStringLiteral("Cannot load all of pdf file %1. %2").arg(PathOf(image), strReason));
}

/// A job has ended.
void CImageView2DCtrlPages::End(unsigned int nUID)
{
    const auto it = m_running.find(nUID);
    if (it == m_running.end())
        return;
    g_nAhead -= it->second.bAhead ? 1 : 0;
    m_running.erase(it);
    ContinueAll();
}

/// What the pixels that are being rendered will take.
qint64 CImageView2DCtrlPages::Coming()
{
    qint64 nBytes = 0;
    for (const CImageView2DCtrlPages* pEach : Everybody())
        for (const auto& [nUID, running] : pEach->m_running)
            nBytes += running.nBytes;
    return nBytes;
}

/// Everybody in turn, because one may have all the jobs that another waits for.
void CImageView2DCtrlPages::ContinueAll()
{
    auto& vctAll = Everybody();
    if (!vctAll.empty())
        std::rotate(vctAll.begin(), vctAll.begin() + 1, vctAll.end());
    const std::vector<CImageView2DCtrlPages*> vctNow = vctAll;
    for (CImageView2DCtrlPages* pEach : vctNow)
        pEach->Continue();
}
