// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QHash>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <vector>

class QAction;

/// The keys of the entries, which the user can change and the settings keep. GUI thread.
class CActionKeys : public QObject
{
    Q_OBJECT

public:
    using KeyList = QList<QKeySequence>;

    /// Their keys are those by default; gives them the ones that the settings keep.
    /// @param vctActions  live longer; an object name tells an action from the others, also in the next run
    CActionKeys(const std::vector<QAction*>& vctActions, QObject* pParent);

    const std::vector<QAction*>& Actions() const { return m_vctActions; }
    /// The action that has a key; null without one.
    QAction* OwnerOf(const QKeySequence& key) const;
    KeyList Defaults(const QAction* pAction) const { return m_defaults.value(pAction); }
    /// @return false, with nothing changed, when another action has one of the keys
    bool SetKeys(QAction* pAction, const KeyList& lstKeys);
    void SetAllDefaults();

private:
    void Load();
    void Store() const;

    std::vector<QAction*> m_vctActions;
    QHash<const QAction*, KeyList> m_defaults;
};
