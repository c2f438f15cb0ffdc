// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Vantor::Algorithms
{

struct SFound;

/// Drops numbers that are no resolution or orientation, and what is longer or more than an image keeps.
/// @return whether a profile or a text was dropped
bool KeepInRange(SImageMetadata& metadata);

/// What an image keeps of what its reader found, for pixels that are turned already; null for nothing. Adds a
/// note where something is dropped.
std::shared_ptr<const SImageMetadata> MetadataOf(SFound& found);

/// The same for an image that is turned by some quarters, or by another angle when they are negative.
std::shared_ptr<const SImageMetadata> Turned(std::shared_ptr<const SImageMetadata> pMetadata, int nQuarters);

constexpr double kCentimetresPerMetre = 100.0;
constexpr double kInchesPerMetre = 1.0 / 0.0254;

/// How many of a unit a metre has; 0 for no unit.
double PerMetre(EResolutionUnit eUnit);

/// The nearest whole number; 0 for what is less than 1 or more than the most.
std::uint32_t ToWhole(double dblValue, std::uint32_t nMost);

/// Adds a text of a file. What is no UTF-8 is taken as Latin-1; control characters but the ends of lines and
/// tabulators become spaces.
void AddText(SImageMetadata& metadata, std::string key, std::string_view text);

/// Whether a profile is for the colours of an image of 1, 3 or 4 channels: grey or RGB.
bool IsProfileFor(const std::vector<unsigned char>& profile, int nChannels);

} // namespace Vantor::Algorithms
