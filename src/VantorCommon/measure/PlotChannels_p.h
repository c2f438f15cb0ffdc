// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QColor>
#include <QStringList>
#include <vector>

/// Which channels and greys of an image a plot can show.
namespace PlotChannels
{
constexpr int kGrey = -1;     ///< (R + G + B) / 3
constexpr int kWeighted = -2; ///< 0.299 R + 0.587 G + 0.114 B

/// A curve, or a row of bars.
struct SShown {
    const char* pName; ///< in English
    QColor color;      ///< not valid: that of texts
    int nChannel;      ///< of the image; kGrey and kWeighted for the greys of 3 and 4 channels
};

/// The choices for an image of 1 to 4 channels, the usual one first; none for other numbers.
QStringList Choices(int nChannels);
/// What a choice shows.
std::vector<SShown> Shown(const QString& strChoice, int nChannels);
} // namespace PlotChannels
