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

    /// Saves the annotations of a viewer and its current image, as far as they are unsaved.
    void Save(const SViewer& viewer);

    /// @{
    /// Asks whether to save what a doing would drop, once for all of it; nothing when there is nothing.
    /// @return whether the doing may go on
    bool AskForCurrent(const SViewer& viewer); ///< the current image and the annotations
    bool AskForViewer(const SViewer& viewer);  ///< all images and the annotations
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
    /// What a question is about; an image of -1 stands for the annotations.
    struct SItem {
        SWork* pWork;
        int nImage;
    };
    using ItemList = std::vector<SItem>;

    SWork& WorkOf(const SViewer& viewer) const;
    void Guard(const SViewer& viewer);
    void Collect(SWork& work, bool bAllImages, ItemList& vctItems) const;
    QString TextOf(const SItem& item) const;
    bool Ask(const ItemList& vctItems);
    bool SaveItems(const ItemList& vctItems);

    QWidget* m_pWindow;
    std::vector<std::unique_ptr<SWork>> m_vctWork;
};
