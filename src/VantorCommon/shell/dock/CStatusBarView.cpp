// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CStatusBarView.h>

#include <VantorCommon/shell/dock/CStatusBarModel.h>

#include <QHBoxLayout>
#include <QProgressBar>

CStatusBarView::CStatusBarView(CStatusBarModel* pModel, QWidget* parent)
    : QWidget(parent), m_pModel(pModel), m_pProgressBar(new QProgressBar(this))
{
    auto* pLayout = new QHBoxLayout(this);
    pLayout->setSpacing(0);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pProgressBar);
    m_pProgressBar->setAccessibleName(QStringLiteral("Progress"));
    if (!m_pModel)
        return;
    connect(m_pModel, &CStatusBarModel::signal_MaxRangeChanged, this, &CStatusBarView::slot_ChangeMaxRange);
    connect(m_pModel, &CStatusBarModel::signal_ValueChanged, this, &CStatusBarView::slot_ChangeValue);
}

CStatusBarView::~CStatusBarView() = default;

void CStatusBarView::slot_ChangeMaxRange()
{
    if (m_pModel && m_pProgressBar)
        m_pProgressBar->setRange(0, m_pModel->GetMaxRange());
}

void CStatusBarView::slot_ChangeValue()
{
    if (m_pModel && m_pProgressBar)
        m_pProgressBar->setValue(m_pModel->GetValue());
}
