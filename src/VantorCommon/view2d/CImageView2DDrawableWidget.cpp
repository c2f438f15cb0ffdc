// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>
#include <VantorCommon/view2d/DrawableWidgetUpdates_p.h>
#include <VantorCommon/view2d/DrawnSizes_p.h>

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

using namespace Vantor::Geometry;

namespace
{
const QColor kBoxColor(100, 100, 100, 255);
const QColor kLabelColor(255, 255, 255, 255);
const QColor kLabelBackground(10, 10, 10, 255);

QPen OutlinePen(const QColor& color, double dblWidth, Qt::PenStyle style = Qt::SolidLine)
{
    return QPen(QBrush(color, Qt::SolidPattern), dblWidth, style, Qt::SquareCap, Qt::BevelJoin);
}

/// An object's own pen: its width counts widget pixels, each of s image pixels.
QPen OwnPen(const CImageView2DDrawableObject& object, double s)
{
    QPen pen = object.GetPen();
    pen.setWidthF(std::max(1.0, pen.widthF()) * s);
    return pen;
}

void DrawDot(QPainter& painter, double x, double y, double r)
{
    painter.drawEllipse(QRectF(x - r, y - r, 2 * r, 2 * r));
}

QVector<QPointF> PointsOf(const SOutline& piece)
{
    QVector<QPointF> vctPoints;
    vctPoints.reserve(static_cast<int>(piece.vctPlaces.size()));
    for (const SPlace& place : piece.vctPlaces)
        vctPoints << QPointF(place.x, place.y);
    return vctPoints;
}

/// The box of the first two points, as far as there are any.
QRectF BoxOf(const SOutline& piece)
{
    if (piece.vctPlaces.size() < 2)
        return {};
    const SPlace& a = piece.vctPlaces[0];
    const SPlace& b = piece.vctPlaces[1];
    return QRectF(a.x, a.y, b.x - a.x, b.y - a.y);
}

/// Draws a dot with the radius r, in image pixels.
void DrawPiece(QPainter& painter, const SOutline& piece, double r)
{
    switch (piece.eForm) {
    case EOutlineForm_Dot:
        for (const SPlace& place : piece.vctPlaces)
            DrawDot(painter, place.x, place.y, r);
        break;
    case EOutlineForm_Chain:
        painter.drawPolyline(PointsOf(piece));
        break;
    case EOutlineForm_Polygon:
        painter.drawPolygon(PointsOf(piece), Qt::OddEvenFill);
        break;
    case EOutlineForm_Box:
        painter.drawRect(BoxOf(piece));
        break;
    case EOutlineForm_Ellipse:
        painter.drawEllipse(BoxOf(piece));
        break;
    }
}
} // namespace

CImageView2DDrawableWidget::CImageView2DDrawableWidget(CImageView2DToolModel* pToolModel, QWidget* pParent)
    : QWidget(pParent), m_rectViewPort(0, 0, width(), height()), m_rectWindow(0, 0, width(), height()),
      m_pToolModel(pToolModel), m_pUpdates(std::make_unique<SUpdates>())
{
    setAttribute(Qt::WA_MouseTracking);
    if (m_pToolModel)
        connect(m_pToolModel.data(), &CImageView2DToolModel::signal_ChangeViewMode, this,
                &CImageView2DDrawableWidget::slot_ChangeViewMode);
}

CImageView2DDrawableWidget::~CImageView2DDrawableWidget() = default;

void CImageView2DDrawableWidget::DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject)
{
    if (!pObject)
        return;
    m_vctObjects.push_back(std::move(pObject));
    UpdateObjects();
}

void CImageView2DDrawableWidget::Clear()
{
    m_vctObjects.clear();
    UpdateObjects();
}

void CImageView2DDrawableWidget::SetViewPort(const QRect& rect)
{
    m_rectViewPort = rect;
    UpdateAll();
}

