// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QFrame>
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
/// The widgets belong to the frame by Qt parenthood, the frame to the centre view; the models are not owned.
/// GUI thread only.
class VANTORCOMMON_EXPORT CImageViewer : public QFrame
{
    Q_OBJECT

public:
    /// Without views: see SetImageView. The model may be null.
    /// @param pModel   completes the triple; not read
    /// @param nViewID  0 to 3 in a centre, shown in the title as it is
    /// @param pParent  owns the frame
    CImageViewer(CImageViewerModel* pModel, int nViewID, QWidget* pParent);
    /// Viewer 0 without a model, as a form made in Qt Designer creates it; a CImageViewerCtrl fills it.
    explicit CImageViewer(QWidget* pParent = nullptr);
    ~CImageViewer() override;

    /// Takes the views in (as children), shows the 2D one and hides the other two; called once. Any may be
    /// null; the models are not owned.
    void SetImageView(QWidget* pView2D, QWidget* pView3D, CStatusBarView* pStatusBar,
                      CImageView2DModel* pImageModel, CImageView2DToolModel* pToolModel);

    /// The identifier given at construction.
    int GetViewID() const { return m_nViewID; }
    /// Whether the 3D view is the one that is shown, or would be if the viewer were.
    bool Is3DShown() const;
    /// Gives the keyboard to the view that is shown, or would be if the viewer were; undo and redo act there.
    void FocusVisibleView();
    /// Identifier of the image shown, 0xFFFFFFFF without one.
    unsigned int GetCurrentImageUID() const;
    /// The annotations, newest first; empty without a 2D view.
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> Get2DDrawableObjects() const;

    /// See SCenterOptions::bClearApart.
    void SetClearApart(bool bApart);

    /// Fills the thumbnail list anew. An image that cannot be shown gets no row.
    void UpdateSideView();
    /// Rescales every thumbnail to the width of the list.
    void ResizeSideView();

Q_SIGNALS:
    /// @{
    /// A button was pressed; whoever receives it does the work.
    void signal_SelectMode();
    void signal_PanningMode();
    void signal_ZoomFit();
    void signal_RotateLeft();
    void signal_RotateRight();
    void signal_Previous();
    void signal_Next();
    void signal_Ruler();
    void signal_OpenSnipTool();
    /// A thumbnail became current, given by its row; -1 when none is.
    void signal_SelectImage(int index);
    void signal_ClearImage();
    void signal_AddImage();
    void signal_OpenFile();
    void signal_SaveFile();
    /// @}
    /// An annotation of the viewer has changed.
    void signal_ChangeDrawableObjectProperty(unsigned int nUID);
    /// All annotations of the viewer are gone at once.
    void signal_ClearDrawableObject();
    /// @{
    /// The signals of the geometry model with the identifiers of this viewer and of the image shown,
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
    /// Shows that view in place of the other one.
    void slot_Press2D();
    void slot_Press3D();
    /// @}
    /// Renews the title and the thumbnail of the current image.
    void slot_ChangeCurrentImage();
    /// Shows position and bytes of the pixel under the mouse; without an image the last ones stay.
    void slot_ChangeMousePosition();
    /// UpdateSideView.
    void slot_ChangeImageList();
    /// Makes the thumbnail in the row of the model's current index current.
    void slot_ChangeCurrentIndex();
    /// Emits signal_SelectImage.
    void slot_CurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    /// @{
    /// Check the buttons that stand for the tool model's mode and type.
    void slot_ChangeViewMode();
    void slot_ChangeViewType();
    /// @}
    /// @{
    /// Relays a signal of the geometry model under this viewer's identifier; not for objects without a name.
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_BeforeDeleteDrawableObject(unsigned int nUID, QString strName);
    /// @}
    /// Emits the two signals of a changed annotation, without and with identifiers.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// ResizeSideView.
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
    /// the keys that walk in a list do so here, although the view has the keyboard.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QWidget* CreateButtons();
    void AddButton(CButtonRow* pRow, QPushButton* pButton, const char* pIcon, const QString& strName);
    QWidget* CreateBottomLine();
    void CreateSideList();
    void FitSideList();
    void StepInList(QKeyEvent& event);
    void RenewThumbnail(int nIndex, Vantor::Algorithms::CImage* pImage);
    void ShowView(bool b2D);
    void CheckView(bool b2D);
    void AfterPress(QPushButton* pButton);
    void ShowFocus(bool bFocus);
    QStandardItem* CreateSideItem(int nIndex);
    int ThumbnailWidth() const;
    bool SetThumbnail(QStandardItem* pItem, Vantor::Algorithms::CImage* pImage);

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
    int m_nListWidth = 0;            ///< that of the thumbnails, as fitted to the viewer's
    bool m_bListWidthChosen = false; ///< by the splitter
    bool m_bListLeads = false;       ///< the list was clicked last, not the view
    int m_nViewID;
};
