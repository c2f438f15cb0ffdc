// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMainWindow.h"

#include "CActionKeys.h"
#include "CActionTable.h"
#include "CBrowser.h"
#include "CFullScreen.h"
#include "CJobBar.h"
#include "CLogPanel.h"
#include "CMeasureDocks.h"
#include "CMessageBar.h"
#include "CPreferencesPage.h"
#include "CRecentFiles.h"
#include "CRecoveryBar.h"
#include "CShortcutsDlg.h"
#include "CShortcutsPage.h"
#include "CTheme.h"
#include "CTrash.h"
#include "CUnsavedWork.h"
#include "HostSettings.h"
#include "LibraryTexts.h"
#include "Viewers.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationTableCtrl.h>
#include <VantorCommon/annotation/view/CAnnotationTableView.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/measure/CMeasuresView.h>
#include <VantorCommon/measure/CPlotPanel.h>
#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDockWidget>
#include <QFileInfo>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

namespace
{
constexpr QSize kWindowSize(1200, 820); // if the screen has room for it
constexpr double kScreenShare = 0.9;    // of the screen, for the first window with its frame
constexpr int kFrame = 8;               // of a window, both sides together; the title bar is extra
constexpr int kWideWindow = 1000;
constexpr int kToolDockWidth = 220;
constexpr int kPropertyDockWidth = 250;
constexpr int kLogDockHeight = 110;
constexpr int kResultsDockHeight = 200;
constexpr int kPlotDockHeight = 320;
constexpr int kGlobeSide = 600;
constexpr int kStateVersion = 1;

/// The size of the window at the first start, without its frame.
QSize FirstSize(const QWidget& window)
{
    const QSize room = window.screen()->availableGeometry().size() * kScreenShare;
    const int nTitle = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    return kWindowSize.boundedTo(room - QSize(kFrame, nTitle + kFrame));
}

void BringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

/// The host turns on what is kinder to users than the library's defaults.
SCenterOptions HostOptions()
{
    SCenterOptions sOptions;
    sOptions.bKeepOnFailedLoad = true;
    sOptions.bReaderByContent = true;
    sOptions.bRestoreAfterCapture = true;
    sOptions.bPortalCapture = true;
    sOptions.bProposeSaveName = true;
    sOptions.bMoreShapes = true;
    sOptions.bOwnColors = true;
    sOptions.bEditKeys = true;
    sOptions.bKeepPlace = true;
    sOptions.bGotoCentres = true;
    sOptions.bPanAnywhere = true;
    sOptions.bViewKeys = true;
    sOptions.bClearApart = true;
    sOptions.bAnnotationsPerImage = true;
    sOptions.bCarryAnnotations = true;
    sOptions.bAnnotationJournal = true;
    sOptions.bSmoothReduction = true;
    sOptions.bDeferredPages = true;
    sOptions.bCalibratedRuler = true;
    Preferences::Apply(sOptions);
    return sOptions;
}

QByteArray StoredBytes(const QString& strKey)
{
    return QByteArray::fromBase64(CSettingManager::GetString(strKey, QString()).toLatin1());
}

/// The first control below a widget that Tab reaches; null when there is none.
QWidget* FirstControl(QWidget* pParent)
{
    QWidget* pWidget = pParent->nextInFocusChain();
    for (; pWidget != pParent; pWidget = pWidget->nextInFocusChain())
        if (pParent->isAncestorOf(pWidget) && pWidget->isVisible() && pWidget->isEnabled() &&
            (pWidget->focusPolicy() & Qt::TabFocus) && !pWidget->focusProxy())
            return pWidget;
    return nullptr;
}

void StoreBytes(const QString& strKey, const QByteArray& bytes)
{
    CSettingManager::Set(strKey, QString::fromLatin1(bytes.toBase64()));
}
} // namespace

