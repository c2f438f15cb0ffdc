// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

/// The name of a viewer of the centre: the title by which users choose it, and its accessible name.
/// @param nIndex  its index in the centre, 0 for the first, which is also the viewer's identifier
inline QString ViewerName(int nIndex)
{
    return QString::asprintf("Image View [%d]", nIndex);
}
