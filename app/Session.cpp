// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Session.h"

#include <QUrl>

namespace
{
constexpr int kMaxViewers = 4;
constexpr int kMaxFiles = 200; // of a viewer
const QChar kBetweenViewers = QLatin1Char(';');
const QChar kBetweenFiles = QLatin1Char(' ');
} // namespace

QString Session::ToText(const std::vector<SOpen>& vctViewers)
{
    QStringList lstViewers;
    for (const SOpen& open : vctViewers) {
        QStringList lstParts{QString::number(open.nCurrent)};
        for (const QString& strFile : open.lstFiles)
            lstParts.append(QString::fromLatin1(QUrl::toPercentEncoding(strFile)));
        lstViewers.append(lstParts.join(kBetweenFiles));
    }
    return lstViewers.join(kBetweenViewers);
}

std::vector<Session::SOpen> Session::FromText(const QString& strText)
{
    std::vector<SOpen> vctViewers;
    for (const QString& strViewer : strText.split(kBetweenViewers).mid(0, kMaxViewers)) {
        const QStringList lstParts = strViewer.split(kBetweenFiles, Qt::SkipEmptyParts);
        SOpen open;
        open.nCurrent = lstParts.value(0).toInt();
        for (const QString& strFile : lstParts.mid(1, kMaxFiles))
            open.lstFiles.append(QUrl::fromPercentEncoding(strFile.toLatin1()));
        vctViewers.push_back(open);
    }
    return vctViewers;
}
