// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// A bar inside the window that tells what could not be done. It blocks nothing, takes no focus by itself and
/// stays until it is closed or something else succeeds; while it is open, further messages join the first.
class CMessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit CMessageBar(QWidget* pParent);

    /// Shows a message with its reason. An empty one is dropped.
    void Tell(const QString& strMessage);

    /// Drops what was told of a file, for it has succeeded now.
    void ForgetAbout(const QString& strPath);
    /// Something that the user asked for has succeeded: drops everything, unless something was told since the
    /// user's last key, click or drop, which belongs to the same doing.
    void ForgetOld();

protected:
    /// Watches the whole program for what the user does.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Dismiss();
    void ShowMessages();

    QLabel* m_pText = nullptr;
    QStringList m_lstMessages; ///< on show
    bool m_bFresh = false;     ///< something was told since the user did anything
};
