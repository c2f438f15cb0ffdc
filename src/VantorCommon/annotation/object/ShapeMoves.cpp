// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/ShapeMoves_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QRectF>
#include <algorithm>
#include <memory>

using Numbers = std::vector<double>;

void ShapeMoves::MovePairs(SShapeData& data, const SPlaneMap& map)
{
    for (std::size_t i = 0; i + 1 < data.vctNumbers.size(); i += 2)
        map.MovePlace(data.vctNumbers[i], data.vctNumbers[i + 1]);
}

void ShapeMoves::MoveBox(SShapeData& data, const SPlaneMap& map)
{
    if (data.vctNumbers.size() < 4)
        return;
    Numbers& n = data.vctNumbers;
    const QPointF corner = n.size() == 6 ? QPointF(n[4], n[5]) : QPointF(n[0] + n[2], n[1] + n[3]);
    double dblX = corner.x();
    double dblY = corner.y();
    map.MovePlace(dblX, dblY);
    map.MovePlace(n[0], n[1]);
    map.MoveSize(n[2], n[3]);
    n.resize(4);
    if (dblX != n[0] + n[2] || dblY != n[1] + n[3])
        n.insert(n.end(), {dblX, dblY});
}

void ShapeMoves::MoveFirst(SShapeData& data, const SPlaneMap& map)
{
    if (data.vctNumbers.size() > 1)
        map.MovePlace(data.vctNumbers[0], data.vctNumbers[1]);
}

void ShapeMoves::MoveText(SShapeData& data, const SPlaneMap& map)
{
    const SShapeKind* pKind = ShapeKinds::OfKey(QStringLiteral("text"));
    const SShapeKind::ObjectPtr pText = map.IsShift() ? nullptr : pKind->read(data);
    if (!pText)
        return MoveFirst(data, map);
    const QRectF box = pText->GetBoundary();
    double dblX = box.center().x();
    double dblY = box.center().y();
    map.MovePlace(dblX, dblY);
    data.vctNumbers[0] = dblX - box.width() / 2.0;
    data.vctNumbers[1] = dblY - box.height() / 2.0;
}

void ShapeMoves::MoveLevel(SShapeData& data, const SPlaneMap& map)
{
    Numbers& n = data.vctNumbers;
    if (!map.bSwap || n.size() != 4)
        return MovePairs(data, map);
    const double dblHalf = (n[2] - n[0]) / 2.0;
    double dblX = n[0] + dblHalf;
    double dblY = n[1];
    map.MovePlace(dblX, dblY);
    n = {dblX - dblHalf, dblY, dblX + dblHalf, dblY};
}

void ShapeMoves::MoveArray(SShapeData& data, const SPlaneMap& map)
{
    Numbers& n = data.vctNumbers;
    Numbers vctMoved;
    for (std::size_t nAt = 0; nAt + 2 <= n.size();) {
        const double dblGeometry = n[nAt];
        const std::size_t nEnd = nAt + 2 + static_cast<std::size_t>(n[nAt + 1]);
        SShapeData member;
        for (nAt += 2; nAt < std::min(nEnd, n.size()); ++nAt)
            member.vctNumbers.push_back(n[nAt]);
        for (const SShapeKind& kind : ShapeKinds::All())
            if (kind.nGeometry == dblGeometry && kind.move &&
                dblGeometry != Vantor::Geometry::EGeometryType_GeometryArray) {
                kind.move(member, map);
                break;
            }
        vctMoved.insert(vctMoved.end(), {dblGeometry, double(member.vctNumbers.size())});
        vctMoved.insert(vctMoved.end(), member.vctNumbers.begin(), member.vctNumbers.end());
    }
    n = std::move(vctMoved);
}
