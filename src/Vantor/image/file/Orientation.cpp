// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/Orientation_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
/// The tag's values from 1 on: which sides the first row and the first column stand for.
enum EOrientation {
    TopLeft = 1,
    TopRight,
    BottomRight,
    BottomLeft,
    LeftTop,
    RightTop,
    RightBottom,
    LeftBottom
};
} // namespace

bool Reorient(const CImage& from, int nOrientation, CImage& image)
{
    const int nLastX = from.GetWidth() - 1;
    const int nLastY = from.GetHeight() - 1;
    const bool bSwap = nOrientation >= LeftTop;
    const bool bFlipX = nOrientation == TopRight || nOrientation == BottomRight ||
                        nOrientation == RightBottom || nOrientation == LeftBottom;
    const bool bFlipY = nOrientation == BottomRight || nOrientation == BottomLeft ||
                        nOrientation == RightTop || nOrientation == RightBottom;
    const int nChannels = from.GetChannel();
    if (image.Create(bSwap ? nLastY + 1 : nLastX + 1, bSwap ? nLastX + 1 : nLastY + 1, nChannels, 8,
                     EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    const unsigned char* const* pRows = from.GetRows();
    const int nWidth = image.GetWidth();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pTo += nChannels) {
            const int nFromX = bSwap ? y : x;
            const int nFromY = bSwap ? x : y;
            const unsigned char* pFrom =
                pRows[bFlipY ? nLastY - nFromY : nFromY] + (bFlipX ? nLastX - nFromX : nFromX) * nChannels;
            std::memcpy(pTo, pFrom, static_cast<std::size_t>(nChannels));
        }
    }
    return true;
}

} // namespace Vantor::Algorithms
