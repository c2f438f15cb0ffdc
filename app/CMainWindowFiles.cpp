// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CMainWindow's work with files: those of the command line, dropped ones, and the messages about them.
#include "CMainWindow.h"

#include "CActionTable.h"
#include "CBrowser.h"
#include "CEmptyHint.h"
#include "CFileOpening.h"
#include "CMessageBar.h"
#include "CRecentFiles.h"
#include "CUnsavedWork.h"
#include "LibraryTexts.h"
#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>
#include <algorithm>
#include <cstdio>

namespace
{
constexpr int kMessageMs = 5000;

/// The smallest grid with a viewer for each file; more files than viewers become the list of one. Empty for
/// no file.
QString LayoutFor(int nFiles)
{
    if (nFiles == 0)
        return QString();
    if (nFiles == 2)
        return QStringLiteral("2x1");
    return nFiles == 3 || nFiles == 4 ? QStringLiteral("2x2") : QStringLiteral("1x1");
}
} // namespace

int CMainWindow::OpenFiles(const QStringList& lstFiles, const QString& strLayout)
{
    ChangeLayout(strLayout.isEmpty() ? LayoutFor(lstFiles.size()) : strLayout);
    QObject watch;
    std::vector<int> vctCounts;
    for (const SViewer& viewer : m_pViewers->All()) {
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_Failed, &watch, [](const QString& strMessage) {
            std::fprintf(stderr, "vantor-viewer: %s\n", qPrintable(strMessage));
        });
        vctCounts.push_back(viewer.Ctrl2D()->GetImageModel()->GetImageCount());
    }
    const int nViewers = std::max(1, m_pModel->GetColumn() * m_pModel->GetRow());
    DeferPages(false);
    if (lstFiles.size() == 1 && QFileInfo(lstFiles.first()).isDir()) {
        m_pBrowser->OpenFolder(lstFiles.first());
        m_pBrowser->Finish();
        CJobs::Get().Finish(m_pViewers->Active().Ctrl2D());
        DeferPages(true);
        return m_pViewers->Active().HasImage() ? 1 : 0;
    }
    int nOpened = 0;
    for (int i = 0; i < lstFiles.size(); ++i)
        if (OpenIn(static_cast<std::size_t>(i % nViewers), lstFiles[i]))
            ++nOpened;
    DeferPages(true);
    // Each viewer first shows its first file, not its last.
    for (std::size_t i = 0; i < vctCounts.size(); ++i)
        m_pViewers->All()[i].Ctrl2D()->GetImageModel()->SetCurrentIndex(vctCounts[i]);
    m_pActions->Update();
    return nOpened;
}

/// Waits until the file is open.
bool CMainWindow::OpenIn(std::size_t nViewer, const QString& strFile)
{
    const SViewer& viewer = m_pViewers->All()[nViewer];
    const unsigned int nBefore = viewer.pCtrl->GetImageID();
    if (viewer.HasImage())
        viewer.pCtrl->AddImage(strFile);
    else
        viewer.pCtrl->LoadFile(strFile);
    CJobs::Get().Finish(viewer.Ctrl2D());
    return viewer.pCtrl->GetImageID() != nBefore;
}

void CMainWindow::StartOpening(const QStringList& lstFiles, const QString& strLayout)
{
    ChangeLayout(strLayout.isEmpty() ? LayoutFor(lstFiles.size()) : strLayout);
    const int nViewers = std::max(1, m_pModel->GetColumn() * m_pModel->GetRow());
    if (lstFiles.size() == 1 && QFileInfo(lstFiles.first()).isDir())
        return m_pBrowser->OpenFolder(lstFiles.first());
    for (int i = 0; i < std::min(nViewers, lstFiles.size()); ++i) {
        QStringList lstOfViewer;
        for (int n = i; n < lstFiles.size(); n += nViewers)
            lstOfViewer.append(lstFiles[n]);
        (new CFileOpening(this, m_pViewers->All()[static_cast<std::size_t>(i)].Ctrl2D(), 0, {}))
            ->Open(lstOfViewer);
    }
}

bool CMainWindow::OpenInActive(const QString& strFile)
{
    const SViewer viewer = m_pViewers->Active();
    if (!m_pWork->AskForViewer(viewer))
        return false;
    viewer.pCtrl->LoadFile(strFile);
    return true;
}

void CMainWindow::OpenRecent(const QString& strPath)
{
    if (QFileInfo(strPath).isDir())
        m_pBrowser->OpenFolder(strPath);
    else
        OpenInActive(strPath);
}

/// An empty viewer says what can be done.
void CMainWindow::CreateHints(const QAction* pOpen)
{
    for (const SViewer& viewer : m_pViewers->All())
        new CEmptyHint(viewer, pOpen, m_pRecent, [this, viewer](const QString& strPath) {
            viewer.pView->FocusVisibleView();
            OpenRecent(strPath);
        });
}

void CMainWindow::ConnectFiles(const SViewer& viewer)
{
    CImageView2DCtrl* pCtrl = viewer.Ctrl2D();
    connect(viewer.pCtrl, &CImageViewerCtrl::signal_Failed, m_pMessages,
            [this](const QString& strMessage) { m_pMessages->Tell(LibraryTexts::Failure(strMessage)); });
    connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, this, [this, pCtrl](const QString& strPath) {
        if (!m_pBrowser->LedTo(strPath)) // a folder is one entry, however far one goes in it
            m_pRecent->Add(strPath);
        m_pMessages->ForgetAbout(strPath);
        TellNotes(strPath, *pCtrl);
    });
    connect(pCtrl, &CImageView2DCtrl::signal_FileSaved, this, [this](const QString& strPath) {
        m_pMessages->ForgetAbout(strPath);
        m_pMessages->ForgetOld();
        statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(strPath)), kMessageMs);
    });
}

/// Reports the notes on a file that could be opened.
void CMainWindow::TellNotes(const QString& strPath, const CImageView2DCtrl& ctrl)
{
    const auto pImage = ctrl.GetCurrentImgage();
    if (!pImage)
        return;
    for (const std::string& strNote : pImage->GetNotes())
        m_pMessages->Tell(QStringLiteral("%1: %2").arg(
            QFileInfo(strPath).fileName(), LibraryTexts::Sentence(QString::fromStdString(strNote))));
}

/// Files may be dropped anywhere: those that no viewer takes go to the active one.
void CMainWindow::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls())
        pEvent->acceptProposedAction();
}

void CMainWindow::dropEvent(QDropEvent* pEvent)
{
    for (const QUrl& url : pEvent->mimeData()->urls())
        if (QFileInfo(url.toLocalFile()).isDir())
            m_pBrowser->OpenFolder(url.toLocalFile());
        else
            m_pViewers->Active().pCtrl->AddImage(url.toLocalFile());
    pEvent->acceptProposedAction();
}
