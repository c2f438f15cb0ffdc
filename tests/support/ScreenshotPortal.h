// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QVariantMap>

/// A desktop that takes screenshots: it answers each question at once, before it replies to the call.
class CScreenshotPortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Screenshot")

public:
    CScreenshotPortal()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("screenshots")))
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                             QDBusConnection::ExportAllSlots);
        m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~CScreenshotPortal() override
    {
        m_bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        QDBusConnection::disconnectFromBus(QStringLiteral("screenshots"));
    }

    uint nResponse = 0;
    QVariantMap mapResults;
    QString strRequest; ///< a path of its own choice, as old portals have; empty: that of the caller
    bool bSilent = false;
    int nAsked = 0;
    QString strParent;
    QVariantMap mapOptions;

    void Respond(const QString& strPath)
    {
        QDBusMessage answer = QDBusMessage::createSignal(
            strPath, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        answer << nResponse << mapResults;
        m_bus.send(answer);
    }

public Q_SLOTS:
    QDBusObjectPath Screenshot(const QString& strFrom, const QVariantMap& options)
    {
        ++nAsked;
        strParent = strFrom;
        mapOptions = options;
        const QString strCaller = message().service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
        const QString strOwn = QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
                                   .arg(strCaller, options.value(QStringLiteral("handle_token")).toString());
        const QString strPath = strRequest.isEmpty() ? strOwn : strRequest;
        if (!bSilent && strRequest.isEmpty())
            Respond(strPath);
        return QDBusObjectPath(strPath);
    }

private:
    QDBusConnection m_bus;
};
