// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CMainWindow's pictures of images with their annotations, and its entries for the active viewer's
// annotations.
#include "CMainWindow.h"

#include "CMessageBar.h"
#include "CPrinting.h"
#include "ImageFacts.h"
#include "LibraryTexts.h"
#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/BurnIn.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QStatusBar>

namespace
{
constexpr int kMessageMs = 5000;
constexpr bool kOwnColors = true; // as the viewers show them

QString FilterOf(const PictureExport::SFormat& format)
{
    return QStringLiteral("%1 (*.%2)").arg(format.strName, format.lstSuffixes.join(QStringLiteral(" *.")));
}
} // namespace

void CMainWindow::AskForPicture()
{
    const auto pImage = m_pViewers->Active().Ctrl2D()->GetCurrentImgage();
    if (!pImage)
        return;
    auto* pDialog = new QFileDialog(this, tr("Export Picture"), QString::fromStdWString(pImage->GetFolder()));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    const auto lstFormats = PictureExport::GetFormats();
    QStringList lstFilters;
    for (const auto& format : lstFormats)
        lstFilters << FilterOf(format);
    pDialog->setNameFilters(lstFilters);
    pDialog->setDefaultSuffix(lstFormats.first().lstSuffixes.first());
    pDialog->selectFile(QFileInfo(QString::fromStdWString(pImage->GetName())).completeBaseName());
    connect(pDialog, &QFileDialog::filterSelected, pDialog, [pDialog, lstFormats](const QString& strFilter) {
        for (const auto& format : lstFormats)
            if (FilterOf(format) == strFilter)
                pDialog->setDefaultSuffix(format.lstSuffixes.first());
    });
    connect(pDialog, &QFileDialog::fileSelected, this, &CMainWindow::ExportPicture);
    pDialog->open();
}

/// Tells so if not: the window does not wait for a page.
bool CMainWindow::HasPixels()
{
    const auto pImage = m_pViewers->Active().Ctrl2D()->GetCurrentImgage();
    if (!pImage || !pImage->IsDeferred() || pImage->HasPixels())
        return true;
    m_pMessages->Tell(LibraryTexts::Sentence(QStringLiteral("The page is still being rendered.")));
    return false;
}

void CMainWindow::ExportPicture(const QString& strPath)
{
    PictureExport::Start(
        *m_pViewers->Active().Ctrl2D(), strPath, kOwnColors,
        [this, self = QPointer<CMainWindow>(this), strPath](const QString& strReason) {
            if (!self)
                return;
            if (strReason.isEmpty())
                statusBar()->showMessage(tr("Exported %1").arg(QDir::toNativeSeparators(strPath)),
                                         kMessageMs);
            else
                m_pMessages->Tell(
                    tr("The picture cannot be exported. %1").arg(LibraryTexts::Sentence(strReason)));
        });
}

void CMainWindow::CopyPicture()
{
    if (HasPixels() && !PictureExport::Copy(*m_pViewers->Active().Ctrl2D(), kOwnColors))
        m_pMessages->Tell(tr("The picture cannot be copied: there is not enough memory."));
}

/// As the viewers show it, at once: the preview goes on with what it has got.
void CMainWindow::PrintPicture()
{
    const SViewer& viewer = m_pViewers->Active();
    const auto pImage = viewer.Ctrl2D()->GetCurrentImgage();
    if (!pImage || !HasPixels())
        return;
    const QImage picture = BurnIn::Paint(*pImage, viewer.pCtrl->Get2DDrawableObjects(), kOwnColors);
    if (picture.isNull())
        return m_pMessages->Tell(tr("The picture cannot be printed: there is not enough memory."));
    (new CPrinting(picture, ImageFacts::DotsPerInch(*pImage), this))->Preview(this);
}

void CMainWindow::SelectAllAnnotations()
{
    m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->SelectAll();
}

void CMainWindow::DuplicateAnnotations()
{
    using S = CAnnotationStore;
    S* pStore = m_pViewers->Active().Ctrl2D()->GetAnnotationStore();
    pStore->Duplicate(pStore->GetSelected(), {S::kCopyOffset, S::kCopyOffset});
}
