// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

class CImageView2DCtrl;
class CImageView2DModel;

/// Which images of a viewer are as they stand in their files. What was turned or filtered, captured or pasted
/// is not, until it is saved or the step is undone.
class CImageOrigins : public QObject
{
    Q_OBJECT

public:
    /// @param pCtrl  lives longer
    explicit CImageOrigins(CImageView2DCtrl* pCtrl);

    bool IsUnsaved(int nIndex) const;
    bool AnyUnsaved() const;
    /// The absolute path of the file that the image comes from or was saved in; empty without one.
    QString FileOf(int nIndex) const;
    /// Saves an image in its file or, when that would lose something or there is none, asks for a name. It is
    /// saved when the controller says so.
    void Save(int nIndex);
    /// The same, and waits until it is saved. @return false when it is not
    bool SaveNow(int nIndex);

Q_SIGNALS:
    /// Another image, or one that was changed or saved.
    void signal_Changed();

private:
    void Learn(int nFirst);
    void LearnList();
    void LearnSaved(const QString& strPath, unsigned int nImageUID);
    bool IsWholeIn(const QString& strPath) const;

    CImageView2DCtrl* m_pCtrl;
    CImageView2DModel* m_pModel;
    int m_nCount = 0;                     ///< images that are known
    QSet<unsigned int> m_clean;           ///< identifiers of images
    QHash<unsigned int, QString> m_saved; ///< where images were saved
    QSet<QString> m_partly;               ///< files of which the image is a part
};
