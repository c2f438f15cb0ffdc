// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CRectangle.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>

using namespace Vantor::Geometry;

namespace
{
constexpr int kFontSize = 64; // pixels; measuring and painting scale it
const QColor kBackground(10, 10, 10, 255);
const QColor kFrameColor(255, 0, 0, 255);

QFont ReferenceFont()
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(kFontSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// In heights of a line.
QSizeF SizeOf(const QString& strText)
{
    if (strText.isEmpty())
        return {};
    const QFontMetricsF metrics(ReferenceFont());
    const QStringList lstLines = strText.split(QLatin1Char('\n'));
    double dblWidth = 0.0;
    for (const QString& strLine : lstLines)
        dblWidth = std::max(dblWidth, metrics.horizontalAdvance(strLine));
    return {dblWidth / metrics.height(), double(lstLines.size())};
}
} // namespace

CImageView2DDrawableText::CImageView2DDrawableText()
    : CImageView2DDrawableObject(EImageView2DDrawbleObjectType_Text)
{
}

CImageView2DDrawableText::~CImageView2DDrawableText() = default;

void CImageView2DDrawableText::SetText(const QString& strText)
{
    if (m_strText == strText)
        return;
    m_strText = strText;
    m_size = SizeOf(strText);
    NotifyChange();
}

void CImageView2DDrawableText::SetPosition(const QPointF& point)
{
    if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
        return;
    m_dblX = point.x();
    m_dblY = point.y();
    NotifyChange();
}

void CImageView2DDrawableText::SetLineHeight(double dblHeight)
{
    if (!std::isfinite(dblHeight) || dblHeight <= 0.0)
        return;
    m_dblLineHeight = dblHeight;
    NotifyChange();
}

QRectF CImageView2DDrawableText::GetBoundary() const
{
    return m_strText.isEmpty() ? QRectF() : QRectF(GetPosition(), m_size * m_dblLineHeight);
}

void CImageView2DDrawableText::MoveTopLeftTo(const QPointF& point)
{
    if (!m_strText.isEmpty())
        SetPosition(point);
}

bool CImageView2DDrawableText::FindResizePoint(double, const QPointF&, QPointF&, double) const
{
    return false;
}

void CImageView2DDrawableText::MoveResizePoint(const QPointF&, const QPointF&)
{
}

std::shared_ptr<CGeometry> CImageView2DDrawableText::CloneShape() const
{
    return std::make_shared<CPoint<double>>(m_dblX, m_dblY);
}

void CImageView2DDrawableText::RestoreShape(const CGeometry& shape)
{
    const CRectangle box = shape.GetBoundingRectangle();
    SetPosition(QPointF(box.x(), box.y()));
}

void CImageView2DDrawableText::PaintContents(QPainter& painter, double s) const
{
    const QRectF box = GetBoundary();
    if (box.isNull())
        return;
    painter.save();
    const QPen pen = painter.pen();
    if (GetSelected())
        painter.setPen(QPen(kFrameColor, s, Qt::DashLine));
    else
        painter.setPen(Qt::NoPen);
    if (painter.brush().style() == Qt::NoBrush)
        painter.setBrush(kBackground);
    painter.drawRect(box);
    const QFont font = ReferenceFont();
    const QFontMetricsF metrics(font);
    painter.translate(box.topLeft());
    painter.scale(m_dblLineHeight / metrics.height(), m_dblLineHeight / metrics.height());
    painter.setPen(pen.color());
    painter.setFont(font);
    double y = metrics.ascent();
    for (const QString& strLine : m_strText.split(QLatin1Char('\n'))) {
        painter.drawText(QPointF(0.0, y), strLine);
        y += metrics.height();
    }
    painter.restore();
}
