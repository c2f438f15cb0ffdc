// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <utility>

CImageView2DDrawableObject::CImageView2DDrawableObject(EImageView2DDrawbleObjectType eType) : m_eType(eType)
{
}

CImageView2DDrawableObject::~CImageView2DDrawableObject() = default;

QString CImageView2DDrawableObject::GetName() const
{
    return NameOr(QStringLiteral("Object_"));
}

void CImageView2DDrawableObject::PaintContents(QPainter&, double) const
{
}

void CImageView2DDrawableObject::SetSelected(bool bSelected)
{
    if (m_bSelected == bSelected)
        return;
    m_bSelected = bSelected;
    NotifyChange();
}

void CImageView2DDrawableObject::SetDisplayName(bool bDisplayName)
{
    if (m_bDisplayName == bDisplayName)
        return;
    m_bDisplayName = bDisplayName;
    NotifyChange();
}

void CImageView2DDrawableObject::SetMouseOffset(const QPointF& offset)
{
    if (m_ptMouseOffset == offset)
        return;
    m_ptMouseOffset = offset;
    NotifyChange();
}

void CImageView2DDrawableObject::SetExtraInfo(QVariant varInfo)
{
    m_varExtraInfo = std::move(varInfo);
}

void CImageView2DDrawableObject::SetPen(const QPen& pen)
{
    m_pen = pen;
    NotifyChange();
}

void CImageView2DDrawableObject::SetBrushFilled(const QBrush& brush)
{
    m_brushFilled = brush;
    NotifyChange();
}

void CImageView2DDrawableObject::SetName(const QString& strName)
{
    if (m_strName == strName)
        return;
    m_strName = strName;
    m_bNameSet = true;
    NotifyChange();
}

bool CImageView2DDrawableObject::CompareEqual(const QPointF& a, const QPointF& b)
{
    return CompareEqual(a.x(), b.x(), a.y(), b.y());
}

bool CImageView2DDrawableObject::CompareEqual(double a, double b, double c, double d)
{
    return CVObject::CompareEqual(a, b) && CVObject::CompareEqual(c, d);
}

void CImageView2DDrawableObject::NotifyChange()
{
    Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
}

QString CImageView2DDrawableObject::NameOr(const QString& strPrefix) const
{
    return m_bNameSet ? m_strName : strPrefix + QString::number(GetUID());
}
