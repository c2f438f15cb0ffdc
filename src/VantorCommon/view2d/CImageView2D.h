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
    CImageView2D(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                 CImageView2DToolModel* pToolModel, int nViewID, QWidget* pParent);
    ~CImageView2D() override;

    /// Adds an entry to the menu of annotations; the function gets the view's identifier and the
    /// annotation's.
    void RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);
    /// Opens the menu of the image, or of an annotation, at a point of the image. Does not block.
    void ShowContextMenu(const QPointF& point);
    void ShowContextMenuDrawableObject(const QPointF& point, unsigned int nUID);

    /// Works viewport and window out from the zoom state and hands both to the layer.
    void CalculateViewPort();
    /// CalculateViewPort and a repaint.
    void Repaint();
    /// The whole image, centred.
    void ZoomFit();
    /// Ends the drag in progress without its End signal; until the next press the mouse merely hovers.
    /// @return whether there was one
    bool CancelDrag();
    /// The same if, by the buttons of a later event, the release has gone elsewhere.
    bool CancelLostDrag(Qt::MouseButtons buttons);

    QRect GetViewPort() const;
    /// Widget pixels per image pixel along x, 0.0 for an empty window.
    double GetSizePixel() const;
    CImageView2DLayer* GetLayerDrawing() const;
    CImageView2DGeometryModel* GetGeometryModel() const;
    /// Identifier of the image shown, 0xFFFFFFFF without one.
    unsigned int GetImageUID() const;
    int GetViewID() const { return m_nViewID; }

    void DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject) override;
    void Clear() override;
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> GetDrawableObjects() override;
    void Paint(QPainter& painter) override;
    /// Writes the channel bytes of the pixel (x, y) into its cell; the scales are widget pixels per image
    /// pixel. Nothing when the cell is too low for one line per channel, and nothing for two channels.
    void DrawPixelValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y,
                        double dblScaleX, double dblScaleY);
    void setVisible(bool bVisible) override;

Q_SIGNALS:
    void signal_Active();
    void signal_LoadImage();
    void signal_LoadPdf();
    void signal_SaveImage();
    void signal_CloseImage();
    void signal_Copy();
    void signal_Paste();
    void signal_ChangeMousePosition(QPointF& mousePos);
    void signal_PressKey(int nkey);
    void signal_Undo();
    void signal_Redo();
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
    void signal_CheckResizeRotate(QPointF& point);
    void signal_SelectResizeStart(QPointF& pointStart);
    void signal_SelectResizeDoing(QPointF& pointStart, QPointF& pointEnd);
    void signal_SelectResizeEnd(QPointF& pointStart, QPointF& pointEnd);
    void signal_ShowContextMenu(QPointF& point);
    void signal_DeleteDrawableObject();
    void signal_CopyDrawableObject();
    void signal_PasteDrawableObject();
    void signal_AddImage(QString file);
    void signal_Switch2DTo3D();

public Q_SLOTS:
    void slot_ShowContextMenu(const QPoint& pos);
    void slot_ChangeCurrentImage();
    /// Deliberate: the identifier is not used, the whole list is taken over from the geometry model. That
    /// happens late, once before the list is painted or read.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
    /// Deliberate: nothing; the list follows by slot_ChangeDrawableObjectProperty.
    void slot_DeleteDrawableObject(unsigned int nUID, QString strName);
    void slot_AddDrawableObject(unsigned int nUID, QString strName);
    void slot_ClearObject();
    void slot_ZoomFit();
    /// Asks for an image position and pans there. Without an image nothing.
    void slot_Goto();
    void slot_CallbackDrawableObject();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

private:
    /// Where the image lies. Fit and 100 % zoom put the image in "unzoomed" widget pixels.
    struct SZoomState {
        double dblAnchorX = 0.0; ///< unzoomed widget pixels
        double dblAnchorY = 0.0;
        double dblWheelX = 0.0; ///< the same anchor in widget pixels: the last wheel position
        double dblWheelY = 0.0;
        double dblCrossX = 0.0; ///< crosshair, widget pixels
        double dblCrossY = 0.0;
        double dblZoom = 1.0; ///< 1.0 fits the image into the widget
        double dblPanX = 0.0; ///< unzoomed widget pixels
        double dblPanY = 0.0;
    };

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
    bool m_bRightDown = false;
    int m_nLastX = 0;
    int m_nLastY = 0;
    unsigned int m_nMenuUID = 0;
    int m_nViewID;
    bool m_bDragging = false;
    std::shared_ptr<Vantor::Algorithms::CImage> m_pImage;
    mutable QMutex m_mutexImage;
    bool m_bListIsOld = false;
};
