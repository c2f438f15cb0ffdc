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
class CImagePainter;
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

    /// Adds an entry to the menu of annotations; func gets the identifiers of view and annotation.
    void RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);
    /// @{
    /// Opens the menu of the image, or of an annotation, at a point of the image; does not block.
    void ShowContextMenu(const QPointF& point);
    void ShowContextMenuDrawableObject(const QPointF& point, unsigned int nUID);
    /// @}

    /// Passes viewport (coordinates within 2^30; the zoom has no upper bound) and window to the layer, too.
    void CalculateViewPort();
    void Repaint(); ///< CalculateViewPort and an update
    void ZoomFit(); ///< the whole image, centred
    /// Pans by the least that shows a part of the image; centres a part that is larger than the view.
    void BringIntoView(const QRectF& part);

    // Points and parts are in image pixels, `fixed` and `pos` in widget pixels. No image, no effect.

    /// Widget pixels per image pixel, 1.0 for 100 %; 0.0 without an image.
    double GetZoom() const;
    /// The image point below `fixed` stays there. The zoom becomes 0.001 to 1000, the nearest to the one
    /// given; a value that is not finite or not above 0 changes nothing.
    void SetZoom(double dblZoom, const QPointF& fixed);
    /// Pans so that the image point lies at `pos`; neither has to lie inside.
    void MovePointTo(const QPointF& point, const QPointF& pos);
    void CenterOn(const QPointF& point); ///< the same with the middle of the view
    /// The image as wide as the view, from the highest row in view on, as far as there are rows.
    void FitWidth();
    /// As much zoom as shows the part, centred; a side below 1 counts as 1.
    void ZoomTo(const QRectF& part);
    /// Whether nobody has zoomed or panned since the whole image was shown.
    bool IsFitted() const;
    /// ZoomTo what the next drag with the left button encloses; Escape or another button ends the waiting.
    void StartZoomBox();
    /// @{
    /// A cross at a point, until a press in the view, another image or ClearMark.
    void SetMark(const QPointF& point);
    void ClearMark();
    /// @}
    /// A small picture of the image in a corner while only a part is in view; a drag there pans. Off at
    /// first.
    void SetMiniMap(bool bShown);
    /// See the members of SCenterOptions with these names. Off at first.
    void SetPlaceOptions(bool bKeepPlace, bool bGotoCentres);
    /// Ends the drag in progress without its End signal; until the next press the mouse merely hovers.
    /// @return whether there was one
    bool CancelDrag();
    /// The same if the buttons of a later event show that the release went elsewhere.
    bool CancelLostDrag(Qt::MouseButtons buttons);

    QRect GetViewPort() const;                           ///< of the whole image, in widget pixels
    double GetSizePixel() const;                         ///< as GetZoom, of whole widget pixels along x
    CImageView2DLayer* GetLayerDrawing() const;          ///< on top, belongs to the view; never null
    CImageView2DGeometryModel* GetGeometryModel() const; ///< null when it no longer exists
    unsigned int GetImageUID() const;                    ///< 0xFFFFFFFF without an image
    int GetViewID() const { return m_nViewID; }          ///< as given at construction
    /// The options of SCenterOptions with these names. Both are off at first.
    void SetImageLook(bool bSmoothReduction, bool bCheckerboard);

    void DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject) override;
    void Clear() override;
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> GetDrawableObjects() override;
    void Paint(QPainter& painter) override;
    /// Writes the channel bytes of the pixel (x, y) into its cell, one line each; nothing into a cell that is
    /// too low, or for two channels. The scales are widget pixels per image pixel.
    void DrawPixelValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y,
                        double dblScaleX, double dblScaleY);
    /// Becoming visible announces signal_Active.
    void setVisible(bool bVisible) override;

    // A receiver that changes a point passed by reference changes only what the next receiver gets.
