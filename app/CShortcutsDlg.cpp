// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CShortcutsDlg.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

CShortcutsDlg::CShortcutsDlg(const std::vector<QAction*>& vctActions, QWidget* pParent) : QDialog(pParent)
{
    setWindowTitle(tr("Shortcuts"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* pTree = new QTreeWidget(this);
    pTree->setAccessibleName(windowTitle());
    pTree->setHeaderLabels({tr("Action"), tr("Keys")});
    pTree->setRootIsDecorated(false);

    QTreeWidgetItem* pMenus = AddGroup(pTree, tr("Menus"));
    for (const QAction* pAction : vctActions)
        if (!pAction->shortcuts().isEmpty())
            new QTreeWidgetItem(pMenus,
                                {pAction->iconText(),
                                 QKeySequence::listToString(pAction->shortcuts(), QKeySequence::NativeText)});
    AddViewerKeys(AddGroup(pTree, tr("In a viewer")));
    pTree->expandAll();
    pTree->header()->resizeSections(QHeaderView::ResizeToContents);

    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pTree);
    pLayout->addWidget(pButtons);
    resize(600, 560);
}

QTreeWidgetItem* CShortcutsDlg::AddGroup(QTreeWidget* pTree, const QString& strTitle)
{
    auto* pGroup = new QTreeWidgetItem(pTree, {strTitle});
    QFont bold = font();
    bold.setBold(true);
    pGroup->setFont(0, bold);
    return pGroup;
}

void CShortcutsDlg::AddViewerKeys(QTreeWidgetItem* pGroup)
{
    const std::vector<std::pair<QString, QString>> vctKeys = {
        {tr("Zoom about the mouse"), tr("Wheel")},
        {tr("Pan, in panning mode"), tr("Drag")},
        {tr("Pan, in every mode"), tr("Drag with the middle button or Space")},
        {tr("Pan, or previous and next image"), tr("Arrow keys")},
        {tr("Previous and next image"), tr("PgUp and PgDn")},
        {tr("Show the next viewer's image"), tr("Hold X")},
        {tr("Select, move or resize an annotation"), tr("Click, drag it or a handle")},
        {tr("Delete the selected annotations"), tr("Delete or Backspace")},
        {tr("Back to selecting"), tr("Escape")},
        {tr("Close a polygon"), tr("Click at its first corner")},
        {tr("Context menu"), tr("Right click or Menu key")},
        {tr("Turn the 3D view"), tr("Drag")},
    };
    for (const auto& [strAction, strKeys] : vctKeys)
        new QTreeWidgetItem(pGroup, {strAction, strKeys});
}
