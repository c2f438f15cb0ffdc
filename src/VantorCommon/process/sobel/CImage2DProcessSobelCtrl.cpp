// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/process/EnumKey.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;

namespace
{
constexpr int kTypeCode = 0;
constexpr double kExact = 0.0; // the region neither grows nor shrinks
} // namespace

CImage2DProcessSobelCtrl::CImage2DProcessSobelCtrl(CImage2DProcessSobelModel* pModel,
                                                   CImage2DProcessSobelDlg* pDlg)
    : CImage2DProcessToolCtrl(pModel, pDlg), m_pModel(pModel)
{
}

CImage2DProcessSobelCtrl::~CImage2DProcessSobelCtrl() = default;

void CImage2DProcessSobelCtrl::ChangeData(int nCode, const QString& strValue)
{
    if (nCode == kTypeCode)
        m_pModel->SetType(EnumKey::ToValue<EImage2DProcessSobel>(strValue));
}

void CImage2DProcessSobelCtrl::Run()
{
    const SSource source = TakeSource();
    const ImagePtr pCopy = CopyOf(source);
    if (!pCopy)
        return;
    StartProcess();
    if (Filter(*pCopy, source.pRegion.get()) != 0)
        Fail(QString::fromStdString(pCopy->GetFailureReason()));
    // Deliberate: the viewer gets the copy also after a failure and for an invalid type.
    ShowResult(pCopy);
}

int CImage2DProcessSobelCtrl::Filter(CImage& image, const CGeometry* pRegion) const
{
    switch (m_pModel->GetType()) {
    case EImage2DProcessSobelX:
        return image.SobelX(pRegion, ERegionMode::Inside, kExact);
    case EImage2DProcessSobelY:
        return image.SobelY(pRegion, ERegionMode::Inside, kExact);
    case EImage2DProcessSobelXY:
        return image.SobelXY(pRegion, ERegionMode::Inside, kExact);
    }
    return 0;
}