void CImageView2DDrawableWidget::SetWindow(const QRect& rect)
{
    m_rectWindow = rect;
    UpdateAll();
}

std::vector<std::shared_ptr<CImageView2DDrawableObject>> CImageView2DDrawableWidget::GetDrawableObjects()
{
    return m_vctObjects;
}

void CImageView2DDrawableWidget::SetOwnColors(bool bOwn)
{
    m_bOwnColors = bOwn;
    UpdateAll();
}

void CImageView2DDrawableWidget::Paint(QPainter&)
{
}

void CImageView2DDrawableWidget::ReplaceDrawableObjects(
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> vctObjects)
{
    m_vctObjects = std::move(vctObjects);
    m_vctObjects.erase(std::remove(m_vctObjects.begin(), m_vctObjects.end(), nullptr), m_vctObjects.end());
    m_pUpdates->bCompare = true;
}

bool CImageView2DDrawableWidget::HasMapping() const
{
    return !m_rectViewPort.isEmpty() && !m_rectWindow.isEmpty();
}

QPointF CImageView2DDrawableWidget::MapToImage(const QPointF& point) const
{
    if (!HasMapping())
        return QPointF();
    const double dblWw = m_rectWindow.width();
    const double dblWh = m_rectWindow.height();
    return QPointF((point.x() - m_rectViewPort.left()) * dblWw / m_rectViewPort.width(),
                   (point.y() - m_rectViewPort.top()) * dblWh / m_rectViewPort.height());
}

QRectF CImageView2DDrawableWidget::MapToImage(const QRectF& rect) const
{
    const QPointF topLeft = MapToImage(rect.topLeft());
    const QPointF bottomRight = MapToImage(QPointF(rect.left() + rect.width(), rect.top() + rect.height()));
    return QRectF(topLeft.x(), topLeft.y(), bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y());
}

QPointF CImageView2DDrawableWidget::MapToWidget(const QPointF& point) const
{
    if (!HasMapping())
        return QPointF();
    const double dblVw = m_rectViewPort.width();
    const double dblVh = m_rectViewPort.height();
    return QPointF(dblVw / m_rectWindow.width() * point.x() + m_rectViewPort.left(),
                   dblVh / m_rectWindow.height() * point.y() + m_rectViewPort.top());
}

QRectF CImageView2DDrawableWidget::MapToWidget(const QRectF& rect) const
{
    const QPointF topLeft = MapToWidget(rect.topLeft());
    const QPointF bottomRight = MapToWidget(QPointF(rect.left() + rect.width(), rect.top() + rect.height()));
    return QRectF(topLeft.x(), topLeft.y(), bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y());
}

CImageView2DToolModel* CImageView2DDrawableWidget::ToolModel() const
{
    return m_pToolModel;
}

void CImageView2DDrawableWidget::slot_ChangeViewMode()
{
    if (!m_pToolModel)
        return;
    const int nMode = m_pToolModel->GetViewMode();
    if (nMode == EImageView2DMode_Selecting)
        setCursor(Qt::ArrowCursor);
    else if (nMode == EImageView2DMode_Panning)
        setCursor(Qt::SizeAllCursor);
    else if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode))
        setCursor(pKind->eCursor);
}

void CImageView2DDrawableWidget::InternalDrawObject(QPainter* pPainter,
                                                    std::shared_ptr<CImageView2DDrawableObject> pObject)
{
    if (pPainter && pObject && HasMapping() && MayBeSeen(*pObject))
        DrawVisible(*pPainter, *pObject);
}

