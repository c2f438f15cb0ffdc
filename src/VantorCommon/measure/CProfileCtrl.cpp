// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CProfileCtrl.h>

#include <Vantor/geometry/CLine.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/measure/CProfileView.h>
#include <VantorCommon/measure/LiveMeasure_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

namespace Measured = Vantor::Algorithms;
using Vantor::Geometry::CLine;

CProfileCtrl::CProfileCtrl(CProfileView* pView, QObject* pParent) : CPlotCtrl(pView, pParent), m_pView(pView)
{
    if (pView)
        connect(pView, &CProfileView::signal_ChangeLineWidth, this, [this] { Follow(); });
}

CProfileCtrl::~CProfileCtrl() = default;

void CProfileCtrl::Clear()
{
    if (m_pView)
        m_pView->SetProfile({}, QString(), QString());
}

CJob::Work CProfileCtrl::Take(const CImageView2DCtrl& ctrl)
{
    const std::shared_ptr<const Measured::CImage> pImage = ctrl.GetCurrentImgage();
    const auto pObject = LiveMeasure::Chosen(
        ctrl, [](const auto& shape) { return dynamic_cast<const CLine*>(&shape) != nullptr; });
    if (!pImage || !pObject || !m_pView) {
        Clear();
        return nullptr;
    }
    const auto pLine = std::dynamic_pointer_cast<CLine>(LiveMeasure::GeometryOf(*pObject));
    const std::vector<Vantor::Geometry::SPlace> vctPlaces{{pLine->start().x(), pLine->start().y()},
                                                          {pLine->end().x(), pLine->end().y()}};
    Measured::SProfileOptions options;
    options.width = m_pView->GetLineWidth();
    return [this, pImage, vctPlaces, options, calibration = CalibrationOf(ctrl),
            strName = pObject->GetName()](Vantor::CProgress&) -> CJob::Finish {
        const auto profile = Measured::TakeProfile(*pImage, vctPlaces, options, calibration);
        return [this, profile, strUnit = QString::fromStdString(calibration.GetSize().unit), strName] {
            if (m_pView)
                m_pView->SetProfile(profile, strUnit, strName);
        };
    };
}
