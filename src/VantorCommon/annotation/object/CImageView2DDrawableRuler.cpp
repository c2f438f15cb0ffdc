// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>

#include <Vantor/geometry/CLine.h>

CImageView2DDrawableRuler::CImageView2DDrawableRuler()
    : CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType_Ruler)
{
}

CImageView2DDrawableRuler::~CImageView2DDrawableRuler() = default;

QPointF CImageView2DDrawableRuler::GetPointText() const
{
    const auto pLine = std::dynamic_pointer_cast<Vantor::Geometry::CLine>(GetData());
    return pLine ? QPointF(pLine->end().x(), pLine->end().y()) : QPointF();
}

SObjectLabel CImageView2DDrawableRuler::GetLabel() const
{
    const auto pLine = std::dynamic_pointer_cast<Vantor::Geometry::CLine>(GetData());
    if (!pLine)
        return {};
    return {QString::asprintf("%.03f pixel", pLine->GetLength()), GetPointText()};
}
