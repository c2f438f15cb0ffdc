// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QDialog>
#include <vector>

class QAction;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows the keys of the menus and the effects of mouse and keys in a viewer.
class CShortcutsDlg : public QDialog
{
    Q_OBJECT

public:
    CShortcutsDlg(const std::vector<QAction*>& vctActions, QWidget* pParent);

private:
    QTreeWidgetItem* AddGroup(QTreeWidget* pTree, const QString& strTitle);
    void AddViewerKeys(QTreeWidgetItem* pGroup);
};
