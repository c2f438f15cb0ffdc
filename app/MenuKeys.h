// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QKeySequence>
#include <QList>

/// Keys of entries, for SActionFace.
namespace MenuKeys
{
/// The platform's keys for a purpose, or the given one if it has none.
inline QList<QKeySequence> Keys(QKeySequence::StandardKey eStandard, const char* pElse = "")
{
    const QList<QKeySequence> lstKeys = QKeySequence::keyBindings(eStandard);
    return lstKeys.isEmpty() ? QList<QKeySequence>{QKeySequence(QLatin1String(pElse))} : lstKeys;
}

inline QList<QKeySequence> Key(const char* pKey)
{
    return {QKeySequence(QLatin1String(pKey))};
}
} // namespace MenuKeys
