// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The menus and the tool bar of CMainWindow.
#include "CActionTable.h"
#include "CBrowser.h"
#include "CCapture.h"
#include "CMainWindow.h"
#include "CMessageBar.h"
#include "CRecentFiles.h"
#include "CScaleDlg.h"
#include "CTheme.h"
#include "CUnsavedWork.h"
#include "HostIcons.h"
#include "HostSettings.h"
#include "ImageEdits.h"
#include "MenuKeys.h"
#include "TextReading.h"
#include "ToolFaces.h"
#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QAction>
#include <QActionGroup>
#include <QClipboard>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

using MenuKeys::Key;
using MenuKeys::Keys;
using Vantor::Algorithms::CImage;

namespace
{
constexpr int kToolIconSize = 24;

/// translations/ShapeTexts.cpp has the texts of the library's kinds.
QString ShapeText(const SShapeKind& kind)
{
    return QCoreApplication::translate("ShapeKinds", kind.strMenu.toUtf8().constData());
}

bool HasSelection(const SViewer& viewer)
{
    const auto objects = viewer.pCtrl->Get2DDrawableObjects();
    return std::any_of(objects.begin(), objects.end(),
                       [](const auto& pObject) { return pObject->GetSelected(); });
}

/// Whether the clipboard has something that the 2D view would paste.
bool CanPaste()
{
    const QMimeData* pData = QGuiApplication::clipboard()->mimeData();
    return pData && (pData->hasUrls() || (pData->hasImage() && !pData->hasText()));
}
} // namespace

void CMainWindow::CreateMenus()
{
    CreateFileMenu();
    CreateEditMenu();
    CreateViewMenu();
    CreateToolsMenu();
    CreateSettingsMenu();
    CreateHelpMenu();
    for (const QAction* pTop : menuBar()->actions())
        m_pActions->Watch(pTop->menu());
}

void CMainWindow::CreateFileMenu()
{
    const auto ctrl = [this] { return m_pViewers->Active().Ctrl2D(); };
    const auto hasImage = [this] { return m_pViewers->Active().HasImage(); };
    QMenu* pFile = menuBar()->addMenu(tr("&File"));
    QAction* pOpen =
        m_pActions->Add(pFile, {QT_TR_NOOP("&Open..."), LibraryIcon("open-folder"), Keys(QKeySequence::Open)},
                        [this] { m_pWork->Open(m_pViewers->Active()); });
    m_vctToolBar.push_back(pOpen);
    m_pActions->Add(pFile, {QT_TR_NOOP("&Add Images..."), HostIcon("image-add"), Key("Ctrl+Shift+O")},
                    [ctrl] { ctrl()->slot_AddImage(); });
    CreateFolderEntry(pFile);
    QMenu* pRecent = pFile->addMenu(HostIcon("recent"), tr("Open &Recent"));
    m_pRecent = new CRecentFiles(pRecent, [this](const QString& strPath) { OpenRecent(strPath); });
    connect(m_pBrowser, &CBrowser::signal_FolderOpened, m_pRecent, &CRecentFiles::Add);
    CreateHints(pOpen);
    connect(pFile, &QMenu::aboutToShow, this,
            [this, pRecent] { pRecent->setEnabled(!m_pRecent->Files().isEmpty()); });
    CreateSaveEntry(pFile);
    m_vctToolBar.push_back(m_pActions->Add(
        pFile,
        {QT_TR_NOOP("&Save As..."), LibraryIcon("save_file"), Keys(QKeySequence::SaveAs, "Ctrl+Shift+S")},
        [ctrl] { ctrl()->slot_SaveImage(); }, hasImage));
    m_pActions->Add(
        pFile, {QT_TR_NOOP("E&xport Picture..."), QIcon(), {}}, [this] { AskForPicture(); }, hasImage);
    pFile->addSeparator();
    CreateAnnotationEntries(pFile);
    pFile->addSeparator();
    m_pActions->Add(
        pFile, {QT_TR_NOOP("&Close Image"), LibraryIcon("close"), Keys(QKeySequence::Close)},
        [this] { m_pWork->CloseCurrent(m_pViewers->Active()); }, hasImage);
    m_pActions->Add(
        pFile, {QT_TR_NOOP("Close A&ll Images"), LibraryIcon("clear-images"), Key("Ctrl+Shift+W")},
        [this] { m_pWork->CloseAll(m_pViewers->Active()); }, hasImage);
    CreateTrashEntries(pFile);
    pFile->addSeparator();
    m_pActions->Add(
        pFile, {QT_TR_NOOP("&Print..."), QIcon(), Keys(QKeySequence::Print, "Ctrl+P")},
        [this] { PrintPicture(); }, hasImage);
    m_pActions->Add(
        pFile, {QT_TR_NOOP("&Details..."), QIcon(), Key("Alt+Return")}, [this] { ShowDetails(); }, hasImage);
    pFile->addSeparator();
    m_pActions->Add(pFile, {QT_TR_NOOP("&Quit"), HostIcon("quit"), Keys(QKeySequence::Quit, "Ctrl+Q")},
                    [this] { close(); });
}

