// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CMeasuresCtrl.h>

#include <Vantor/geometry/CGeometry.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/measure/CMeasuresView.h>
#include <VantorCommon/measure/LiveMeasure_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <utility>

namespace Measured = Vantor::Algorithms;

struct CMeasuresCtrl::SPrivate {
    QPointer<CMeasuresView> pView;
    Calibrate calibrate;
    CLiveMeasure live;

    explicit SPrivate(CMeasuresView* pPanel) : pView(pPanel), live(pPanel, [this] { return Take(); }) {}

    CJob::Work Take();
};

CJob::Work CMeasuresCtrl::SPrivate::Take()
{
    const CImageView2DCtrl* pCtrl = live.GetTarget();
    const auto pObject = pCtrl ? LiveMeasure::Chosen(*pCtrl, [](const auto&) { return true; }) : nullptr;
    if (!pObject) {
        pView->SetMeasurement(nullptr);
        return nullptr;
    }
    const std::shared_ptr<const Measured::CImage> pImage = pCtrl->GetCurrentImgage();
    const auto calibration = calibrate ? calibrate(*pCtrl) : Measured::CCalibration();
    return [this, pImage, calibration, pShape = LiveMeasure::GeometryOf(*pObject)->Clone(),
            strName = pObject->GetName().toStdString()](Vantor::CProgress&) -> CJob::Finish {
        auto vctRows =
            Measured::MeasureShapes(pImage.get(), {{strName, std::string(), 0, pShape.get()}}, calibration);
        CMeasuresView::MeasurementPtr pMeasured;
        if (!vctRows.empty())
            pMeasured = std::make_shared<const Measured::SMeasurement>(std::move(vctRows.front()));
        return [this, pMeasured] {
            if (pView)
                pView->SetMeasurement(pMeasured);
        };
    };
}

CMeasuresCtrl::CMeasuresCtrl(CMeasuresView* pView, QObject* pParent)
    : QObject(pParent), m_p(std::make_unique<SPrivate>(pView))
{
}

CMeasuresCtrl::~CMeasuresCtrl() = default;

void CMeasuresCtrl::SetTarget(CImageView2DCtrl* pCtrl)
{
    m_p->live.SetTarget(pCtrl);
}

void CMeasuresCtrl::SetCalibration(Calibrate calibrate)
{
    m_p->calibrate = std::move(calibrate);
    Follow();
}

void CMeasuresCtrl::Follow()
{
    m_p->live.FollowLater();
}
