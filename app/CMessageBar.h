// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// A bar inside the window that reports failures. It blocks nothing, takes no focus by itself and stays until
/// the user closes it or another action succeeds; while it is open, it adds further messages to the first.
class CMessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit CMessageBar(QWidget* pParent);

    /// Shows a message with its reason. Ignores an empty one.
    void Tell(const QString& strMessage);

    /// Drops the messages about a file, because it has succeeded now.
    void ForgetAbout(const QString& strPath);
    /// An action of the user has succeeded: drops all messages, unless one came since the user's last key,
    /// click or drop, because it belongs to the same action.
    void ForgetOld();

protected:
    /// Watches the whole program for actions of the user.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Dismiss();
    void ShowMessages();

    QLabel* m_pText = nullptr;
    QStringList m_lstMessages; ///< visible ones
    bool m_bFresh = false;     ///< a message came since the user's last action
};
