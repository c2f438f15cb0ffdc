// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMainWindow.h"

#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QCoreApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <cstdio>

namespace
{
constexpr int kViewerCount = 4;
constexpr int kToolDockWidth = 220;
constexpr int kPropertyDockWidth = 250;
constexpr int kLogDockHeight = 110;
constexpr int kGlobeSide = 600;

CImageViewerCtrl* FindViewer(int nIndex)
{
    const QString strTitle = QStringLiteral("Image View [%1]").arg(nIndex);
    const auto item = CMVCManager::FindFirst(
        [&](const SMVC& mvc) { return mvc.pView && mvc.pView->windowTitle() == strTitle; });
    return item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr;
}

void BringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

QString ReasonOf(const QString& strFile)
{
    const QFileInfo info(strFile);
    if (!info.exists())
        return QStringLiteral("there is no such file");
    if (!info.isFile())
        return QStringLiteral("it is not a regular file");
    if (!info.isReadable())
        return QStringLiteral("it must not be read");
    return QStringLiteral("it is not an image or a PDF document that can be shown");
}
} // namespace

CMainWindow::CMainWindow()
{
    // OpenGL comes with the first 3D view: half the time and the memory of a start would go into it.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    setWindowTitle(QStringLiteral("Vantor"));
    resize(1200, 820);
    // First, for the others read them.
    m_pSettingDlg = new CSettingDlg(this);
    m_pSettingCtrl = std::make_unique<CSettingCtrl>(m_pSettingDlg);
    CreateDocks();
    m_pModel = std::make_unique<CCenterModel>();
    m_pView = new CCenterView(m_pModel.get(), this);
    setCentralWidget(m_pView);
    m_pCtrl = std::make_unique<CCenterCtrl>(m_pModel.get(), m_pView, m_pToolBox, m_pProperties, m_pStatus);
    CMVCManager::PushMVC(nullptr, this, nullptr);
    CreateMenus();
}

CMainWindow::~CMainWindow() = default;

QDockWidget* CMainWindow::AddDock(const QString& strTitle, QWidget* pWidget, Qt::DockWidgetArea eArea)
{
    auto* pDock = new QDockWidget(strTitle, this);
    pDock->setObjectName(strTitle);
    pDock->setWidget(pWidget);
    addDockWidget(eArea, pDock);
    return pDock;
}

void CMainWindow::CreateDocks()
{
    m_pToolBox = new CToolBoxDockView(this);
    m_pProperties = new CPropertyDockView(this);
    m_pStatus = new CStatusBarDockView(this);
    QDockWidget* pTools = AddDock(QStringLiteral("Tools"), m_pToolBox, Qt::LeftDockWidgetArea);
    QDockWidget* pStatus = AddDock(QStringLiteral("Status"), m_pStatus, Qt::LeftDockWidgetArea);
    QDockWidget* pProperties = AddDock(QStringLiteral("Properties"), m_pProperties, Qt::RightDockWidgetArea);
    QDockWidget* pLog = AddDock(QStringLiteral("Log"), new CLogView(this), Qt::BottomDockWidgetArea);
    resizeDocks({pLog}, {kLogDockHeight}, Qt::Vertical);
    resizeDocks({pTools, pProperties}, {kToolDockWidth, kPropertyDockWidth}, Qt::Horizontal);
    pStatus->hide();
}

