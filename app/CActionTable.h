// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <utility>
#include <vector>

class QAction;
class QMenu;
class QTimer;

/// The text of an entry, with its mnemonic, and a name that is the same in every language.
struct SActionText {
    /// @param pSource  English; translated as a text of the main window
    SActionText(const char* pSource);
    SActionText(QString strTranslated, QString strSource)
        : strText(std::move(strTranslated)), strName(std::move(strSource))
    {
    }

    QString strText;
    QString strName;
};

/// The look of an entry.
struct SActionFace {
    SActionText text;
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

    /// Its object name is the name of the text, with a number if an entry before has it.
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
    QString FreeName(const QString& strName) const;

    struct SEntry {
        QAction* pAction;
        Condition isUseful;
        Condition isChecked;
    };
    std::vector<SEntry> m_vctEntries;
    QTimer* m_pUpdateLater;
};