CMainWindow::CMainWindow()
{
    // OpenGL is loaded with the first 3D view, because it would take half the time and the memory of a start.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    setWindowTitle(QStringLiteral("Vantor[*]"));
    resize(FirstSize(*this));
    setAcceptDrops(true);
    // First, because the others read the settings.
    m_pSettingDlg = new CSettingDlg(this);
    m_pSettingCtrl = std::make_unique<CSettingCtrl>(m_pSettingDlg);
    m_pTheme = std::make_unique<CTheme>(
        static_cast<CTheme::EScheme>(CSettingManager::GetInt(HostSettings::kDesktopScheme, 0)));
    m_pTheme->SetScheme(CSettingManager::GetInt(HostSettings::kScheme, CTheme::EScheme_Desktop));
    CreateDocks();

    auto* pCentral = new QWidget(this);
    auto* pLayout = new QVBoxLayout(pCentral);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    m_pRecovery = new CRecoveryBar(pCentral);
    m_pMessages = new CMessageBar(pCentral);
    m_pModel = std::make_unique<CCenterModel>();
    m_pView = new CCenterView(m_pModel.get(), pCentral);
    pLayout->addWidget(m_pRecovery);
    pLayout->addWidget(m_pMessages);
    pLayout->addWidget(m_pView, 1);
    setCentralWidget(pCentral);
    // The library's status panels are empty, so they get no dock.
    m_pCtrl = std::make_unique<CCenterCtrl>(m_pModel.get(), m_pView, m_pToolBox, m_pProperties, nullptr);
    m_pCtrl->SetOptions(HostOptions());
    CMVCManager::PushMVC(nullptr, this, nullptr);

    m_pViewers = std::make_unique<CViewers>(m_pView);
    CreateUnsavedWork();
    m_pActions = new CActionTable(this);
    CreateBrowser();
    CreatePreferences();
    CreateMenus();
    CreateToolBar();
    m_pSettingDlg->AddSettingTab(
        new CShortcutsPage(new CActionKeys(m_pActions->Actions(), this), m_pSettingDlg), tr("Shortcuts"));
    // The keys of a hidden menu bar are dead, those of the window are not.
    for (QAction* pAction : m_pActions->Actions())
        addAction(pAction);
    statusBar()->addPermanentWidget(new CJobBar(this));
    ConnectMessages();
    // If the layout has hidden the active viewer, keyboard, border and docks move to a visible one.
    connect(m_pModel.get(), &CCenterModel::signal_ChangedSize, m_pViewers.get(), &CViewers::FocusActive);
    RestoreState();
    connect(m_pModel.get(), &CCenterModel::signal_ChangedSize, this, &CMainWindow::ShowAnnotations);
    connect(m_pViewers.get(), &CViewers::signal_ChangeActive, this, &CMainWindow::ShowAnnotations);
    ShowAnnotations();
    m_pActions->Update();
    m_pViewers->FocusActive();
    QTimer::singleShot(0, this, &CMainWindow::CheckFolders);
    QTimer::singleShot(0, this, &CMainWindow::OfferRecovery);
}

void CMainWindow::DeferPages(bool bDefer)
{
    SCenterOptions sOptions = m_pCtrl->GetOptions();
    sOptions.bDeferredPages = bDefer;
    m_pCtrl->SetOptions(sOptions);
}

CMainWindow::~CMainWindow() = default;

QDockWidget* CMainWindow::AddDock(const char* pName, const QString& strTitle, QWidget* pWidget,
                                  Qt::DockWidgetArea eArea)
{
    auto* pDock = new QDockWidget(strTitle, this);
    pDock->setObjectName(QLatin1String(pName));
    for (auto* pButton : pDock->findChildren<QAbstractButton*>()) // of the title
        pButton->setToolTip(pButton->accessibleName());
    pWidget->setAccessibleName(strTitle);
    pDock->setWidget(pWidget);
    addDockWidget(eArea, pDock);
    return pDock;
}

void CMainWindow::CreateDocks()
{
    m_pToolBox = new CToolBoxDockView(this);
    m_pProperties = new CPropertyDockView(this);
    QDockWidget* pTools = AddDock("Tools", tr("Tools"), m_pToolBox, Qt::LeftDockWidgetArea);
    // In a small window both docks stand on one side, because the images need the width.
    const bool bSmall = width() < kWideWindow;
    auto* pBeside = new QWidget(this); // what is measured stands below the properties
    auto* pLayout = new QVBoxLayout(pBeside);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pProperties, 1);
    m_pProperties->setAccessibleName(tr("Properties"));
    QDockWidget* pProperties = AddDock("Properties", tr("Properties"), pBeside,
                                       bSmall ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea);
    QDockWidget* pLog = AddDock("Log", tr("Log"), new CLogPanel(this), Qt::BottomDockWidgetArea);
    resizeDocks({pLog}, {kLogDockHeight}, Qt::Vertical);
    resizeDocks({pTools, pProperties}, {kToolDockWidth, bSmall ? kToolDockWidth : kPropertyDockWidth},
                Qt::Horizontal);
    pLog->hide();
    CreateAnnotationsDock();
    CreateMeasureDocks();
}

/// Puts the dock at the bottom, where there is room for all columns; hidden at first, as the log is.
void CMainWindow::CreateAnnotationsDock()
{
    m_pAnnotations = new CAnnotationTableView(this);
    m_pAnnotations->GetModel()->SetTexts(
        {tr("Name"), tr("Kind"), tr("Position"), tr("Size"), tr("Locked"), tr("Visible"), tr("Page")},
        [](const SShapeKind& kind) {
            return QCoreApplication::translate("ShapeKinds", kind.strName.toUtf8().constData());
        });
    m_pAnnotationsCtrl = new CAnnotationTableCtrl(m_pAnnotations, this);
    QDockWidget* pDock = AddDock("Annotations", tr("Annotations"), m_pAnnotations, Qt::BottomDockWidgetArea);
    resizeDocks({pDock}, {kLogDockHeight}, Qt::Vertical);
    pDock->hide();
}

