// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterCtrlCompare_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageDifference.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QEvent>

using Vantor::Algorithms::CImage;

namespace
{
using ImagePtr = std::shared_ptr<CImage>;

/// Gives a view the zoom of another one and the same image point in the middle.
void PlaceAs(CImageView2D& view, const CImageView2D& model)
{
    view.SetZoom(model.GetZoom(), QPointF());
    view.CenterOn(model.MapToImage(QRectF(model.rect()).center()));
}

struct SMade {
    ImagePtr pImage = std::make_shared<CImage>();
    std::string strReason;
};

/// On any thread.
SMade Differ(const ImagePtr& pA, const ImagePtr& pB)
{
    SMade made;
    made.strReason = MakeDifference(*pA, *pB, *made.pImage);
    return made;
}

void ShowDifference(CImageView2DCtrl& ctrl, const SMade& made)
{
    if (made.strReason.empty())
        ctrl.PushImage(made.pImage);
    else
        Q_EMIT ctrl.signal_Failed(QStringLiteral("Cannot compare the images. ") +
                                  QString::fromStdString(made.strReason));
}
} // namespace

CCenterCtrlCompare::CCenterCtrlCompare(std::vector<SSide> vctSides) : m_vctSides(std::move(vctSides))
{
    for (const SSide& side : m_vctSides) {
        CImageView2D* pView = side.pCtrl->Get2DView();
        if (!pView)
            continue;
        pView->installEventFilter(this);
        connect(pView, &CImageView2D::signal_ChangePlace, this, [this, pView] {
            Follow(pView);
            PlaceOther();
        });
        connect(pView, &CImageView2D::signal_ChangeMousePosition, this,
                [this, pView](const QPointF& point) { Mark(pView, point); });
    }
}

CCenterCtrlCompare::~CCenterCtrlCompare()
{
    HideOther();
}

bool CCenterCtrlCompare::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Leave && m_bLinked)
        ClearMarks();
    else if (pEvent->type() == QEvent::Resize && pWatched == m_pBelow)
        QMetaObject::invokeMethod(
            this, [this] { PlaceOther(); }, Qt::QueuedConnection);
    return false;
}

const CCenterCtrlCompare::SSide* CCenterCtrlCompare::SideOf(int nViewID) const
{
    const auto nIndex = static_cast<std::size_t>(nViewID); // a negative number becomes too large
    if (nIndex >= m_vctSides.size() || !m_vctSides[nIndex].pViewer || !m_vctSides[nIndex].pCtrl)
        return nullptr;
    return &m_vctSides[nIndex];
}

CImageView2D* CCenterCtrlCompare::ViewOf(int nViewID) const
{
    const SSide* pSide = SideOf(nViewID);
    return pSide ? pSide->pCtrl->Get2DView() : nullptr;
}

/// The views of the other viewers that are shown.
std::vector<CImageView2D*> CCenterCtrlCompare::OthersOf(const CImageView2D* pView) const
{
    std::vector<CImageView2D*> vctOthers;
    for (const SSide& side : m_vctSides) {
        CImageView2D* pOther = side.pViewer && side.pCtrl ? side.pCtrl->Get2DView() : nullptr;
        if (pOther && pOther != pView && !side.pViewer->isHidden())
            vctOthers.push_back(pOther);
    }
    return vctOthers;
}

void CCenterCtrlCompare::SetLinked(bool bLinked, int nLeader)
{
    m_bLinked = bLinked;
    ClearMarks();
    if (const CImageView2D* pLeader = ViewOf(nLeader))
        Follow(pLeader);
}

void CCenterCtrlCompare::Follow(const CImageView2D* pLeader)
{
    if (!m_bLinked || m_bFollows || !(pLeader->GetZoom() > 0.0))
        return;
    m_bFollows = true;
    for (CImageView2D* pOther : OthersOf(pLeader))
        if (pLeader->IsFitted())
            pOther->ZoomFit();
        else
            PlaceAs(*pOther, *pLeader);
    m_bFollows = false;
}

void CCenterCtrlCompare::Mark(const CImageView2D* pView, const QPointF& point)
{
    if (!m_bLinked || !(pView->GetZoom() > 0.0))
        return;
    for (CImageView2D* pOther : OthersOf(pView))
        pOther->SetMark(point);
}

void CCenterCtrlCompare::ClearMarks()
{
    for (CImageView2D* pView : OthersOf(nullptr))
        pView->ClearMark();
}

void CCenterCtrlCompare::AddDifference(int nViewID, int nOther)
{
    const SSide* pSide = SideOf(nViewID);
    const SSide* pOtherSide = SideOf(nOther);
    if (!pSide || !pOtherSide)
        return;
    const ImagePtr pImage = pSide->pCtrl->GetImage();
    const ImagePtr pOther = pOtherSide->pCtrl->GetImage();
    if (!pImage || !pOther)
        return;
    const QPointer<CImageView2DCtrl> pCtrl = pSide->pCtrl->Get2DCtrl();
    if (!m_sOptions.bBackground)
        return ShowDifference(*pCtrl, Differ(pImage, pOther));
    SJob sJob;
    sJob.strTitle = QStringLiteral("Compare the images");
    sJob.nMemory = qint64(pImage->GetStride()) * pImage->GetHeight();
    CJobs::Get().Start(pCtrl, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
        const SMade made = Differ(pImage, pOther);
        return [=] { ShowDifference(*pCtrl, made); };
    });
}

void CCenterCtrlCompare::ShowOther(int nViewID, int nOther)
{
    HideOther();
    CImageView2D* pBelow = ViewOf(nViewID);
    const SSide* pOther = SideOf(nOther);
    if (!pBelow || !pOther || !pOther->pCtrl->GetImage() || !(pBelow->GetZoom() > 0.0))
        return;
    const CImageView2DCtrl& ctrl = *pOther->pCtrl->Get2DCtrl();
    m_pBelow = pBelow;
    m_pOther = new CImageView2D(ctrl.GetImageModel(), ctrl.GetGeometryModel(), nullptr, nOther, pBelow);
    m_pOther->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pOther->setFocusPolicy(Qt::NoFocus);
    m_pOther->SetOwnColors(m_sOptions.bOwnColors);
    m_pOther->SetImageLook(m_sOptions.bSmoothReduction, m_sOptions.bCheckerboard);
    m_pOther->setGeometry(pBelow->rect());
    m_pOther->slot_ChangeCurrentImage();
    m_pOther->slot_ChangeDrawableObjectProperty(0);
    m_pOther->show();
    PlaceOther();
}

void CCenterCtrlCompare::PlaceOther()
{
    if (!m_pOther || !m_pBelow)
        return;
    m_pOther->setGeometry(m_pBelow->rect());
    PlaceAs(*m_pOther, *m_pBelow);
}

void CCenterCtrlCompare::HideOther()
{
    delete m_pOther;
}
