// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What pixels are in units: a part of the page in the file, and so on the picture that is in the file.
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <algorithm>
#include <optional>
#include <utility>

using Vantor::Algorithms::CCalibration;
using Vantor::Annotations::SCalibration;

namespace
{
SCalibration Moved(SCalibration size, const SPlaneMap& map)
{
    if (map.bSwap)
        std::swap(size.x, size.y);
    map.MovePlace(size.originX, size.originY);
    return size;
}
} // namespace

/// From the picture in the file to an image of the list.
SPlaneMap CAnnotationStore::SPrivate::MapOf(int nImage) const
{
    ImagePtr pImage;
    if (pImages)
        pImage = nImage == kShown ? pImages->GetCurrentImage() : pImages->GetImage(nImage);
    return pImage ? pictures.Of(pImage).map : SPlaneMap();
}

CCalibration CAnnotationStore::GetCalibration(int nImage) const
{
    std::optional<SCalibration> size;
    if (const SAnnotatedPage* pPage = m_p->At(nImage))
        size = pPage->file.calibration;
    else if (!m_p->bPages)
        for (const Vantor::Annotations::SPage& page : m_p->file.pages)
            if (page.page == m_p->nPage)
                size = page.calibration;
    CCalibration calibration;
    if (!size || !calibration.Set(Moved(*size, m_p->MapOf(nImage))).empty())
        return {}; // files may have what is none
    return calibration;
}

void CAnnotationStore::SetCalibration(const CCalibration& calibration)
{
    if (!m_p->pImages || calibration == GetCalibration())
        return;
    std::optional<SCalibration> size;
    if (!calibration.IsPixel())
        size = Moved(calibration.GetSize(), m_p->MapOf(kShown).Inverse());
    if (!m_p->bPages && m_p->tracker.Count() == 0)
        m_p->nPage = std::max(0, m_p->pImages->GetCurrentIndex());
    m_p->execute(CCommandCall::Exchange(
        size, [this] { return m_p->FilePage().calibration; },
        [this](const std::optional<SCalibration>& to) {
            m_p->FilePage().calibration = to;
            m_p->tracker.ChangeAll();
        }));
}

void CAnnotationStore::Calibrate(CImageView2DDrawableObject& object) const
{
    object.SetCalibration(m_p->told, m_p->sOptions.bCalibratedRuler);
}

/// Tells the objects in the view; and everybody, if the calibration has become another one.
void CAnnotationStore::SPrivate::TellCalibration(CAnnotationStore& store)
{
    const CCalibration calibration = store.GetCalibration();
    const bool bOther = calibration != std::exchange(told, calibration);
    if (pGeometry)
        for (const auto& pObject : pGeometry->GetObjects())
            store.Calibrate(*pObject);
    if (bOther)
        Q_EMIT store.signal_ChangeCalibration();
}
