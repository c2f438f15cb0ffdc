// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The half of CImageView2DDrawableWidget that finds out what to paint, and paints no more than that.
#include <VantorCommon/annotation/object/ObjectLook_p.h>
#include <VantorCommon/view2d/DrawableWidgetUpdates_p.h>
#include <VantorCommon/view2d/DrawnSizes_p.h>

#include <QBackingStore>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
/// By how much letters may overhang the box of their lines, as a part of its height.
constexpr double kOverhang = 0.5;

bool IsWhole(double dblNumber)
{
    return dblNumber == std::floor(dblNumber);
}

/// The image from which the widget's window gets to the screen, if the painter paints on it.
const QImage* ScreenImage(const QWidget& widget, const QPainter& painter)
{
    const QBackingStore* pStore = widget.window()->backingStore();
    QPaintEngine* pEngine = painter.paintEngine();
    if (!pStore || !pEngine || pEngine->type() != QPaintEngine::Raster)
        return nullptr;
    const QPaintDevice* pDevice = pEngine->paintDevice();
    if (!pDevice || pDevice != const_cast<QBackingStore*>(pStore)->paintDevice() ||
        pDevice->devType() != QInternal::Image || !IsWhole(pDevice->devicePixelRatioF()))
        return nullptr;
    return static_cast<const QImage*>(pDevice);
}
} // namespace

void CImageView2DDrawableWidget::KeepPicture()
{
    m_pUpdates->bKeeps = true;
}

void CImageView2DDrawableWidget::UpdateAll()
{
    m_pUpdates->record.Forget();
    m_pUpdates->bCompare = true;
    m_pUpdates->picture.InvalidateAll();
    update();
}

void CImageView2DDrawableWidget::UpdateObjects()
{
    m_pUpdates->bCompare = true;
    if (!std::exchange(m_pUpdates->bPending, true))
        QMetaObject::invokeMethod(
            this, [this] { UpdateChanged(); }, Qt::QueuedConnection);
}

void CImageView2DDrawableWidget::UpdateObject(unsigned int nUID)
{
    m_pUpdates->record.Touch(nUID);
    UpdateObjects();
}

void CImageView2DDrawableWidget::SetMarks(const std::vector<QRect>& vctMarks)
{
    for (const QRect& mark : m_pUpdates->picture.Marks())
        update(mark);
    m_pUpdates->picture.SetMarks(vctMarks);
    for (const QRect& mark : vctMarks)
        update(mark);
}

/// Compares the list with the record of it.
void CImageView2DDrawableWidget::Follow()
{
    const auto vctObjects = GetDrawableObjects();
    m_pUpdates->bCompare = false;
    const auto vctChanged = m_pUpdates->record.Follow(
        vctObjects, [this](const CImageView2DDrawableObject& object) { return Extent(object); });
    for (const QRect& part : vctChanged) {
        m_pUpdates->picture.Invalidate(part);
        m_pUpdates->vctChanged.push_back(part);
    }
}

/// The late half of UpdateObjects. A paint in between may have compared already, perhaps on another device
/// than the screen.
void CImageView2DDrawableWidget::UpdateChanged()
{
    m_pUpdates->bPending = false;
    Follow();
    auto* pBelow = qobject_cast<CImageView2DDrawableWidget*>(parentWidget());
    for (const QRect& part : CPaintRecord::Gather(std::exchange(m_pUpdates->vctChanged, {}))) {
        update(part);
        if (pBelow && !m_pUpdates->bKeeps)
            pBelow->m_pUpdates->above += part.translated(pos());
    }
}

void CImageView2DDrawableWidget::paintEvent(QPaintEvent* pEvent)
{
    QPainter painter(this);
    if (PaintKept(painter, pEvent->region()))
        return;
    m_pUpdates->part = pEvent->region().boundingRect();
    PaintAll(painter);
    m_pUpdates->part = QRect();
}

/// Paints a region by the picture that is kept. @return false if there is none for this painter
bool CImageView2DDrawableWidget::PaintKept(QPainter& painter, const QRegion& region)
{
    const QImage* pScreen = m_pUpdates->bKeeps ? ScreenImage(*this, painter) : nullptr;
    if (!pScreen)
        return false;
    const QRegion visible = visibleRegion();
    const bool bAll =
        (visible - region).isEmpty() && !(visible - std::exchange(m_pUpdates->above, QRegion())).isEmpty();
    if (bAll || m_pUpdates->bCompare)
        Follow();
    if (bAll)
        m_pUpdates->vctChanged.clear();
    if (m_vctObjects.empty()) {
        m_pUpdates->picture.Drop();
        return false;
    }
    if (bAll)
        m_pUpdates->picture.InvalidateAll();
    m_pUpdates->picture.Renew(*pScreen, size(), [this](QPainter& p, const QRect& part) {
        initPainter(&p);
        PaintPart(p, part);
    });
    m_pUpdates->picture.Copy(painter, region);
    return true;
}

