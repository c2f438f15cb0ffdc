// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CRecentFiles.h"

#include "HostSettings.h"

#include <VantorCommon/settings/CSettingManager.h>

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>

namespace
{
const QChar kSeparator = QLatin1Char(' ');

/// A file name in a menu, with each ampersand escaped.
QString Label(int nIndex, const QString& strPath)
{
    const QFileInfo file(strPath);
    QString strText = QStringLiteral("%1 (%2)").arg(file.fileName(), QDir::toNativeSeparators(file.path()));
    strText.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QStringLiteral("&%1 %2").arg((nIndex + 1) % CRecentFiles::kMaxFiles).arg(strText);
}
} // namespace

CRecentFiles::CRecentFiles(QMenu* pMenu, std::function<void(const QString&)> open)
    : QObject(pMenu), m_pMenu(pMenu), m_open(std::move(open))
{
    connect(pMenu, &QMenu::aboutToShow, this, &CRecentFiles::Fill);
}

/// Percent-encoded, so that no path contains the separator or a quote, which the settings refuse.
QStringList CRecentFiles::Files() const
{
    QStringList lstFiles;
    const QString strStored = CSettingManager::GetString(HostSettings::kRecentFiles, QString());
    for (const QString& strCode : strStored.split(kSeparator, Qt::SkipEmptyParts).mid(0, kMaxFiles))
        lstFiles.append(QUrl::fromPercentEncoding(strCode.toLatin1()));
    return lstFiles;
}

void CRecentFiles::Store(const QStringList& lstFiles)
{
    QStringList lstCodes;
    for (const QString& strPath : lstFiles.mid(0, kMaxFiles))
        lstCodes.append(QString::fromLatin1(QUrl::toPercentEncoding(strPath)));
    CSettingManager::Set(HostSettings::kRecentFiles, lstCodes.join(kSeparator));
    Q_EMIT signal_Changed();
}

void CRecentFiles::Add(const QString& strPath)
{
    const QString strAbsolute = QFileInfo(strPath).absoluteFilePath();
    QStringList lstFiles = Files();
    lstFiles.removeAll(strAbsolute);
    lstFiles.prepend(strAbsolute);
    Store(lstFiles);
}

void CRecentFiles::Clear()
{
    Store({});
}

void CRecentFiles::Fill()
{
    m_pMenu->clear();
    const QStringList lstFiles = Files();
    for (int i = 0; i < lstFiles.size(); ++i) {
        const QString& strPath = lstFiles[i];
        m_pMenu->addAction(Label(i, strPath), this, [this, strPath] { m_open(strPath); });
    }
    m_pMenu->addSeparator();
    m_pMenu->addAction(tr("&Clear the List"), this, &CRecentFiles::Clear);
}
