// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QTimer;

/// What an entry shows.
struct SActionFace {
    QString strText; ///< with its mnemonic
    QIcon icon;
    QList<QKeySequence> lstKeys;
};

/// The entries of menus and tool bar. Each knows when it would do something, and is enabled only then; that
/// is looked at before a menu opens, before a key is matched, and after whatever the user has done.
///
/// Keys that a 2D view handles itself stay with the view that has the focus, also where an entry bears them.
class CActionTable : public QObject
{
    Q_OBJECT

public:
    using Condition = std::function<bool()>;

    explicit CActionTable(QObject* pParent);

    /// @param isUseful   null: always
    /// @param isChecked  null: the entry cannot be checked
    QAction* Add(QMenu* pMenu, const SActionFace& face, const std::function<void()>& func,
                 const Condition& isUseful = {}, const Condition& isChecked = {});
    /// Brings the entries of a menu up to date before it opens; for submenus, which have it from the top.
    void Watch(QMenu* pMenu);
    void Update();
    /// The entries in the order in which they were added.
    std::vector<QAction*> Actions() const;

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    struct SEntry {
        QAction* pAction;
        Condition isUseful;
        Condition isChecked;
    };
    std::vector<SEntry> m_vctEntries;
    QTimer* m_pUpdateLater;
};
