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

namespace Vantor::Geometry
{
class CGeometry;
}

/// The painting surface beneath the 2D view: keeps the two rectangles that tie image pixels to widget pixels,
/// maps between them and paints annotations over what a derived class paints in Paint().
///
/// The viewport is where the image lies, in widget pixels; the window is the part of the image shown, in
/// image pixels. Owned by its Qt parent; the annotations are shared with the geometry model. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableWidget : public QWidget
{
    Q_OBJECT

public:
    /// The tool model (not owned, may be null or die first) decides the mouse cursor.
    CImageView2DDrawableWidget(CImageView2DToolModel* pToolModel, QWidget* pParent);
    ~CImageView2DDrawableWidget() override;

    /// Appends an object to be painted; a null pointer is ignored. Deliberate: duplicates are not looked for,
    /// an object handed in twice is painted twice.
    virtual void DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject);
    /// Takes every object off the list.
    virtual void Clear();
    /// Where the image lies, in widget pixels; at first, and until it is set, the widget as it was made.
    virtual void SetViewPort(const QRect& rect);
    /// The part of the image shown, in image pixels; at first the widget as it was made.
    virtual void SetWindow(const QRect& rect);
    /// A copy of the list, in painting order.
    virtual std::vector<std::shared_ptr<CImageView2DDrawableObject>> GetDrawableObjects();
    /// Paints what lies below the annotations; the painter is untransformed. Nothing here.
    virtual void Paint(QPainter& painter);

    /// Whether objects that have a pen or a brush are painted by them, the width of the pen in widget pixels;
    /// their handles tell the selection. Not at first.
    void SetOwnColors(bool bOwn);

    /// @{
    /// Widget to image coordinates and back. With an empty viewport or window the result is zero.
    /// Deliberate: the window's origin takes no part; image coordinates count from its top-left corner.
    QPointF MapToImage(const QPointF& point) const;
    QRectF MapToImage(const QRectF& rect) const;
    QPointF MapToWidget(const QPointF& point) const;
    QRectF MapToWidget(const QRectF& rect) const;
    /// @}

public Q_SLOTS:
    /// Sets the cursor: an arrow for selecting, four arrows for panning, that of the kind for drawing.
    void slot_ChangeViewMode();

protected:
    /// Paint, then the objects in the order of the list; no objects without a mapping.
    void paintEvent(QPaintEvent* pEvent) override;
    /// The same with any painter, which is untransformed and left with viewport and window.
    void PaintAll(QPainter& painter);

    // The painter of all four maps the window to the viewport; nothing is painted without one.

    /// Draws a shape, green or, when it is selected, red, what else the object paints, and its label.
    /// Deliberate: the object's own pen and brush take no part before SetOwnColors.
    void InternalDrawObject(QPainter* pPainter, std::shared_ptr<CImageView2DDrawableObject> pObject);
    /// Draws the outline of a shape with the painter's pen and brush, polygons left out; r is the radius of a
    /// dot, in image pixels.
    void InternalDrawElementGeometry(QPainter* pPainter, Vantor::Geometry::CGeometry* pGeometry, double r);
    /// Draws a shape with its handles and its dashed bounding box; s is the size of a widget pixel in image
    /// pixels.
    void InternalDrawCompositeGeometry(QPainter* pPainter, Vantor::Geometry::CGeometry* pGeometry, double s);
    /// Draws a text of fixed size on an opaque background, its baseline beginning at the anchor (image
    /// coordinates).
    void InternalDrawText(QPainter* pPainter, QString strText, QPointF anchor, const QPen& pen,
                          const QBrush& background, const QFont& font);

    /// Replaces the list without asking for a repaint.
    void ReplaceDrawableObjects(std::vector<std::shared_ptr<CImageView2DDrawableObject>> vctObjects);

    const QRect& ViewPort() const { return m_rectViewPort; } ///< what SetViewPort was given
    const QRect& Window() const { return m_rectWindow; }     ///< what SetWindow was given
    /// Null when there is none any more.
    CImageView2DToolModel* ToolModel() const;

private:
    bool HasMapping() const;
    bool MayBeSeen(const CImageView2DDrawableObject& object) const;
    void DrawComposite(QPainter& painter, const Vantor::Geometry::CGeometry* pGeometry, double s,
                       const QPen& penHandles, const QBrush& brushHandles);

    QRect m_rectViewPort;
    QRect m_rectWindow;
    QPointer<CImageView2DToolModel> m_pToolModel;
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> m_vctObjects;
    bool m_bOwnColors = false;
};
