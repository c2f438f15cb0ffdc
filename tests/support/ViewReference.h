// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// What the 2D view has to paint, done plainly with QPainter: no caches, no short cuts. Its pictures are what
/// the view's are compared with, pixel by pixel.
class ViewReference
{
public:
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

    ViewReference(const QSize& size, const QRect& viewPort, const QRect& window)
        : m_size(size), m_viewPort(viewPort), m_window(window)
    {
    }

    /// Gives the pixels behind the image a colour of their own, by their place in the widget.
    void SetBehind(std::function<QColor(int x, int y)> behind) { m_behind = std::move(behind); }

    /// A picture of a widget, in the format of a window on the screen.
    static QImage Grab(QWidget& widget)
    {
        QImage picture(widget.size(), QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        widget.render(&picture);
        return picture;
    }

    /// Background, image, grid and pixel values. The font's metrics are those of the widget.
    QImage PaintImage(const Vantor::Algorithms::CImage& source, const QImage& image, QWidget* pWidget) const
    {
        QImage picture(m_size, QImage::Format_RGB32);
        QPainter painter(&picture);
        painter.fillRect(picture.rect(), QColor(120, 120, 120, 255));
        if (m_behind) {
            const QRect shown = m_viewPort & picture.rect();
            for (int y = shown.top(); y <= shown.bottom(); ++y)
                for (int x = shown.left(); x <= shown.right(); ++x)
                    painter.fillRect(x, y, 1, 1, m_behind(x, y));
        }
        const double sx = double(m_viewPort.width()) / image.width();
        const double sy = double(m_viewPort.height()) / image.height();
        const QRectF shown = Shown(image.size(), sx, sy);
        painter.setViewport(m_viewPort);
        painter.setWindow(m_window);
        painter.drawImage(shown, image, shown);
        Untransform(painter);
        if (sx >= 50 && sy >= 50) {
            PaintGrid(painter, shown);
            const int nChannels = source.GetChannel();
            for (int y = int(shown.top()); y < shown.top() + shown.height(); ++y)
                for (int x = int(shown.left()); x < shown.left() + shown.width(); ++x)
                    PaintValue(painter, source.GetPixel(x, y), nChannels, x, y, sy, pWidget);
        }
        return picture;
    }

    /// The annotations, over what the picture holds.
    void PaintObjects(QImage& picture, const std::vector<ObjectPtr>& objects) const
    {
        QPainter painter(&picture);
        painter.setViewport(m_viewPort);
        painter.setWindow(m_window);
        for (const ObjectPtr& pObject : objects)
            PaintObject(painter, *pObject);
    }

    QPointF ToWidget(const QPointF& p) const
    {
        return {double(m_viewPort.width()) / m_window.width() * p.x() + m_viewPort.left(),
                double(m_viewPort.height()) / m_window.height() * p.y() + m_viewPort.top()};
    }

private:
    void Untransform(QPainter& painter) const
    {
        painter.setViewport(QRect(QPoint(0, 0), m_size));
        painter.setWindow(QRect(QPoint(0, 0), m_size));
    }

    QRectF Shown(const QSize& image, double sx, double sy) const
    {
        double left = (m_viewPort.left() < 0 ? -m_viewPort.left() : 0) / sx - 4;
        double top = (m_viewPort.top() < 0 ? -m_viewPort.top() : 0) / sy - 4;
        double width = m_size.width() / sx + 8;
        double height = m_size.height() / sy + 8;
        if (left < 0) {
            width += left;
            left = 0;
        }
        if (top < 0) {
            height += top;
            top = 0;
        }
        if (left + width >= image.width())
            width = image.width() - left;
        if (top + height >= image.height())
            height = image.height() - top;
        return {left, top, width, height};
    }

    void PaintGrid(QPainter& painter, const QRectF& shown) const
    {
        const double right = shown.left() + shown.width();
        const double bottom = shown.top() + shown.height();
        painter.setPen(
            QPen(QBrush(QColor(0, 100, 255, 255)), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        for (int y = int(shown.top()); y <= bottom; ++y)
            painter.drawLine(ToWidget(QPointF(shown.left(), y)), ToWidget(QPointF(right, y)));
        for (int x = int(shown.left()); x <= right; ++x)
            painter.drawLine(ToWidget(QPointF(x, shown.top())), ToWidget(QPointF(x, bottom)));
    }

    void PaintValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y, double sy,
                    QWidget* pWidget) const
    {
        const QFont font(QStringLiteral("Arial"), 15);
        const int h = QFontMetrics(font, pWidget).height();
        const double block = double(h) * nChannels;
        if (block + 5.0 > sy || nChannels == 2)
            return;
        const double f = block / sy;
        const QPointF topLeft = ToWidget(QPointF(x + 0.25, y + (1 - f) * 0.5));
        const QPointF bottomRight = ToWidget(QPointF(x + 0.25 + 0.5, y + (1 - f) * 0.5 + f));
        const QRectF box(topLeft.x(), topLeft.y(), bottomRight.x() - topLeft.x(),
                         bottomRight.y() - topLeft.y());
        painter.setFont(font);
        painter.setBackground(QColor(0, 0, 0, 255));
        painter.setBackgroundMode(Qt::OpaqueMode);
        const QColor three[] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255),
                                QColor(255, 255, 255)};
        const int flags[] = {Qt::AlignHCenter | Qt::AlignTop, Qt::AlignCenter,
                             Qt::AlignHCenter | Qt::AlignBottom};
        for (int k = 0; k < nChannels; ++k) {
            painter.setPen(nChannels == 1 ? QColor(255, 255, 255) : three[k]);
            const QString text = QString::number(pPixel[k]);
            if (nChannels == 1)
                painter.drawText(box, Qt::AlignCenter, text);
            else if (nChannels == 3)
                painter.drawText(box, flags[k], text);
            else
                painter.drawText(QRectF(box.left(), box.top() + k * h, box.width(), h), Qt::AlignHCenter,
                                 text);
        }
        painter.setBackgroundMode(Qt::TransparentMode);
    }

