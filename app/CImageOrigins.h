// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

class CImageView2DCtrl;
class CImageView2DModel;

/// Knows which images of a viewer equal their files. An image that was turned, filtered, captured or pasted
/// does not, until it is saved or the step is undone.
class CImageOrigins : public QObject
{
    Q_OBJECT

public:
    /// @param pCtrl  lives longer
    explicit CImageOrigins(CImageView2DCtrl* pCtrl);

    bool IsUnsaved(int nIndex) const;
    bool AnyUnsaved() const;
    /// The absolute path of the file from which the image comes or to which it was saved; empty without one.
    QString FileOf(int nIndex) const;
    /// Saves an image to its file or, if that would lose something or there is no file, asks for a name.
    /// @return whether it was saved
    bool Save(int nIndex);

Q_SIGNALS:
    /// The current image is another one, or was changed or saved.
    void signal_Changed();

private:
    void Learn(int nFirst);
    void LearnList();
    void LearnSaved(const QString& strPath);
    bool IsWholeIn(const QString& strPath) const;

    CImageView2DCtrl* m_pCtrl;
    CImageView2DModel* m_pModel;
    int m_nCount = 0;                     ///< of known images
    QSet<unsigned int> m_clean;           ///< identifiers of images
    QHash<unsigned int, QString> m_saved; ///< files to which images were saved, by identifier
    QSet<QString> m_partly;               ///< files that hold more than their image
};
