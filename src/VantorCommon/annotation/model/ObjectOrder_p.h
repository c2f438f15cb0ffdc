// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

/// What a change of the order of annotations comes to. Any thread.
namespace ObjectOrder
{
using ObjectList = CImageView2DGeometryModel::ObjectList;

/// The fewest objects that have to be moved to make one order of the same objects, each once, the other. With
/// n objects between the first and the last difference it takes n log n steps (patience sorting, C.
/// Schensted, Canadian Journal of Mathematics 13, 1961).
ObjectList Moved(const ObjectList& vctFrom, const ObjectList& vctTo);
} // namespace ObjectOrder
