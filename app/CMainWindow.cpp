// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMainWindow.h"

#include "CActionTable.h"
#include "CMessageBar.h"
#include "CRecentFiles.h"
#include "CShortcutsDlg.h"
#include "CTheme.h"
#include "HostSettings.h"
#include "Viewers.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

namespace
{
constexpr QSize kWindowSize(1200, 820);
constexpr int kToolDockWidth = 220;
constexpr int kPropertyDockWidth = 250;
constexpr int kLogDockHeight = 110;
constexpr int kGlobeSide = 600;
constexpr int kStateVersion = 1;
constexpr int kMessageMs = 5000;

void BringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

/// The folder of a setting, where the library reads it.
QString FolderOf(const QString& strKey)
{
    return CSettingManager::GetString(strKey,
                                      QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                                          QDir::separator() + QStringLiteral("Vantor"));
}

QByteArray StoredBytes(const QString& strKey)
{
    return QByteArray::fromBase64(CSettingManager::GetString(strKey, QString()).toLatin1());
}

/// The first control below a widget that the keyboard reaches by Tab; null when there is none.
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
    // OpenGL comes with the first 3D view: half the time and the memory of a start would go into it.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    setWindowTitle(QStringLiteral("Vantor"));
    resize(kWindowSize);
    // First, for the others read them.
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
    m_pMessages = new CMessageBar(pCentral);
    m_pModel = std::make_unique<CCenterModel>();
    m_pView = new CCenterView(m_pModel.get(), pCentral);
    pLayout->addWidget(m_pMessages);
    pLayout->addWidget(m_pView, 1);
    setCentralWidget(pCentral);
    m_pCtrl = std::make_unique<CCenterCtrl>(m_pModel.get(), m_pView, m_pToolBox, m_pProperties, m_pStatus);
    SCenterOptions sOptions = m_pCtrl->GetOptions();
    sOptions.bMoreShapes = true;
    sOptions.bOwnColors = true;
    m_pCtrl->SetOptions(sOptions);
    CMVCManager::PushMVC(nullptr, this, nullptr);

    m_pViewers = std::make_unique<CViewers>(m_pView);
    m_pActions = new CActionTable(this);
    CreateMenus();
    CreateToolBar();
    statusBar();
    ConnectMessages();
    RestoreState();
    m_pActions->Update();
    m_pViewers->FocusActive();
    QTimer::singleShot(0, this, &CMainWindow::CheckFolders);
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
    m_pStatus = new CStatusBarDockView(this);
    QDockWidget* pTools = AddDock("Tools", tr("Tools"), m_pToolBox, Qt::LeftDockWidgetArea);
    QDockWidget* pStatus = AddDock("Status", tr("Status"), m_pStatus, Qt::LeftDockWidgetArea);
    QDockWidget* pProperties =
        AddDock("Properties", tr("Properties"), m_pProperties, Qt::RightDockWidgetArea);
    QDockWidget* pLog = AddDock("Log", tr("Log"), new CLogView(this), Qt::BottomDockWidgetArea);
    resizeDocks({pLog}, {kLogDockHeight}, Qt::Vertical);
    resizeDocks({pTools, pProperties}, {kToolDockWidth, kPropertyDockWidth}, Qt::Horizontal);
    pStatus->hide();
}

void CMainWindow::ConnectMessages()
{
    for (const SViewer& viewer : m_pViewers->All()) {
        const CImageView2DCtrl* pCtrl = viewer.Ctrl2D();
        connect(pCtrl, &CImageView2DCtrl::signal_Failed, m_pMessages, &CMessageBar::Tell);
        connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, m_pRecent, &CRecentFiles::Add);
        connect(pCtrl, &CImageView2DCtrl::signal_FileSaved, this, [this](const QString& strPath) {
            statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(strPath)), kMessageMs);
        });
    }
    connect(m_pCtrl.get(), &CCenterCtrl::signal_ProcessStarted, this, &CMainWindow::ShowWork);
    connect(m_pCtrl.get(), &CCenterCtrl::signal_ProcessEnded, this, &CMainWindow::EndWork);
    connect(m_pCtrl.get(), &CCenterCtrl::signal_ProcessFailed, this,
            [this](const QString& strTool, const QString& strReason) {
                m_pMessages->Tell(QStringLiteral("%1: %2").arg(strTool, strReason));
            });
    // Queued: the model announces a line under its lock.
    connect(CLogModel::GetInstance(), &CLogModel::signal_NewMessage, this, &CMainWindow::TellLog,
            Qt::QueuedConnection);
}

