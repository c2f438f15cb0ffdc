// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QFrame>
#include <QHash>
#include <QPixmap>
#include <QPointer>
#include <memory>
#include <vector>

class CButtonRow;
class CImageView2DDrawableObject;
class CImageView2DModel;
class CImageView2DToolModel;
class CImageViewerModel;
class CStatusBarView;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QListView;
class QModelIndex;
class QPushButton;
class QSplitter;
class QStandardItem;
class QStandardItemModel;
class QVBoxLayout;

namespace Vantor::Algorithms
{
class CImage;
}

/// One cell of the centre's grid: a frame with a row of tool buttons (those without room in a menu), the 2D
/// and the 3D view (one of them visible), a list of thumbnails, and a line with the title and the pixel under
/// the mouse. A blue border marks the viewer that has the focus.
///
/// As Qt parents, the frame owns the widgets and the centre view the frame; the models are not owned. GUI
/// thread only.
class VANTORCOMMON_EXPORT CImageViewer : public QFrame
{
    Q_OBJECT

public:
    /// Starts without views, see SetImageView. The model may be null.
    /// @param pModel   completes the triple; not read
    /// @param nViewID  0 to 3 in a centre; the title shows it unchanged
    /// @param pParent  owns the frame
    CImageViewer(CImageViewerModel* pModel, int nViewID, QWidget* pParent);
    /// Viewer 0 without a model, as a form made in Qt Designer creates it; a CImageViewerCtrl fills it.
    explicit CImageViewer(QWidget* pParent = nullptr);
    ~CImageViewer() override;

    /// Makes the views its children, shows the 2D one and hides the other two. Call it once. Any view may be
    /// null; the models are not owned.
    void SetImageView(QWidget* pView2D, QWidget* pView3D, CStatusBarView* pStatusBar,
                      CImageView2DModel* pImageModel, CImageView2DToolModel* pToolModel);

    /// The identifier given at construction.
    int GetViewID() const { return m_nViewID; }
    /// Whether the 3D view is visible, or would be if the viewer were.
    bool Is3DShown() const;
    /// Gives the keyboard to the view that is visible, or would be if the viewer were; undo and redo act
    /// there.
    void FocusVisibleView();
    /// Identifier of the image shown, 0xFFFFFFFF without one.
    unsigned int GetCurrentImageUID() const;
    /// The annotations, newest first; empty without a 2D view.
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> Get2DDrawableObjects() const;

    /// See SCenterOptions::bClearApart.
    void SetClearApart(bool bApart);
    /// See SCenterOptions::bViewKeys.
    void SetViewKeys(bool bOn) { m_bViewKeys = bOn; }

    /// Fills the thumbnail list again. An image that cannot be shown gets no row.
    void UpdateSideView();
    /// Rescales every thumbnail to the width of the list.
    void ResizeSideView();

Q_SIGNALS:
    /// @{
    /// The user pressed a button; the receiver does the work.
    void signal_SelectMode();
    void signal_PanningMode();
    void signal_ZoomFit();
    void signal_RotateLeft();
    void signal_RotateRight();
    void signal_Previous();
    void signal_Next();
    void signal_Ruler();
    void signal_OpenSnipTool();
    /// The thumbnail in that row became current; -1 for none.
    void signal_SelectImage(int index);
    void signal_ClearImage();
    void signal_AddImage();
    void signal_OpenFile();
    void signal_SaveFile();
    /// @}
    /// An annotation of the viewer has changed.
    void signal_ChangeDrawableObjectProperty(unsigned int nUID);
    /// All annotations of the viewer were dropped at once.
    void signal_ClearDrawableObject();
    /// @{
    /// The signals of the geometry model with the identifiers of this viewer and of its current image,
    /// 0xFFFFFFFF without one; see CCenterView.
    void signal_AddDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                            QString strName);
    void signal_DeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                               QString strName);
    void signal_BeforeDeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID,
                                                     unsigned int nGeometryUID, QString strName);
    void signal_ChangeDrawableObjectPropertyWithViewID(int nViewID, unsigned int nImageUID,
                                                       unsigned int nGeometryUID);
    /// @}

