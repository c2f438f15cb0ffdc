// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CGeometry.h>

namespace Vantor::Geometry
{

CGeometry::~CGeometry() = default;

} // namespace Vantor::Geometry
