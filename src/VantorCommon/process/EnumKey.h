// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QMetaEnum>
#include <QString>
#include <QStringList>

/// The printable keys of an enumeration that Qt's meta-object system knows (Q_ENUM or Q_ENUM_NS). Its
/// underlying type must be int, because ToValue may return -1. Any thread.
namespace EnumKey
{
/// Empty for a value that has no key.
template <class Enum> QString FromValue(Enum eValue)
{
    return QString::fromLatin1(QMetaEnum::fromType<Enum>().valueToKey(static_cast<int>(eValue)));
}

/// The keys of the values that run from 0 without a gap, in their order.
template <class Enum> QStringList AllOf()
{
    QStringList lstKeys;
    for (int i = 0; i < QMetaEnum::fromType<Enum>().keyCount(); ++i)
        lstKeys.append(FromValue(static_cast<Enum>(i)));
    return lstKeys;
}

/// The value of a key; -1 for any other text.
template <class Enum> Enum ToValue(const QString& strKey)
{
    return static_cast<Enum>(QMetaEnum::fromType<Enum>().keyToValue(strKey.toUtf8().constData()));
}
} // namespace EnumKey
