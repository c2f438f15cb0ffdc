// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "FileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace
{
constexpr int kPatienceMs = 5000;
}

void FileManager::Show(const QString& strFile, QObject* pContext)
{
    const auto name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage message = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/FileManager1"), name, QStringLiteral("ShowItems"));
    message << QStringList{QUrl::fromLocalFile(strFile).toString(QUrl::FullyEncoded)} << QString();
    auto* pCall =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message, kPatienceMs), pContext);
    QObject::connect(pCall, &QDBusPendingCallWatcher::finished, pContext, [strFile, pCall] {
        pCall->deleteLater();
        if (QDBusPendingReply<>(*pCall).isError())
            QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(strFile).path()));
    });
}
