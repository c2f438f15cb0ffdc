// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QString>

/// The colours of the program: those that the desktop prefers, or light or dark at the user's choice.
///
/// What the desktop prefers is asked of its settings portal (org.freedesktop.appearance, color-scheme: 1 is
/// dark, 2 is light) and followed when it changes. Without a portal, or without a preference, the colours
/// that Qt found at the start stay.
class CTheme : public QObject
{
    Q_OBJECT

public:
    enum EScheme : int { EScheme_Desktop = 0, EScheme_Light = 1, EScheme_Dark = 2 };

    /// @param eDesktop  what the desktop preferred the last time, until its answer comes
    explicit CTheme(EScheme eDesktop, QObject* pParent = nullptr);

    /// A value that is no scheme counts as that of the desktop.
    void SetScheme(int nScheme);
    EScheme GetScheme() const { return m_eScheme; }
    /// What the desktop prefers; EScheme_Desktop while that is not known.
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
