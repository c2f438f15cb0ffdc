// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CMainWindow's way from image to image: lists, folders, the whole screen, the trash.
#include "CActionTable.h"
#include "CBrowser.h"
#include "CDetailsDlg.h"
#include "CFullScreen.h"
#include "CImageOrigins.h"
#include "CMainWindow.h"
#include "CMessageBar.h"
#include "CPageField.h"
#include "CTrash.h"
#include "CUnsavedWork.h"
#include "CZoomField.h"
#include "HostIcons.h"
#include "HostSettings.h"
#include "Preferences.h"
#include "Viewers.h"

#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>

void CMainWindow::CreateBrowser()
{
    m_pTrash = std::make_unique<CTrash>();
    m_pFullScreen = new CFullScreen(this);
    m_pBrowser = new CBrowser(
        m_pViewers.get(), m_pWork.get(), [this](const QString& strFile) { return OpenInActive(strFile); },
        this);
    connect(m_pBrowser, &CBrowser::signal_Changed, this, &CMainWindow::ShowTitle);
    for (const SViewer& viewer : m_pViewers->All())
        connect(viewer.View2D(), &CImageView2D::signal_ChangeZoom, this, &CMainWindow::ShowTitle);
    connect(m_pBrowser, &CBrowser::signal_FolderEmpty, this, [this](const QString& strFolder) {
        m_pMessages->Tell(tr("There is no image in %1.").arg(QDir::toNativeSeparators(strFolder)));
    });
    connect(m_pFullScreen, &CFullScreen::signal_NextSlide, this, [this] {
        if (m_pBrowser->CanStep(1))
            m_pBrowser->Step(1);
        else
            m_pFullScreen->Set(false);
    });
}

void CMainWindow::ShowTitle()
{
    QString strName = m_pBrowser->Name();
    if (strName.isEmpty())
        return setWindowTitle(QStringLiteral("Vantor[*]"));
    strName.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    QString strTitle = strName + QStringLiteral("[*]");
    if (const QString strPlace = m_pBrowser->PlaceText(); !strPlace.isEmpty())
        strTitle += QStringLiteral(" (%1)").arg(strPlace);
    if (m_pViewers->Active().HasImage())
        strTitle += QLatin1Char(' ') + CZoomField::TextOf(m_pViewers->Active().View2D()->GetZoom());
    setWindowTitle(strTitle + QStringLiteral(" - Vantor"));
}

/// Of the view menu.
void CMainWindow::CreateBrowseEntries(QMenu* pMenu)
{
    const auto key = [](const char* pKey) { return QKeySequence(QLatin1String(pKey)); };
    const auto canStep = [this](int nStep) { return [this, nStep] { return m_pBrowser->CanStep(nStep); }; };
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("&Previous Image"), LibraryIcon("previous"), {key("Ctrl+PgUp"), key("PgUp")}},
        [this] { m_pBrowser->Step(-1); }, canStep(-1));
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("&Next Image"), LibraryIcon("next"), {key("Ctrl+PgDown"), key("PgDown")}},
        [this] { m_pBrowser->Step(1); }, canStep(1));
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("F&irst Image"), QIcon(), {key("Home")}}, [this] { m_pBrowser->GoToFirst(); },
        canStep(-1));
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("La&st Image"), QIcon(), {key("End")}}, [this] { m_pBrowser->GoToLast(); },
        canStep(1));
    QAction* pGoTo = m_pActions->Add(
        pMenu, {QT_TR_NOOP("Pag&e..."), QIcon(), {key("Ctrl+Shift+G")}},
        [this] { m_pPage->setFocus(Qt::ShortcutFocusReason); },
        [this] { return m_pPage->isEnabled() && m_pPage->isVisible(); });
    pGoTo->setStatusTip(tr("Type the number of a page or an image in the status bar"));
    m_pActions
        ->Add(
            pMenu, {QT_TR_NOOP("Wheel Tu&rns Pages"), QIcon(), {}},
            [this] { SetWheelPages(!HasWheelPages()); }, {}, [this] { return HasWheelPages(); })
        ->setStatusTip(tr("The wheel scrolls and goes on to the next page at the edge; with Ctrl it zooms"));
    CreatePageField();
    pMenu->addSeparator();
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("F&ull Screen"), QIcon(), {key("F11")}},
        [this] { m_pFullScreen->Set(!m_pFullScreen->IsOn()); }, {}, [this] { return m_pFullScreen->IsOn(); });
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("Slide S&how"), QIcon(), {key("F5")}}, [this] { m_pFullScreen->StartSlideShow(); },
        [this] { return m_pFullScreen->IsSlideShow() || m_pBrowser->CanStep(1); });
}

