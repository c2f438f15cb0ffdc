// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CActionKeys.h"

#include "HostSettings.h"

#include <VantorCommon/settings/CSettingManager.h>

#include <QAction>
#include <QUrl>
#include <algorithm>

namespace
{
const QChar kBetween = QLatin1Char(' ');
const QChar kEquals = QLatin1Char('=');

/// Percent-encoded, so that no text contains a separator or a quote, which the settings refuse.
QString Encoded(const QString& strText)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(strText));
}

QString Decoded(const QString& strText)
{
    return QUrl::fromPercentEncoding(strText.toLatin1());
}
} // namespace

CActionKeys::CActionKeys(const std::vector<QAction*>& vctActions, QObject* pParent)
    : QObject(pParent), m_vctActions(vctActions)
{
    for (const QAction* pAction : m_vctActions)
        m_defaults.insert(pAction, pAction->shortcuts());
    Load();
}

QAction* CActionKeys::OwnerOf(const QKeySequence& key) const
{
    const auto it = std::find_if(m_vctActions.begin(), m_vctActions.end(),
                                 [&](const QAction* pAction) { return pAction->shortcuts().contains(key); });
    return it == m_vctActions.end() ? nullptr : *it;
}

bool CActionKeys::SetKeys(QAction* pAction, const KeyList& lstKeys)
{
    for (const QKeySequence& key : lstKeys)
        if (const QAction* pOwner = OwnerOf(key); pOwner && pOwner != pAction)
            return false;
    pAction->setShortcuts(lstKeys);
    Store();
    return true;
}

void CActionKeys::SetAllDefaults()
{
    for (QAction* pAction : m_vctActions)
        pAction->setShortcuts(Defaults(pAction));
    Store();
}

void CActionKeys::Load()
{
    const QString strStored = CSettingManager::GetString(HostSettings::kShortcuts, QString());
    for (const QString& strEntry : strStored.split(kBetween, Qt::SkipEmptyParts)) {
        const QString strName = Decoded(strEntry.section(kEquals, 0, 0));
        for (QAction* pAction : m_vctActions)
            if (pAction->objectName() == strName)
                pAction->setShortcuts(QKeySequence::listFromString(Decoded(strEntry.section(kEquals, 1)),
                                                                   QKeySequence::PortableText));
    }
}

/// Only what differs, so that later defaults reach everybody else.
void CActionKeys::Store() const
{
    QStringList lstEntries;
    for (const QAction* pAction : m_vctActions)
        if (pAction->shortcuts() != Defaults(pAction))
            lstEntries.append(
                Encoded(pAction->objectName()) + kEquals +
                Encoded(QKeySequence::listToString(pAction->shortcuts(), QKeySequence::PortableText)));
    CSettingManager::Set(HostSettings::kShortcuts, lstEntries.join(kBetween));
}
