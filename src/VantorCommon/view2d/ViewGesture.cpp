// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ViewGesture_p.h>

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <map>

namespace
{
using V = CImageView2D;
const std::map<int, SViewGesture> kGestures{
    {EImageView2DMode_Selecting,
     {&V::signal_SelectMovingStart, &V::signal_SelectMovingDoing, &V::signal_SelectMovingEnd,
      &V::signal_CheckResizeRotate}},
    {EImageView2DMode_Drawing_Rectanlge,
     {&V::signal_DrawRectangleStart, &V::signal_DrawRectangleDoing, &V::signal_DrawRectangleEnd, nullptr}},
    {EImageView2DMode_Drawing_Ellipse,
     {&V::signal_DrawEllipseStart, &V::signal_DrawEllipseDoing, &V::signal_DrawEllipseEnd, nullptr}},
    {EImageView2DMode_Drawing_Circle,
     {&V::signal_DrawCircleStart, &V::signal_DrawCircleDoing, &V::signal_DrawCircleEnd, nullptr}},
    {EImageView2DMode_Drawing_Polygon,
     {&V::signal_DrawPolygonStart, &V::signal_DrawPolygonDoing, &V::signal_DrawPolygonEnd,
      &V::signal_DrawPolygonWaiting}},
    {EImageView2DMode_Drawing_Line,
     {&V::signal_DrawLineStart, &V::signal_DrawLineDoing, &V::signal_DrawLineEnd, nullptr}}};
const SViewGesture kShapeGesture{&V::signal_DrawShapeStart, &V::signal_DrawShapeDoing,
                                 &V::signal_DrawShapeEnd, &V::signal_DrawShapeWaiting};
} // namespace

SViewGesture ViewGestureOf(int nMode)
{
    const auto it = kGestures.find(nMode);
    if (it != kGestures.end())
        return it->second;
    return ShapeKinds::OfMode(nMode) ? kShapeGesture : SViewGesture();
}
