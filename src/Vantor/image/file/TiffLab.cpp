// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffLab_p.h>

#include <cstdint>

namespace Vantor::Algorithms
{

namespace
{
/// sRGB, with the numbers of the codec's own converter.
const TIFFDisplay kDisplay = {
    {{3.2410F, -1.5374F, -0.4986F}, {-0.9692F, 1.8760F, 0.0416F}, {0.0556F, -0.2040F, 1.0570F}},
    100.0F,
    100.0F,
    100.0F, // light of white
    255,
    255,
    255, // samples of white
    1.0F,
    1.0F,
    1.0F, // light of black
    2.4F,
    2.4F,
    2.4F, // gamma
};

/// X / X0 or Z / Z0 from its root, which CIE L*a*b* stores.
float Cube(float root)
{
    return root < 0.2069F ? (root - 0.13793F) / 7.787F : root * root * root;
}
} // namespace

bool CLabToRgb::Init(TIFF* pTiff)
{
    float* pWhite = nullptr; // x, y
    if (TIFFGetFieldDefaulted(pTiff, TIFFTAG_WHITEPOINT, &pWhite) != 1 || !(pWhite[1] > 0.0F))
        return false;
    float white[3] = {pWhite[0] / pWhite[1] * 100.0F, 100.0F,
                      (1.0F - pWhite[0] - pWhite[1]) / pWhite[1] * 100.0F};
    return TIFFCIELabToRGBInit(&m_tables, &kDisplay, white) == 0;
}

void CLabToRgb::Convert(float l, float a, float b, unsigned char* pRgb)
{
    float root = 0.0F;
    float y = 0.0F;
    if (l < 8.856F) {
        y = l * m_tables.Y0 / 903.292F;
        root = 7.787F * (y / m_tables.Y0) + 16.0F / 116.0F;
    } else {
        root = (l + 16.0F) / 116.0F;
        y = m_tables.Y0 * root * root * root;
    }
    const float x = m_tables.X0 * Cube(a / 500.0F + root);
    const float z = m_tables.Z0 * Cube(root - b / 200.0F);
    std::uint32_t rgb[3] = {};
    TIFFXYZToRGB(&m_tables, x, y, z, &rgb[0], &rgb[1], &rgb[2]);
    for (int c = 0; c < 3; ++c)
        pRgb[c] = static_cast<unsigned char>(rgb[c]);
}

} // namespace Vantor::Algorithms
