// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <vector>

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
    /// Saves an image to its file or, if that would lose something or there is no file, asks for a name. The
    /// controller says when it is saved.
    void Save(int nIndex);
    /// The same, and waits until it is saved. @return false when it is not
    bool SaveNow(int nIndex);

Q_SIGNALS:
    /// The current image is another one, or was changed or saved.
    void signal_Changed();

private:
    void Learn(int nFirst);
    void LearnList();
    void LearnSaved(const QString& strPath, unsigned int nImageUID);
    void FollowChange();
    bool IsWholeIn(const QString& strPath) const;

    CImageView2DCtrl* m_pCtrl;
    CImageView2DModel* m_pModel;
    std::vector<unsigned int> m_vctKnown; ///< identifiers of the images in the list
    QHash<unsigned int, QString> m_clean; ///< the file that an image equals, by its identifier
    QHash<unsigned int, QString> m_saved; ///< the file to which an image, or what it was made from, was saved
    QSet<QString> m_partly;               ///< files that hold more than their image
};
