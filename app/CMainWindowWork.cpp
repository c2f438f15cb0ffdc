// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// How CMainWindow keeps what a person does: saving, files of annotations, recovery, the session.
#include "AnnotationDialogs.h"
#include "CActionTable.h"
#include "CAnnotationFiles.h"
#include "CFileOpening.h"
#include "CImageOrigins.h"
#include "CMainWindow.h"
#include "CMessageBar.h"
#include "CPreferencesPage.h"
#include "CRecoveryBar.h"
#include "CThumbnailMarks.h"
#include "CUnsavedWork.h"
#include "HostSettings.h"
#include "LibraryTexts.h"
#include "Session.h"
#include "TextReading.h"
#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QDir>
#include <QFileInfo>
#include <QListView>
#include <QStatusBar>
#include <QTabWidget>
#include <algorithm>

using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SReport;

namespace
{
constexpr int kMessageMs = 5000;

QString FailureOf(const SReport& report)
{
    return LibraryTexts::Sentence(QString::fromStdString(report.failure));
}

/// The annotations of an image without a file, as a file that can be opened over any image.
QString KeepApart(const SDocument& document, const QString& strName)
{
    QDir().mkpath(CAnnotationFiles::DataFolder());
    const QString strPath =
        CAnnotationFiles::Beside(CAnnotationFiles::DataFolder() + QLatin1Char('/') + strName);
    const SReport report =
        Vantor::Annotations::Save(document, strPath.toStdString(), Vantor::Annotations::kOwnFormat, {});
    return report.failure.empty() ? strPath : QString();
}
} // namespace

void CMainWindow::CreateUnsavedWork()
{
    m_pWork = std::make_unique<CUnsavedWork>(*m_pViewers, this);
    connect(m_pWork.get(), &CUnsavedWork::signal_Changed, this, &CMainWindow::ShowUnsaved);
    for (const SViewer& viewer : m_pViewers->All()) {
        auto* pList = viewer.pView->findChild<QListView*>();
        pList->setItemDelegate(new CThumbnailMarks(
            [this, viewer](int nRow) { return m_pWork->IsUnsaved(viewer, nRow); }, pList));
        const CAnnotationFiles* pFiles = m_pWork->Annotations(viewer);
        connect(pFiles, &CAnnotationFiles::signal_Told, m_pMessages, &CMessageBar::Tell);
        TellWhatHappensTo(*pFiles->Store());
        connect(pFiles, &CAnnotationFiles::signal_Saved, this, [this](const QString& strPath) {
            m_pMessages->ForgetOld();
            statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(strPath)), kMessageMs);
        });
    }
    connect(m_pRecovery, &CRecoveryBar::signal_Restore, this, &CMainWindow::RestoreWork);
}

/// Not what a person has asked for: the questions have said what loading and closing drop.
void CMainWindow::TellWhatHappensTo(const CAnnotationStore& store)
{
    connect(&store, &CAnnotationStore::signal_AnnotationsGone, this,
            [this](EAnnotationsGone eReason, int nCount) {
                if (eReason != EAnnotationsGone_Loaded && eReason != EAnnotationsGone_Closed)
                    m_pMessages->Tell(tr("%n annotation(s) went with the old image. Edit > Restore Cleared "
                                         "Annotations brings them back.",
                                         nullptr, nCount));
            });
    connect(&store, &CAnnotationStore::signal_NotCarried, this, [this](int nCount) {
        m_pMessages->Tell(tr("%n annotation(s) of a kind that is unknown here did not go along with the "
                             "image. They keep their old places in the file.",
                             nullptr, nCount));
    });
}

void CMainWindow::ShowUnsaved()
{
    setWindowModified(m_pWork->Any());
    for (const SViewer& viewer : m_pViewers->All())
        viewer.pView->findChild<QListView*>()->viewport()->update();
}

/// Of the file menu.
void CMainWindow::CreateSaveEntry(QMenu* pMenu)
{
    const auto isUnsaved = [this] {
        const SViewer& viewer = m_pViewers->Active();
        const int nCurrent = viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex();
        return m_pWork->Annotations(viewer)->Store()->HasUnsaved(nCurrent) ||
               m_pWork->Images(viewer)->IsUnsaved(nCurrent);
    };
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("Sa&ve"), QIcon(), {QKeySequence(QKeySequence::Save)}},
        [this] { m_pWork->Save(m_pViewers->Active()); }, isUnsaved);
}

