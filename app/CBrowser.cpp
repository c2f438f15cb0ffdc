// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CBrowser.h"

#include "CImageOrigins.h"
#include "CUnsavedWork.h"
#include "Viewers.h"

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <utility>

CBrowser::CBrowser(CViewers* pViewers, CUnsavedWork* pWork, std::function<bool(const QString&)> open,
                   QObject* pParent)
    : QObject(pParent), m_pViewers(pViewers), m_pWork(pWork), m_open(std::move(open)), m_folder(this)
{
    connect(&m_folder, &CFolderFiles::signal_Read, this, &CBrowser::FolderRead);
    connect(m_pViewers, &CViewers::signal_ChangeActive, this, &CBrowser::FollowImage);
    for (const SViewer& viewer : m_pViewers->All()) {
        const auto* pModel = viewer.Ctrl2D()->GetImageModel();
        connect(pModel, &CImageView2DModel::signal_ChangeCurrentImage, this, &CBrowser::FollowImage);
        connect(pModel, &CImageView2DModel::signal_ChangeImageList, this, &CBrowser::FollowImage);
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_FileSaved, this, &CBrowser::FollowImage);
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_BeyondList, this, [this, viewer](int nStep) {
            if (viewer.pCtrl == m_pViewers->Active().pCtrl)
                Step(nStep);
        });
        viewer.View2D()->installEventFilter(this);
    }
}

QString CBrowser::FileNow() const
{
    const SViewer& viewer = m_pViewers->Active();
    return m_pWork->Images(viewer)->FileOf(viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex());
}

/// The folder is that of the active viewer's image.
void CBrowser::FollowImage()
{
    const QString strFile = FileNow();
    if (strFile != m_strShown)
        m_strWanted.clear();
    m_strShown = strFile;
    if (!strFile.isEmpty() && !m_bOpenFirst)
        m_folder.SetFolder(QFileInfo(strFile).path());
    ReadAhead();
    Q_EMIT signal_Changed();
}

/// What a key leads to next is decoded before.
void CBrowser::ReadAhead()
{
    const bool bFolder = m_strWanted.isEmpty() && IsOneFile();
    CReadAhead::Get().Want(bFolder ? QStringList{Neighbour(1), Neighbour(-1)} : QStringList());
}

void CBrowser::FolderRead()
{
    if (std::exchange(m_bOpenFirst, false)) {
        if (m_folder.GetFiles().isEmpty())
            Q_EMIT signal_FolderEmpty(m_folder.GetFolder());
        else
            OpenFirst();
    }
    ReadAhead();
    Q_EMIT signal_Changed();
}

void CBrowser::OpenFirst()
{
    const QString strFolder = m_folder.GetFolder();
    OpenFile(m_folder.GetFiles().first());
    Q_EMIT signal_FolderOpened(strFolder);
}

void CBrowser::OpenFolder(const QString& strFolder)
{
    m_bOpenFirst = true;
    m_folder.SetFolder(QString());
    m_folder.SetFolder(strFolder);
}

void CBrowser::OpenFile(const QString& strFile)
{
    if (strFile.isEmpty())
        return;
    m_strWanted = strFile;
    m_strLedTo = strFile;
    if (!m_open(strFile))
        m_strWanted.clear();
}

void CBrowser::Finish()
{
    CJobs::Get().Finish(&m_folder);
}

bool CBrowser::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::Drop)
        return QObject::eventFilter(pWatched, pEvent);
    auto* pDrop = static_cast<QDropEvent*>(pEvent);
    const QList<QUrl> lstUrls = pDrop->mimeData()->urls();
    const QString strFolder = lstUrls.size() == 1 ? lstUrls.first().toLocalFile() : QString();
    if (strFolder.isEmpty() || !QFileInfo(strFolder).isDir())
        return QObject::eventFilter(pWatched, pEvent);
    pDrop->acceptProposedAction();
    for (const SViewer& viewer : m_pViewers->All())
        if (viewer.View2D() == pWatched)
            viewer.pView->FocusVisibleView();
    OpenFolder(strFolder);
    return true;
}

/// Whether the images of the list are those of one file, such as the pages of a document.
bool CBrowser::IsOneFile() const
{
    const SViewer& viewer = m_pViewers->Active();
    const CImageOrigins* pImages = m_pWork->Images(viewer);
    const int nCount = viewer.Ctrl2D()->GetImageModel()->GetImageCount();
    for (int i = 1; i < nCount; ++i)
        if (pImages->FileOf(i) != pImages->FileOf(0))
            return false;
    return nCount > 0 && !pImages->FileOf(0).isEmpty();
}

/// A file of the folder, counted from the one that was gone to last; empty when there is none so far away.
QString CBrowser::Neighbour(int nStep) const
{
    const QStringList& lstFiles = m_folder.GetFiles();
    const int nNow = lstFiles.indexOf(m_strWanted.isEmpty() ? m_strShown : m_strWanted);
    return nNow < 0 ? QString() : lstFiles.value(nNow + nStep);
}

bool CBrowser::CanStep(int nStep) const
{
    const CImageView2DModel* pModel = m_pViewers->Active().Ctrl2D()->GetImageModel();
    const int nIndex = pModel->GetCurrentIndex() + nStep;
    const bool bInList = nIndex >= 0 && nIndex < pModel->GetImageCount();
    return bInList || (IsOneFile() && !Neighbour(nStep).isEmpty());
}

void CBrowser::Step(int nStep)
{
    CImageView2DModel* pModel = m_pViewers->Active().Ctrl2D()->GetImageModel();
    const int nIndex = pModel->GetCurrentIndex() + nStep;
    if (nIndex < 0 || nIndex >= pModel->GetImageCount()) {
        if (IsOneFile())
            OpenFile(Neighbour(nStep));
    } else if (nStep > 0) {
        pModel->Next();
    } else {
        pModel->Previous();
    }
}

void CBrowser::GoTo(int nIndex)
{
    CImageView2DModel* pModel = m_pViewers->Active().Ctrl2D()->GetImageModel();
    if (pModel->GetImageCount() > 1)
        return pModel->SetCurrentIndex(nIndex);
    const QString strFile = m_folder.GetFiles().value(nIndex);
    if (IsOneFile() && strFile != m_strShown)
        OpenFile(strFile);
}

void CBrowser::GoToFirst()
{
    GoTo(0);
}

void CBrowser::GoToLast()
{
    GoTo(Place().nCount - 1);
}

QString CBrowser::Name() const
{
    return QFileInfo(m_strShown).fileName();
}

CBrowser::SPlace CBrowser::Place() const
{
    const CImageView2DModel* pModel = m_pViewers->Active().Ctrl2D()->GetImageModel();
    if (pModel->GetImageCount() != 1)
        return {pModel->GetCurrentIndex(), pModel->GetImageCount()};
    return {m_folder.GetFiles().indexOf(m_strShown), m_folder.GetFiles().size()};
}

QString CBrowser::PlaceText() const
{
    const SPlace sPlace = Place();
    return sPlace.nIndex < 0 || sPlace.nCount < 2
               ? QString()
               : QStringLiteral("%1/%2").arg(sPlace.nIndex + 1).arg(sPlace.nCount);
}
