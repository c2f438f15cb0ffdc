// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CHistogramCtrl.h>

#include <Vantor/geometry/CGeometry.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/measure/CHistogramView.h>
#include <VantorCommon/measure/LiveMeasure_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

namespace Measured = Vantor::Algorithms;
using Measured::CImage;

/// What a histogram is of.
struct CHistogramCtrl::SSource {
    unsigned int nImage = CImage::kNoUID;  ///< identifier
    unsigned int nObject = CImage::kNoUID; ///< identifier; none for the whole image
    unsigned int nRevision = 0;            ///< of the object

    bool operator==(const SSource& other) const
    {
        return nImage == other.nImage && nObject == other.nObject && nRevision == other.nRevision;
    }
};

CHistogramCtrl::CHistogramCtrl(CHistogramView* pView, QObject* pParent)
    : CPlotCtrl(pView, pParent), m_pView(pView)
{
}

CHistogramCtrl::~CHistogramCtrl() = default;

void CHistogramCtrl::Clear()
{
    m_pShown = nullptr;
    if (m_pView)
        m_pView->SetStatistics({}, 8, QString());
}

CJob::Work CHistogramCtrl::Take(const CImageView2DCtrl& ctrl)
{
    const std::shared_ptr<const CImage> pImage = ctrl.GetCurrentImgage();
    if (!pImage) {
        Clear();
        return nullptr;
    }
    const auto pObject = LiveMeasure::Chosen(ctrl, [](const auto&) { return true; });
    SSource source{pImage->GetUID()};
    if (pObject)
        source = {pImage->GetUID(), pObject->GetUID(), pObject->GetRevision()};
    if (m_pShown && *m_pShown == source)
        return nullptr;
    const auto pShape = pObject ? LiveMeasure::GeometryOf(*pObject)->Clone() : nullptr;
    const QString strName = pObject ? pObject->GetName() : QString();
    return [this, pImage, pShape, strName, source](Vantor::CProgress&) -> CJob::Finish {
        const auto statistics = Measured::MeasureRegion(*pImage, pShape.get(), Measured::EStatistics::Full);
        return [this, statistics, nBits = pImage->GetBitDepth(), strName, source] {
            m_pShown = std::make_unique<SSource>(source);
            if (m_pView)
                m_pView->SetStatistics(statistics, nBits, strName);
        };
    };
}
