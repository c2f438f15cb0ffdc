// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CShortcutsPage.h"

#include "CActionKeys.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

CShortcutsPage::CShortcutsPage(CActionKeys* pKeys, QWidget* pParent)
    : QWidget(pParent), m_pKeys(pKeys), m_pTree(new QTreeWidget(this)), m_pTold(new QLabel(this))
{
    m_pTree->setAccessibleName(tr("Shortcuts"));
    m_pTree->setHeaderLabels({tr("Action"), tr("Keys")});
    m_pTree->setRootIsDecorated(false);
    for (const QAction* pAction : m_pKeys->Actions())
        new QTreeWidgetItem(m_pTree, {pAction->iconText(), QString()});
    m_pTold->setTextFormat(Qt::PlainText);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pTree, 1);
    pLayout->addWidget(MakeEditors());
    pLayout->addWidget(m_pTold);
    connect(m_pTree, &QTreeWidget::currentItemChanged, this, &CShortcutsPage::ShowCurrent);
    ShowKeys();
    m_pTree->header()->resizeSections(QHeaderView::ResizeToContents);
    m_pTree->setCurrentItem(m_pTree->topLevelItem(0));
}

QWidget* CShortcutsPage::MakeEditors()
{
    auto* pRow = new QWidget(this);
    auto* pLabel = new QLabel(tr("&Keys of the action:"), pRow);
    m_pEdit = new QKeySequenceEdit(pRow);
    pLabel->setBuddy(m_pEdit);
    m_pEdit->setAccessibleName(tr("Keys"));
    auto* pDefault = new QPushButton(tr("&Default"), pRow);
    auto* pAll = new QPushButton(tr("&All Defaults"), pRow);
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pLabel);
    pLayout->addWidget(m_pEdit, 1);
    for (QPushButton* pButton : {pDefault, pAll}) {
        pButton->setAutoDefault(false);
        pLayout->addWidget(pButton);
    }
    connect(m_pEdit, &QKeySequenceEdit::editingFinished, this, &CShortcutsPage::Take);
    connect(pDefault, &QPushButton::clicked, this, &CShortcutsPage::TakeDefaults);
    connect(pAll, &QPushButton::clicked, this, [this] {
        m_pKeys->SetAllDefaults();
        ShowKeys();
        ShowCurrent();
    });
    return pRow;
}

void CShortcutsPage::ShowKeys()
{
    for (int i = 0; i < m_pTree->topLevelItemCount(); ++i)
        m_pTree->topLevelItem(i)->setText(
            1, QKeySequence::listToString(m_pKeys->Actions()[static_cast<std::size_t>(i)]->shortcuts(),
                                          QKeySequence::NativeText));
}

void CShortcutsPage::ShowCurrent()
{
    m_pTold->clear();
    if (const QAction* pAction = Current())
        m_pEdit->setKeySequence(pAction->shortcut());
}

QAction* CShortcutsPage::Current() const
{
    const int nRow = m_pTree->indexOfTopLevelItem(m_pTree->currentItem());
    return nRow < 0 ? nullptr : m_pKeys->Actions()[static_cast<std::size_t>(nRow)];
}

/// What has been pressed replaces all keys of the action.
void CShortcutsPage::Take()
{
    QAction* pAction = Current();
    const QKeySequence key = m_pEdit->keySequence();
    if (!pAction || key == pAction->shortcut())
        return;
    const QAction* pOwner = key.isEmpty() ? nullptr : m_pKeys->OwnerOf(key);
    const auto lstKeys = key.isEmpty() ? CActionKeys::KeyList() : CActionKeys::KeyList{key};
    m_pKeys->SetKeys(pAction, lstKeys);
    ShowKeys();
    ShowCurrent();
    if (pOwner && pOwner != pAction)
        m_pTold->setText(tr("These keys belong to \"%1\".").arg(pOwner->iconText()));
}

void CShortcutsPage::TakeDefaults()
{
    QAction* pAction = Current();
    if (!pAction)
        return;
    const auto lstKeys = m_pKeys->Defaults(pAction);
    const bool bTaken = m_pKeys->SetKeys(pAction, lstKeys);
    ShowKeys();
    ShowCurrent();
    if (!bTaken)
        for (const QKeySequence& key : lstKeys)
            if (const QAction* pOwner = m_pKeys->OwnerOf(key); pOwner && pOwner != pAction)
                m_pTold->setText(tr("These keys belong to \"%1\".").arg(pOwner->iconText()));
}
