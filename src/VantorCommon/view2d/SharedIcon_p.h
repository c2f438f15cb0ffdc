// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QIcon>

/// The icon of a file among the images of the resources, such as "add.png". It is decoded once for all
/// viewers, which have the same buttons and menus, and kept until the application ends. GUI thread.
inline QIcon SharedIcon(const char* pName)
{
    static QHash<QByteArray, QIcon> icons;
    if (icons.isEmpty()) // their pixels must go before the platform does
        qAddPostRoutine([] { icons.clear(); });
    QIcon& icon = icons[pName];
    if (icon.isNull())
        icon = QIcon(QStringLiteral(":/Image/") + QLatin1String(pName));
    return icon;
}
