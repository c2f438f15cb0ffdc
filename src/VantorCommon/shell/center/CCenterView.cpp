// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterView.h>

#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <algorithm>

CCenterView::CCenterView(CCenterModel* pModel, QWidget* pParent) : QWidget(pParent), m_pModel(pModel)
{
    UpdateLayout();
}

CCenterView::~CCenterView()
{
    for (const auto& pViewer : m_vctImageViewer)
        delete pViewer.data();
}

void CCenterView::AddImageView(CImageViewer* pViewer, int, int)
{
    if (!pViewer)
        return;
    pViewer->setParent(this);
    pViewer->hide();
    m_vctImageViewer.emplace_back(pViewer);
}

CImageViewer* CCenterView::GetViewer(int nIndex) const
{
    const bool bInRange = nIndex >= 0 && static_cast<std::size_t>(nIndex) < m_vctImageViewer.size();
    return bInRange ? m_vctImageViewer[static_cast<std::size_t>(nIndex)].data() : nullptr;
}

void CCenterView::UpdateLayout()
{
    if (!m_pModel)
        return;
    const int nRows = std::max(m_pModel->GetRow(), 0);
    const int nColumns = std::max(m_pModel->GetColumn(), 0);
    const long long nCells = static_cast<long long>(nRows) * nColumns;
    const int nViewers = static_cast<int>(m_vctImageViewer.size());
    if (nCells > nViewers)
        return;
    for (int i = 0; i < nViewers; ++i) {
        CImageViewer* pViewer = m_vctImageViewer[static_cast<std::size_t>(i)];
        if (!pViewer)
            continue;
        if (i >= nCells) {
            pViewer->hide();
            continue;
        }
        const int nWidth = width() / nColumns;
        const int nHeight = height() / nRows;
        pViewer->show();
        pViewer->setGeometry((i % 2) * nWidth, (i / 2) * nHeight, nWidth, nHeight);
    }
}

void CCenterView::slot_Update()
{
    UpdateLayout();
}

void CCenterView::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    UpdateLayout();
}
