// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>

CImageView2DDrawableText::CImageView2DDrawableText()
    : CImageView2DDrawableObject(EImageView2DDrawbleObjectType_Text)
{
}

CImageView2DDrawableText::~CImageView2DDrawableText() = default;

QRectF CImageView2DDrawableText::GetBoundary() const
{
    return {};
}

void CImageView2DDrawableText::MoveTopLeftTo(const QPointF&)
{
}

bool CImageView2DDrawableText::FindResizePoint(double, const QPointF&, QPointF&, double) const
{
    return false;
}

void CImageView2DDrawableText::MoveResizePoint(const QPointF&, const QPointF&)
{
}
