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
/// The models are not owned and may die first; the view belongs to its Qt parent. A layer on top of it paints
/// the objects being drawn. GUI thread; a mutex guards the current image against painting.
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

    /// Works viewport and window out from the zoom state and hands both to the layer. Coordinates of the
    /// viewport stay within 2^30; the zoom has no upper bound.
    void CalculateViewPort();
    /// CalculateViewPort and a repaint.
    void Repaint();
    /// The whole image, centred.
    void ZoomFit();
    /// Pans by as little as shows a part of the image; in the middle, when it is larger than the view.
    void BringIntoView(const QRectF& part);
    /// Ends the drag in progress without its End signal; until the next press the mouse merely hovers.
    /// @return whether there was one
    bool CancelDrag();
    /// The same if, by the buttons of a later event, the release has gone elsewhere.
    bool CancelLostDrag(Qt::MouseButtons buttons);

    /// Where the whole image lies, in widget pixels.
    QRect GetViewPort() const;
    /// Widget pixels per image pixel along x, 0.0 for an empty window.
    double GetSizePixel() const;
    /// The layer on top, which belongs to the view. Never null.
    CImageView2DLayer* GetLayerDrawing() const;
    /// The annotations; null when the model is gone.
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
    /// white, or one in white for grey; the scales are widget pixels per image pixel. Nothing when the cell
    /// is too low for one line per channel, and nothing for two channels.
    void DrawPixelValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y,
                        double dblScaleX, double dblScaleY);
    /// Becoming visible announces signal_Active.
    void setVisible(bool bVisible) override;

    // Points that go out by reference are the emitter's own: a receiver that changes one changes what the
    // next receiver gets, and nothing else.
Q_SIGNALS:
    /// The view was shown or pressed: its panels belong into the docks.
    void signal_Active();
    /// @{
    /// Chosen in the menu of the image, copy and paste also by their keys; whoever receives it does the work.
    void signal_LoadImage();
    void signal_LoadPdf();
    void signal_SaveImage();
    void signal_CloseImage();
    void signal_Copy();
    void signal_Paste();
    /// @}
    /// The mouse is over this point, in image coordinates, which may lie outside the image.
    void signal_ChangeMousePosition(QPointF& mousePos);
    /// A key of Qt::Key was pressed; sent before the signal that the key may have of its own.
    void signal_PressKey(int nkey);
    /// @{
    /// The platform's key for it was pressed.
    void signal_Undo();
    void signal_Redo();
    /// @}
    /// @{
    /// A drag with the left button in the mode of the tool model, in image coordinates: Start at the press,
    /// Doing at each move and End at the release, these with the press point and the present one. In
    /// selecting mode a release where the press was sends no End. A polygon's edge is one drag;
    /// signal_DrawPolygonWaiting follows the mouse between them. What was interrupted (CancelDrag) has no
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
    /// The mouse hovers there in selecting mode, in image coordinates: is there a handle?
    void signal_CheckResizeRotate(QPointF& point);
    /// @{
    /// Never emitted: resizing goes by the SelectMoving signals.
    void signal_SelectResizeStart(QPointF& pointStart);
    void signal_SelectResizeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_SelectResizeEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// A menu is wanted at this point, in image coordinates; the receiver decides which one.
    void signal_ShowContextMenu(QPointF& point);
    /// "Delete" in the menu of an annotation: what is selected shall go.
    void signal_DeleteDrawableObject();
    /// @{
    /// Never emitted; for hosts.
    void signal_CopyDrawableObject();
    void signal_PasteDrawableObject();
    /// @}
    /// A file was dropped on the view: its path, empty for what is not local.
    void signal_AddImage(QString file);
    /// "Switch To 3D View" in the menu of the image.
    void signal_Switch2DTo3D();

public Q_SLOTS:
    /// Emits signal_ShowContextMenu for a point in widget pixels.
    void slot_ShowContextMenu(const QPoint& pos);
    /// Takes the model's current image over, without a copy, and fits it; without one the view is empty.
    void slot_ChangeCurrentImage();
    /// Deliberate: the identifier is not used, the whole list is taken over from the geometry model. That
    /// happens late, once before the list is painted or read.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// @{
    /// Deliberate: nothing; the list follows by slot_ChangeDrawableObjectProperty.
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    /// @}
    /// All annotations are gone: Clear.
    void slot_ClearObject();
    /// ZoomFit.
    void slot_ZoomFit();
    /// Asks for an image position and pans by it; blocks until the dialog is closed. Without an image
    /// nothing. Deliberate: the position becomes the pan as it is, whatever the zoom.
    void slot_Goto();
    /// Calls the function of the menu entry that sends the signal, with the annotation the menu was opened
    /// for.
    void slot_CallbackDrawableObject();

protected:
    /// @{
    /// Turned into the signals above. The wheel zooms about the mouse, by a thousandth for each unit (a notch
    /// is 120); keys that mean nothing here go on to the parent; whatever has an URL may be dropped.
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
    void ShowCrosshair(const QPoint& pos);
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
