// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

/// The name of a viewer of the centre: its title, under which people choose it, and its accessible name.
/// @param nIndex  its place in the centre, 0 for the first, which is the identifier of the viewer too
inline QString ViewerName(int nIndex)
{
    return QString::asprintf("Image View [%d]", nIndex);
}