/// What went wrong in a corner that has no signal of its own (OpenGL, the settings file, the screen).
void CMainWindow::TellLog(const SLogMessage& sMessage)
{
    // That settings cannot be stored is told once, not for each of them.
    const bool bTold = sMessage.strMessage.startsWith(QStringLiteral("Update Setting"));
    if (!bTold && (sMessage.eLevel == WARNING || sMessage.eLevel == ERROR))
        m_pMessages->TellLogLine(sMessage.strMessage);
}

/// The thread is about to be busy: what is to be seen must be painted now, which the status bar does.
void CMainWindow::ShowWork(const QString& strTool)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    statusBar()->showMessage(tr("%1 is running...").arg(strTool));
}

void CMainWindow::EndWork()
{
    QApplication::restoreOverrideCursor();
    statusBar()->clearMessage();
}

/// The library goes on without these folders, silently.
void CMainWindow::CheckFolders()
{
    const QString strNow = QDateTime::currentDateTime().toString(Qt::ISODate);
    if (!m_pSettingCtrl->UpdateParameter(HostSettings::kLastStart, strNow))
        m_pMessages->Tell(tr("Settings cannot be kept in the folder %1; they last until the program ends.")
                              .arg(FolderOf(QStringLiteral("GENERAL_PROGRAM_CONFIG_DIR"))));
    const QString strLogFolder = FolderOf(QStringLiteral("GENERAL_LOG_DIR"));
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
    CSettingManager::Set(HostSettings::kDesktopScheme, static_cast<int>(m_pTheme->GetDesktop()));
}

void CMainWindow::closeEvent(QCloseEvent* pEvent)
{
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

int CMainWindow::OpenFiles(const QStringList& lstFiles)
{
    if (lstFiles.size() > 2)
        m_pCtrl->slot_ChangeLayout2x2();
    else if (lstFiles.size() == 2)
        m_pCtrl->slot_ChangeLayout2x1();
    QObject watch;
    for (const SViewer& viewer : m_pViewers->All())
        connect(viewer.Ctrl2D(), &CImageView2DCtrl::signal_Failed, &watch, [](const QString& strMessage) {
            std::fprintf(stderr, "vantor-viewer: %s\n", qPrintable(strMessage));
        });
    int nOpened = 0;
    for (int i = 0; i < lstFiles.size(); ++i)
        if (OpenIn(static_cast<std::size_t>(i) % m_pViewers->All().size(), lstFiles[i]))
            ++nOpened;
    m_pActions->Update();
    return nOpened;
}

bool CMainWindow::OpenIn(std::size_t nViewer, const QString& strFile)
{
    const SViewer& viewer = m_pViewers->All()[nViewer];
    const unsigned int nBefore = viewer.pCtrl->GetImageID();
    if (viewer.HasImage())
        viewer.pCtrl->AddImage(strFile);
    else
        viewer.pCtrl->LoadFile(strFile);
    return viewer.pCtrl->GetImageID() != nBefore;
}

void CMainWindow::OpenInActive(const QString& strFile)
{
    m_pViewers->Active().pCtrl->LoadFile(strFile);
}

void CMainWindow::CloseImage()
{
    m_pCtrl->CloseCurrentImage(m_pViewers->Active().pCtrl->GetViewID());
}

/// Undo acts where the keyboard is; a menu or a dialog may have it just now.
void CMainWindow::Undo(bool bUndo)
{
    m_pViewers->FocusActive();
    if (bUndo)
        m_pCtrl->Undo();
    else
        m_pCtrl->Redo();
}

void CMainWindow::Show3D(bool b3D)
{
    CImageViewer* pViewer = m_pViewers->Active().pView;
    b3D ? pViewer->slot_Press3D() : pViewer->slot_Press2D();
    m_pViewers->FocusActive();
    // A system with OpenGL ES alone gets a placeholder. What else is missing is told by the log.
    if (b3D && !pViewer->findChild<CImageView3D*>())
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
    BringUp(*m_pSettingDlg);
}

void CMainWindow::ShowGlobe()
{
    if (!m_pGlobe) {
        m_pGlobe = new CImageView3DEarth(this);
        m_pGlobe->setWindowFlag(Qt::Window);
        m_pGlobe->setWindowTitle(tr("Globe"));
        m_pGlobe->resize(kGlobeSide, kGlobeSide);
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
            .arg(QStringLiteral(VANTOR_VERSION)),
        QMessageBox::Close, this);
    pBox->setIconPixmap(windowIcon().pixmap(64, 64));
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->open();
}