void CImageView2DDrawableWidget::DrawVisible(QPainter& painter, const CImageView2DDrawableObject& object)
{
    const double s = double(m_rectWindow.width()) / m_rectViewPort.width();
    const bool bSelected = object.GetSelected();
    const QPen pen = OutlinePen(bSelected ? ObjectLook::kSelectedColor : ObjectLook::kColor, s);
    QBrush brush(Qt::NoBrush);
    if (ShapeKinds::IsRegion(object))
        brush = QBrush(bSelected ? ObjectLook::kSelectedFill : ObjectLook::kFill, Qt::SolidPattern);
    const bool bOwn = m_bOwnColors && ObjectLook::IsOwn(object);
    painter.setPen(bOwn ? OwnPen(object, s) : pen);
    painter.setBrush(bOwn ? object.GetBrushFilled() : brush);
    object.PaintContents(painter, s);
    if (const auto* pShape = dynamic_cast<const CImageView2DDrawableGeometry*>(&object))
        DrawComposite(painter, pShape->GetData().get(), s, pen, bOwn ? QBrush(Qt::NoBrush) : brush);
    const SObjectLabel label = object.GetLabel();
    DrawLabel(painter, label);
    DrawLabel(painter, SecondLine(label));
}

void CImageView2DDrawableWidget::DrawLabel(QPainter& painter, const SObjectLabel& label)
{
    if (!label.strText.isEmpty() && MeetsLabel(label))
        InternalDrawText(&painter, label.strText, label.ptAnchor, QPen(kLabelColor),
                         QBrush(kLabelBackground, Qt::SolidPattern), DrawnSizes::LabelFont());
}

void CImageView2DDrawableWidget::InternalDrawCompositeGeometry(QPainter* pPainter, CGeometry* pGeometry,
                                                               double s)
{
    if (pPainter)
        DrawComposite(*pPainter, pGeometry, s, pPainter->pen(), pPainter->brush());
}

/// Draws the outline with the painter's pen and brush, the handles with the given ones.
void CImageView2DDrawableWidget::DrawComposite(QPainter& painter, const CGeometry* pGeometry, double s,
                                               const QPen& penHandles, const QBrush& brushHandles)
{
    CPointList outline;
    CPointList handles;
    if (!pGeometry || pGeometry->GetPoints(outline, handles) != 0)
        return;
    for (const SOutline& piece : pGeometry->GetOutline())
        DrawPiece(painter, piece, s);
    painter.setPen(penHandles);
    painter.setBrush(brushHandles);
    for (int i = 0; i < handles.Size(); ++i)
        if (const auto* pHandle = dynamic_cast<CPoint<double>*>(handles.At(i).get());
            pHandle && MeetsAround(QPointF(pHandle->x(), pHandle->y()), DrawnSizes::kHandleReach))
            DrawDot(painter, pHandle->x(), pHandle->y(), DrawnSizes::kHandleRadius * s);
    painter.setBrush(Qt::NoBrush);
    if (!pGeometry->HasFrame())
        return;
    const CRectangle box = pGeometry->GetBoundingRectangle();
    painter.setPen(OutlinePen(kBoxColor, s, Qt::DashLine));
    painter.drawRect(QRectF(box.x(), box.y(), box.width(), box.height()));
}

/// Deliberate: leaves polygons out; DrawComposite draws them.
void CImageView2DDrawableWidget::InternalDrawElementGeometry(QPainter* pPainter, CGeometry* pGeometry,
                                                             double r)
{
    if (!pPainter || !pGeometry)
        return;
    for (const SOutline& piece : pGeometry->GetOutline())
        if (piece.eForm != EOutlineForm_Polygon)
            DrawPiece(*pPainter, piece, r);
}

void CImageView2DDrawableWidget::InternalDrawText(QPainter* pPainter, QString strText, QPointF anchor,
                                                  const QPen& pen, const QBrush& background,
                                                  const QFont& font)
{
    if (!pPainter)
        return;
    pPainter->save();
    const QRect rect(0, 0, width(), height());
    pPainter->setViewport(rect);
    pPainter->setWindow(rect);
    pPainter->setPen(pen);
    pPainter->setFont(font);
    pPainter->setBackground(background);
    pPainter->setBackgroundMode(Qt::OpaqueMode);
    pPainter->drawText(MapToWidget(anchor), strText);
    pPainter->restore();
}