Q_SIGNALS:
    /// GetZoom has changed.
    void signal_ChangeZoom();
    /// Somebody has zoomed or panned; not for another size or image.
    void signal_ChangePlace();
    /// The view was shown or pressed, so its panels belong in the docks.
    void signal_Active();
    /// @{
    /// The user chose it in the menu of the image, or by the platform's key; the receiver does the work.
    void signal_LoadImage();
    void signal_LoadPdf();
    void signal_SaveImage();
    void signal_CloseImage();
    void signal_Copy();
    void signal_Paste();
    void signal_Undo();
    void signal_Redo();
    /// @}
    /// The mouse is over this point, in image coordinates, which may lie outside the image.
    void signal_ChangeMousePosition(QPointF& mousePos);
    /// The user pressed a key of Qt::Key; emitted before the key's own signal, if it has one.
    void signal_PressKey(int nkey);
    /// @{
    /// A drag with the left button in the mode of the tool model, in image coordinates: Start at the press,
    /// Doing at each move and End at the release, both with the press point and the current one. In selecting
    /// mode a release at the press point emits no End. A polygon's edge is one drag; the Waiting signals
    /// follow the mouse between drags. An interrupted drag (CancelDrag) has no End. DrawShape is of any other
    /// kind of ShapeKinds.
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
    void signal_DrawShapeStart(QPointF& pointStart);
    void signal_DrawShapeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawShapeEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_DrawShapeWaiting(QPointF& point);
    /// @}
    /// The mouse hovers here in selecting mode, in image coordinates; the receiver looks for a handle.
    void signal_CheckResizeRotate(QPointF& point);
    /// @{
    /// Never emitted: for hosts, and because resizing uses the SelectMoving signals.
    void signal_CopyDrawableObject();
    void signal_PasteDrawableObject();
    void signal_SelectResizeStart(QPointF& pointStart);
    void signal_SelectResizeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_SelectResizeEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// The user asks for a menu at this point, in image coordinates; the receiver decides which one.
    void signal_ShowContextMenu(QPointF& point);
    /// "Delete" in the menu of an annotation; the receiver deletes the selection.
    void signal_DeleteDrawableObject();
    /// The user dropped a file on the view: its path, empty if it is not local.
    void signal_AddImage(QString file);
    /// "Switch To 3D View" in the menu of the image.
    void signal_Switch2DTo3D();

public Q_SLOTS:
    /// Emits signal_ShowContextMenu for a point in widget pixels.
    void slot_ShowContextMenu(const QPoint& pos);
    /// Shows the model's current image, without a copy, and fits it; without one the view is empty. A
    /// deferred image is an empty sheet until the model tells that its pixels have come.
    void slot_ChangeCurrentImage();
    /// Deliberate: whatever the identifier, takes the whole list from the geometry model, once before the
    /// view next paints or returns the list.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// @{
    /// Deliberate: does nothing; slot_ChangeDrawableObjectProperty updates the list.
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    /// @}
    void slot_ClearObject(); ///< calls Clear
    void slot_ZoomFit();     ///< calls ZoomFit
    /// Asks for an image position and pans by it; blocks while the dialog is open; does nothing without an
    /// image. Deliberate: the position becomes the pan unchanged, whatever the zoom.
    void slot_Goto();
    /// Calls the function of the menu entry that emits the signal, with the annotation of the menu.
    void slot_CallbackDrawableObject();

protected:
    /// @{
    /// The wheel zooms about the mouse, by a thousandth for each unit (a notch is 120); keys without a
    /// meaning go on to the parent; anything with a URL may be dropped.
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
    struct SPlaceParts;

    void Moved();
    void CreateMenus();
    void ConnectModels();
    bool IsWaiting() const;
    QSize ImageSize() const;
    bool TakePixels();
    void TakePixelsThatCame(int nIndex);
    void DrawWaiting(QPainter& painter);
    void DrawCrosshair(QPainter& painter);
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
    std::unique_ptr<SPlaceParts> m_pPlace;
    std::unique_ptr<CPixelStamps> m_pStamps;
    std::unique_ptr<CImagePainter> m_pPainter;
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
