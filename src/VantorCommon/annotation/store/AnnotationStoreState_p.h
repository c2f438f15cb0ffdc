// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationJournal_p.h>
#include <VantorCommon/annotation/store/AnnotationPages_p.h>
#include <VantorCommon/annotation/store/AnnotationTracker_p.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QPointer>
#include <QThreadPool>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What a store consists of.
struct CAnnotationStore::SPrivate {
    /// Says which annotations are on the screen: the steps that have changed them, and how often they were
    /// changed without a step.
    struct SVersion {
        std::vector<const CCommand*> vctSteps;
        int nOutside = 0;

        bool operator==(const SVersion& other) const
        {
            return nOutside == other.nOutside && vctSteps == other.vctSteps;
        }
    };

    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Annotations that left the view at once.
    struct SCleared {
        QString strFile; ///< see SAnnotatedPage; empty with one set
        int nPage = 0;   ///< in its file
        ObjectList vctObjects;
    };

    CImageView2DCtrl& ctrl;
    Execute execute;
    QPointer<CImageView2DModel> pImages;
    QPointer<CImageView2DGeometryModel> pGeometry;
    CAnnotationTracker tracker;
    SCenterOptions sOptions;

    /// The last applied document, its pages as AnnotationDocument::Unpack leaves them.
    Vantor::Annotations::SDocument file;
    int nPage = 0;    ///< to which the annotations of the view belong: where the first of them was made
    int nObjects = 0; ///< when they changed last

    /// By FileKey: of the whole list there is only one, whose key is empty.
    using Versions = std::map<QString, SVersion>;
    Versions now;
    Versions saved;
    bool bToldUnsaved = false;
    int nRunning = 0; ///< steps that are being made, one within the other
    EAnnotationsGone eReason = EAnnotationsGone_Cleared;

    std::unique_ptr<CAnnotationJournal> pJournal; ///< null without the option
    bool bWriteSoon = false;
    bool bReplacing = false; ///< Clear will say why annotations have gone
    bool bLoading = false;   ///< what is being applied stands in a file
    AskSize askSize;

    std::map<QString, std::string> known; ///< digests of files, by path; belongs to the tasks of the pool
    QThreadPool files;                    ///< one thread, so that files are written in order

    SPrivate(CAnnotationStore& store, CImageView2DCtrl& owner, Execute run);

    std::vector<SCleared> cleared; ///< by page, those that went last

    bool bPages = false; ///< each image of the list has its own set
    CAnnotationPages pages;
    int nShown = -1; ///< identifier of the page whose set the geometry model has
    int nGone = 0;   ///< annotations of pages that have left the list, not told yet
    /// With pages: what files say beside them, by SAnnotatedPage::strFile.
    std::map<QString, Vantor::Annotations::SDocument> rest;

    void UsePages(bool bUse);
    void FollowList(CAnnotationStore& store);
    void ForgetFiles();
    bool ShowPage(int nId);
    QString FileKey();
    Vantor::Annotations::SDocument WholeSet();
    Vantor::Annotations::SPage Packed(const SAnnotatedPage& page) const;
    std::vector<std::pair<Vantor::Annotations::SPage*, ImagePtr>>
    PagesInList(Vantor::Annotations::SDocument& document) const;
    EOtherSize Fit(Vantor::Annotations::SDocument& document,
                   std::vector<Vantor::Annotations::SRemark>& vctRemarks) const;
    void ApplySet(CAnnotationStore& store, const Vantor::Annotations::SDocument& document);
    void ApplyPages(CAnnotationStore& store, const Vantor::Annotations::SDocument& document);
    Vantor::Annotations::SDocument JournalDocument(const CAnnotationStore& store);
    int JournalPage() const;
    void MeasureJournalPage(Vantor::Annotations::SPage& page) const;
    void RewriteJournal(CAnnotationStore& store);
    void SetSaved(CAnnotationStore& store, const QString& strFile, const SVersion& sVersion);
    void TellGone(CAnnotationStore& store, EAnnotationsGone eWhy, int nCount);
    Vantor::Annotations::SPage& FilePage();
    void Clear(CAnnotationStore& store, const ObjectList& vctGone);
    void KeepCleared(const ObjectList& vctGone);
    ObjectList Cleared() const;
    void ChangeOutside(CAnnotationStore& store);
    void EndStep(CAnnotationStore& store, const CWatched& step, bool bDone);
    void TellUnsaved(CAnnotationStore& store);
    QString ImagePath() const;
    Vantor::Annotations::SObject ObjectOf(const CImageView2DDrawableObject& object);
    void UseJournal(const CAnnotationStore& store, bool bUse);
    void BeginJournal(const CAnnotationStore& store);
    void WriteJournal(const CAnnotationStore& store, const SAnnotationChanges& sChanges);
    void WriteJournalSoon(CAnnotationStore& store);
};
