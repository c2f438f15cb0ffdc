// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CFolderFiles.h"

#include <functional>

class CUnsavedWork;
class CViewers;

/// Takes the active viewer from image to image: through its list and, at the ends of the images of one file,
/// through the folder of that file. GUI thread.
class CBrowser : public QObject
{
    Q_OBJECT

public:
    /// @param viewers, work  live longer
    /// @param open           opens a file in the active viewer in place of what it has, after a question if
    ///                       need be; false when that was declined
    CBrowser(CViewers* pViewers, CUnsavedWork* pWork, std::function<bool(const QString&)> open,
             QObject* pParent);

    /// @{
    /// To the next image (1) or the previous one (-1), or the first or last: of the list or, with one image,
    /// of the folder.
    bool CanStep(int nStep) const;
    void Step(int nStep);
    void GoToFirst();
    void GoToLast();
    void GoTo(int nIndex); ///< from 0 on; nothing for one that is not there
    /// @}

    /// Opens the first file of a folder when that has been read.
    void OpenFolder(const QString& strFolder);
    /// Whether it led to the file that was opened last.
    bool LedTo(const QString& strFile) const { return strFile == m_strLedTo; }
    /// Waits until a folder that is to be opened has been read.
    void Finish();

    /// The current image in its list or, with one image, its file in the folder.
    struct SPlace {
        int nIndex = -1; ///< below 0 when it is nowhere
        int nCount = 0;
    };
    SPlace Place() const;
    /// Its place as "2/7"; empty when it is the only one.
    QString PlaceText() const;
    /// The file of the active viewer's current image, without its folder; empty without one.
    QString Name() const;

protected:
    bool eventFilter(QObject* pWatched,
                     QEvent* pEvent) override; ///< opens a folder that is dropped on a view

Q_SIGNALS:
    /// Name or place may have changed.
    void signal_Changed();
    /// A folder that was to be opened has been read, and its first file is opened.
    void signal_FolderOpened(const QString& strFolder);
    /// A folder that was to be opened has nothing to show.
    void signal_FolderEmpty(const QString& strFolder);

private:
    void FollowImage();
    void FolderRead();
    void OpenFirst();
    void ReadAhead();
    bool IsOneFile() const;
    QString FileNow() const;
    QString Neighbour(int nStep) const;
    void OpenFile(const QString& strFile);

    CViewers* m_pViewers;
    CUnsavedWork* m_pWork;
    std::function<bool(const QString&)> m_open;
    CFolderFiles m_folder;
    /// The file that was gone to last, as long as no other is shown: it may still be read, or be unreadable.
    QString m_strWanted;
    QString m_strLedTo; ///< the file that was gone to last
    QString m_strShown; ///< file of the current image
    bool m_bOpenFirst = false;
};
