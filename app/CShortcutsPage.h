// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QWidget>

class CActionKeys;
class QAction;
class QKeySequenceEdit;
class QLabel;
class QTreeWidget;

/// The page of the preferences on which the user changes the keys of the entries.
class CShortcutsPage : public QWidget
{
    Q_OBJECT

public:
    /// @param pKeys  live longer
    CShortcutsPage(CActionKeys* pKeys, QWidget* pParent);

private:
    QWidget* MakeEditors();
    QAction* Current() const;
    void ShowKeys();
    void ShowCurrent();
    void Take();
    void TakeDefaults();

    CActionKeys* m_pKeys;
    QTreeWidget* m_pTree;
    QKeySequenceEdit* m_pEdit = nullptr;
    QLabel* m_pTold;
};
