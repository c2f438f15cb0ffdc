// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DGotoDlg.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

CImageView2DGotoDlg::CImageView2DGotoDlg(QWidget* parent)
    : QDialog(parent), m_pSpinX(new QSpinBox(this)), m_pSpinY(new QSpinBox(this))
{
    setWindowTitle(QStringLiteral("Go To"));
    auto* pLayout = new QHBoxLayout(this);
    auto* pLabelX = new QLabel(QStringLiteral("X:"), this);
    auto* pLabelY = new QLabel(QStringLiteral("Y:"), this);
    auto* pGoTo = new QPushButton(QStringLiteral("Go To"), this);
    pLabelX->setBuddy(m_pSpinX);
    pLabelY->setBuddy(m_pSpinY);
    pLayout->addWidget(pLabelX);
    pLayout->addWidget(m_pSpinX);
    pLayout->addWidget(pLabelY);
    pLayout->addWidget(m_pSpinY);
    pLayout->addWidget(pGoTo);
    connect(pGoTo, &QPushButton::pressed, this, &QDialog::accept);
}

CImageView2DGotoDlg::~CImageView2DGotoDlg() = default;

void CImageView2DGotoDlg::SetMinimumX(int nMinimum)
{
    if (m_pSpinX)
        m_pSpinX->setMinimum(nMinimum);
}

void CImageView2DGotoDlg::SetMaximumX(int nMaximum)
{
    if (m_pSpinX)
        m_pSpinX->setMaximum(nMaximum);
}

void CImageView2DGotoDlg::SetMinimumY(int nMinimum)
{
    if (m_pSpinY)
        m_pSpinY->setMinimum(nMinimum);
}

void CImageView2DGotoDlg::SetMaximumY(int nMaximum)
{
    if (m_pSpinY)
        m_pSpinY->setMaximum(nMaximum);
}

int CImageView2DGotoDlg::GetX() const
{
    return m_pSpinX ? m_pSpinX->value() : 0;
}

int CImageView2DGotoDlg::GetY() const
{
    return m_pSpinY ? m_pSpinY->value() : 0;
}
