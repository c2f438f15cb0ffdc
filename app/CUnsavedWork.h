// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "Viewers.h"

#include <QObject>
#include <QStringList>
#include <memory>
#include <vector>

class CAnnotationFiles;
class CImageOrigins;
class QWidget;

/// What would be lost: annotations that are not saved, and images that were changed, captured or pasted. It
/// asks before something drops them, also where a button of a viewer does.
class CUnsavedWork : public QObject
{
    Q_OBJECT

public:
    /// @param viewers  live longer
    /// @param pWindow  bears the questions
    CUnsavedWork(const CViewers& viewers, QWidget* pWindow);
    ~CUnsavedWork() override;

    CAnnotationFiles* Annotations(const SViewer& viewer) const;
    CImageOrigins* Images(const SViewer& viewer) const;

    bool Any() const;
    /// Whether a row of the thumbnails has something to be saved.
    bool IsUnsaved(const SViewer& viewer, int nImage) const;

    /// Saves the current image of a viewer and the annotations of its file, as far as they are unsaved.
    void Save(const SViewer& viewer);

    /// @{
    /// Asks whether to save what a doing would drop, once for all of it; nothing when there is nothing.
    /// @return whether the doing may go on
    bool AskForCurrent(const SViewer& viewer); ///< the current image and its annotations
    bool AskForViewer(const SViewer& viewer);  ///< all images and their annotations
    bool AskForAll();                          ///< all viewers; what is given up is not offered again
    /// @}

    /// @{
    /// Do what the library does, after the question.
    void Open(const SViewer& viewer);
    void CloseCurrent(const SViewer& viewer);
    void CloseAll(const SViewer& viewer);
    /// @}

Q_SIGNALS:
    /// Something may be unsaved now, or saved.
    void signal_Changed();

private:
    struct SWork;
    static constexpr int kAll = -1; ///< in place of an image: all of a viewer
    /// What a question is about.
    struct SScope {
        SWork* pWork;
        int nImage;
    };
    using ScopeList = std::vector<SScope>;

    SWork& WorkOf(const SViewer& viewer) const;
    void Guard(const SViewer& viewer);
    ScopeList ImagesIn(const ScopeList& vctScopes) const;
    ScopeList AnnotationsIn(const ScopeList& vctScopes) const;
    QString TextOf(const SScope& item, bool bAnnotations) const;
    bool Ask(const ScopeList& vctScopes);
    bool SaveAll(const ScopeList& vctScopes);

    QWidget* m_pWindow;
    std::vector<std::unique_ptr<SWork>> m_vctWork;
};
