// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CScaleBar.h>

namespace Vantor::Geometry
{

bool CScaleBar::MoveHandle(const CPoint<double>& handle, const CPoint<double>& to)
{
    if (!CLine::MoveHandle(handle, to))
        return false;
    SetStart(CPoint<double>(start().x(), to.y()));
    SetEnd(CPoint<double>(end().x(), to.y()));
    return true;
}

std::shared_ptr<CGeometry> CScaleBar::Clone() const
{
    return std::make_shared<CScaleBar>(*this);
}

} // namespace Vantor::Geometry