    void PaintObject(QPainter& painter, CImageView2DDrawableObject& object) const
    {
        const double s = double(m_window.width()) / m_viewPort.width();
        auto* pGeometry = dynamic_cast<CImageView2DDrawableGeometry*>(&object);
        if (!pGeometry || !pGeometry->GetData())
            return;
        const bool bRuler = object.GetType() == EImageView2DDrawbleObjectType_Ruler;
        const QColor color = object.GetSelected() ? QColor(255, 0, 0, 255) : QColor(0, 255, 0, 255);
        const QColor fill = object.GetSelected() ? QColor(255, 0, 0, 50) : QColor(0, 255, 0, 50);
        painter.setPen(Pen(color, s, Qt::SolidLine));
        painter.setBrush(bRuler ? QBrush(Qt::NoBrush) : QBrush(fill, Qt::SolidPattern));
        PaintShape(painter, *pGeometry->GetData(), s);
        if (bRuler) {
            if (auto* pLine = dynamic_cast<Vantor::Geometry::CLine*>(pGeometry->GetData().get()))
                PaintText(painter, QString::asprintf("%.03f pixel", pLine->GetLength()),
                          QPointF(pLine->end().x(), pLine->end().y()),
                          Pen(QColor(255, 255, 255), s, Qt::SolidLine));
        } else if (object.GetDisplayName()) {
            PaintText(painter, object.GetName(), object.GetBoundary().topLeft(), QPen(QColor(255, 255, 255)));
        }
    }

    static QPen Pen(const QColor& color, double s, Qt::PenStyle style)
    {
        return QPen(QBrush(color, Qt::SolidPattern), s, style, Qt::SquareCap, Qt::BevelJoin);
    }

    static void PaintShape(QPainter& painter, Vantor::Geometry::CGeometry& shape, double s)
    {
        using namespace Vantor::Geometry;
        CPointList outline;
        CPointList handles;
        shape.GetPoints(outline, handles);
        QPolygonF points;
        for (int i = 0; i < handles.Size(); ++i) {
            const auto pPoint = std::dynamic_pointer_cast<CPoint<double>>(handles.At(i));
            points << QPointF(pPoint->x(), pPoint->y());
        }
        if (auto* pPoint = dynamic_cast<CPoint<double>*>(&shape))
            painter.drawEllipse(QRectF(pPoint->x() - s, pPoint->y() - s, 2 * s, 2 * s));
        else if (auto* pLine = dynamic_cast<CLine*>(&shape))
            painter.drawLine(
                QLineF(pLine->start().x(), pLine->start().y(), pLine->end().x(), pLine->end().y()));
        else if (auto* pRectangle = dynamic_cast<CRectangle*>(&shape))
            painter.drawRect(
                QRectF(pRectangle->x(), pRectangle->y(), pRectangle->width(), pRectangle->height()));
        else if (auto* pEllipse = dynamic_cast<CEllipse*>(&shape))
            painter.drawEllipse(QRectF(pEllipse->centerX() - pEllipse->radiusA(),
                                       pEllipse->centerY() - pEllipse->radiusB(), 2 * pEllipse->radiusA(),
                                       2 * pEllipse->radiusB()));
        else if (shape.GetType() == EGeometryType_Polygon)
            painter.drawPolygon(points, Qt::OddEvenFill);
        for (const QPointF& point : points)
            painter.drawEllipse(QRectF(point.x() - 3 * s, point.y() - 3 * s, 6 * s, 6 * s));
        painter.setBrush(Qt::NoBrush);
        if (shape.GetType() == EGeometryType_Line || shape.GetType() == EGeometryType_GeometryArray)
            return;
        const CRectangle box = shape.GetBoundingRectangle();
        painter.setPen(Pen(QColor(100, 100, 100), s, Qt::DashLine));
        painter.drawRect(QRectF(box.x(), box.y(), box.width(), box.height()));
    }

    void PaintText(QPainter& painter, const QString& text, const QPointF& anchor, const QPen& pen) const
    {
        painter.save();
        Untransform(painter);
        painter.setPen(pen);
        painter.setFont(QFont(QStringLiteral("Arial"), 16));
        painter.setBackground(QBrush(QColor(10, 10, 10, 255), Qt::SolidPattern));
        painter.setBackgroundMode(Qt::OpaqueMode);
        painter.drawText(ToWidget(anchor), text);
        painter.restore();
    }

    QSize m_size;
    QRect m_viewPort;
    QRect m_window;
    std::function<QColor(int, int)> m_behind;
};
