// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CSelectionDialog.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

CSelectionDialog::CSelectionDialog(QWidget* parent) : QDialog(parent), m_pComboBox(new QComboBox(this))
{
    setWindowTitle(QStringLiteral("Select Image View"));
    auto* pOk = new QPushButton(QStringLiteral("OK"), this);
    auto* pCancel = new QPushButton(QStringLiteral("Cancel"), this);
    auto* pLabel = new QLabel(QStringLiteral("Image View: "), this);
    pLabel->setBuddy(m_pComboBox);

    auto* pLayout = new QVBoxLayout(this);
    auto* pChoice = new QHBoxLayout;
    pChoice->addWidget(pLabel);
    pChoice->addWidget(m_pComboBox);
    auto* pButtons = new QHBoxLayout;
    pButtons->addWidget(pOk);
    pButtons->addWidget(pCancel);
    pLayout->addLayout(pChoice);
    pLayout->addLayout(pButtons);

    connect(pOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(pCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void CSelectionDialog::AddSelectionItem(const QString& strItem)
{
    m_pComboBox->addItem(QIcon(), strItem);
}

QString CSelectionDialog::GetSelectedItem() const
{
    return m_pComboBox->currentText();
}
