// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QMainWindow>
#include <QString>
#include <memory>

class CCenterCtrl;
class CCenterModel;
class CCenterView;
class CImageView3DEarth;
class CImageViewerCtrl;
class CPropertyDockView;
class CSettingCtrl;
class CSettingDlg;
class CStatusBarDockView;
class CToolBoxDockView;
class QDockWidget;

/// The example host: the centre, its three docks, the log, the settings and the menus that reach them.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    CMainWindow();
    ~CMainWindow() override;

    /// Opens each file in a viewer of its own as long as there are four; further ones are appended to them.
    /// What cannot be opened is named on standard error with the reason.
    /// @return how many could be opened
    int OpenFiles(const QStringList& lstFiles);

private:
    void CreateDocks();
    void CreateMenus();
    QDockWidget* AddDock(const QString& strTitle, QWidget* pWidget, Qt::DockWidgetArea eArea);
    bool OpenIn(CImageViewerCtrl& viewer, const QString& strFile);
    void CloseImage();
    void ShowSettings();
    void ShowGlobe();
    void About();

    CSettingDlg* m_pSettingDlg = nullptr;
    CImageView3DEarth* m_pGlobe = nullptr; ///< made when it is asked for
    std::unique_ptr<CSettingCtrl> m_pSettingCtrl;
    CToolBoxDockView* m_pToolBox = nullptr;
    CPropertyDockView* m_pProperties = nullptr;
    CStatusBarDockView* m_pStatus = nullptr;
    std::unique_ptr<CCenterModel> m_pModel;
    CCenterView* m_pView = nullptr;
    std::unique_ptr<CCenterCtrl> m_pCtrl;
};
