// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>

#include <QImage>
#include <QMutex>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>

class CImageView2DGeometryModel;
class CImageView2DLayer;
class CImageView2DModel;
class CPixelStamps;
class QAction;
class QIcon;
class QMenu;

namespace Vantor::Algorithms
{
class CImage;
}

/// Shows the current image of a list: fits it, zooms about the mouse, pans, shows the pixel values once a
/// pixel is 50 widget pixels wide, and turns mouse, keys, drops and context menus into signals in image
/// coordinates.
///
/// The models are not owned and may be destroyed first; the Qt parent owns the view. A layer on top of it
/// paints the objects being drawn. GUI thread; a mutex guards the current image while the view paints.
class VANTORCOMMON_EXPORT CImageView2D : public CImageView2DDrawableWidget
{
    Q_OBJECT

public:
    /// Empty until the model changes its current image. The parent owns the view; the models may be null.
    CImageView2D(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                 CImageView2DToolModel* pToolModel, int nViewID, QWidget* pParent);
    ~CImageView2D() override;

    /// Adds an entry to the menu of annotations; the function gets the view's identifier and the
    /// annotation's. An empty function does nothing.
    void RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);
    /// @{
    /// Opens the menu of the image, or of the annotation with the identifier, at a point of the image. Does
    /// not block.
    void ShowContextMenu(const QPointF& point);
    void ShowContextMenuDrawableObject(const QPointF& point, unsigned int nUID);
    /// @}

    /// Computes viewport and window from the zoom state and passes both to the layer. Coordinates of the
    /// viewport stay within 2^30; the zoom has no upper bound.
    void CalculateViewPort();
    /// CalculateViewPort and a repaint.
    void Repaint();
    /// The whole image, centred.
    void ZoomFit();
    /// Pans by the least that shows a part of the image; centres a part that is larger than the view.
    void BringIntoView(const QRectF& part);
    /// Ends the drag in progress without its End signal; until the next press the mouse merely hovers.
    /// @return whether there was one
    bool CancelDrag();
    /// The same if the buttons of a later event show that the release went elsewhere.
    bool CancelLostDrag(Qt::MouseButtons buttons);

    /// The rectangle of the whole image, in widget pixels.
    QRect GetViewPort() const;
    /// Widget pixels per image pixel along x, 0.0 for an empty window.
    double GetSizePixel() const;
    /// The layer on top, which belongs to the view. Never null.
    CImageView2DLayer* GetLayerDrawing() const;
    /// The annotations; null when the model no longer exists.
    CImageView2DGeometryModel* GetGeometryModel() const;
    /// Identifier of the image shown, 0xFFFFFFFF without one.
    unsigned int GetImageUID() const;
    /// The identifier given at construction.
    int GetViewID() const { return m_nViewID; }

    void DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject) override;
    void Clear() override;
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> GetDrawableObjects() override;
    void Paint(QPainter& painter) override;
    /// Writes the channel bytes of the pixel (x, y) into its cell, one line each in red, green, blue and
    /// white, or one in white for grey; the scales are widget pixels per image pixel. Writes nothing when the
    /// cell is too low for one line per channel, or for two channels.
    void DrawPixelValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y,
                        double dblScaleX, double dblScaleY);
    /// Becoming visible announces signal_Active.
    void setVisible(bool bVisible) override;

    // Points passed by reference belong to the emitter: a receiver that changes one changes only what the
    // next receiver gets.
