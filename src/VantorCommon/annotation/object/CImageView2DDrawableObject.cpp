// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QUuid>
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

void CImageView2DDrawableObject::SetCalibration(const Vantor::Algorithms::CCalibration&, bool)
{
}

void CImageView2DDrawableObject::SetSelected(bool bSelected)
{
    if (m_bSelected == bSelected)
        return;
    m_bSelected = bSelected;
    Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
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
    Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
}

void CImageView2DDrawableObject::SetExtraInfo(QVariant varInfo)
{
    m_varExtraInfo = std::move(varInfo);
    ++m_nRevision;
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

void CImageView2DDrawableObject::RestoreName(const QString& strName, bool bNamed)
{
    if (m_strName == strName && m_bNameSet == bNamed)
        return;
    m_strName = strName;
    m_bNameSet = bNamed;
    NotifyChange();
}

void CImageView2DDrawableObject::SetLocked(bool bLocked)
{
    if (m_bLocked == bLocked)
        return;
    m_bLocked = bLocked;
    NotifyChange();
}

void CImageView2DDrawableObject::SetVisible(bool bVisible)
{
    if (m_bVisible == bVisible)
        return;
    m_bVisible = bVisible;
    NotifyChange();
}

QString CImageView2DDrawableObject::GetId() const
{
    if (m_strId.isEmpty())
        m_strId = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return m_strId;
}

void CImageView2DDrawableObject::SetId(const QString& strId)
{
    m_strId = strId;
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
    ++m_nRevision;
    Q_EMIT signal_ChangeDrawableObjectProperty(GetUID());
}

QString CImageView2DDrawableObject::NameOr(const QString& strPrefix) const
{
    return m_bNameSet ? m_strName : strPrefix + QString::number(GetUID());
}
