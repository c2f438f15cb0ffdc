// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QRect>
#include <QRectF>
#include <QWidget>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;
class CImageView2DToolModel;
class QBrush;
class QFont;
class QPen;
class QRegion;
struct SObjectLabel;

namespace Vantor::Geometry
{
class CGeometry;
}

/// The painting surface beneath the 2D view: keeps the two rectangles that map image pixels to widget pixels,
/// maps between them and paints annotations over the output of a derived class's Paint().
///
/// The viewport is the rectangle of the image, in widget pixels; the window is the visible part of the image,
/// in image pixels. The Qt parent owns the widget, which shares the annotations with the geometry model. What
/// has changed is painted anew with all that meets it; the pixels are those of a paint of the whole. GUI
/// thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableWidget : public QWidget
{
    Q_OBJECT

public:
    /// The tool model (not owned, may be null or destroyed first) decides the mouse cursor.
    CImageView2DDrawableWidget(CImageView2DToolModel* pToolModel, QWidget* pParent);
    ~CImageView2DDrawableWidget() override;

    /// Appends an object to paint; ignores null. Deliberate: does not look for duplicates and paints an
    /// object passed twice twice.
    virtual void DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject);
    /// Empties the list of objects.
    virtual void Clear();
    /// The rectangle of the image, in widget pixels; until it is set, the initial rectangle of the widget.
    virtual void SetViewPort(const QRect& rect);
    /// The visible part of the image, in image pixels; until it is set, the initial rectangle of the widget.
    virtual void SetWindow(const QRect& rect);
    /// A copy of the list, in painting order.
    virtual std::vector<std::shared_ptr<CImageView2DDrawableObject>> GetDrawableObjects();
    /// Paints the ground below the annotations; the painter is untransformed. The base paints nothing.
    virtual void Paint(QPainter& painter);

    /// Whether objects with a pen or a brush of their own are painted with them, the width of the pen in
    /// widget pixels, and show only by their handles that they are selected. Off at first.
    void SetOwnColors(bool bOwn);

    /// @{
    /// Widget to image coordinates and back. With an empty viewport or window the result is zero. Deliberate:
    /// the window's origin does not count; image coordinates begin at its top-left corner.
    QPointF MapToImage(const QPointF& point) const;
    QRectF MapToImage(const QRectF& rect) const;
    QPointF MapToWidget(const QPointF& point) const;
    QRectF MapToWidget(const QRectF& rect) const;
    /// @}

public Q_SLOTS:
    /// Sets the cursor: an arrow for selecting, four arrows for panning, the kind's cursor for drawing.
    void slot_ChangeViewMode();

protected:
    /// Calls Paint, then draws the objects in the order of the list; no objects without a mapping.
    void paintEvent(QPaintEvent* pEvent) override;
    /// The same with any untransformed painter; it keeps viewport and window afterwards.
    void PaintAll(QPainter& painter);

    // In all four the painter maps the window to the viewport; without one they paint nothing.

    /// Draws a shape, green or, if selected, red, the object's own additions, and its label. Deliberate: the
    /// object's own pen and brush have no effect before SetOwnColors.
    void InternalDrawObject(QPainter* pPainter, std::shared_ptr<CImageView2DDrawableObject> pObject);
    /// Draws the outline of a shape, without polygons, with the painter's pen and brush; r is the radius of a
    /// dot, in image pixels.
    void InternalDrawElementGeometry(QPainter* pPainter, Vantor::Geometry::CGeometry* pGeometry, double r);
    /// Draws a shape with its handles and its dashed bounding box; s is the size of a widget pixel in image
    /// pixels.
    void InternalDrawCompositeGeometry(QPainter* pPainter, Vantor::Geometry::CGeometry* pGeometry, double s);
    /// Draws a text of fixed size on an opaque background, its baseline beginning at the anchor (image
    /// coordinates).
    void InternalDrawText(QPainter* pPainter, QString strText, QPointF anchor, const QPen& pen,
                          const QBrush& background, const QFont& font);

    /// Asks for a repaint of what has changed in the list and its objects, which is found out once, behind
    /// the events that are pending.
    void UpdateObjects();
    /// The same after a change of an object, given by its identifier.
    void UpdateObject(unsigned int nUID);
    /// Keeps a copy of what the screen shows while there are objects, so that a change paints only the
    /// rectangles in which it lies, and what moves above the widget costs a copy. An update of the whole
    /// widget paints everything anew. Paint must be opaque.
    void KeepPicture();
    /// Tells which parts of the widget Paint paints differently for a while, such as a crosshair, in widget
    /// pixels, and asks for a repaint of these and the former ones.
    void SetMarks(const std::vector<QRect>& vctMarks);

    /// Replaces the list without asking for a repaint.
    void ReplaceDrawableObjects(std::vector<std::shared_ptr<CImageView2DDrawableObject>> vctObjects);

    const QRect& ViewPort() const { return m_rectViewPort; } ///< as passed to SetViewPort
    const QRect& Window() const { return m_rectWindow; }     ///< as passed to SetWindow
    /// Null when it no longer exists.
    CImageView2DToolModel* ToolModel() const;

private:
    struct SUpdates;

    bool HasMapping() const;
    bool MayBeSeen(const CImageView2DDrawableObject& object) const;
    bool HasShiftedWindow() const;
    double Steepness() const;
    QRectF BoxExtent(const CImageView2DDrawableObject& object) const;
    QRectF LabelExtent(const SObjectLabel& label) const;
    SObjectLabel SecondLine(const SObjectLabel& label) const;
    void DrawLabel(QPainter& painter, const SObjectLabel& label);
    QRect Extent(const CImageView2DDrawableObject& object) const;
    bool Meets(const QRectF& rect) const;
    bool MeetsAround(const QPointF& place, double dblReach) const;
    bool MeetsLabel(const SObjectLabel& label) const;
    void UpdateAll();
    void Follow();
    void UpdateChanged();
    bool PaintKept(QPainter& painter, const QRegion& region);
    void PaintPart(QPainter& painter, const QRect& part);
    void DrawVisible(QPainter& painter, const CImageView2DDrawableObject& object);
    void DrawComposite(QPainter& painter, const Vantor::Geometry::CGeometry* pGeometry, double s,
                       const QPen& penHandles, const QBrush& brushHandles);

    QRect m_rectViewPort;
    QRect m_rectWindow;
    QPointer<CImageView2DToolModel> m_pToolModel;
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> m_vctObjects;
    std::unique_ptr<SUpdates> m_pUpdates;
    bool m_bOwnColors = false;
};