/// The table at the bottom, the plots, which need height, as tabs beside the properties.
void CMainWindow::CreateMeasureDocks()
{
    const Qt::DockWidgetArea ePlots =
        width() < kWideWindow ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea;
    QDockWidget* pFirstPlot = nullptr;
    std::vector<QDockWidget*> vctDocks; // hidden at the end: only what is shown becomes a tab
    const auto add = [&](const char* pName, const QString& strTitle, QWidget* pPanel) {
        const bool bPlot = qobject_cast<CPlotPanel*>(pPanel) != nullptr;
        QDockWidget* pDock = AddDock(pName, strTitle, pPanel, bPlot ? ePlots : Qt::BottomDockWidgetArea);
        if (bPlot && pFirstPlot)
            tabifyDockWidget(pFirstPlot, pDock);
        else if (bPlot)
            pFirstPlot = pDock;
        resizeDocks({pDock}, {bPlot ? kPlotDockHeight : kResultsDockHeight}, Qt::Vertical);
        vctDocks.push_back(pDock);
    };
    m_pMeasure = new CMeasureDocks(add, this);
    m_pProperties->parentWidget()->layout()->addWidget(m_pMeasure->GetMeasures());
    for (QDockWidget* pDock : vctDocks)
        pDock->hide();
}

void CMainWindow::ShowAnnotations()
{
    m_pMeasure->SetViewer(m_pViewers->Active());
    m_pAnnotationsCtrl->SetTarget(m_pViewers->Active().Ctrl2D(), m_pViewers->Active().View2D());
}

void CMainWindow::ConnectMessages()
{
    for (const SViewer& viewer : m_pViewers->All()) {
        ConnectFiles(viewer);
        ConnectActions(viewer);
    }
    connect(m_pMeasure, &CMeasureDocks::signal_Failed, m_pMessages,
            [this](const QString& strMessage) { m_pMessages->Tell(LibraryTexts::Failure(strMessage)); });
    // Queued, because a failure is reported after the end.
    connect(m_pCtrl.get(), &CCenterCtrl::signal_ProcessEnded, m_pMessages, &CMessageBar::ForgetOld,
            Qt::QueuedConnection);
    connect(m_pCtrl.get(), &CCenterCtrl::signal_ProcessFailed, this,
            [this](const QString& strTool, const QString& strReason) {
                m_pMessages->Tell(QStringLiteral("%1: %2").arg(strTool, LibraryTexts::Sentence(strReason)));
            });
}

/// Another image or another annotation in a viewer is a success of the user and ends old messages.
void CMainWindow::ConnectActions(const SViewer& viewer)
{
    const auto on = [this](const auto* pModel, auto pSignal) {
        connect(pModel, pSignal, m_pMessages, &CMessageBar::ForgetOld);
    };
    using G = CImageView2DGeometryModel;
    on(viewer.Ctrl2D()->GetImageModel(), &CImageView2DModel::signal_ChangeCurrentImage);
    on(viewer.Ctrl2D()->GetGeometryModel(), &G::signal_AddDrawableObject);
    on(viewer.Ctrl2D()->GetGeometryModel(), &G::signal_DeleteDrawableObject);
}

/// Without these folders the library continues silently.
void CMainWindow::CheckFolders()
{
    const QString strNow = QDateTime::currentDateTime().toString(Qt::ISODate);
    // Reports once that nothing can be stored, not for each setting.
    if (m_pSettingCtrl->UpdateParameter(HostSettings::kLastStart, strNow))
        connect(m_pSettingCtrl.get(), &CSettingCtrl::signal_Failed, m_pMessages,
                [this](const QString& strMessage) { m_pMessages->Tell(LibraryTexts::Failure(strMessage)); });
    else
        m_pMessages->Tell(tr("Settings cannot be kept in the folder %1; they last until the program ends.")
                              .arg(CSettingManager::GetFolder(CSettingManager::kConfigFolder)));
    const QString strLogFolder = CSettingManager::GetFolder(CSettingManager::kLogFolder);
    if (!CLogModel::GetInstance()->OpenLogFileCurrentDate(strLogFolder))
        m_pMessages->Tell(tr("Log files cannot be written in the folder %1.").arg(strLogFolder));
}

void CMainWindow::RestoreState()
{
    restoreGeometry(StoredBytes(HostSettings::kGeometry));
    restoreState(StoredBytes(HostSettings::kState), kStateVersion);
    ChangeLayout(CSettingManager::GetString(HostSettings::kLayout, QString()));
}

