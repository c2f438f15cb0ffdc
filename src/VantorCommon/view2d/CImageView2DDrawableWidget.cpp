// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

using namespace Vantor::Geometry;

namespace
{
constexpr double kHandleRadius = 3.0; // widget pixels
/// How far an outline, a handle or a dash may reach beyond the shape's box, in widget pixels.
constexpr double kOutlineMargin = 8.0;
/// More than the height of a label and the width of any of its letters, in widget pixels.
constexpr double kLabelHeight = 64.0;

const QColor kBoxColor(100, 100, 100, 255);
const QColor kLabelColor(255, 255, 255, 255);
const QColor kLabelBackground(10, 10, 10, 255);

QFont LabelFont()
{
    return QFont(QStringLiteral("Arial"), 16);
}

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
      m_pToolModel(pToolModel)
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
    update();
}

void CImageView2DDrawableWidget::Clear()
{
    m_vctObjects.clear();
    update();
}

void CImageView2DDrawableWidget::SetViewPort(const QRect& rect)
{
    m_rectViewPort = rect;
    update();
}

void CImageView2DDrawableWidget::SetWindow(const QRect& rect)
{
    m_rectWindow = rect;
    update();
}

std::vector<std::shared_ptr<CImageView2DDrawableObject>> CImageView2DDrawableWidget::GetDrawableObjects()
{
    return m_vctObjects;
}

void CImageView2DDrawableWidget::SetOwnColors(bool bOwn)
{
    m_bOwnColors = bOwn;
    update();
}

void CImageView2DDrawableWidget::Paint(QPainter&)
{
}

void CImageView2DDrawableWidget::ReplaceDrawableObjects(
    std::vector<std::shared_ptr<CImageView2DDrawableObject>> vctObjects)
{
    m_vctObjects = std::move(vctObjects);
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

void CImageView2DDrawableWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    PaintAll(painter);
}

void CImageView2DDrawableWidget::PaintAll(QPainter& painter)
{
    Paint(painter);
    if (!HasMapping())
        return;
    painter.setViewport(m_rectViewPort);
    painter.setWindow(m_rectWindow);
    for (const auto& pObject : m_vctObjects)
        InternalDrawObject(&painter, pObject);
}

/// Whether any pixel of the object, its handles and its label may lie in the widget. It may return true for
/// an object outside, but never false for one inside.
bool CImageView2DDrawableWidget::MayBeSeen(const CImageView2DDrawableObject& object) const
{
    // The window's origin shifts the painting, but not the mapping.
    if (!m_rectWindow.topLeft().isNull())
        return true;
    const QRectF box = MapToWidget(object.GetBoundary());
    const double dblMargin = kOutlineMargin + kLabelHeight + object.GetPen().widthF();
    if (box.bottom() < -dblMargin || box.top() > height() + dblMargin || box.left() > width() + dblMargin)
        return false;
    // A label starts in the box and extends to the right.
    return !(box.right() < -dblMargin) || box.right() + object.GetLabel().strText.size() * kLabelHeight > 0.0;
}

void CImageView2DDrawableWidget::InternalDrawObject(QPainter* pPainter,
                                                    std::shared_ptr<CImageView2DDrawableObject> pObject)
{
    if (!pPainter || !pObject || !pObject->IsVisible() || !HasMapping() || !MayBeSeen(*pObject))
        return;
    const double s = double(m_rectWindow.width()) / m_rectViewPort.width();
    const bool bSelected = pObject->GetSelected();
    const QPen pen = OutlinePen(bSelected ? ObjectLook::kSelectedColor : ObjectLook::kColor, s);
    QBrush brush(Qt::NoBrush);
    if (ShapeKinds::IsRegion(*pObject))
        brush = QBrush(bSelected ? ObjectLook::kSelectedFill : ObjectLook::kFill, Qt::SolidPattern);
    const bool bOwn = m_bOwnColors && ObjectLook::IsOwn(*pObject);
    pPainter->setPen(bOwn ? OwnPen(*pObject, s) : pen);
    pPainter->setBrush(bOwn ? pObject->GetBrushFilled() : brush);
    pObject->PaintContents(*pPainter, s);
    if (const auto* pShape = dynamic_cast<CImageView2DDrawableGeometry*>(pObject.get()))
        DrawComposite(*pPainter, pShape->GetData().get(), s, pen, bOwn ? QBrush(Qt::NoBrush) : brush);
    const SObjectLabel label = pObject->GetLabel();
    if (!label.strText.isEmpty())
        InternalDrawText(pPainter, label.strText, label.ptAnchor, QPen(kLabelColor),
                         QBrush(kLabelBackground, Qt::SolidPattern), LabelFont());
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
        if (const auto* pHandle = dynamic_cast<CPoint<double>*>(handles.At(i).get()))
            DrawDot(painter, pHandle->x(), pHandle->y(), kHandleRadius * s);
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
