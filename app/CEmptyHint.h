// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "Viewers.h"

#include <QLabel>
#include <functional>

class CRecentFiles;
class QAction;

/// What a person can do with a viewer that has no image: drop files, press the key for opening, or click one
/// of the recent files, which it lists. It belongs to the 2D view, in the middle of which it stands while
/// nothing is shown or being opened there.
class CEmptyHint : public QLabel
{
    Q_OBJECT

public:
    /// @param pOpen    its key is named; lives longer, as the recent files do
    /// @param open     opens a file or a folder in this viewer
    CEmptyHint(const SViewer& viewer, const QAction* pOpen, const CRecentFiles* pRecent,
               std::function<void(const QString&)> open);

protected:
    /// Of the view: keeps to its middle.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Update();
    bool Fit(const QRect& room);
    QString Text(int nFiles) const;

    SViewer m_viewer;
    const QAction* m_pOpen;
    const CRecentFiles* m_pRecent;
};
