// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QFrame>
#include <QPointer>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;
class CImageView2DModel;
class CImageView2DToolModel;
class CImageViewerModel;
class CStatusBarView;
class QHBoxLayout;
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

/// One cell of the centre's grid: a frame with tool buttons, the 2D and the 3D view (one of them visible), a
/// list of thumbnails, and a line with the title and the pixel under the mouse. A blue border marks the
/// viewer that has the focus.
///
/// The widgets belong to the frame by Qt parenthood, the frame to the centre view; the models are not owned.
/// GUI thread only.
class VANTORCOMMON_EXPORT CImageViewer : public QFrame
{
    Q_OBJECT

public:
    CImageViewer(CImageViewerModel* pModel, int nViewID, QWidget* pParent);
    /// Viewer 0 without a model, as a form made in Qt Designer creates it; a CImageViewerCtrl fills it.
    explicit CImageViewer(QWidget* pParent = nullptr);
    ~CImageViewer() override;

    /// Takes the views in (as children), shows the 2D one and hides the other two; called once.
    void SetImageView(QWidget* pView2D, QWidget* pView3D, CStatusBarView* pStatusBar,
                      CImageView2DModel* pImageModel, CImageView2DToolModel* pToolModel);

    int GetViewID() const { return m_nViewID; }
    /// Identifier of the image shown, 0xFFFFFFFF without one.
    unsigned int GetCurrentImageUID() const;
    /// The annotations, newest first; empty without a 2D view.
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> Get2DDrawableObjects() const;

    /// Fills the thumbnail list anew.
    void UpdateSideView();
    /// Rescales every thumbnail to the width of the list.
    void ResizeSideView();

Q_SIGNALS:
    void signal_SelectMode();
    void signal_PanningMode();
    void signal_ZoomFit();
    void signal_RotateLeft();
    void signal_RotateRight();
    void signal_Previous();
    void signal_Next();
    void signal_Ruler();
    void signal_OpenSnipTool();
    void signal_SelectImage(int index);
    void signal_ClearImage();
    void signal_AddImage();
    void signal_OpenFile();
    void signal_SaveFile();
    void signal_ChangeDrawableObjectProperty(unsigned int nUID);
    /// All annotations of the viewer are gone at once.
    void signal_ClearDrawableObject();
    void signal_AddDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                            QString strName);
    void signal_DeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                               QString strName);
    void signal_BeforeDeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID,
                                                     unsigned int nGeometryUID, QString strName);
    void signal_ChangeDrawableObjectPropertyWithViewID(int nViewID, unsigned int nImageUID,
                                                       unsigned int nGeometryUID);

public Q_SLOTS:
    void slot_Press2D();
    void slot_Press3D();
    void slot_ChangeCurrentImage();
    void slot_ChangeMousePosition();
    void slot_ChangeImageList();
    void slot_ChangeCurrentIndex();
    void slot_CurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void slot_ChangeViewMode();
    void slot_ChangeViewType();
    /// Objects without a name are not relayed.
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_BeforeDeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    void slot_SplitterMoved(int pos, int index);

protected:
    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    /// Watches the focus of the two views and the width of the thumbnail list.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QWidget* CreateButtons();
    QPushButton* AddButton(QHBoxLayout* pLayout, QPushButton* pButton, const char* pIcon,
                           const QString& strName);
    QWidget* CreateBottomLine();
    void CreateSideList();
    void ShowView(bool b2D);
    void CheckView(bool b2D);
    void AfterPress(QPushButton* pButton);
    void FocusVisibleView();
    void ShowFocus(bool bFocus);
    QStandardItem* CreateSideItem(int nIndex);
    int ThumbnailWidth() const;
    bool SetThumbnail(QStandardItem* pItem, Vantor::Algorithms::CImage* pImage);

    QPointer<CImageViewerModel> m_pModel;
    QPointer<QWidget> m_pView2D;
    QPointer<QWidget> m_pView3D;
    QHBoxLayout* m_pViewLayout = nullptr;
    QVBoxLayout* m_pMainLayout = nullptr;
    QLabel* m_pTitle = nullptr;
    QLabel* m_pStatus = nullptr;
    QStandardItemModel* m_pSideModel = nullptr;
    QListView* m_pSideList = nullptr;
    QPointer<CImageView2DModel> m_pImageModel;
    QPointer<CImageView2DToolModel> m_pToolModel;
    QPushButton* m_pButton2D = nullptr;
    QPushButton* m_pButton3D = nullptr;
    QPushButton* m_pButtonSelect = nullptr;
    QPushButton* m_pButtonPanning = nullptr;
    int m_nViewID;
};
