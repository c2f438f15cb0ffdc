// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QString>

/// The colours of the program: the desktop's preference, or light or dark as the user chooses.
///
/// It asks the desktop's settings portal for the preference (org.freedesktop.appearance, color-scheme: 1 is
/// dark, 2 is light) and follows its changes. Without a portal or a preference, it keeps the colours that Qt
/// found at the start.
class CTheme : public QObject
{
    Q_OBJECT

public:
    enum EScheme : int { EScheme_Desktop = 0, EScheme_Light = 1, EScheme_Dark = 2 };

    /// @param eDesktop  the desktop's last known preference, until its answer comes
    explicit CTheme(EScheme eDesktop, QObject* pParent = nullptr);

    /// Sets the scheme; any other value means the desktop's.
    void SetScheme(int nScheme);
    EScheme GetScheme() const { return m_eScheme; }
    /// The desktop's preference; EScheme_Desktop while it is unknown.
    EScheme GetDesktop() const { return m_eDesktop; }
    static bool IsDark();

private Q_SLOTS:
    void slot_SettingChanged(const QString& strGroup, const QString& strKey, const QDBusVariant& value);

private:
    void AskDesktop();
    void TakeDesktop(const QVariant& value);
    void Apply();

    const QPalette m_original;
    EScheme m_eScheme = EScheme_Desktop;
    EScheme m_eDesktop;
};
