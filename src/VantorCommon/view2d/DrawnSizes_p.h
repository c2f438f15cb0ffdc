// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QFont>

/// The sizes of what a drawable widget draws, in widget pixels.
namespace DrawnSizes
{
constexpr double kHandleRadius = 3.0;
/// How far a handle and its pen may reach from its place.
constexpr double kHandleReach = 6.0;
/// How far an outline, a handle or a dash may reach beyond the shape's box.
constexpr double kOutlineReach = 8.0;
/// More than the height of a label.
constexpr double kLabelReach = 64.0;

inline QFont LabelFont()
{
    return QFont(QStringLiteral("Arial"), 16);
}
} // namespace DrawnSizes