void CMainWindow::CreateAnnotationEntries(QMenu* pMenu)
{
    const auto add = [&](const SActionText& text, void (CMainWindow::*pDo)()) {
        m_pActions->Add(
            pMenu, {text, QIcon(), {}}, [this, pDo] { (this->*pDo)(); },
            [this] { return m_pViewers->Active().HasImage(); });
    };
    add(QT_TR_NOOP("Open A&nnotations..."), &CMainWindow::OpenAnnotations);
    add(QT_TR_NOOP("Save Anno&tations As..."), &CMainWindow::SaveAnnotationsAs);
    add(QT_TR_NOOP("&Import Annotations..."), &CMainWindow::ImportAnnotations);
    add(QT_TR_NOOP("&Export Annotations..."), &CMainWindow::ExportAnnotations);
}

/// Of the settings menu: each a setting that is off at first.
void CMainWindow::CreateWorkSettings(QMenu* pMenu)
{
    const auto add = [&](const SActionText& text, const QString& strKey) {
        const auto isOn = [strKey] { return CSettingManager::GetInt(strKey, 0) != 0; };
        m_pActions->Add(
            pMenu, {text, QIcon(), {}}, [strKey, isOn] { CSettingManager::Set(strKey, isOn() ? 0 : 1); }, {},
            isOn);
    };
    add(QT_TR_NOOP("&Save Annotations by Themselves"), HostSettings::kAutoSave);
    add(QT_TR_NOOP("&Reopen at the Start What Was Open"), HostSettings::kReopen);
}

void CMainWindow::CreatePreferences()
{
    auto* pPage = new CPreferencesPage(TextReading::Languages(), m_pSettingDlg);
    m_pSettingDlg->AddSettingTab(pPage, tr("Viewer"));
    m_pSettingDlg->findChild<QTabWidget*>()->setCurrentIndex(1);
    connect(pPage, &CPreferencesPage::signal_Changed, this, [this] {
        SCenterOptions sOptions = m_pCtrl->GetOptions();
        Preferences::Apply(sOptions);
        m_pCtrl->SetOptions(sOptions);
    });
    connect(pPage, &CPreferencesPage::signal_Reload, this, &CMainWindow::ReloadDocuments);
}

/// At the resolution that is set by now, each at its page.
void CMainWindow::ReloadDocuments()
{
    for (const SViewer& viewer : m_pViewers->All()) {
        const auto pPage = viewer.Ctrl2D()->GetCurrentImgage();
        CImageView2DModel* pModel = viewer.Ctrl2D()->GetImageModel();
        const int nCurrent = pModel->GetCurrentIndex();
        const QString strFile = m_pWork->Images(viewer)->FileOf(nCurrent);
        if (!pPage || pPage->GetPageResolution() <= 0.0 || strFile.isEmpty() ||
            !m_pWork->AskForViewer(viewer))
            continue;
        auto* pWatch = new QObject(this);
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_FileOpened, pWatch, [=] {
            pModel->SetCurrentIndex(nCurrent);
            pWatch->deleteLater();
        });
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_Failed, pWatch, &QObject::deleteLater);
        viewer.pCtrl->LoadFile(strFile);
    }
}

QString CMainWindow::ActiveFile() const
{
    return m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->GetImageFile();
}

/// @return whether it could be read; else that is told
bool CMainWindow::ReadAnnotations(const QString& strPath, const QString& strFormat, SDocument& document)
{
    const SReport report = Vantor::Annotations::Load(
        strPath.toStdString(), strFormat.toStdString(),
        m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->GetContext(), document);
    if (!report.failure.empty())
        m_pMessages->Tell(tr("Cannot read the annotations in %1. %2").arg(strPath, FailureOf(report)));
    for (const auto& remark : report.remarks)
        m_pMessages->Tell(QStringLiteral("%1: %2").arg(
            QFileInfo(strPath).fileName(), LibraryTexts::Sentence(QString::fromStdString(remark.text))));
    return report.failure.empty();
}

