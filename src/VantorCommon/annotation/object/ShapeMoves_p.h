// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/ShapeKinds.h>

/// How the numbers of a shape follow their image, see SShapeKind::move.
namespace ShapeMoves
{
/// What is nothing but pairs of coordinates.
void MovePairs(SShapeData& data, const SPlaneMap& map);
/// A place and a size, and perhaps a second place.
void MoveBox(SShapeData& data, const SPlaneMap& map);
/// A place and a length that stays.
void MoveFirst(SShapeData& data, const SPlaneMap& map);
/// Letters stay upright, so the middle of a text goes where it belongs.
void MoveText(SShapeData& data, const SPlaneMap& map);
/// A level line stays level, so its middle goes where it belongs.
void MoveLevel(SShapeData& data, const SPlaneMap& map);
/// Each member as its own kind is.
void MoveArray(SShapeData& data, const SPlaneMap& map);
} // namespace ShapeMoves
