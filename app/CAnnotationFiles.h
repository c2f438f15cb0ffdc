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
#include <vector>

class CImageView2DCtrl;

/// The files of the annotations of one viewer, one for each file of its list. They stand beside the images,
/// as photo.jpg.vantor.json, and where that cannot be written in the user's folder of data. An image that is
/// opened shows them. Images are indices in the list.
class CAnnotationFiles : public QObject
{
    Q_OBJECT

public:
    /// @param pCtrl  lives longer
    explicit CAnnotationFiles(CImageView2DCtrl* pCtrl);

    CAnnotationStore* Store() const { return m_pStore; }
    /// The first images of the files whose annotations are unsaved.
    std::vector<int> Unsaved() const;
    /// Whether closing an image drops unsaved annotations: as long as other pages of its file are open, those
    /// of all stay.
    bool IsLastWithUnsaved(int nImage) const;

    /// Saves those of an image's file where they belong. The end is told.
    void Save(int nImage);
    /// Saves those of the image on show in a file that somebody has chosen, in one of the formats.
    void SaveAs(const QString& strPath, const QString& strFormat);
    /// Saves those of an image's file where they belong, and waits. @return whether they are saved
    bool SaveNow(int nImage);
    /// The next file of this name that is opened shows these annotations, unsaved, and not those beside it.
    void Expect(const QString& strImage, const Vantor::Annotations::SDocument& document);
    /// The page of a document that is about the image on show; null when there is none.
    const Vantor::Annotations::SPage* PageOf(const Vantor::Annotations::SDocument& document) const;

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
    struct SLoading {
        QString strImage;
        int nLoads = 0; ///< the last one counts
    };

    struct SWriting {
        QString strImage;   ///< empty: somebody has chosen the file
        bool bAsked = true; ///< somebody has asked for it and can be asked
    };

    void LookForStored();
    void ShowStored(int nImage);
    int ImageOf(const QString& strFile) const;
    void AfterLoading(const QString& strPath, const Vantor::Annotations::SReport& report);
    EOtherSize AskSize(const Vantor::Annotations::SPage& page, const QSize& size);
    void SaveBeside(int nImage, bool bAsked);
    void Write(const QString& strPath, int nImage, EAnnotationsReplace eReplace, bool bAsked);
    void MeetConflict(const QString& strPath, const SWriting& writing);
    void AfterSaving(const QString& strPath, const Vantor::Annotations::SReport& report);
    void TellRemarks(const QString& strPath, const Vantor::Annotations::SReport& report);
    void StartAutoSave();
    void AutoSave();

    CImageView2DCtrl* m_pCtrl;
    CAnnotationStore* m_pStore;
    QTimer m_autoSave;
    QTimer m_look;
    QSet<int> m_known;                                         ///< pages whose files were looked for
    QSet<QString> m_hidden;                                    ///< images whose files are not shown
    QHash<QString, Vantor::Annotations::SDocument> m_expected; ///< by image
    QHash<QString, SLoading> m_loading;                        ///< by file
    QHash<QString, SWriting> m_writing;                        ///< by file
    bool m_bRefused = false;   ///< somebody does not want to see what is being loaded
    QSet<QString> m_conflicts; ///< files that were told to be another's
};
