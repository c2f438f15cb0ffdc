// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{

/// What a resolution counts pixels per.
enum class EResolutionUnit : int {
    None = 0, ///< nothing: the two numbers only say how wide a pixel is for its height
    Inch = 1,
    Centimetre = 2
};

/// A text in a file of an image.
struct SImageText {
    std::string key;  ///< such as "Title"; the format's own word, or the usual one where it has numbers
    std::string text; ///< UTF-8; may have several lines
};

/// What a file says about its image beside the pixels. A plain value.
struct SImageMetadata {
    /// @{
    /// Pixels per unit along the rows and the columns of the image as it is; 0 when unknown, both or none.
    double resolutionX = 0.0;
    double resolutionY = 0.0;
    EResolutionUnit resolutionUnit = EResolutionUnit::None;
    /// @}
    /// How the file stored the rows, 1 to 8 as EXIF counts; CImage::Load has turned the pixels already.
    int orientation = 1;
    /// The ICC profile of the colours, empty when there is none. The pixels are never converted by it.
    std::vector<unsigned char> profile;
    /// Titles, authors, comments, in the order of the file.
    std::vector<SImageText> texts;
};

/// @{
/// What an image keeps of metadata; more of it is dropped, with a note.
constexpr std::size_t kMostProfileBytes = 4 << 20;
constexpr std::size_t kMostImageTexts = 256;
constexpr std::size_t kMostImageTextBytes = 64 << 10; ///< of one text
/// @}

} // namespace Vantor::Algorithms
