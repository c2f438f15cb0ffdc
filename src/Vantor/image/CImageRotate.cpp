// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/CProgress.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/ImagePixels_p.h>
#include <Vantor/image/Resample_p.h>
#include <Vantor/image/Transpose_p.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
constexpr double kHalfPi = 1.57079632679489661923;
constexpr double kAngleTolerance = 1e-9; // radians; well below a pixel at the rim of the largest image
constexpr double kSizeTolerance = 1e-6;  // pixels; a canvas does not grow for a rounding error
constexpr double kMaxByte = 255.0;
constexpr double kMaxCoordinate = INT_MAX;

struct SSize {
    int nWidth;
    int nHeight;
};

/// Where a turned image lies on its canvas, in whole pixels; what lies outside is cut off.
struct SPlace {
    long long nX;
    long long nY;
};

std::size_t BytesPerPixel(const CImage& image)
{
    return static_cast<std::size_t>(image.GetChannel() * (image.GetBitDepth() / CHAR_BIT));
}

bool IsUsable(double value)
{
    return std::abs(value) <= kMaxCoordinate;
}

/// Quarter turns clockwise, 0 to 3, or -1 for any other angle.
int QuarterTurns(double angle)
{
    const double rest = std::remainder(angle, 4.0 * kHalfPi);
    const double turns = std::round(rest / kHalfPi);
    if (std::abs(rest - turns * kHalfPi) > kAngleTolerance)
        return -1;
    return (static_cast<int>(turns) + 4) % 4;
}

/// The size of the canvas that holds a rotated image; zeros when there is none.
SSize GrownSize(const CImage& image, double angle, int quarters)
{
    if (quarters >= 0)
        return quarters % 2 == 0 ? SSize{image.GetWidth(), image.GetHeight()}
                                 : SSize{image.GetHeight(), image.GetWidth()};
    const double c = std::abs(std::cos(angle));
    const double s = std::abs(std::sin(angle));
    const double width = std::ceil(image.GetWidth() * c + image.GetHeight() * s - kSizeTolerance);
    const double height = std::ceil(image.GetWidth() * s + image.GetHeight() * c - kSizeTolerance);
    if (width > INT_MAX || height > INT_MAX)
        return {0, 0};
    return {std::max(static_cast<int>(width), 1), std::max(static_cast<int>(height), 1)};
}

/// Whether the limits allow a result of that size for the other image.
bool IsAllowed(const CImage& image, const SSize& size)
{
    if (size.nWidth < 1 || size.nHeight < 1)
        return false;
    const double has = static_cast<double>(image.GetStride()) * image.GetHeight();
    const double wants = static_cast<double>(BytesPerPixel(image)) * size.nWidth * size.nHeight;
    return wants <= std::max(has, static_cast<double>(CImage::GetDecodeLimit()));
}

/// Where a turned image begins on a kept canvas after a turn about (x, y). Three quarters are computed as the
/// inverse of one, so that right and left restore what was not cut off, however half a pixel is rounded.
SPlace KeptPlace(const CImage& image, const Geometry::CPoint<double>& centre, int quarters)
{
    const auto whole = [](double value) { return static_cast<long long>(std::floor(value + 0.5)); };
    const long long nHeight = image.GetHeight();
    const long long nWidth = image.GetWidth();
    if (quarters == 2)
        return {whole(2.0 * centre.x()) - nWidth, whole(2.0 * centre.y()) - nHeight};
    const long long nSum = whole(centre.x() + centre.y());
    const long long nDifference = whole(centre.y() - centre.x());
    return quarters == 1 ? SPlace{nSum - nHeight, nDifference} : SPlace{-nDifference, nSum - nWidth};
}

/// The part of a source axis that lands on the canvas: cells begin to end - 1 (in the order of the canvas)
/// of an axis of that length, placed at an offset.
struct SSpan {
    int nBegin;
    int nEnd;
};

SSpan Visible(long long offset, int length, int canvas)
{
    const long long nBegin = std::clamp<long long>(-offset, 0, length);
    const long long nEnd = std::clamp<long long>(canvas - offset, nBegin, length);
    return {static_cast<int>(nBegin), static_cast<int>(nEnd)};
}

/// Half a turn: rows and pixels in reverse order. Spans and place as for the canvas.
void TurnHalf(const CImage& from, CImage& to, SSpan columns, SSpan rows, const SPlace& place)
{
    const std::size_t nBytes = BytesPerPixel(from);
    for (int y = rows.nBegin; y < rows.nEnd && CProgress::Tell(static_cast<double>(y) / to.GetHeight());
         ++y) {
        const unsigned char* pFrom =
            from.GetPixel(from.GetWidth() - 1 - columns.nBegin, from.GetHeight() - 1 - y);
        unsigned char* pTo =
            to.GetPixel(static_cast<int>(columns.nBegin + place.nX), static_cast<int>(y + place.nY));
        for (int x = columns.nBegin; x < columns.nEnd; ++x, pFrom -= nBytes, pTo += nBytes)
            std::memcpy(pTo, pFrom, nBytes);
    }
}

