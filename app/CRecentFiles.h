// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class QMenu;

/// The recent files and folders, newest first, which the settings keep, and the menu that opens them again.
class CRecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxFiles = 10;

    /// @param pMenu  filled each time it opens
    /// @param open   opens a file or a folder
    CRecentFiles(QMenu* pMenu, std::function<void(const QString&)> open);

    /// Absolute paths.
    QStringList Files() const;
    void Add(const QString& strPath);
    void Clear();

Q_SIGNALS:
    void signal_Changed();

private:
    void Fill();
    void Store(const QStringList& lstFiles);

    QMenu* m_pMenu;
    std::function<void(const QString&)> m_open;
};