void CMainWindow::CreateEditMenu()
{
    const auto ctrl = [this] { return m_pViewers->Active().Ctrl2D(); };
    const auto hasImage = [this] { return m_pViewers->Active().HasImage(); };
    const auto is2D = [this] { return !m_pViewers->Active().pView->Is3DShown(); };
    QMenu* pEdit = menuBar()->addMenu(tr("&Edit"));
    // Before the table looks, and only here, because asking waits for the owner of the clipboard.
    connect(pEdit, &QMenu::aboutToShow, this, [this] { m_bPasteUseful = CanPaste(); });
    connect(
        pEdit, &QMenu::aboutToHide, this, [this] { m_bPasteUseful = true; }, Qt::QueuedConnection);
    m_vctToolBar.push_back(m_pActions->Add(
        pEdit, {QT_TR_NOOP("&Undo"), HostIcon("undo"), Keys(QKeySequence::Undo)}, [this] { Undo(); },
        [ctrl, is2D] { return is2D() && ctrl()->CanUndo(); }));
    QList<QKeySequence> lstRedo = Keys(QKeySequence::Redo);
    if (const QKeySequence other(QStringLiteral("Ctrl+Y")); !lstRedo.contains(other))
        lstRedo.append(other);
    m_vctToolBar.push_back(m_pActions->Add(
        pEdit, {QT_TR_NOOP("&Redo"), HostIcon("redo"), lstRedo}, [this] { Redo(); },
        [ctrl, is2D] { return is2D() && ctrl()->CanRedo(); }));
    pEdit->addSeparator();
    m_vctToolBar.push_back(m_pActions->Add(
        pEdit, {QT_TR_NOOP("&Copy"), LibraryIcon("copy"), Keys(QKeySequence::Copy)},
        [ctrl] { ctrl()->slot_Copy(); }, hasImage));
    m_pActions->Add(
        pEdit, {QT_TR_NOOP("Copy &with Annotations"), QIcon(), {}}, [this] { CopyPicture(); }, hasImage);
    m_vctToolBar.push_back(m_pActions->Add(
        pEdit, {QT_TR_NOOP("&Paste"), LibraryIcon("paste"), Keys(QKeySequence::Paste)},
        [ctrl] { ctrl()->slot_Paste(); }, [this] { return m_bPasteUseful; }));
    m_pActions->Add(
        pEdit, {QT_TR_NOOP("&Delete"), HostIcon("delete"), Key("Del")},
        [ctrl] { ctrl()->DeleteSelectedObjects(); }, [this] { return HasSelection(m_pViewers->Active()); });
    m_pActions->Add(
        pEdit, {QT_TR_NOOP("Select &All"), QIcon(), Keys(QKeySequence::SelectAll)},
        [this] { SelectAllAnnotations(); },
        [this] { return !m_pViewers->Active().pCtrl->Get2DDrawableObjects().empty(); });
    m_pActions->Add(
        pEdit, {QT_TR_NOOP("Dupl&icate"), QIcon(), Key("Ctrl+D")}, [this] { DuplicateAnnotations(); },
        [this] { return HasSelection(m_pViewers->Active()); });
    m_pActions->Add(
        pEdit, {QT_TR_NOOP("R&estore Cleared Annotations"), QIcon(), {}},
        [this] { m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->RestoreCleared(); },
        [this, hasImage] {
            return hasImage() && m_pViewers->Active().Ctrl2D()->GetAnnotationStore()->CountCleared() > 0;
        });
    pEdit->addSeparator();
    CreateImageEntries(pEdit);
}

