// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <tiffio.h>

namespace Vantor::Algorithms
{

/// Converts CIE L*a*b* to RGB as the TIFF codec does, which supports only 8 bits per sample and no alpha.
class CLabToRgb
{
public:
    /// Sets the white point of the file; false when it is invalid.
    bool Init(TIFF* pTiff);
    /// @param l     0 to 100
    /// @param a, b  about -128 to 127
    /// @param pRgb  receives three samples of 0 to 255
    void Convert(float l, float a, float b, unsigned char* pRgb);

private:
    TIFFCIELabToRGB m_tables = {};
};

} // namespace Vantor::Algorithms
