// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CTheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStyleFactory>

namespace
{
const auto kService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto kGroup = QStringLiteral("org.freedesktop.appearance");
const auto kKey = QStringLiteral("color-scheme");
constexpr unsigned int kPrefersDark = 1;
constexpr unsigned int kPrefersLight = 2;
constexpr int kMiddle = 128;

bool IsDarkPalette(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < kMiddle;
}

QPalette LightPalette()
{
    QPalette palette(QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::Link, QColor(0x00, 0x57, 0xae));
    return palette;
}

QPalette DarkPalette()
{
    const QColor window(0x2b, 0x2b, 0x2b);
    const QColor base(0x1e, 0x1e, 0x1e);
    const QColor text(0xe6, 0xe6, 0xe6);
    const QColor dim(0x8a, 0x8a, 0x8a);
    QPalette palette(QColor(0x3c, 0x3c, 0x3c), window);
    for (auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(eRole, text);
    for (auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, eRole, dim);
    palette.setColor(QPalette::PlaceholderText, dim);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::Highlight, QColor(0x2a, 0x6f, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf2));
    return palette;
}
} // namespace

CTheme::CTheme(EScheme eDesktop, QObject* pParent)
    : QObject(pParent), m_original(QApplication::palette()), m_eDesktop(eDesktop)
{
    // The viewers have a style sheet, below which a new palette would otherwise have no effect.
    QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
    Apply();
    AskDesktop();
}

bool CTheme::IsDark()
{
    return IsDarkPalette(QApplication::palette());
}

void CTheme::SetScheme(int nScheme)
{
    m_eScheme =
        nScheme == EScheme_Light || nScheme == EScheme_Dark ? static_cast<EScheme>(nScheme) : EScheme_Desktop;
    Apply();
}

void CTheme::AskDesktop()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    // A slot by name, because a signal of the bus has no pointer.
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(slot_SettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    call << kGroup << kKey;
    auto* pWatcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(pWatcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* pDone) {
        const QDBusPendingReply<QDBusVariant> reply = *pDone;
        if (!reply.isError())
            TakeDesktop(reply.value().variant());
        pDone->deleteLater();
    });
}

void CTheme::slot_SettingChanged(const QString& strGroup, const QString& strKey, const QDBusVariant& value)
{
    if (strGroup == kGroup && strKey == kKey)
        TakeDesktop(value.variant());
}

/// @param value  the number; an old portal wraps it once more
void CTheme::TakeDesktop(const QVariant& value)
{
    const QVariant bare = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    const unsigned int nPreference = bare.toUInt();
    m_eDesktop = nPreference == kPrefersDark    ? EScheme_Dark
                 : nPreference == kPrefersLight ? EScheme_Light
                                                : EScheme_Desktop;
    Apply();
}

void CTheme::Apply()
{
    const EScheme eWanted = m_eScheme == EScheme_Desktop ? m_eDesktop : m_eScheme;
    const bool bOriginal =
        eWanted == EScheme_Desktop || (eWanted == EScheme_Dark) == IsDarkPalette(m_original);
    const QPalette palette = bOriginal                 ? m_original
                             : eWanted == EScheme_Dark ? DarkPalette()
                                                       : LightPalette();
    if (palette == QApplication::palette())
        return;
    // The one style that paints every palette well.
    if (!bOriginal)
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette);
}
