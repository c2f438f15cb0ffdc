// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationJournal_p.h>
#include <VantorCommon/annotation/store/AnnotationPages_p.h>
#include <VantorCommon/annotation/store/AnnotationTracker_p.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/FilePictures_p.h>
#include <VantorCommon/job/CJobQueue.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QPointer>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// What a store consists of.
struct CAnnotationStore::SPrivate {
    /// Says which annotations are on the screen: the steps that have changed them, and how often they were
    /// changed without a step.
    struct SVersion {
        std::vector<std::uint64_t> vctSteps; ///< their numbers, which no other step ever has
        int nOutside = 0;

        bool operator==(const SVersion& other) const
        {
            return nOutside == other.nOutside && vctSteps == other.vctSteps;
        }
    };

    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// The annotations of all pages of a file, and what the file says beside them.
    struct SFileSets {
        Vantor::Annotations::SDocument rest;
        CAnnotationPages::Pages vctPages;
    };

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

    using Versions = std::map<PageKey, SVersion>;
    Versions now;
    Versions saved;
    std::set<PageKey> toldUnsaved;
    std::uint64_t nSteps = 0; ///< that were ever made
    int nRunning = 0;         ///< steps that are being made, one within the other
    EAnnotationsGone eReason = EAnnotationsGone_Cleared;

    std::unique_ptr<CAnnotationJournal> pJournal; ///< null without the option
    bool bWriteSoon = false;
    bool bReplacing = false; ///< Clear will say why annotations have gone
    bool bLoading = false;   ///< what is being applied stands in a file
    AskSize askSize;
    Vantor::Algorithms::CCalibration told; ///< of the page that is shown, as signal_ChangeCalibration told it

    std::map<QString, std::string> known; ///< digests of files, by path; belongs to the tasks of the queue
    CJobQueue files;                      ///< files are written in order

    SPrivate(CAnnotationStore& store, CImageView2DCtrl& owner, Execute run);

    std::vector<SCleared> cleared; ///< by page, those that went last

    bool bPages = false; ///< each image of the list has its own set
    CAnnotationPages pages;
    int nShown = -1; ///< identifier of the page whose set the geometry model has
    int nGone = 0;   ///< annotations of pages that have left the list, not told yet
    /// With pages: what files say beside them, by SAnnotatedPage::strFile.
    std::map<QString, Vantor::Annotations::SDocument> rest;

    CFilePictures pictures;
    int nTarget = -1; ///< identifier of the page of the next step; -1: the one that is shown

    // Pages
    void UsePages(bool bUse);
    void FollowList(CAnnotationStore& store);
    void FollowSave(CAnnotationStore& store, const QString& strPath, unsigned int nImageUID);
    void MovePage(SAnnotatedPage& page, const QString& strPath);
    void ForgetFiles();
    bool ShowPage(int nId);
    const SAnnotatedPage* At(int nImage) const;
    int PageAt(int nImage) const;
    QString FileOf(int nId) const;
    PageKey KeyOf(int nId) const { return {FileOf(nId), bPages ? nId : -1}; }
    QString PathOf(int nImage) const;

    // Documents
    Vantor::Annotations::SDocument WholeSet();
    Vantor::Annotations::SDocument FileDocument(const QString& strFile) const;
    Vantor::Annotations::SDocument Document(int nId);
    Vantor::Annotations::SPage Packed(const SAnnotatedPage& page) const;
    Vantor::Annotations::SPage OnPicture(Vantor::Annotations::SPage page, const ImagePtr& pImage) const;
    Vantor::Annotations::SPage& FilePage();
    std::vector<std::pair<Vantor::Annotations::SPage*, ImagePtr>>
    PagesInList(Vantor::Annotations::SDocument& document, int nId) const;
    EOtherSize Fit(Vantor::Annotations::SDocument& document, int nId,
                   std::vector<Vantor::Annotations::SRemark>& vctRemarks) const;
    void Apply(CAnnotationStore& store, const Vantor::Annotations::SDocument& document, int nId);
    void ApplySet(CAnnotationStore& store, const Vantor::Annotations::SDocument& document);
    SFileSets SetsIn(const Vantor::Annotations::SDocument& document, const QString& strFile) const;
    SFileSets SetsNow(const QString& strFile);
    void ShowSets(const SFileSets& sets, const QString& strFile);
    void ApplyPages(CAnnotationStore& store, const Vantor::Annotations::SDocument& document, int nId);
    Vantor::Annotations::SContext Context(int nId, const Vantor::Annotations::SDocument& document) const;

    // The calibration
    SPlaneMap MapOf(int nImage) const;
    void TellCalibration(CAnnotationStore& store);

    // What is unsaved
    std::set<PageKey> Unsaved() const;
    Versions VersionsOf(const QString& strFile) const;
    void SetSaved(CAnnotationStore& store, const Versions& versions);
    void TellUnsaved(CAnnotationStore& store);
    void TellGone(CAnnotationStore& store, EAnnotationsGone eWhy, int nCount);
    void Clear(CAnnotationStore& store, const ObjectList& vctGone);
    void KeepCleared(const ObjectList& vctGone);
    ObjectList Cleared() const;
    void ChangeOutside(CAnnotationStore& store);
    void EndStep(CAnnotationStore& store, int nId, std::uint64_t nStep, bool bDone);

    // The journal
    Vantor::Annotations::SDocument JournalDocument();
    std::vector<std::string> JournalUnsaved() const;
    Vantor::Annotations::SObject ObjectOf(const CImageView2DDrawableObject& object);
    void UseJournal(bool bUse);
    void BeginJournal();
    void AddChanges(SJournalStep& step, const SAnnotationChanges& sChanges);
    void WriteJournal(const SAnnotationChanges& sChanges);
    void WriteJournalSoon(CAnnotationStore& store);
    void RewriteJournal();
};
