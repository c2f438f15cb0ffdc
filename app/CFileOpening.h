// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class CImageView2DCtrl;

/// Opens files in one viewer, behind what it has, without waiting for them: it shows one of their images as
/// soon as that is there, and stays at it until all are. Tells failures on standard error. Deletes itself.
class CFileOpening : public QObject
{
    Q_OBJECT

public:
    /// What is told in the end: the files that could not be opened, or were given up.
    using Done = std::function<void(const QStringList& lstMissing)>;

    /// @param pParent  with its end, nothing is told any more
    /// @param pCtrl    of the viewer; lives longer
    /// @param nShown   which of the images of these files to show: an index, the last one for a larger number
    CFileOpening(QObject* pParent, CImageView2DCtrl* pCtrl, int nShown, Done done);

    /// To be called once.
    void Open(const QStringList& lstFiles);

    /// Whether files are being opened in a viewer, or something else runs for it.
    static bool IsBusy(const CImageView2DCtrl* pCtrl);

private:
    void Show(const QString& strFile);
    void EndIfDone();

    CImageView2DCtrl* m_pCtrl;
    const int m_nShown; ///< an index in the list of the viewer
    Done m_done;
    QStringList m_lstMissing; ///< so far
    bool m_bStarted = false;
};
