// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QLineEdit>

/// A value in the status bar, which a click lets the user type anew; Enter takes it, Escape leaves.
class CStatusField : public QLineEdit
{
    Q_OBJECT

public:
    /// Disabled until there is something to show.
    /// @param strWidest  what it has room for
    CStatusField(const QString& strName, const QString& strToolTip, const QString& strWidest,
                 QWidget* pParent);

    /// Waits while the user types.
    void ShowText(const QString& strText);

Q_SIGNALS:
    /// The user has typed something without a meaning.
    void signal_Refused(const QString& strText);
    /// The keyboard is not needed any more.
    void signal_Left();

protected:
    /// Does what the user has typed. @return false for something without a meaning
    virtual bool Take(const QString& strText) = 0;

    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void Enter();

    QString m_strShown;
};
