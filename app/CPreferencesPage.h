// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "Preferences.h"

#include <QStringList>
#include <QWidget>
#include <functional>

class QFormLayout;

/// The page of the preferences in the dialog of the settings. What is entered holds at once and is kept.
class CPreferencesPage : public QWidget
{
    Q_OBJECT

public:
    /// @param lstLanguages  what can be chosen for texts to read
    CPreferencesPage(const QStringList& lstLanguages, QWidget* pParent);

    /// Shows the settings of the process.
    void ShowSettings();

Q_SIGNALS:
    /// The user has entered something.
    void signal_Changed();
    /// The user asks to open the documents again, at their new resolution.
    void signal_Reload();

private:
    void AddRow(QFormLayout* pRows, const Preferences::SRow& row);
    QWidget* MakeNumber(const Preferences::SRow& row);
    QWidget* MakeSwitch(const Preferences::SRow& row);
    QWidget* MakeText(const Preferences::SRow& row);
    QWidget* MakeFolder(const Preferences::SRow& row);
    void Enter(const QString& strKey, const QVariant& value);

    QStringList m_lstLanguages;
    std::vector<std::function<void()>> m_vctShow; ///< shows the setting of a row in its editor
};
