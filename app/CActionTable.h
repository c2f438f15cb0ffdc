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

/// The look of an entry.
struct SActionFace {
    QString strText; ///< with its mnemonic
    QIcon icon;
    QList<QKeySequence> lstKeys;
};

/// The entries of menus and tool bar. Each is enabled only when it would do something; the table checks that
/// before a menu opens, before it matches a key, and after each action of the user.
///
/// Keys that a 2D view handles itself stay with the view that has the focus, even if an entry has them.
class CActionTable : public QObject
{
    Q_OBJECT

public:
    using Condition = std::function<bool()>;

    explicit CActionTable(QObject* pParent);

    /// @param isUseful   null: always
    /// @param isChecked  null: the entry is not checkable
    QAction* Add(QMenu* pMenu, const SActionFace& face, const std::function<void()>& func,
                 const Condition& isUseful = {}, const Condition& isChecked = {});
    /// Updates the entries of a menu and of its submenus before it opens.
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