void CMainWindow::CreatePageField()
{
    m_pPage = new CPageField(this);
    statusBar()->addPermanentWidget(m_pPage);
    connect(m_pBrowser, &CBrowser::signal_Changed, m_pPage, [this] {
        const CBrowser::SPlace sPlace = m_pBrowser->Place();
        m_pPage->ShowPage(sPlace.nIndex + 1, sPlace.nCount);
    });
    connect(m_pPage, &CPageField::signal_Page, m_pBrowser,
            [this](int nPage) { m_pBrowser->GoTo(nPage - 1); });
    connect(m_pPage, &CPageField::signal_Refused, this, [this](const QString& strText) {
        m_pMessages->Tell(
            tr("There is no page \"%1\". Type a number from 1 to %2.").arg(strText).arg(m_pPage->GetCount()));
    });
    connect(m_pPage, &CPageField::signal_Left, m_pViewers.get(), &CViewers::FocusActive);
    SetWheelPages(HasWheelPages());
}

bool CMainWindow::HasWheelPages() const
{
    return CSettingManager::GetInt(HostSettings::kWheelPages, 0) != 0;
}

void CMainWindow::SetWheelPages(bool bOn)
{
    if (bOn != HasWheelPages())
        CSettingManager::Set(HostSettings::kWheelPages, bOn ? 1 : 0);
    SCenterOptions sOptions = m_pCtrl->GetOptions();
    sOptions.bWheelPages = bOn;
    m_pCtrl->SetOptions(sOptions);
}

/// Of the file menu.
void CMainWindow::CreateFolderEntry(QMenu* pMenu)
{
    m_pActions->Add(pMenu, {QT_TR_NOOP("Open &Folder..."), LibraryIcon("open-folder"), {}}, [this] {
        const QString strFolder = QFileDialog::getExistingDirectory(
            this, tr("Open Folder"), Preferences::Text(CSettingManager::kStartFolder));
        if (!strFolder.isEmpty())
            m_pBrowser->OpenFolder(strFolder);
    });
}

/// Of the file menu.
void CMainWindow::CreateTrashEntries(QMenu* pMenu)
{
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("&Move to Trash..."), QIcon(), {QKeySequence(QStringLiteral("Shift+Del"))}},
        [this] { MoveToTrash(); }, [this] { return QFileInfo(ImageFile()).isFile(); });
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("Restore from Tras&h"), QIcon(), {}}, [this] { RestoreFromTrash(); },
        [this] { return !m_pTrash->Last().isEmpty(); });
}

/// The file of the active viewer's current image; empty without one.
QString CMainWindow::ImageFile() const
{
    const SViewer& viewer = m_pViewers->Active();
    return m_pWork->Images(viewer)->FileOf(viewer.Ctrl2D()->GetImageModel()->GetCurrentIndex());
}

void CMainWindow::ShowDetails()
{
    const auto pImage = m_pViewers->Active().Ctrl2D()->GetCurrentImgage();
    if (!pImage)
        return;
    const QString strFile = ImageFile();
    QList<SFact> lstFacts = ImageFacts::OfImage(*pImage);
    if (!strFile.isEmpty())
        lstFacts = ImageFacts::OfFile(strFile) + lstFacts;
    (new CDetailsDlg(lstFacts, strFile, this))->show();
}

void CMainWindow::MoveToTrash()
{
    const QString strFile = ImageFile();
    const QString strName = QFileInfo(strFile).fileName();
    QMessageBox box(QMessageBox::Question, tr("Move to Trash"),
                    tr("Move \"%1\" and its annotations to the trash?").arg(strName), QMessageBox::NoButton,
                    this);
    box.setTextFormat(Qt::PlainText);
    QPushButton* pMove = box.addButton(tr("Move to Trash"), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() != static_cast<QAbstractButton*>(pMove))
        return;
    if (!m_pTrash->Move(strFile))
        return m_pMessages->Tell(tr("\"%1\" cannot be moved to the trash.").arg(strName));
    // Nothing of the image is asked for now: its file is gone on purpose.
    if (m_pBrowser->CanStep(1))
        m_pBrowser->Step(1);
    else if (m_pBrowser->CanStep(-1))
        m_pBrowser->Step(-1);
    else
        m_pWork->CloseAll(m_pViewers->Active());
}

void CMainWindow::RestoreFromTrash()
{
    const QString strFile = m_pTrash->Last();
    if (m_pTrash->Restore())
        OpenInActive(strFile);
    else
        m_pMessages->Tell(tr("\"%1\" cannot be restored.").arg(QFileInfo(strFile).fileName()));
}
