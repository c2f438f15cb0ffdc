// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cmath>
#include <limits>

/// The integer part, truncated toward zero. Values beyond the range become the nearest int, NaN becomes 0.
inline int TruncateToInt(double dblValue)
{
    constexpr int nMin = std::numeric_limits<int>::min();
    constexpr int nMax = std::numeric_limits<int>::max();
    if (std::isnan(dblValue))
        return 0;
    if (dblValue <= nMin)
        return nMin;
    return dblValue >= nMax ? nMax : static_cast<int>(dblValue);
}

/// The nearest integer, halves rounded away from zero; limits and NaN as above.
inline int RoundToInt(double dblValue)
{
    return TruncateToInt(std::round(dblValue));
}
