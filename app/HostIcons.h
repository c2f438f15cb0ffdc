// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QIcon>
#include <QString>

/// A picture of the host's own.
inline QIcon HostIcon(const char* pName)
{
    return QIcon(QStringLiteral(":/app/Image/%1.png").arg(QLatin1String(pName)));
}

/// A picture of the library.
inline QIcon LibraryIcon(const char* pName)
{
    return QIcon(QStringLiteral(":/Image/%1.png").arg(QLatin1String(pName)));
}