void CMainWindow::OpenAnnotations()
{
    const SViewer viewer = m_pViewers->Active();
    const QString strPath = AnnotationDialogs::ChooseToOpen(this, QFileInfo(ActiveFile()).path());
    SDocument document;
    if (strPath.isEmpty() ||
        !ReadAnnotations(strPath, QLatin1String(Vantor::Annotations::kOwnFormat), document))
        return;
    const SPage* pShown = m_pWork->Annotations(viewer)->PageOf(document);
    for (SPage& page : document.pages)
        if (&page == pShown && !FitToImage(page))
            return;
    CAnnotationStore* pStore = viewer.Ctrl2D()->GetAnnotationStore();
    pStore->Apply(document);
    pStore->SetKnownFile(strPath, Vantor::Annotations::IdentityOf(strPath.toStdString()).sha256);
}

void CMainWindow::ImportAnnotations()
{
    const SViewer viewer = m_pViewers->Active();
    const QString strPath = AnnotationDialogs::ChooseToImport(this, QFileInfo(ActiveFile()).path());
    SDocument document;
    if (strPath.isEmpty() || !ReadAnnotations(strPath, QString(), document))
        return;
    const SPage* pPage = m_pWork->Annotations(viewer)->PageOf(document);
    if (!pPage)
        return m_pMessages->Tell(tr("%1 has no annotations of this image.").arg(strPath));
    SPage page = *pPage;
    if (FitToImage(page))
        viewer.Ctrl2D()->GetAnnotationStore()->Import(page);
}

/// Asks when a page was made for an image of another size. @return whether to show it
bool CMainWindow::FitToImage(SPage& page)
{
    const auto context = m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->GetContext();
    const QSize size(context.width, context.height);
    if (page.width <= 0 || page.height <= 0 || QSize(page.width, page.height) == size)
        return true;
    const EOtherSize eSize = AnnotationDialogs::AskSize(this, page, size);
    if (eSize == EOtherSize_Scale)
        for (const auto& remark : Vantor::Annotations::ScalePage(page, size.width() / double(page.width),
                                                                 size.height() / double(page.height)))
            m_pMessages->Tell(
                QStringLiteral("%1: %2").arg(QString::fromStdString(remark.object),
                                             LibraryTexts::Sentence(QString::fromStdString(remark.text))));
    return eSize != EOtherSize_Leave;
}

void CMainWindow::SaveAnnotationsAs()
{
    const SViewer viewer = m_pViewers->Active();
    const QString strFile = ActiveFile();
    const auto target = AnnotationDialogs::ChooseToSave(
        this, strFile.isEmpty() ? QString() : CAnnotationFiles::Beside(strFile));
    if (!target.strPath.isEmpty())
        m_pWork->Annotations(viewer)->SaveAs(target.strPath, target.strFormat);
}

void CMainWindow::ExportAnnotations()
{
    const SViewer viewer = m_pViewers->Active();
    CAnnotationFiles* pFiles = m_pWork->Annotations(viewer);
    const QFileInfo image(ActiveFile());
    const auto target =
        AnnotationDialogs::ChooseToExport(this, image.path() + QLatin1Char('/') + image.completeBaseName());
    if (target.strPath.isEmpty())
        return;
    auto context = pFiles->Store()->GetContext();
    std::string bytes;
    const SReport report = Vantor::Annotations::Write(pFiles->Store()->TakeDocument(),
                                                      target.strFormat.toStdString(), context, bytes);
    if (!report.failure.empty())
        m_pMessages->Tell(tr("Cannot save the annotations in %1. %2").arg(target.strPath, FailureOf(report)));
    else if (AnnotationDialogs::ConfirmLoss(this, target.strFormat, report.remarks))
        pFiles->SaveAs(target.strPath, target.strFormat);
}

void CMainWindow::OfferRecovery()
{
    m_pRecovery->Offer(AnnotationRecovery::Find());
}

/// What one viewer had comes into an empty one. What finds none stays offered.
void CMainWindow::RestoreWork(const std::vector<AnnotationRecovery::SFound>& vctFound)
{
    m_pRecovery->Offer({});
    for (const auto& found : vctFound)
        RestoreOne(found);
}