Q_SIGNALS:
    /// The view was shown or pressed, so its panels belong in the docks.
    void signal_Active();
    /// @{
    /// The user chose it in the menu of the image, or copy and paste by their keys; the receiver does the
    /// work.
    void signal_LoadImage();
    void signal_LoadPdf();
    void signal_SaveImage();
    void signal_CloseImage();
    void signal_Copy();
    void signal_Paste();
    /// @}
    /// The mouse is over this point, in image coordinates, which may lie outside the image.
    void signal_ChangeMousePosition(QPointF& mousePos);
    /// The user pressed a key of Qt::Key; emitted before the key's own signal, if it has one.
    void signal_PressKey(int nkey);
    /// @{
    /// The user pressed the platform's key for it.
    void signal_Undo();
    void signal_Redo();
    /// @}
    /// @{
    /// A drag with the left button in the mode of the tool model, in image coordinates: Start at the press,
    /// Doing at each move and End at the release, both with the press point and the current one. In selecting
    /// mode a release at the press point emits no End. A polygon's edge is one drag;
    /// signal_DrawPolygonWaiting follows the mouse between drags. An interrupted drag (CancelDrag) has no
    /// End.
    void signal_SelectMovingStart(QPointF& pointStart);
    void signal_SelectMovingDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_SelectMovingEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawRectangleStart(QPointF& pointStart);
    void signal_DrawRectangleDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawRectangleEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawEllipseStart(QPointF& pointStart);
    void signal_DrawEllipseDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawEllipseEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawPolygonStart(QPointF& pointStart);
    void signal_DrawPolygonDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawPolygonEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawPolygonWaiting(QPointF& point);
    void signal_DrawCircleStart(QPointF& pointStart);
    void signal_DrawCircleDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawCircleEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawLineStart(QPointF& pointStart);
    void signal_DrawLineDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawLineEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// @{
    /// The same in the mode of any other kind of ShapeKinds.
    void signal_DrawShapeStart(QPointF& pointStart);
    void signal_DrawShapeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawShapeEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawShapeWaiting(QPointF& point);
    /// @}
    /// The mouse hovers at this point in selecting mode, in image coordinates; the receiver looks for a
    /// handle.
    void signal_CheckResizeRotate(QPointF& point);
    /// @{
    /// Never emitted: resizing uses the SelectMoving signals.
    void signal_SelectResizeStart(QPointF& pointStart);
    void signal_SelectResizeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_SelectResizeEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// The user asks for a menu at this point, in image coordinates; the receiver decides which one.
    void signal_ShowContextMenu(QPointF& point);
    /// "Delete" in the menu of an annotation; the receiver deletes the selection.
    void signal_DeleteDrawableObject();
    /// @{
    /// Never emitted; for hosts.
    void signal_CopyDrawableObject();
    void signal_PasteDrawableObject();
    /// @}
    /// The user dropped a file on the view: its path, empty if it is not local.
    void signal_AddImage(QString file);
    /// "Switch To 3D View" in the menu of the image.
    void signal_Switch2DTo3D();

public Q_SLOTS:
    /// Emits signal_ShowContextMenu for a point in widget pixels.
    void slot_ShowContextMenu(const QPoint& pos);
    /// Shows the model's current image, without a copy, and fits it; without one the view is empty.
    void slot_ChangeCurrentImage();
    /// Deliberate: whatever the identifier, takes the whole list from the geometry model, once before the
    /// view next paints or returns the list.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// @{
    /// Deliberate: does nothing; slot_ChangeDrawableObjectProperty updates the list.
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    /// @}
    /// All annotations are gone: Clear.
    void slot_ClearObject();
    /// ZoomFit.
    void slot_ZoomFit();
    /// Asks for an image position and pans by it; blocks until the dialog is closed. Does nothing without an
    /// image. Deliberate: the position becomes the pan unchanged, whatever the zoom.
    void slot_Goto();
    /// Calls the function of the menu entry that emits the signal, with the annotation of the menu.
    void slot_CallbackDrawableObject();

protected:
    /// @{
    /// Emit the signals above. The wheel zooms about the mouse, by a thousandth for each unit (a notch is
    /// 120); keys without a meaning here go on to the parent; anything with a URL may be dropped.
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
    /// @}

private:
    struct SZoomState;

    void CreateMenus();
    void ConnectModels();
    QRectF VisibleImageRect(double dblScaleX, double dblScaleY) const;
    void DrawImage(QPainter& painter, const QRectF& source);
    void DrawCrosshair(QPainter& painter);
    void DrawGrid(QPainter& painter, const QRectF& source);
    void DrawPixelValues(QPainter& painter, const QRectF& source, double dblScaleY);
    void WriteValues(const unsigned char* pPixel, int nChannels, int x, int y, double dblScaleY);
    void RebuildPaintList();
    void ShowMenu(QMenu* pMenu, const QPointF& point);
    bool IsPanning() const;
    void ShowCrosshair(const QPoint* pPos);
    void Pan(const QPoint& pos);
    void DoMove(const QPoint& pos);

    QPointer<CImageView2DModel> m_pModel;
    QPointer<CImageView2DGeometryModel> m_pGeometryModel;
    QImage m_image;
    std::unique_ptr<SZoomState> m_pZoom;
    std::unique_ptr<CPixelStamps> m_pStamps;
    QMenu* m_pMenuImage = nullptr;
    QMenu* m_pMenuObject = nullptr;
    CImageView2DLayer* m_pLayer = nullptr;
    std::map<QAction*, std::function<void(int, unsigned int)>> m_mapActions;
    bool m_bLeftDown = false;
    bool m_bHeld = false;  ///< the button was really down at the press
    bool m_bMoved = false; ///< the drag has sent a Doing signal
    int m_nLastX = 0;
    int m_nLastY = 0;
    unsigned int m_nMenuUID = 0;
    int m_nViewID;
    bool m_bDragging = false;
    std::shared_ptr<Vantor::Algorithms::CImage> m_pImage;
    mutable QMutex m_mutexImage;
    bool m_bListIsOld = false;
};