void CMainWindow::StoreState()
{
    StoreBytes(HostSettings::kGeometry, saveGeometry());
    StoreBytes(HostSettings::kState, saveState(kStateVersion));
    CSettingManager::Set(HostSettings::kLayout, Layout());
    StoreSession();
    CSettingManager::Set(HostSettings::kDesktopScheme, static_cast<int>(m_pTheme->GetDesktop()));
}

void CMainWindow::closeEvent(QCloseEvent* pEvent)
{
    if (!m_pWork->AskForAll())
        return pEvent->ignore();
    m_pFullScreen->Set(false);
    StoreState();
    QMainWindow::closeEvent(pEvent);
}

QString CMainWindow::Layout() const
{
    return QStringLiteral("%1x%2").arg(m_pModel->GetColumn()).arg(m_pModel->GetRow());
}

bool CMainWindow::ChangeLayout(const QString& strLayout)
{
    if (strLayout == QLatin1String("1x1"))
        m_pCtrl->slot_ChangeLayout1x1();
    else if (strLayout == QLatin1String("2x1"))
        m_pCtrl->slot_ChangeLayout2x1();
    else if (strLayout == QLatin1String("2x2"))
        m_pCtrl->slot_ChangeLayout2x2();
    else
        return false;
    return true;
}

void CMainWindow::Undo()
{
    m_pViewers->FocusActive();
    m_pCtrl->Undo();
}

void CMainWindow::Redo()
{
    m_pViewers->FocusActive();
    m_pCtrl->Redo();
}

void CMainWindow::Show3D(bool b3D)
{
    const SViewer& viewer = m_pViewers->Active();
    b3D ? viewer.pView->slot_Press3D() : viewer.pView->slot_Press2D();
    m_pViewers->FocusActive();
    m_pMessages->ForgetOld();
    // A system with only OpenGL ES gets a placeholder. The log reports anything else that is missing.
    if (b3D && !viewer.pCtrl->Get3DCtrl())
        m_pMessages->Tell(tr("The 3D view needs OpenGL 3.3, which this system does not offer."));
}

void CMainWindow::FocusPane(int nStep)
{
    QWidgetList lstPanes{m_pViewers->Active().pView};
    for (const QDockWidget* pDock : findChildren<QDockWidget*>())
        if (pDock->isVisible() && FirstControl(pDock->widget()))
            lstPanes.append(pDock->widget());
    int nPane = 0;
    for (int i = 0; i < lstPanes.size(); ++i)
        if (lstPanes[i]->isAncestorOf(QApplication::focusWidget()))
            nPane = i;
    const int nNext = (nPane + nStep + lstPanes.size()) % lstPanes.size();
    if (nNext == 0)
        m_pViewers->FocusActive();
    else
        FirstControl(lstPanes[nNext])->setFocus(Qt::TabFocusReason);
}

void CMainWindow::ShowSettings()
{
    m_pSettingDlg->findChild<CPreferencesPage*>()->ShowSettings();
    BringUp(*m_pSettingDlg);
}

void CMainWindow::ShowGlobe()
{
    if (!m_pGlobe) {
        // In a window of its own: as a child of this one it would have it painted by OpenGL.
        m_pGlobe = new QWidget(this, Qt::Window);
        m_pGlobe->setWindowTitle(tr("Globe"));
        m_pGlobe->resize(kGlobeSide, kGlobeSide);
        auto* pLayout = new QVBoxLayout(m_pGlobe);
        pLayout->setContentsMargins(0, 0, 0, 0);
        auto* pGlobe = new CImageView3DEarth(m_pGlobe);
        pGlobe->SetSteadyRepaint(false); // it moves only when dragged
        pLayout->addWidget(pGlobe);
        connect(new QShortcut(Qt::Key_Escape, m_pGlobe), &QShortcut::activated, m_pGlobe, &QWidget::close);
    }
    BringUp(*m_pGlobe);
}

void CMainWindow::ShowShortcuts()
{
    BringUp(*new CShortcutsDlg(m_pActions->Actions(), this));
}

void CMainWindow::About()
{
    auto* pBox = new QMessageBox(
        QMessageBox::NoIcon, tr("About Vantor"),
        tr("Vantor %1\n\nAn example host of libVantorCommon: components for viewing, annotating and "
           "processing raster images.")
                .arg(QStringLiteral(VANTOR_VERSION)) +
            QStringLiteral("\n\n") +
            tr("Vantor's own code is under the MIT licence. It uses Qt 5 (LGPL 3), poppler (GPL 2 or 3), "
               "Tesseract and Leptonica (Apache 2.0, BSD-like), libtiff (BSD-like), giflib (MIT) and "
               "Highway (Apache 2.0 or BSD). Only the separate program vantor-pdf contains poppler; as a "
               "whole it is under the GPL."),
        QMessageBox::Close, this);
    pBox->setIconPixmap(windowIcon().pixmap(64, 64));
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->open();
}
