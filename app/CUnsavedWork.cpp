// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CUnsavedWork.h"

#include "CAnnotationFiles.h"
#include "CImageOrigins.h"

#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace
{
constexpr int kAnnotations = -1;
constexpr int kMaxListed = 10; // lines of a question
} // namespace

struct CUnsavedWork::SWork {
    explicit SWork(const SViewer& of) : viewer(of), images(of.Ctrl2D()), annotations(of.Ctrl2D(), &images) {}

    void SaveAnnotations()
    {
        if (std::exchange(bSaveAnnotations, false))
            annotations.Save();
    }

    SViewer viewer;
    CImageOrigins images;
    CAnnotationFiles annotations;
    bool bSaveAnnotations = false; ///< when the image is saved
};

CUnsavedWork::CUnsavedWork(const CViewers& viewers, QWidget* pWindow) : m_pWindow(pWindow)
{
    for (const SViewer& viewer : viewers.All()) {
        m_vctWork.push_back(std::make_unique<SWork>(viewer));
        SWork& work = *m_vctWork.back();
        connect(&work.images, &CImageOrigins::signal_Changed, this, &CUnsavedWork::signal_Changed);
        connect(work.annotations.Store(), &CAnnotationStore::signal_ChangeUnsaved, this,
                &CUnsavedWork::signal_Changed);
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_FileSaved, this,
                [&work] { work.SaveAnnotations(); });
        Guard(viewer);
    }
}

CUnsavedWork::~CUnsavedWork() = default;

/// What the viewer's own buttons and menus drop is asked for, too.
void CUnsavedWork::Guard(const SViewer& viewer)
{
    using C = CImageView2DCtrl;
    disconnect(viewer.pView, &CImageViewer::signal_OpenFile, viewer.Ctrl2D(), &C::slot_LoadFile);
    disconnect(viewer.pView, &CImageViewer::signal_ClearImage, viewer.Ctrl2D(), &C::slot_ClearImage);
    disconnect(viewer.View2D(), &CImageView2D::signal_CloseImage, viewer.Ctrl2D(), &C::slot_CloseImage);
    connect(viewer.pView, &CImageViewer::signal_OpenFile, this, [this, viewer] { Open(viewer); });
    connect(viewer.pView, &CImageViewer::signal_ClearImage, this, [this, viewer] { CloseAll(viewer); });
    connect(viewer.View2D(), &CImageView2D::signal_CloseImage, this,
            [this, viewer] { CloseCurrent(viewer); });
}

CUnsavedWork::SWork& CUnsavedWork::WorkOf(const SViewer& viewer) const
{
    const auto isOf = [&](const auto& pWork) { return pWork->viewer.pView == viewer.pView; };
    return **std::find_if(m_vctWork.begin(), m_vctWork.end(), isOf);
}

CAnnotationFiles* CUnsavedWork::Annotations(const SViewer& viewer) const
{
    return &WorkOf(viewer).annotations;
}

CImageOrigins* CUnsavedWork::Images(const SViewer& viewer) const
{
    return &WorkOf(viewer).images;
}

bool CUnsavedWork::Any() const
{
    return std::any_of(m_vctWork.begin(), m_vctWork.end(), [](const auto& pWork) {
        return pWork->images.AnyUnsaved() || pWork->annotations.Store()->HasUnsaved();
    });
}

bool CUnsavedWork::IsUnsaved(const SViewer& viewer, int nImage) const
{
    const SWork& work = WorkOf(viewer);
    const bool bAnnotated = work.annotations.Store()->HasUnsaved() && work.annotations.ImageIndex() == nImage;
    return bAnnotated || work.images.IsUnsaved(nImage);
}

void CUnsavedWork::Collect(SWork& work, bool bAllImages, ItemList& vctItems) const
{
    const CImageView2DModel* pModel = work.viewer.Ctrl2D()->GetImageModel();
    // Images first: what is saved gives its annotations a place.
    for (int i = 0; i < pModel->GetImageCount(); ++i)
        if ((bAllImages || i == pModel->GetCurrentIndex()) && work.images.IsUnsaved(i))
            vctItems.push_back({&work, i});
    if (work.annotations.Store()->HasUnsaved())
        vctItems.push_back({&work, kAnnotations});
}

