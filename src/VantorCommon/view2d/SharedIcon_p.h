// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QIcon>

/// The icon of a file among the images of the resources, such as "add.png". All viewers have the same buttons
/// and menus, so it is decoded once and kept until the application ends. GUI thread.
inline QIcon SharedIcon(const char* pName)
{
    static QHash<QByteArray, QIcon> icons;
    if (icons.isEmpty()) // the pixels must be freed before the platform plugin
        qAddPostRoutine([] { icons.clear(); });
    QIcon& icon = icons[pName];
    if (icon.isNull())
        icon = QIcon(QStringLiteral(":/Image/") + QLatin1String(pName));
    return icon;
}