/// The entries that change the whole image, each as an undoable step.
void CMainWindow::CreateImageEntries(QMenu* pMenu)
{
    const auto ctrl = [this] { return m_pViewers->Active().Ctrl2D(); };
    const auto hasImage = [this] { return m_pViewers->Active().HasImage(); };
    const auto box = [this] { return ImageEdits::SelectedBox(m_pViewers->Active()); };
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("Rotate &Left"), LibraryIcon("rotate-left"), Key("Ctrl+L")},
        [ctrl] { ctrl()->slot_RotateLeft(); }, hasImage);
    m_pActions->Add(
        pMenu, {QT_TR_NOOP("Rotate Ri&ght"), LibraryIcon("rotate-right"), Key("Ctrl+R")},
        [ctrl] { ctrl()->slot_RotateRight(); }, hasImage);
    const auto add = [this, pMenu](const SActionText& text, const CActionTable::Condition& isUseful,
                                   const ImageEdits::Edit& edit) {
        m_pActions->Add(
            pMenu, {text, QIcon(), {}}, [this, edit] { ImageEdits::Apply(m_pViewers->Active(), edit); },
            isUseful);
    };
    add(QT_TR_NOOP("Flip &Horizontally"), hasImage, [](CImage& image, SImageChange& sChange) {
        sChange = {SImageChange::EKind_FlippedX};
        return image.FlipHorizontally();
    });
    add(QT_TR_NOOP("Flip &Vertically"), hasImage, [](CImage& image, SImageChange& sChange) {
        sChange = {SImageChange::EKind_FlippedY};
        return image.FlipVertically();
    });
    const auto crop = [this, box] {
        ImageEdits::Apply(m_pViewers->Active(), [rect = box()](CImage& image, SImageChange& sChange) {
            sChange = {SImageChange::EKind_Cropped, rect.x(), rect.y()};
            return image.Crop(rect.x(), rect.y(), rect.width(), rect.height());
        });
    };
    m_pActions->Add(pMenu, {QT_TR_NOOP("Cr&op to the Shape"), QIcon(), {}}, crop,
                    [box] { return !box().isEmpty(); });
    add(QT_TR_NOOP("Grey&scale"), hasImage, [](CImage& image, SImageChange&) { return image.ToGrey(); });
}

void CMainWindow::CreateLayoutEntries(QMenu* pMenu)
{
    const auto add = [&](const SActionText& text, const char* pIcon, const char* pKey, const char* pLayout) {
        const QString strLayout = QLatin1String(pLayout);
        m_vctToolBar.push_back(m_pActions->Add(
            pMenu, {text, HostIcon(pIcon), Key(pKey)}, [this, strLayout] { ChangeLayout(strLayout); }, {},
            [this, strLayout] { return Layout() == strLayout; }));
    };
    add(QT_TR_NOOP("&One Viewer (1x1)"), "layout-1x1", "Ctrl+1", "1x1");
    add(QT_TR_NOOP("&Two Viewers (2x1)"), "layout-2x1", "Ctrl+2", "2x1");
    add(QT_TR_NOOP("&Four Viewers (2x2)"), "layout-2x2", "Ctrl+4", "2x2");
}