QString CUnsavedWork::TextOf(const SItem& item) const
{
    const bool bAnnotations = item.nImage == kAnnotations;
    const int nImage = bAnnotations ? item.pWork->annotations.ImageIndex() : item.nImage;
    const QString strFile = QFileInfo(item.pWork->images.FileOf(nImage)).fileName();
    if (bAnnotations)
        return strFile.isEmpty() ? tr("annotations of an image without a file")
                                 : tr("%1: annotations").arg(strFile);
    return strFile.isEmpty() ? tr("a captured or pasted image")
                             : tr("%1: the image was changed").arg(strFile);
}

bool CUnsavedWork::Ask(const ItemList& vctItems)
{
    if (vctItems.empty())
        return true;
    QStringList lstTexts;
    for (const SItem& item : vctItems)
        lstTexts.append(TextOf(item));
    const int nMore = lstTexts.size() - kMaxListed;
    if (nMore > 0)
        lstTexts = lstTexts.mid(0, kMaxListed) << tr("and %n more", nullptr, nMore);
    QMessageBox box(QMessageBox::Warning, tr("Unsaved Work"), tr("Save what would be lost?"),
                    QMessageBox::NoButton, m_pWindow);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(lstTexts.join(QLatin1Char('\n')));
    const QPushButton* pSave = box.addButton(tr("&Save"), QMessageBox::AcceptRole);
    const QPushButton* pDiscard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* pCancel = box.addButton(tr("&Cancel"), QMessageBox::RejectRole);
    box.setEscapeButton(pCancel);
    box.exec();
    return box.clickedButton() == pDiscard || (box.clickedButton() == pSave && SaveItems(vctItems));
}

/// @return whether all of it is saved; the first that is not ends it
bool CUnsavedWork::SaveItems(const ItemList& vctItems)
{
    return std::all_of(vctItems.begin(), vctItems.end(), [](const SItem& item) {
        return item.nImage == kAnnotations ? item.pWork->annotations.SaveNow()
                                           : item.pWork->images.SaveNow(item.nImage);
    });
}

void CUnsavedWork::Save(const SViewer& viewer)
{
    SWork& work = WorkOf(viewer);
    const int nCurrent = viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex();
    // Where the image is saved is where its annotations go.
    work.bSaveAnnotations = work.annotations.Store()->HasUnsaved();
    if (work.images.IsUnsaved(nCurrent))
        work.images.Save(nCurrent);
    else
        work.SaveAnnotations();
}

bool CUnsavedWork::AskForCurrent(const SViewer& viewer)
{
    ItemList vctItems;
    Collect(WorkOf(viewer), false, vctItems);
    return Ask(vctItems);
}

bool CUnsavedWork::AskForViewer(const SViewer& viewer)
{
    ItemList vctItems;
    Collect(WorkOf(viewer), true, vctItems);
    return Ask(vctItems);
}

bool CUnsavedWork::AskForAll()
{
    ItemList vctItems;
    for (const auto& pWork : m_vctWork)
        Collect(*pWork, true, vctItems);
    if (!Ask(vctItems))
        return false;
    for (const auto& pWork : m_vctWork)
        if (pWork->annotations.Store()->HasUnsaved())
            pWork->annotations.Store()->SetSaved();
    return true;
}

void CUnsavedWork::Open(const SViewer& viewer)
{
    if (AskForViewer(viewer))
        viewer.Ctrl2D()->slot_LoadFile();
}

void CUnsavedWork::CloseCurrent(const SViewer& viewer)
{
    if (AskForCurrent(viewer))
        viewer.Ctrl2D()->slot_CloseImage();
}

/// The annotations go, too: without an image nobody would look for them.
void CUnsavedWork::CloseAll(const SViewer& viewer)
{
    if (!AskForViewer(viewer))
        return;
    viewer.Ctrl2D()->slot_ClearImage();
    WorkOf(viewer).annotations.Store()->Clear(EAnnotationsGone_Closed);
}