/// What cannot be restored now, or not all of it, is offered again.
void CMainWindow::RestoreOne(const AnnotationRecovery::SFound& found)
{
    std::vector<AnnotationRecovery::SImage> vctImages;
    const SReport report = AnnotationRecovery::Read(found.strJournal, vctImages);
    if (!report.failure.empty()) {
        m_pMessages->Tell(
            tr("Cannot read the annotations in %1. %2").arg(found.strJournal, FailureOf(report)));
        return m_pRecovery->OfferToo(found);
    }
    const auto itGone = std::stable_partition(vctImages.begin(), vctImages.end(), [](const auto& image) {
        return QFileInfo::exists(image.strImage);
    });
    const std::vector<AnnotationRecovery::SImage> vctGone(itGone, vctImages.end());
    vctImages.erase(itGone, vctImages.end());
    RestoreOver(vctImages, [=](bool bAll) {
        if (!bAll || !RestoreApart(vctGone, QFileInfo(found.strJournal).completeBaseName()))
            return m_pRecovery->OfferToo(found);
        for (const auto& remark : report.remarks)
            m_pMessages->Tell(LibraryTexts::Sentence(QString::fromStdString(remark.text)));
        AnnotationRecovery::Discard(found.strJournal);
        m_pActions->Update();
    });
}

/// @return the index of a viewer without an image, also one to come; it is shown then; -1 when there is none
int CMainWindow::EmptyViewer()
{
    const auto& vctViewers = m_pViewers->All();
    for (std::size_t i = 0; i < vctViewers.size(); ++i) {
        if (vctViewers[i].HasImage() || CFileOpening::IsBusy(vctViewers[i].Ctrl2D()))
            continue;
        if (vctViewers[i].pView->isHidden())
            ChangeLayout(i == 1 ? QStringLiteral("2x1") : QStringLiteral("2x2"));
        return static_cast<int>(i);
    }
    return -1;
}

/// @param done  called when all images are there, or at once when there is no room for them
void CMainWindow::RestoreOver(const std::vector<AnnotationRecovery::SImage>& vctImages,
                              std::function<void(bool bAll)> done)
{
    if (vctImages.empty())
        return done(true);
    const int nViewer = EmptyViewer();
    if (nViewer < 0) {
        m_pMessages->Tell(
            tr("Close an image to make room for %1.").arg(QFileInfo(vctImages[0].strImage).fileName()));
        return done(false);
    }
    const SViewer& viewer = m_pViewers->All()[static_cast<std::size_t>(nViewer)];
    QStringList lstFiles;
    for (const auto& image : vctImages) {
        m_pWork->Annotations(viewer)->Expect(image.strImage, image.document);
        lstFiles.append(image.strImage);
    }
    const auto told = [done = std::move(done)](const QStringList& lstMissing) { done(lstMissing.isEmpty()); };
    (new CFileOpening(this, viewer.Ctrl2D(), 0, told))->Open(lstFiles);
}

/// The annotations of images that are gone or never had a file become files of the folder of data.
bool CMainWindow::RestoreApart(const std::vector<AnnotationRecovery::SImage>& vctImages,
                               const QString& strName)
{
    for (std::size_t i = 0; i < vctImages.size(); ++i) {
        const QString strPath =
            KeepApart(vctImages[i].document, i == 0 ? strName : strName + QString::number(i + 1));
        if (strPath.isEmpty())
            return false;
        m_pMessages->Tell(tr("The image of some annotations is gone. They are in %1.").arg(strPath));
    }
    return true;
}

void CMainWindow::StoreSession()
{
    std::vector<Session::SOpen> vctOpen;
    for (const SViewer& viewer : m_pViewers->All()) {
        const CImageView2DModel* pModel = viewer.Ctrl2D()->GetImageModel();
        Session::SOpen open;
        open.nCurrent = pModel->GetCurrentIndex();
        for (int i = 0; i < pModel->GetImageCount(); ++i) {
            const QString strFile = m_pWork->Images(viewer)->FileOf(i);
            // The pages of a document are one file.
            if (!strFile.isEmpty() && (open.lstFiles.isEmpty() || open.lstFiles.last() != strFile))
                open.lstFiles.append(strFile);
        }
        vctOpen.push_back(open);
    }
    CSettingManager::Set(HostSettings::kSession, Session::ToText(vctOpen));
}

void CMainWindow::ReopenSession()
{
    if (CSettingManager::GetInt(HostSettings::kReopen, 0) == 0)
        return;
    const auto vctOpen = Session::FromText(CSettingManager::GetString(HostSettings::kSession, QString()));
    const std::size_t nViewers = std::min(vctOpen.size(), m_pViewers->All().size());
    for (std::size_t i = 0; i < nViewers; ++i)
        (new CFileOpening(this, m_pViewers->All()[i].Ctrl2D(), vctOpen[i].nCurrent,
                          [this](const QStringList&) { m_pActions->Update(); }))
            ->Open(vctOpen[i].lstFiles);
}
