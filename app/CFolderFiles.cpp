// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CFolderFiles.h"

#include <Vantor/image/file/ImageFormats.h>
#include <VantorCommon/job/CJobs.h>

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QLocale>
#include <QSet>
#include <algorithm>
#include <vector>

namespace
{
constexpr int kReadSoonMs = 300; // what copies many files into a folder changes it often

QSet<QString> KnownSuffixes()
{
    QSet<QString> suffixes{QStringLiteral("pdf")};
    for (const auto& format : Vantor::Algorithms::GetImageFormats())
        for (const std::string& suffix : format.suffixes)
            if (format.canLoad)
                suffixes.insert(QString::fromStdString(suffix));
    return suffixes;
}

/// Any thread. Incomplete when it is cancelled.
QStringList FilesIn(const QString& strFolder, const Vantor::CProgress& progress)
{
    struct SFile {
        QCollatorSortKey key;
        QString strPath;
    };
    // The plain C locale knows no numbers in names.
    const QLocale locale;
    QCollator order(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    const QSet<QString> suffixes = KnownSuffixes();
    std::vector<SFile> vctFiles;
    QDirIterator it(strFolder, QDir::Files);
    while (it.hasNext() && !progress.IsCancelled()) {
        const QString strPath = it.next();
        if (suffixes.contains(it.fileInfo().suffix().toLower()))
            vctFiles.push_back({order.sortKey(it.fileName()), strPath});
    }
    std::sort(vctFiles.begin(), vctFiles.end(), [](const SFile& a, const SFile& b) {
        const int nOrder = a.key.compare(b.key);
        return nOrder < 0 || (nOrder == 0 && a.strPath < b.strPath);
    });
    QStringList lstFiles;
    for (const SFile& file : vctFiles)
        lstFiles.append(file.strPath);
    return lstFiles;
}
} // namespace

CFolderFiles::CFolderFiles(QObject* pParent) : QObject(pParent)
{
    m_readSoon.setSingleShot(true);
    m_readSoon.setInterval(kReadSoonMs);
    connect(&m_readSoon, &QTimer::timeout, this, &CFolderFiles::Read);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_readSoon.isActive())
            m_readSoon.start();
    });
}

void CFolderFiles::SetFolder(const QString& strFolder)
{
    const QString strAbsolute = strFolder.isEmpty() ? QString() : QDir(strFolder).absolutePath();
    if (strAbsolute == m_strFolder)
        return;
    if (!m_strFolder.isEmpty())
        m_watcher.removePath(m_strFolder);
    m_strFolder = strAbsolute;
    m_lstFiles.clear();
    m_readSoon.stop();
    if (!m_strFolder.isEmpty())
        m_watcher.addPath(m_strFolder);
    Read();
}

void CFolderFiles::Read()
{
    SJob sJob;
    sJob.strKind = QStringLiteral("folder");
    CJobs::Get().Start(this, sJob, [this, strFolder = m_strFolder](Vantor::CProgress& progress) {
        QStringList lstFiles = strFolder.isEmpty() ? QStringList() : FilesIn(strFolder, progress);
        return [this, lstFiles = std::move(lstFiles)] {
            m_lstFiles = lstFiles;
            Q_EMIT signal_Read();
        };
    });
}
