// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

/// The images and documents of one folder in the order in which people count: "page 9" before "page 10". The
/// folder is read in the background, and again when it changes. GUI thread.
class CFolderFiles : public QObject
{
    Q_OBJECT

public:
    explicit CFolderFiles(QObject* pParent);

    /// Reads the folder, unless it is that one already; empty: none.
    void SetFolder(const QString& strFolder);
    /// Absolute; empty without one.
    const QString& GetFolder() const { return m_strFolder; }
    /// Paths. Empty until the folder has been read.
    const QStringList& GetFiles() const { return m_lstFiles; }

Q_SIGNALS:
    /// The folder has been read.
    void signal_Read();

private:
    void Read();

    QString m_strFolder;
    QStringList m_lstFiles;
    QFileSystemWatcher m_watcher;
    QTimer m_readSoon;
};