/// Paints what meets a part of the widget, whose list has been followed.
void CImageView2DDrawableWidget::PaintPart(QPainter& painter, const QRect& part)
{
    m_pUpdates->part = part;
    Paint(painter);
    if (HasMapping()) {
        painter.setViewport(m_rectViewPort);
        painter.setWindow(m_rectWindow);
        for (const std::size_t i : m_pUpdates->record.Meeting(part))
            DrawVisible(painter, *m_vctObjects[i]);
    }
    m_pUpdates->part = QRect();
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

/// Whether a rectangle, in widget pixels, meets the part that is being painted.
bool CImageView2DDrawableWidget::Meets(const QRectF& rect) const
{
    const QRectF part = m_pUpdates->part;
    return part.isNull() || HasShiftedWindow() ||
           !(rect.right() < part.left() || rect.left() > part.right() || rect.bottom() < part.top() ||
             rect.top() > part.bottom());
}

/// The same for what reaches so far, in widget pixels, from a place of the image.
bool CImageView2DDrawableWidget::MeetsAround(const QPointF& place, double dblReach) const
{
    const QPointF point = MapToWidget(place);
    const double dblDown = dblReach * Steepness();
    return Meets(QRectF(point.x() - dblReach, point.y() - dblDown, 2.0 * dblReach, 2.0 * dblDown));
}

bool CImageView2DDrawableWidget::MeetsLabel(const SObjectLabel& label) const
{
    return m_pUpdates->part.isNull() || Meets(LabelExtent(label));
}

/// Whether any pixel of the object, its handles and its label may lie in the part that is being painted. It
/// may return true for an object outside, but never false for one inside.
bool CImageView2DDrawableWidget::MayBeSeen(const CImageView2DDrawableObject& object) const
{
    if (!object.IsVisible())
        return false;
    const QRect part = m_pUpdates->part.isNull() ? rect() : m_pUpdates->part;
    return BoxExtent(object).intersects(part) || Extent(object).intersects(part);
}

/// The window's origin shifts the painting, but not the mapping.
bool CImageView2DDrawableWidget::HasShiftedWindow() const
{
    return !m_rectWindow.topLeft().isNull();
}

/// By how much more lengths are stretched downwards than to the right, 1 at least.
double CImageView2DDrawableWidget::Steepness() const
{
    const double dblX = double(m_rectViewPort.width()) / m_rectWindow.width();
    const double dblY = double(m_rectViewPort.height()) / m_rectWindow.height();
    return std::max(1.0, dblY / dblX);
}

/// The rectangle, in widget pixels, in which the object has pixels, its label apart.
QRectF CImageView2DDrawableWidget::BoxExtent(const CImageView2DDrawableObject& object) const
{
    const QRectF box = MapToWidget(object.GetBoundary()).normalized();
    if (HasShiftedWindow() || !HasMapping() || !std::isfinite(box.x() + box.y() + box.width() + box.height()))
        return rect();
    double dblReach = DrawnSizes::kOutlineReach;
    if (m_bOwnColors && ObjectLook::IsOwn(object)) {
        const QPen pen = object.GetPen();
        dblReach += pen.widthF() * std::max(1.0, pen.miterLimit());
    }
    dblReach += object.GetReach();
    if (object.GetType() == EImageView2DDrawbleObjectType_Text)
        dblReach += kOverhang * box.height();
    const double dblDown = dblReach * Steepness();
    return box.adjusted(-dblReach, -dblDown, dblReach, dblDown);
}

QRectF CImageView2DDrawableWidget::LabelExtent(const SObjectLabel& label) const
{
    m_pUpdates->labels.Measure(DrawnSizes::LabelFont(), *this);
    return m_pUpdates->labels.Around(label.strText, MapToWidget(label.ptAnchor));
}

/// The line beneath the first one as a label of its own; empty without one.
SObjectLabel CImageView2DDrawableWidget::SecondLine(const SObjectLabel& label) const
{
    if (label.strSecond.isEmpty() || !HasMapping())
        return {};
    const double dblLine = QFontMetricsF(DrawnSizes::LabelFont(), this).height();
    return {label.strSecond,
            label.ptAnchor + QPointF(0.0, dblLine * m_rectWindow.height() / m_rectViewPort.height())};
}

/// The rectangle of the widget in which the object, its handles and its label may have pixels.
QRect CImageView2DDrawableWidget::Extent(const CImageView2DDrawableObject& object) const
{
    if (!object.IsVisible())
        return {};
    const QRectF whole = rect();
    QRectF extent = BoxExtent(object);
    // A label starts in the box and extends to the right.
    if (extent.top() - DrawnSizes::kLabelReach > whole.bottom() || extent.left() > whole.right() ||
        extent.bottom() + DrawnSizes::kLabelReach < whole.top())
        return {};
    const SObjectLabel label = object.GetLabel();
    if (!label.strText.isEmpty())
        extent |= LabelExtent(label);
    const SObjectLabel second = SecondLine(label);
    if (!second.strText.isEmpty())
        extent |= LabelExtent(second);
    return (extent & whole).toAlignedRect();
}
