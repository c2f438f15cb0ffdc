// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class CImageView2D;
class CImageView2DCtrl;
class CImageView2DDrawableGeometry;
class CImageView2DDrawableObject;
class CImageView2DGeometryModel;
class CImageView2DModel;
class CImageView2DToolModel;
class CImageView3DCtrl;
class CImageView3DModel;
class CImageViewer;
class CImageViewerModel;
class CPropertyDockView;
class CStatusBarDockView;
class CStatusBarModel;
class CStatusBarView;
class CToolBoxDockView;
class QIcon;
class QWidget;
struct SCenterOptions;
struct SImageChange;

namespace Vantor::Algorithms
{
class CImage;
}

/// The controller of one viewer: makes the models, views and controllers inside it and connects the viewer's
/// buttons with them. It owns the models and controllers; the viewer owns the widgets. An operation without
/// its target does nothing or returns the empty value. GUI thread only.
class VANTORCOMMON_EXPORT CImageViewerCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Models and undo steps share the images.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Makes the parts of the viewer and registers the triple. Any argument may be null.
    CImageViewerCtrl(CImageViewer* pViewer, CImageViewerModel* pModel, CImageView2DToolModel* pToolModel,
                     CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                     CStatusBarDockView* pStatusBarDockView);
    ~CImageViewerCtrl() override;

    /// @{
    /// Call the 2D and the 3D controller; always return false.
    bool Undo() override;
    bool Redo() override;
    /// @}

    /// The controller of the 2D view, owned by this one; never null.
    CImageView2DCtrl* Get2DCtrl() const { return m_pCtrl2D.get(); }
    /// The controller of the 3D view, owned by this one; null where the system lacks desktop OpenGL and the
    /// viewer shows a placeholder.
    CImageView3DCtrl* Get3DCtrl() const { return m_pCtrl3D.get(); }
    /// The 2D view, owned by the viewer; null when it has been deleted.
    CImageView2D* Get2DView() const;
    /// Passes the options to the parts of the viewer; they apply from the next operation on.
    void SetOptions(const SCenterOptions& sOptions);
    /// Replaces the list by the images of a file and drops the annotations. A failure is logged and leaves an
    /// empty list. See CImageView2DCtrl for this and the next two.
    void LoadFile(const QString& strPath);
    /// Appends an image or the pages of a document to the viewer's list.
    void AddImage(const QString& strPath);
    /// Saves the current image in the format of the suffix; logs a failure.
    void SaveFile(const QString& strPath);
    /// Deliberate: does nothing. Reserved for a conversion that a host requests of all viewers.
    void Convert();
    /// The current image, which nobody may change; null without one.
    ImagePtr GetImage() const;
    /// Identifier of the current image, 0xFFFFFFFF without one.
    unsigned int GetImageID() const;
    /// Identifier of the viewer, -1 without one.
    int GetViewID() const;
    /// The annotations, newest first.
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> Get2DDrawableObjects() const;
    /// Deletes an annotation, without undo. @return whether it existed
    bool Delete2DDrawableObject(unsigned int nUID);
    /// Drops the current image and all annotations, without undo.
    void CloseCurrentImage();
    /// Replaces the current image and drops the annotations, as an undoable step; ignores null.
    void ChangeCurrentImage(ImagePtr pImage);
    /// The same for an image made from the current one by a turn, a flip or a cut.
    void ChangeCurrentImage(ImagePtr pImage, const SImageChange& sChange);
    /// Adds a shape of any kind, as an undoable step, and selects only it; ignores null.
    void AddRectangle(std::shared_ptr<CImageView2DDrawableGeometry> pObject);
    /// Adds an entry to the menu of annotations; the function gets view identifier and annotation identifier.
    void RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);

Q_SIGNALS:
    /// An operation of the 2D or the 3D view failed: relays their signal_Failed.
    void signal_Failed(const QString& strMessage);

public Q_SLOTS:
    /// @{
    /// Receive the progress of the 3D build and of the pages of a document. The bar is visible while the
    /// value lies strictly between 0 and the maximum.
    void slot_ChangeProgressMaxRange(int nMaxRange);
    void slot_ChangeProgressValue(int nValue);
    /// @}

protected:
    /// Puts the panels of the viewer that gets the focus into the docks, however it gets the focus.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Create2D(CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                  CStatusBarDockView* pStatusBarDockView);
    /// Makes the 3D view with its model and controller or, without desktop OpenGL, only a placeholder.
    QWidget* Create3D(CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                      CStatusBarDockView* pStatusBarDockView);
    void ConnectButtons();
    void ConnectModels();
    /// Paints the status bar at once, because the thread does not return to its events.
    void PaintStatusBar();
    /// Shows the bar while the progress lies strictly between 0 and its maximum.
    void UpdateStatusBar();

    QPointer<CImageViewer> m_pViewer;
    QPointer<CImageViewerModel> m_pModel;
    QPointer<CImageView2DToolModel> m_pToolModel;
    std::unique_ptr<CImageView2DModel> m_pImageModel;
    std::unique_ptr<CImageView2DGeometryModel> m_pGeometryModel;
    QPointer<CImageView2D> m_pView2D;
    std::unique_ptr<CImageView2DCtrl> m_pCtrl2D;
    std::unique_ptr<CStatusBarModel> m_pStatusBarModel;
    QPointer<CStatusBarView> m_pStatusBarView;
    std::unique_ptr<CImageView3DModel> m_pModel3D; ///< null with the placeholder, as the controller is
    QPointer<QWidget> m_pView3D;
    std::unique_ptr<CImageView3DCtrl> m_pCtrl3D;
};
