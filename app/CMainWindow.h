// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/store/AnnotationRecovery.h>

#include <QMainWindow>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class CActionTable;
class CBrowser;
class CAnnotationStore;
class CAnnotationTableCtrl;
class CAnnotationTableView;
class CCenterCtrl;
class CCenterModel;
class CCenterView;
class CImageView2DCtrl;
class CFullScreen;
class CMeasureDocks;
class CMessageBar;
class CPageField;
class CPropertyDockView;
class CRecentFiles;
class CRecoveryBar;
class CSettingCtrl;
class CSettingDlg;
class CTheme;
class CToolBoxDockView;
class CTrash;
class CUnsavedWork;
class CViewers;
class CZoomField;
class QAction;
class QDockWidget;
class QMenu;
struct SViewer;

/// The example host: the centre, two of its docks, the log, the settings, and the menus that reach them. It
/// reports what the library does silently: failures in a bar inside the window, long work in the status bar.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    CMainWindow();
    ~CMainWindow() override;

    /// Distributes the files over the viewers of the layout; each viewer shows its first file. Reports
    /// failures in the window and on standard error.
    /// @param strLayout  "1x1", "2x1" or "2x2"; empty: the smallest with a viewer for each, but 1x1 for more
    ///                   than four files; without any file the layout stays
    /// @return the number of opened files, when all are read and all pages of documents are rendered
    int OpenFiles(const QStringList& lstFiles, const QString& strLayout = QString());

    /// The same, but returns at once; the files are shown as they have been read.
    void StartOpening(const QStringList& lstFiles, const QString& strLayout);

    /// @param strLayout  "1x1", "2x1" or "2x2"
    /// @return false for anything else, which changes nothing
    bool ChangeLayout(const QString& strLayout);
    /// Opens the files that were open when the last window was closed, if the user has chosen so; they are
    /// shown as they have been read.
    void ReopenSession();

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    /// @{
    /// The key that shows the other viewer's image while it is held.
    void keyPressEvent(QKeyEvent* pEvent) override;
    void keyReleaseEvent(QKeyEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    /// @}
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

private:
    void CreateDocks();
    QDockWidget* AddDock(const char* pName, const QString& strTitle, QWidget* pWidget,
                         Qt::DockWidgetArea eArea);
    void CreateAnnotationsDock();
    void CreateMeasureDocks();
    void ShowAnnotations();
    void CreateMenus();
    void CreateFileMenu();
    void CreateSaveEntry(QMenu* pMenu);
    void CreateAnnotationEntries(QMenu* pMenu);
    void CreateEditMenu();
    void CreateImageEntries(QMenu* pMenu);
    void CreateViewMenu();
    void CreateLayoutEntries(QMenu* pMenu);
    void CreateZoomMenu(QMenu* pParent);
    void CreateZoomField(QAction* pType);
    void CreateCompareMenu(QMenu* pParent);
    int NextWithImage() const;
    void ShowOther(bool bOther); ///< the next viewer's image in the active one
    bool ActiveShows2D() const;
    bool HasMiniMap() const;
    void SetMiniMap(bool bOn); ///< in all viewers, and kept
    void CreateAppearanceMenu(QMenu* pParent);
    void CreateToolsMenu();
    void CreateCaptureEntries(QMenu* pMenu);
    void CreateDrawingMenu(QMenu* pParent);
    void CreateSettingsMenu();
    void CreateWorkSettings(QMenu* pMenu);
    void CreatePreferences();
    void ReloadDocuments();
    void CreateHelpMenu();
    void CreateToolBar();
    void ConnectMessages();
    void ConnectFiles(const SViewer& viewer);
    void ConnectActions(const SViewer& viewer);
    void TellNotes(const QString& strPath, const CImageView2DCtrl& ctrl);
    void CreateUnsavedWork();
    void TellWhatHappensTo(const CAnnotationStore& store);
    void ShowUnsaved();
    void CheckFolders();
    void RestoreState();
    void StoreState();
    QString Layout() const;
    /// Whether the pages of the documents that are opened next come one by one, as they are rendered.
    void DeferPages(bool bDefer);
    bool OpenIn(std::size_t nViewer, const QString& strFile);
    /// In place of what is there. @return false when that was to stay
    bool OpenInActive(const QString& strFile);
    void OpenRecent(const QString& strPath); ///< a file or a folder
    void CreateHints(const QAction* pOpen);
    void ShowDetails();
    void CreateBrowser();
    void CreateBrowseEntries(QMenu* pMenu);
    void CreatePageField();
    bool HasWheelPages() const;
    void SetWheelPages(bool bOn); ///< in all viewers, and kept
    void CreateFolderEntry(QMenu* pMenu);
    void CreateTrashEntries(QMenu* pMenu);
    void ShowTitle();
    QString ImageFile() const;
    void MoveToTrash();
    void RestoreFromTrash();
    /// @{
    /// The image of the active viewer with its annotations: ask for a file and write it, or copy it.
    void AskForPicture();
    void ExportPicture(const QString& strPath);
    void CopyPicture();
    void PrintPicture();
    bool HasPixels(); ///< whether they need not be waited for
    /// @}
    /// @{
    /// In the active viewer.
    void SelectAllAnnotations();
    void DuplicateAnnotations();
    /// @}
    /// @{
    /// Of the active viewer.
    QString ActiveFile() const;
    void OpenAnnotations();
    void SaveAnnotationsAs();
    void ImportAnnotations();
    void ExportAnnotations();
    /// @}
    bool ReadAnnotations(const QString& strPath, const QString& strFormat,
                         Vantor::Annotations::SDocument& document);
    bool FitToImage(Vantor::Annotations::SPage& page);
    void OfferRecovery();
    void RestoreWork(const std::vector<AnnotationRecovery::SFound>& vctFound);
    void RestoreOne(const AnnotationRecovery::SFound& found);
    int EmptyViewer();
    void RestoreOver(const std::vector<AnnotationRecovery::SImage>& vctImages,
                     std::function<void(bool bAll)> done);
    bool RestoreApart(const std::vector<AnnotationRecovery::SImage>& vctImages, const QString& strName);
    void StoreSession();
    /// @{
    /// In the active viewer. The library acts where the focus is, which a menu or a dialog may have.
    void Undo();
    void Redo();
    /// @}
    void Show3D(bool b3D);
    /// Moves the focus in a circle through the active view and the visible docks.
    void FocusPane(int nStep);
    void ShowSettings();
    void ShowGlobe();
    void ShowShortcuts();
    void About();

    CSettingDlg* m_pSettingDlg = nullptr;
    QWidget* m_pGlobe = nullptr; ///< made at its first use
    std::unique_ptr<CSettingCtrl> m_pSettingCtrl;
    std::unique_ptr<CTheme> m_pTheme;
    CToolBoxDockView* m_pToolBox = nullptr;
    CPropertyDockView* m_pProperties = nullptr;
    std::unique_ptr<CCenterModel> m_pModel;
    CCenterView* m_pView = nullptr;
    CRecoveryBar* m_pRecovery = nullptr;
    CMessageBar* m_pMessages = nullptr;
    CAnnotationTableView* m_pAnnotations = nullptr;
    CAnnotationTableCtrl* m_pAnnotationsCtrl = nullptr;
    CMeasureDocks* m_pMeasure = nullptr;
    std::unique_ptr<CCenterCtrl> m_pCtrl;
    std::unique_ptr<CViewers> m_pViewers;
    std::unique_ptr<CUnsavedWork> m_pWork;
    std::unique_ptr<CTrash> m_pTrash;
    CFullScreen* m_pFullScreen = nullptr;
    CBrowser* m_pBrowser = nullptr;
    CActionTable* m_pActions = nullptr;
    CZoomField* m_pZoom = nullptr;
    CPageField* m_pPage = nullptr;
    std::vector<QAction*> m_vctToolBar; ///< the entries that the tool bar shows, too
    CRecentFiles* m_pRecent = nullptr;
    bool m_bShowsOther = false;
    bool m_bPasteUseful = true; ///< the state when the menu last opened
};
