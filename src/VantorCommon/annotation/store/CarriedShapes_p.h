// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <unordered_map>

/// Takes annotations along when their image is turned, flipped or cut, and back again exactly. GUI thread
/// only.
class CCarriedShapes
{
public:
    explicit CCarriedShapes(const SPlaneMap& map) : m_map(map) {}

    /// Whether anything changes its place.
    bool Moves() const { return !m_map.IsIdentity(); }
    void Do(CImageView2DGeometryModel& model);
    void Undo(CImageView2DGeometryModel& model);

private:
    using ObjectPtr = CImageView2DGeometryModel::ObjectPtr;
    struct SShapes {
        SShapeData before;
        SShapeData after;
    };

    SPlaneMap m_map;
    std::unordered_map<ObjectPtr, SShapes> m_shapes;
    CImageView2DGeometryModel::ObjectList m_vctLeft; ///< what could not be taken along, and the order before
};
