// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// A bar inside the window that tells what could not be done. It blocks nothing, takes no focus by itself and
/// stays until it is closed; while it is open, further messages join the first.
class CMessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit CMessageBar(QWidget* pParent);

    /// Shows a message with its reason. An empty one is dropped.
    void Tell(const QString& strMessage);

private:
    void Dismiss();
    void ShowMessages();

    QLabel* m_pText = nullptr;
    QStringList m_lstMessages; ///< on show
};