public Q_SLOTS:
    /// @{
    /// Show that view instead of the other one.
    void slot_Press2D();
    void slot_Press3D();
    /// @}
    /// Updates the title and the thumbnail of the current image.
    void slot_ChangeCurrentImage();
    /// Shows position and bytes of the pixel under the mouse; keeps the last ones without an image.
    void slot_ChangeMousePosition();
    /// Calls UpdateSideView.
    void slot_ChangeImageList();
    /// Makes the thumbnail in the row of the model's current index current.
    void slot_ChangeCurrentIndex();
    /// Emits signal_SelectImage.
    void slot_CurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    /// @{
    /// Check the buttons of the tool model's mode and type.
    void slot_ChangeViewMode();
    void slot_ChangeViewType();
    /// @}
    /// @{
    /// Relay a signal of the geometry model with this viewer's identifier, except for objects without a name.
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_BeforeDeleteDrawableObject(unsigned int nUID, QString strName);
    /// @}
    /// Emits the two signals of a changed annotation, without and with identifiers.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// Calls ResizeSideView.
    void slot_SplitterMoved(int pos, int index);

protected:
    /// @{
    /// Focus and clicks mark the viewer; a click on the frame gives the keyboard to the visible view. A
    /// resize rescales the thumbnails.
    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    /// @}
    /// Watches the focus of the two views and the width of the thumbnail list. After a click on a thumbnail
    /// the keys for moving in a list move in this one, although the view has the keyboard.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QWidget* CreateButtons();
    void AddButton(CButtonRow* pRow, QPushButton* pButton, const char* pIcon, const QString& strName);
    QWidget* CreateBottomLine();
    void CreateSideList();
    void FitSideList();
    bool StepInList(QKeyEvent& event);
    void RenewThumbnail(int nIndex, const Vantor::Algorithms::CImage* pImage);
    void ShowView(bool b2D);
    void CheckView(bool b2D);
    void AfterPress(QPushButton* pButton);
    void ShowFocus(bool bFocus);
    QStandardItem* CreateSideItem(int nIndex, const QHash<unsigned int, QPixmap>& formerThumbnails);
    int ThumbnailWidth() const;
    bool SetThumbnail(QStandardItem* pItem, const Vantor::Algorithms::CImage* pImage);
    void SetWaitingThumbnail(QStandardItem* pItem, const Vantor::Algorithms::CImage& image,
                             const QPixmap& former);
    void TakePixelsThatCame(int nIndex);

    QPointer<QWidget> m_pView2D;
    QPointer<QWidget> m_pView3D;
    QHBoxLayout* m_pViewLayout = nullptr;
    QVBoxLayout* m_pMainLayout = nullptr;
    QSplitter* m_pSplitter = nullptr;
    QLabel* m_pTitle = nullptr;
    QLabel* m_pStatus = nullptr;
    QStandardItemModel* m_pSideModel = nullptr;
    QListView* m_pSideList = nullptr;
    QPointer<CImageView2DModel> m_pImageModel;
    QPointer<CImageView2DToolModel> m_pToolModel;
    CButtonRow* m_pButtons = nullptr;
    QPushButton* m_pButtonClear = nullptr;
    QPushButton* m_pButton2D = nullptr;
    QPushButton* m_pButton3D = nullptr;
    QPushButton* m_pButtonSelect = nullptr;
    QPushButton* m_pButtonPanning = nullptr;
    int m_nListWidth = 0;            ///< of the thumbnail list, as fitted to the viewer's width
    bool m_bListWidthChosen = false; ///< the user moved the splitter
    bool m_bViewKeys = false;
    bool m_bListLeads = false; ///< the last click was on the list, not on the view
    int m_nViewID;
};