void CMainWindow::CreateViewMenu()
{
    const auto viewer = [this] { return m_pViewers->Active(); };
    const auto shows2D = [this] { return ActiveShows2D(); };
    QMenu* pView = menuBar()->addMenu(tr("&View"));
    CreateLayoutEntries(pView);
    pView->addSeparator();
    m_vctToolBar.push_back(m_pActions->Add(
        pView, {QT_TR_NOOP("Fit to &Window"), LibraryIcon("zoomfit"), Key("Ctrl+0")},
        [viewer] { viewer().View2D()->slot_ZoomFit(); }, shows2D));
    CreateZoomMenu(pView);
    CreateCompareMenu(pView);
    m_pActions->Add(
        pView, {QT_TR_NOOP("&Go To..."), LibraryIcon("search"), Key("Ctrl+G")},
        [viewer] { viewer().View2D()->slot_Goto(); }, shows2D);
    CreateBrowseEntries(pView);
    pView->addSeparator();
    m_pActions->Add(
        pView, {QT_TR_NOOP("&2D View"), LibraryIcon("2D"), Key("F2")}, [this] { Show3D(false); }, {},
        [viewer] { return !viewer().pView->Is3DShown(); });
    m_pActions->Add(
        pView, {QT_TR_NOOP("&3D View"), LibraryIcon("3D"), Key("F3")}, [this] { Show3D(true); }, {},
        [viewer] { return viewer().pView->Is3DShown(); });
    pView->addSeparator();
    m_pActions->Add(pView, {QT_TR_NOOP("Ne&xt Pane"), QIcon(), Key("F6")}, [this] { FocusPane(1); });
    m_pActions->Add(pView, {QT_TR_NOOP("Pre&vious Pane"), QIcon(), Key("Shift+F6")},
                    [this] { FocusPane(-1); });
    QMenu* pDocks = pView->addMenu(HostIcon("dock"), tr("&Docks"));
    const std::pair<QString, SActionText> docks[] = {
        {QStringLiteral("Tools"), QT_TR_NOOP("&Tools")},
        {QStringLiteral("Properties"), QT_TR_NOOP("&Properties")},
        {QStringLiteral("Log"), QT_TR_NOOP("&Log")},
        {QStringLiteral("Annotations"), QT_TR_NOOP("&Annotations")},
        {QStringLiteral("Results"), QT_TR_NOOP("&Results")},
        {QStringLiteral("Histogram"), QT_TR_NOOP("&Histogram")},
        {QStringLiteral("Profile"), QT_TR_NOOP("Pro&file")}};
    for (const auto& [strName, text] : docks) {
        auto* pDock = findChild<QDockWidget*>(strName);
        m_pActions->Add(
            pDocks, {text, QIcon(), {}},
            [pDock] {
                pDock->setVisible(pDock->isHidden());
                pDock->raise(); // of several tabs
            },
            {}, [pDock] { return !pDock->isHidden(); });
    }
    CreateAppearanceMenu(pView);
}

void CMainWindow::CreateAppearanceMenu(QMenu* pParent)
{
    QMenu* pMenu = pParent->addMenu(HostIcon("dark-light"), tr("&Appearance"));
    const auto add = [&](const SActionText& text, CTheme::EScheme eScheme) {
        m_pActions->Add(
            pMenu, {text, QIcon(), {}},
            [this, eScheme] {
                m_pTheme->SetScheme(eScheme);
                CSettingManager::Set(HostSettings::kScheme, static_cast<int>(eScheme));
            },
            {}, [this, eScheme] { return m_pTheme->GetScheme() == eScheme; });
    };
    add(QT_TR_NOOP("As the &Desktop"), CTheme::EScheme_Desktop);
    add(QT_TR_NOOP("&Light"), CTheme::EScheme_Light);
    add(QT_TR_NOOP("Dar&k"), CTheme::EScheme_Dark);
}

void CMainWindow::CreateToolsMenu()
{
    const auto view = [this] { return m_pViewers->Active().pCtrl->GetViewID(); };
    QMenu* pTools = menuBar()->addMenu(tr("&Tools"));
    const QStringList lstTitles = m_pCtrl->GetToolTitles();
    for (int i = 0; i < lstTitles.size(); ++i) {
        QAction* pEntry = m_pActions->Add(pTools, ToolFace(lstTitles[i]), [this, view, i] {
            m_pCtrl->OpenTool(i, view());
            if (auto* pReading = findChild<CImage2DProcessOCRDlg*>())
                TextReading::SetUp(*pReading, [this](const QString& strText) { m_pMessages->Tell(strText); });
        });
        if (!pEntry->icon().isNull())
            m_vctToolBar.push_back(pEntry);
    }
    pTools->addSeparator();
    m_pActions->Add(
        pTools, {QT_TR_NOOP("Set Sc&ale..."), QIcon(), {}},
        [this] { CScaleDlg::Ask(*m_pViewers->Active().Ctrl2D(), this); },
        [this] { return m_pViewers->Active().HasImage(); });
    CreateDrawingMenu(pTools);
    m_vctToolBar.push_back(m_pActions->Add(
        pTools, {QT_TR_NOOP("&Capture the Screen"), LibraryIcon("capture"), Key("Ctrl+Shift+C")},
        [this] { m_pViewers->Active().Ctrl2D()->slot_OpenSnipTool(); }));
    CreateCaptureEntries(pTools);
    pTools->addSeparator();
    m_vctToolBar.push_back(
        m_pActions->Add(pTools, {QT_TR_NOOP("&Globe"), HostIcon("globe"), {}}, [this] { ShowGlobe(); }));
}

