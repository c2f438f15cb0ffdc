// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CUnsavedWork.h"

#include "CAnnotationFiles.h"
#include "CImageOrigins.h"
#include "HostSettings.h"
#include "Preferences.h"

#include <Vantor/image/CImage.h>
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
constexpr int kMaxListed = 10; // lines of a question
} // namespace

struct CUnsavedWork::SWork {
    explicit SWork(const SViewer& of) : viewer(of), images(of.Ctrl2D()), annotations(of.Ctrl2D()) {}

    /// The annotations of an image that is saved by now.
    void SaveAnnotations(unsigned int nImageUID)
    {
        if (nSaving != nImageUID)
            return;
        nSaving = Vantor::CVObject::kNoUID;
        const auto* pModel = viewer.Ctrl2D()->GetImageModel();
        for (int i = 0; i < pModel->GetImageCount(); ++i)
            if (pModel->GetImage(i)->GetUID() == nImageUID && annotations.Store()->HasUnsaved(i))
                annotations.Save(i);
    }

    SViewer viewer;
    CImageOrigins images;
    CAnnotationFiles annotations;
    unsigned int nSaving = Vantor::CVObject::kNoUID; ///< the image whose annotations are saved when it is
};

CUnsavedWork::CUnsavedWork(const CViewers& viewers, QWidget* pWindow) : m_pWindow(pWindow)
{
    for (const SViewer& viewer : viewers.All()) {
        m_vctWork.push_back(std::make_unique<SWork>(viewer));
        SWork& work = *m_vctWork.back();
        connect(&work.images, &CImageOrigins::signal_Changed, this, &CUnsavedWork::signal_Changed);
        connect(work.annotations.Store(), &CAnnotationStore::signal_ChangeUnsaved, this,
                &CUnsavedWork::signal_Changed);
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_ImageSaved, this,
                [&work](const QString&, unsigned int nImageUID) { work.SaveAnnotations(nImageUID); });
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
    return work.annotations.Store()->IsUnsaved(nImage) || work.images.IsUnsaved(nImage);
}

CUnsavedWork::ScopeList CUnsavedWork::ImagesIn(const ScopeList& vctScopes) const
{
    ScopeList vctItems;
    for (const SScope& scope : vctScopes)
        for (int i = 0; i < scope.pWork->viewer.Ctrl2D()->GetImageModel()->GetImageCount(); ++i)
            if ((scope.nImage == kAll || scope.nImage == i) && scope.pWork->images.IsUnsaved(i))
                vctItems.push_back({scope.pWork, i});
    return vctItems;
}

CUnsavedWork::ScopeList CUnsavedWork::AnnotationsIn(const ScopeList& vctScopes) const
{
    ScopeList vctItems;
    for (const SScope& scope : vctScopes) {
        const CAnnotationFiles& files = scope.pWork->annotations;
        if (scope.nImage == kAll)
            for (const int nImage : files.Unsaved())
                vctItems.push_back({scope.pWork, nImage});
        else if (files.IsLastWithUnsaved(scope.nImage))
            vctItems.push_back(scope);
    }
    return vctItems;
}

QString CUnsavedWork::TextOf(const SScope& item, bool bAnnotations) const
{
    const QString strFile = bAnnotations ? item.pWork->annotations.Store()->GetImageFile(item.nImage)
                                         : item.pWork->images.FileOf(item.nImage);
    const QString strName = QFileInfo(strFile).fileName();
    if (bAnnotations)
        return strName.isEmpty() ? tr("annotations of an image without a file")
                                 : tr("%1: annotations").arg(strName);
    return strName.isEmpty() ? tr("a captured or pasted image")
                             : tr("%1: the image was changed").arg(strName);
}

bool CUnsavedWork::Ask(const ScopeList& vctScopes)
{
    QStringList lstTexts;
    for (const SScope& scope : vctScopes) {
        for (const SScope& item : ImagesIn({scope}))
            lstTexts.append(TextOf(item, false));
        for (const SScope& item : AnnotationsIn({scope}))
            lstTexts.append(TextOf(item, true));
    }
    if (lstTexts.isEmpty() || !Preferences::IsOn(HostSettings::kAskUnsaved))
        return true;
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
    return box.clickedButton() == pDiscard || (box.clickedButton() == pSave && SaveAll(vctScopes));
}

/// The images first: one that is saved under another name gives its annotations another place.
/// @return whether all of it is saved; the first that is not ends it
bool CUnsavedWork::SaveAll(const ScopeList& vctScopes)
{
    const auto saveEach = [](const ScopeList& vctItems, const auto& save) {
        return std::all_of(vctItems.begin(), vctItems.end(), save);
    };
    return saveEach(ImagesIn(vctScopes),
                    [](const SScope& item) { return item.pWork->images.SaveNow(item.nImage); }) &&
           saveEach(AnnotationsIn(vctScopes),
                    [](const SScope& item) { return item.pWork->annotations.SaveNow(item.nImage); });
}

/// Annotations have their places on the picture in the file, whether the image is saved or not.
void CUnsavedWork::Save(const SViewer& viewer)
{
    SWork& work = WorkOf(viewer);
    const int nCurrent = viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex();
    if (!work.images.IsUnsaved(nCurrent)) {
        if (work.annotations.Store()->HasUnsaved(nCurrent))
            work.annotations.Save(nCurrent);
        return;
    }
    // Where the image is saved is where its annotations go.
    work.nSaving = viewer.Ctrl2D()->GetImageModel()->GetImage(nCurrent)->GetUID();
    work.images.Save(nCurrent);
}

bool CUnsavedWork::AskForCurrent(const SViewer& viewer)
{
    return Ask({{&WorkOf(viewer), viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex()}});
}

bool CUnsavedWork::AskForViewer(const SViewer& viewer)
{
    return Ask({{&WorkOf(viewer), kAll}});
}

bool CUnsavedWork::AskForAll()
{
    ScopeList vctScopes;
    for (const auto& pWork : m_vctWork)
        vctScopes.push_back({pWork.get(), kAll});
    if (!Ask(vctScopes))
        return false;
    // Who is not asked gives nothing up: the next start offers it.
    if (!Preferences::IsOn(HostSettings::kAskUnsaved))
        return true;
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

void CUnsavedWork::CloseAll(const SViewer& viewer)
{
    if (AskForViewer(viewer))
        viewer.Ctrl2D()->slot_ClearImage();
}
