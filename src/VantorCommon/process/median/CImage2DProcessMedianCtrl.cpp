// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/median/CImage2DProcessMedianCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/process/EnumKey.h>
#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;

namespace
{
constexpr int kTypeCode = 0;
constexpr int kRadius = 1;
constexpr double kExact = 0.0; // the region neither grows nor shrinks
} // namespace

CImage2DProcessMedianCtrl::CImage2DProcessMedianCtrl(CImage2DProcessMedianModel* pModel,
                                                     CImage2DProcessMedianDlg* pDlg)
    : CImage2DProcessToolCtrl(pModel, pDlg), m_pModel(pModel)
{
}

CImage2DProcessMedianCtrl::~CImage2DProcessMedianCtrl() = default;

void CImage2DProcessMedianCtrl::ChangeData(int nCode, const QString& strValue)
{
    if (nCode == kTypeCode)
        m_pModel->SetType(EnumKey::ToValue<EImage2DProcessMedian>(strValue));
}

void CImage2DProcessMedianCtrl::Run()
{
    RunOn([](CImage& image, const CGeometry* pRegion) {
        // Deliberate: always 3x3; the model's type is not read.
        const int nResult = image.MedianFilter(kRadius, kRadius, pRegion, ERegionMode::Inside, kExact);
        return nResult == 0 ? QString() : QString::fromStdString(image.GetFailureReason());
    });
}