void CMainWindow::CreateCaptureEntries(QMenu* pMenu)
{
    auto* pCapture = new CCapture(this);
    const auto add = [&](const SActionText& text, int nSeconds) {
        m_pActions->Add(pMenu, {text, QIcon(), {}}, [this, pCapture, nSeconds] {
            pCapture->OpenAfter(m_pViewers->Active().Ctrl2D(), nSeconds * 1000);
        });
    };
    add(QT_TR_NOOP("Capture after &3 Seconds"), 3);
    add(QT_TR_NOOP("Capture after &5 Seconds"), 5);
    m_pActions->Add(pMenu, {QT_TR_NOOP("Capture the &Whole Screen"), QIcon(), {}},
                    [this, pCapture] { pCapture->TakeWhole(m_pViewers->Active().Ctrl2D()); });
}

/// The modes of the mouse, which all viewers share.
void CMainWindow::CreateDrawingMenu(QMenu* pParent)
{
    using C = CImageView2DCtrl;
    const auto add = [this](QMenu* pMenu, const SActionFace& face, void (C::*pSlot)()) {
        m_pActions->Add(pMenu, face, [this, pSlot] {
            (m_pViewers->Active().Ctrl2D()->*pSlot)();
            m_pViewers->FocusActive();
        });
    };
    add(pParent, {QT_TR_NOOP("S&elect"), LibraryIcon("selection"), Key("Ctrl+Shift+E")},
        &C::slot_ChangeSelectMode);
    add(pParent, {QT_TR_NOOP("&Pan"), LibraryIcon("move"), Key("Ctrl+Shift+M")}, &C::slot_ChangePanningMode);
    add(pParent, {QT_TR_NOOP("&Ruler"), LibraryIcon("ruler"), Key("Ctrl+Shift+R")}, &C::slot_DrawRuler);
    QMenu* pShapes = pParent->addMenu(tr("&Draw"));
    for (const SShapeKind& kind : ShapeKinds::All())
        if (!kind.strMenu.isEmpty())
            m_pActions->Add(pShapes, {{ShapeText(kind), kind.strName}, QIcon(kind.strIcon), {}},
                            [this, nMode = kind.nMode] {
                                m_pViewers->Active().Ctrl2D()->slot_SelectShape(nMode);
                                m_pViewers->FocusActive();
                            });
}

void CMainWindow::CreateSettingsMenu()
{
    QMenu* pSettings = menuBar()->addMenu(tr("&Settings"));
    m_pActions->Add(
        pSettings,
        {QT_TR_NOOP("&Preferences..."), HostIcon("settings"), Keys(QKeySequence::Preferences, "Ctrl+,")},
        [this] { ShowSettings(); });
    CreateWorkSettings(pSettings);
}

void CMainWindow::CreateHelpMenu()
{
    QMenu* pHelp = menuBar()->addMenu(tr("&Help"));
    m_pActions->Add(pHelp,
                    {QT_TR_NOOP("&Shortcuts"), HostIcon("shortcuts"), Keys(QKeySequence::HelpContents, "F1")},
                    [this] { ShowShortcuts(); });
    m_pActions->Add(pHelp, {QT_TR_NOOP("&About Vantor"), HostIcon("about"), {}}, [this] { About(); });
}

/// The most frequent entries, with the icons of the menus. A tool bar's buttons never take the focus.
void CMainWindow::CreateToolBar()
{
    QToolBar* pBar = addToolBar(tr("Tool Bar"));
    pBar->setObjectName(QStringLiteral("ToolBar"));
    pBar->setIconSize(QSize(kToolIconSize, kToolIconSize));
    const QWidget* pMenu = nullptr;
    for (QAction* pAction : m_vctToolBar) {
        const QWidget* pOwner = pAction->associatedWidgets().constFirst();
        if (pMenu && pOwner != pMenu)
            pBar->addSeparator();
        pMenu = pOwner;
        pBar->addAction(pAction);
        // A screen reader toggles the button, which alone would do nothing.
        connect(static_cast<QToolButton*>(pBar->widgetForAction(pAction)), &QToolButton::toggled, pAction,
                [pAction](bool bChecked) {
                    if (bChecked != pAction->isChecked())
                        pAction->trigger();
                });
    }
}
