// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CFileOpening.h"

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <algorithm>
#include <cstdio>
#include <utility>

CFileOpening::CFileOpening(QObject* pParent, CImageView2DCtrl* pCtrl, int nShown, Done done)
    : QObject(pParent), m_pCtrl(pCtrl), m_nShown(pCtrl->GetImageModel()->GetImageCount() + nShown),
      m_done(std::move(done))
{
    connect(pCtrl, &CImageView2DCtrl::signal_Failed, this, [](const QString& strMessage) {
        std::fprintf(stderr, "vantor-viewer: %s\n", qPrintable(strMessage));
    });
    connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, this, &CFileOpening::Show);
    connect(&CJobs::Get(), &CJobs::signal_Changed, this, &CFileOpening::EndIfDone);
}

bool CFileOpening::IsBusy(const CImageView2DCtrl* pCtrl)
{
    const auto vctJobs = CJobs::Get().GetJobs();
    return std::any_of(vctJobs.begin(), vctJobs.end(),
                       [pCtrl](const auto& pJob) { return pJob->GetReceiver() == pCtrl; });
}

void CFileOpening::Open(const QStringList& lstFiles)
{
    m_lstMissing = lstFiles;
    for (const QString& strFile : lstFiles)
        m_pCtrl->AddImage(strFile);
    m_bStarted = true;
    EndIfDone(); // without the option everything is there already
}

void CFileOpening::Show(const QString& strFile)
{
    m_lstMissing.removeOne(strFile);
    CImageView2DModel* pModel = m_pCtrl->GetImageModel();
    pModel->SetCurrentIndex(std::min(m_nShown, pModel->GetImageCount() - 1));
}

void CFileOpening::EndIfDone()
{
    if (!m_bStarted || IsBusy(m_pCtrl))
        return;
    m_bStarted = false;
    disconnect(m_pCtrl, nullptr, this, nullptr);
    deleteLater();
    if (m_done)
        m_done(m_lstMissing);
}
