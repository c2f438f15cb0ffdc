// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CDetailsDlg.h"

#include "FileManager.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kWidth = 480;
}

CDetailsDlg::CDetailsDlg(const QList<SFact>& lstFacts, const QString& strFile, QWidget* pParent)
    : QDialog(pParent)
{
    setWindowTitle(tr("Details"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* pRows = new QFormLayout;
    for (const SFact& fact : lstFacts) {
        auto* pValue = new QLabel(fact.strValue, this);
        pValue->setTextFormat(Qt::PlainText);
        pValue->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        pValue->setWordWrap(true);
        pValue->setAccessibleName(fact.strName);
        pRows->addRow(tr("%1:").arg(fact.strName), pValue);
    }
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pCopy = pButtons->addButton(tr("Copy &Path"), QDialogButtonBox::ActionRole);
    connect(pCopy, &QPushButton::clicked, this,
            [strFile] { QGuiApplication::clipboard()->setText(QDir::toNativeSeparators(strFile)); });
    auto* pShow = pButtons->addButton(tr("Show in &Folder"), QDialogButtonBox::ActionRole);
    connect(pShow, &QPushButton::clicked, this,
            [this, strFile] { FileManager::Show(strFile, parentWidget()); });
    for (QPushButton* pButton : {pCopy, pShow}) {
        pButton->setEnabled(!strFile.isEmpty());
        pButton->setAutoDefault(false);
    }
    pButtons->button(QDialogButtonBox::Close)->setDefault(true);
    pButtons->button(QDialogButtonBox::Close)->setFocus();
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pRows);
    pLayout->addStretch();
    pLayout->addWidget(pButtons);
    resize(kWidth, sizeHint().height());
}