/// One or three quarters clockwise: a transposition that reads the rows of the source, or writes those of
/// the target, from the last to the first.
void TurnQuarter(const CImage& from, CImage& to, SSpan columns, SSpan rows, const SPlace& place, int quarters)
{
    const int nPixelBytes = static_cast<int>(BytesPerPixel(from));
    const int nLength = columns.nEnd - columns.nBegin; // along the rows of the canvas: rows of the source
    const int nLines = rows.nEnd - rows.nBegin;
    const int nToX = static_cast<int>(columns.nBegin + place.nX);
    const int nToY = static_cast<int>(rows.nBegin + place.nY);
    if (quarters == 1) {
        TransposePixels(from.GetPixel(rows.nBegin, from.GetHeight() - 1 - columns.nBegin), -from.GetStride(),
                        to.GetPixel(nToX, nToY), to.GetStride(), nLines, nLength, nPixelBytes);
    } else {
        TransposePixels(from.GetPixel(from.GetWidth() - rows.nEnd, columns.nBegin), from.GetStride(),
                        to.GetPixel(nToX, nToY + nLines - 1), -to.GetStride(), nLines, nLength, nPixelBytes);
    }
}

void Turn(const CImage& from, CImage& to, const SPlace& place, int quarters)
{
    const SSize turned = GrownSize(from, 0.0, quarters);
    const SSpan columns = Visible(place.nX, turned.nWidth, to.GetWidth());
    const SSpan rows = Visible(place.nY, turned.nHeight, to.GetHeight());
    if (columns.nBegin >= columns.nEnd || rows.nBegin >= rows.nEnd)
        return;
    if (quarters == 2)
        TurnHalf(from, to, columns, rows, place);
    else
        TurnQuarter(from, to, columns, rows, place, quarters);
}

/// Fills the canvas.
void Fill(CImage& image, unsigned char value)
{
    const std::size_t nRow = static_cast<std::size_t>(image.GetWidth()) * BytesPerPixel(image);
    for (int y = 0; y < image.GetHeight(); ++y)
        std::memset(image.GetRows()[y], value, nRow);
}

/// Zeroes the padding between the rows.
void ClearRowEnds(CImage& image)
{
    const std::size_t nRow = static_cast<std::size_t>(image.GetWidth()) * BytesPerPixel(image);
    const std::size_t nRest = static_cast<std::size_t>(image.GetStride()) - nRow;
    for (int y = 0; nRest > 0 && y < image.GetHeight(); ++y)
        std::memset(image.GetRows()[y] + nRow, 0, nRest);
}

Geometry::CPoint<double> MiddleOf(const CImage& image)
{
    return {image.GetWidth() * 0.5, image.GetHeight() * 0.5};
}
} // namespace

int CImage::Rotate(const Geometry::CPoint<double>& centre, double angle, double fill, ERotationMode mode)
try {
    return m_pFailure->Note(TryRotate(centre, angle, fill, mode));
} catch (const std::bad_alloc&) {
    return m_pFailure->Fail("There is not enough memory for the rotated image.");
}

CResult CImage::TryRotate(const Geometry::CPoint<double>& centre, double angle, double fill,
                          ERotationMode mode)
{
    if (!GetData())
        return CResult::Failure("There is no image to rotate.");
    if (!std::isfinite(angle) || !std::isfinite(fill) || !IsUsable(centre.x()) || !IsUsable(centre.y()))
        return CResult::Failure("A value of the rotation is not finite, or its centre is too far away.");
    if (mode != ERotationMode::KeepCanvas && mode != ERotationMode::GrowCanvas)
        return CResult::Failure("The mode of the rotation is unknown.");
    const bool bGrow = mode == ERotationMode::GrowCanvas;
    const int nQuarters = QuarterTurns(angle);
    const SSize size = bGrow ? GrownSize(*this, angle, nQuarters) : SSize{GetWidth(), GetHeight()};
    if (!IsAllowed(*this, size))
        return CResult::Failure("The rotated image would be too large.");
    if (nQuarters == 0)
        return CResult::Success();
    CImage result;
    if (result.CreateLike(*this, size.nWidth, size.nHeight, GetChannel()) != 0)
        return CResult::Failure("There is not enough memory for the rotated image.");
    ClearRowEnds(result);
    const auto nFill = static_cast<unsigned char>(std::lround(std::clamp(fill, 0.0, kMaxByte)));
    if (nQuarters > 0 && bGrow) {
        Turn(*this, result, {0, 0}, nQuarters); // covers every pixel
    } else if (nQuarters > 0) {
        Fill(result, nFill);
        Turn(*this, result, KeptPlace(*this, centre, nQuarters), nQuarters);
    } else {
        const Geometry::CPoint<double> from = bGrow ? MiddleOf(*this) : centre;
        const Geometry::CPoint<double> to = bGrow ? MiddleOf(result) : centre;
        Resample(*this, result, {std::cos(angle), std::sin(angle), from.x(), from.y(), to.x(), to.y()},
                 nFill);
    }
    if (CProgress::IsThreadCancelled())
        return CResult::Failure(kCancelled);
    result.m_pPixels->pMetadata = Turned(m_pPixels->pMetadata, nQuarters);
    m_pPixels.swap(result.m_pPixels);
    return CResult::Success();
}

} // namespace Vantor::Algorithms
