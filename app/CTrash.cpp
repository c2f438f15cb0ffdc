// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CTrash.h"

#include <Vantor/annotation/Annotations.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

bool CTrash::Move(const QString& strFile)
{
    // Without the folder of the trash Qt would use that of the process in its place.
    const QString strHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!QDir().mkpath(strHome + QLatin1String("/Trash")))
        return false;
    std::vector<SMoved> vctMoved;
    const QString strBeside = QString::fromStdString(Vantor::Annotations::SidecarOf(strFile.toStdString()));
    for (const QString& strPath : {strFile, strBeside}) {
        QString strTo;
        if (QFile::exists(strPath) && QFile::moveToTrash(strPath, &strTo))
            vctMoved.push_back({strPath, strTo});
        else if (strPath == strFile)
            return false;
    }
    m_vctMoved.push_back(std::move(vctMoved));
    return true;
}

QString CTrash::Last() const
{
    return m_vctMoved.empty() ? QString() : m_vctMoved.back().front().strFrom;
}

bool CTrash::Restore()
{
    if (m_vctMoved.empty() || !Restore(m_vctMoved.back().front()))
        return false;
    const auto vctMoved = std::move(m_vctMoved.back());
    m_vctMoved.pop_back();
    for (std::size_t i = 1; i < vctMoved.size(); ++i)
        Restore(vctMoved[i]);
    return true;
}

/// The trash keeps what it knows of "files/NAME" in "info/NAME.trashinfo".
bool CTrash::Restore(const SMoved& sMoved)
{
    // Deliberate: rename never replaces a file.
    if (sMoved.strTo.isEmpty() || !QFile::rename(sMoved.strTo, sMoved.strFrom))
        return false;
    const QFileInfo file(sMoved.strTo);
    QFile::remove(QDir(file.path() + QLatin1String("/../info"))
                      .filePath(file.fileName() + QLatin1String(".trashinfo")));
    return true;
}
