// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CImageView2DCommandChangeCurrentImage.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/CarriedShapes_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <utility>

namespace
{
using ImagePtr = CImageView2DCommandChangeCurrentImage::ImagePtr;

bool HasPage(const CImageView2DModel& model)
{
    return model.GetCurrentIndex() >= 0 && model.GetCurrentIndex() < model.GetImageCount();
}

// Makes the page that holds the image current, unless it is already. False when no page holds it.
bool SelectPageOf(CImageView2DModel& model, const ImagePtr& pImage)
{
    if (HasPage(model) && model.GetCurrentImage() == pImage)
        return true;
    for (int i = 0; i < model.GetImageCount(); ++i)
        if (model.GetImage(i) == pImage) {
            model.SetCurrentIndex(i);
            return true;
        }
    return false;
}
} // namespace

CImageView2DCommandChangeCurrentImage::CImageView2DCommandChangeCurrentImage(CImageView2DCtrl* pCtrl,
                                                                             ImagePtr pNewImage,
                                                                             const SImageChange& sChange)
    : m_pCtrl(pCtrl), m_pNewImage(std::move(pNewImage)), m_sChange(sChange)
{
    const CImageView2DModel* pModel = Model();
    if (!pModel)
        return;
    m_pOldImage = m_pCtrl->GetCurrentImgage();
    m_bHadPage = HasPage(*pModel);
    for (int i = 0; !m_bHadPage && i < pModel->GetImageCount(); ++i)
        m_vctPages.push_back(pModel->GetImage(i));
}

CImageView2DCommandChangeCurrentImage::~CImageView2DCommandChangeCurrentImage() = default;

CImageView2DModel* CImageView2DCommandChangeCurrentImage::Model() const
{
    return m_pCtrl ? m_pCtrl->GetImageModel() : nullptr;
}

void CImageView2DCommandChangeCurrentImage::Show(const ImagePtr& pImage)
{
    m_pCtrl->SetCurrentImage(pImage,
                             m_sChange.IsTurn() ? EAnnotationsGone_Turned : EAnnotationsGone_Filtered);
}

void CImageView2DCommandChangeCurrentImage::exec()
{
    CImageView2DModel* pModel = Model();
    if (!pModel || !m_pNewImage || m_bDone)
        return;
    if (m_bHadPage ? !SelectPageOf(*pModel, m_pOldImage) : HasPage(*pModel))
        return;
    m_bDone = true;
    if (Carry()) {
        pModel->SetCurrentImage(m_pNewImage);
        m_pCarried->Do(*m_pCtrl->GetGeometryModel());
        if (m_pCarried->Moves())
            m_pCtrl->GetAnnotationStore()->TellNotCarried();
        return;
    }
    KeepAnnotations();
    Show(m_pNewImage);
}

void CImageView2DCommandChangeCurrentImage::undo()
{
    CImageView2DModel* pModel = Model();
    if (!pModel || !m_bDone || !SelectPageOf(*pModel, m_pNewImage))
        return;
    m_bDone = false;
    if (m_pCarried) {
        pModel->SetCurrentImage(m_pOldImage);
        if (m_pCtrl->GetGeometryModel())
            m_pCarried->Undo(*m_pCtrl->GetGeometryModel());
        return;
    }
    Show(m_pOldImage);
    // There was no current page, so restoring one entry would not restore the list.
    if (!m_bHadPage)
        pModel->SetImages(m_vctPages);
    RestoreAnnotations();
}

/// Decides at the first time whether the annotations are taken along.
bool CImageView2DCommandChangeCurrentImage::Carry()
{
    if (m_pCarried || !m_vctDropped.empty())
        return m_pCarried != nullptr;
    const bool bSameSize = m_pOldImage && m_pOldImage->GetWidth() == m_pNewImage->GetWidth() &&
                           m_pOldImage->GetHeight() == m_pNewImage->GetHeight();
    const bool bKnown = bSameSize || m_sChange.eKind != SImageChange::EKind_Other;
    if (m_pCtrl->GetAnnotationStore()->IsCarrying() && m_bHadPage && m_pOldImage && bKnown &&
        m_pCtrl->GetGeometryModel())
        m_pCarried = std::make_unique<CCarriedShapes>(
            m_sChange.MapOf(m_pOldImage->GetWidth(), m_pOldImage->GetHeight()));
    return m_pCarried != nullptr;
}

void CImageView2DCommandChangeCurrentImage::KeepAnnotations()
{
    m_vctDropped.clear();
    if (const CImageView2DGeometryModel* pGeometry = m_pCtrl->GetGeometryModel())
        for (const auto& pObject : pGeometry->GetObjects())
            m_vctDropped.push_back(SDropped{pObject, pObject->GetSelected()});
}

void CImageView2DCommandChangeCurrentImage::RestoreAnnotations()
{
    CImageView2DGeometryModel* pGeometry = m_pCtrl->GetGeometryModel();
    if (!pGeometry)
        return;
    CImageView2DGeometryModel::ObjectList vctObjects;
    for (const SDropped& dropped : m_vctDropped) {
        dropped.pObject->SetSelected(dropped.bSelected);
        vctObjects.push_back(dropped.pObject);
    }
    pGeometry->RestoreObjects(vctObjects);
}
