// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CGeometry.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/GeometryMath_p.h>

namespace Vantor::Geometry
{

CGeometry::~CGeometry() = default;

std::vector<SPixelRun> CGeometry::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns;
    const CRectangle box = GetBoundingRectangle();
    const CPoint<double> end = box.bottomRight();
    const int nLastColumn = FirstCentreFrom(end.x(), width - 1);
    const int nLastRow = FirstCentreFrom(end.y(), height - 1);
    for (int nRow = FirstCentreFrom(box.y(), height); nRow <= nLastRow; ++nRow) {
        bool bInside = false;
        for (int nColumn = FirstCentreFrom(box.x(), width); nColumn <= nLastColumn; ++nColumn) {
            const bool bBefore = bInside;
            bInside = Contains({nColumn + 0.5, nRow + 0.5});
            if (bInside && !bBefore)
                vctRuns.push_back({nRow, nColumn, nColumn + 1});
            else if (bInside)
                ++vctRuns.back().nEnd;
        }
    }
    return vctRuns;
}

bool CGeometry::MoveHandle(const CPoint<double>&, const CPoint<double>&)
{
    return false;
}

std::vector<SOutline> CGeometry::GetOutline() const
{
    CPointList outline;
    CPointList handles;
    if (GetPoints(outline, handles) != 0 || outline.Size() == 0)
        return {};
    SOutline piece{outline.Size() == 1 ? EOutlineForm_Dot : EOutlineForm_Polygon, {}};
    for (int i = 0; i < outline.Size(); ++i)
        if (const auto* pPoint = dynamic_cast<const CPoint<double>*>(outline.At(i).get()))
            piece.vctPlaces.push_back({pPoint->x(), pPoint->y()});
    return {piece};
}

} // namespace Vantor::Geometry
