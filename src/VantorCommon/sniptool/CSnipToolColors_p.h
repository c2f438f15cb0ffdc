// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QColor>

/// The colours of the overlay, each with its alpha.
namespace CSnipToolColors
{
constexpr QRgb kGrey = 0x7F7F7F7F;  ///< over the screen
constexpr QRgb kGreen = 0xFF00FF00; ///< around the selection

/// A colour without its alpha, as a screen shows it that blends nothing.
constexpr QRgb Unblended(QRgb rgb)
{
    return qPremultiply(rgb) & RGB_MASK;
}
} // namespace CSnipToolColors