void CMainWindow::CreateMenus()
{
    const auto icon = [](const char* pName) {
        return QIcon(QStringLiteral(":/Image/") + QLatin1String(pName));
    };
    QMenu* pFile = menuBar()->addMenu(QStringLiteral("&File"));
    pFile->addAction(icon("open-folder.png"), QStringLiteral("&Open..."), m_pCtrl.get(),
                     &CCenterCtrl::slot_OpenFile, QKeySequence::Open);
    pFile->addAction(icon("save_file.png"), QStringLiteral("&Save As..."), m_pCtrl.get(),
                     &CCenterCtrl::slot_SaveFile, QKeySequence::Save);
    pFile->addAction(icon("close.png"), QStringLiteral("&Close Image"), this, &CMainWindow::CloseImage);
    pFile->addSeparator();
    pFile->addAction(QStringLiteral("S&ettings..."), this, &CMainWindow::ShowSettings,
                     QKeySequence::Preferences);
    pFile->addSeparator();
    pFile->addAction(QStringLiteral("&Quit"), this, &QWidget::close, QKeySequence::Quit);

    QMenu* pEdit = menuBar()->addMenu(QStringLiteral("&Edit"));
    pEdit->addAction(QStringLiteral("&Undo"), m_pCtrl.get(), &CCenterCtrl::Undo, QKeySequence::Undo);
    pEdit->addAction(QStringLiteral("&Redo"), m_pCtrl.get(), &CCenterCtrl::Redo, QKeySequence::Redo);

    QMenu* pWindow = menuBar()->addMenu(QStringLiteral("&View"));
    pWindow->addAction(QStringLiteral("&One Viewer"), m_pView, &CCenterView::signal_ChangeLayout1x1);
    pWindow->addAction(QStringLiteral("&Two Viewers"), m_pView, &CCenterView::signal_ChangeLayout2x1);
    pWindow->addAction(QStringLiteral("&Four Viewers"), m_pView, &CCenterView::signal_ChangeLayout2x2);
    pWindow->addSeparator();
    for (QDockWidget* pDock : findChildren<QDockWidget*>())
        pWindow->addAction(pDock->toggleViewAction());
    pWindow->addSeparator();
    pWindow->addAction(QStringLiteral("&Globe"), this, &CMainWindow::ShowGlobe);

    QMenu* pTools = menuBar()->addMenu(QStringLiteral("&Tools"));
    pTools->addAction(QStringLiteral("&Median Filter..."), m_pCtrl.get(), &CCenterCtrl::slot_OpenMedianTool);
    pTools->addAction(QStringLiteral("&Sobel Filter..."), m_pCtrl.get(), &CCenterCtrl::slot_OpenSobelTool);
    pTools->addAction(QStringLiteral("&OCR..."), m_pCtrl.get(), &CCenterCtrl::slot_OpenOCRTool);

    QMenu* pHelp = menuBar()->addMenu(QStringLiteral("&Help"));
    pHelp->addAction(QStringLiteral("&About"), this, &CMainWindow::About);
}

int CMainWindow::OpenFiles(const QStringList& lstFiles)
{
    if (lstFiles.size() > 2)
        m_pCtrl->slot_ChangeLayout2x2();
    else if (lstFiles.size() == 2)
        m_pCtrl->slot_ChangeLayout2x1();
    int nOpened = 0;
    for (int i = 0; i < lstFiles.size(); ++i) {
        CImageViewerCtrl* pViewer = FindViewer(i % kViewerCount);
        if (pViewer && OpenIn(*pViewer, lstFiles[i]))
            ++nOpened;
        else
            std::fprintf(stderr, "vantor-viewer: %s: %s\n", qPrintable(lstFiles[i]),
                         qPrintable(ReasonOf(lstFiles[i])));
    }
    return nOpened;
}

bool CMainWindow::OpenIn(CImageViewerCtrl& viewer, const QString& strFile)
{
    const unsigned int nBefore = viewer.GetImageID();
    if (viewer.GetImage())
        viewer.AddImage(strFile);
    else
        viewer.LoadFile(strFile);
    return viewer.GetImageID() != nBefore;
}

void CMainWindow::CloseImage()
{
    if (auto* pCtrl = dynamic_cast<CImageViewerCtrl*>(m_pCtrl->SelectMVC().pCtrl))
        m_pCtrl->CloseCurrentImage(pCtrl->GetViewID());
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
        m_pGlobe->setWindowTitle(QStringLiteral("Globe"));
        m_pGlobe->resize(kGlobeSide, kGlobeSide);
    }
    BringUp(*m_pGlobe);
}

void CMainWindow::About()
{
    QMessageBox::about(
        this, QStringLiteral("About Vantor"),
        QStringLiteral("An example host of libVantorCommon: components for viewing, annotating and "
                       "processing raster images."));
}
