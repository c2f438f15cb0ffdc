// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CPoint.h>

namespace Vantor::Geometry
{

template class CPoint<double>;
template class CPoint<float>;

} // namespace Vantor::Geometry
