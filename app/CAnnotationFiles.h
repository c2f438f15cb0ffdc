// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

class CImageOrigins;
class CImageView2DCtrl;

/// The files of the annotations of one viewer. They stand beside the images, as photo.jpg.vantor.json, and
/// where that cannot be written in the user's folder of data. An image that is opened shows them.
class CAnnotationFiles : public QObject
{
    Q_OBJECT

public:
    /// @param pCtrl     lives longer
    /// @param pOrigins  lives longer
    CAnnotationFiles(CImageView2DCtrl* pCtrl, const CImageOrigins* pOrigins);

    CAnnotationStore* Store() const { return m_pStore; }
    /// The image that the annotations belong to, by its index: the one on which they were begun.
    int ImageIndex() const;
    /// Its file; empty without one.
    QString ImageFile() const;

    /// Saves them where they belong. The end is told.
    void Save();
    /// Saves them in a file that somebody has chosen, in one of the formats.
    void SaveAs(const QString& strPath, const QString& strFormat);
    /// Saves them where they belong, and waits. @return whether everything is saved
    bool SaveNow();
    /// The next file of this name that is opened shows these annotations, unsaved, and not those beside it.
    void Expect(const QString& strImage, const Vantor::Annotations::SDocument& document);
    /// The page of a document that is about the image on show; null when there is none.
    const Vantor::Annotations::SPage* PageOf(const Vantor::Annotations::SDocument& document) const;
    /// What formats need to know of the image on show.
    Vantor::Annotations::SContext Context() const;

    /// Where annotations are kept that cannot be kept beside their image.
    static QString DataFolder();
    static QString Beside(const QString& strImage);
    static QString InDataFolder(const QString& strImage);

Q_SIGNALS:
    /// A sentence on what could not be done, or on what is to be known.
    void signal_Told(const QString& strMessage);
    void signal_Saved(const QString& strPath);
    /// Nothing is being written any more.
    void signal_Idle();

private:
    void AfterOpening();
    void ShowStored();
    void AfterLoading(const QString& strPath, const Vantor::Annotations::SReport& report);
    EOtherSize AskSize(const Vantor::Annotations::SPage& page, const QSize& size);
    void SaveBeside();
    void Write(const QString& strPath, const QString& strImage, const QString& strFormat,
               EAnnotationsReplace eReplace);
    void MeetConflict(const QString& strPath, const QString& strImage);
    void AfterSaving(const QString& strPath, const Vantor::Annotations::SReport& report);
    void TellRemarks(const QString& strPath, const Vantor::Annotations::SReport& report);
    void StartAutoSave();
    void AutoSave();

    CImageView2DCtrl* m_pCtrl;
    const CImageOrigins* m_pOrigins;
    CAnnotationStore* m_pStore;
    QTimer m_autoSave;
    int m_nHome = 0;         ///< see ImageIndex
    bool m_bEmpty = true;    ///< there are no annotations
    QSet<QString> m_pending; ///< images whose files were not looked at yet
    QSet<QString> m_refused; ///< of m_pending: those that somebody does not want to see
    QHash<QString, Vantor::Annotations::SDocument> m_expected; ///< by image
    QHash<QString, QString> m_loading;                         ///< file to image
    QHash<QString, QString> m_writing;                         ///< file to image; empty: chosen by somebody
    bool m_bAsked = false;                                     ///< somebody has asked for the last save
    QSet<QString> m_conflicts;                                 ///< files that were told to be another's
};
