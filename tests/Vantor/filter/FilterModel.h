// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>

#include <hwy/targets.h>

#include <QString>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <vector>

/// Plain point-wise models against which the tests of the filters hold the library.
namespace FilterModel
{

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;
using Vantor::Geometry::SPixelRun;

using ImagePtr = std::shared_ptr<CImage>;
using ShapePtr = std::shared_ptr<CGeometry>;
/// The filtered value of a byte, of the pixel (x, y) and the channel c.
using Value = std::function<unsigned char(const CImage& image, int x, int y, int c)>;
using Point = Vantor::Geometry::CPoint<double>;

/// Noise, with flat, black and white parts, also in the bytes behind the rows.
inline ImagePtr MakeNoise(int width, int height, int channels, int rowAlignment, unsigned seed)
{
    auto image = std::make_shared<CImage>();
    if (image->Create(width, height, channels, 8, EImageType::Interleaved, rowAlignment) != 0)
        return nullptr;
    std::mt19937 random(seed);
    const std::size_t nBytes =
        static_cast<std::size_t>(image->GetStride()) * static_cast<std::size_t>(height);
    for (std::size_t i = 0; i < nBytes; ++i) {
        const unsigned nKind = (i / 13) % 4;
        const unsigned nNoise = random();
        image->GetData()[i] = static_cast<unsigned char>(nKind == 0   ? nNoise
                                                         : nKind == 1 ? 100 + nNoise % 5
                                                         : nKind == 2 ? (nNoise % 2) * 255
                                                                      : nNoise % 32);
    }
    return image;
}

inline ImagePtr CopyOf(const CImage& image)
{
    auto copy = std::make_shared<CImage>();
    return copy->CopyFrom(&image) == 0 ? copy : nullptr;
}

inline std::size_t BytesOf(const CImage& image)
{
    return static_cast<std::size_t>(image.GetStride()) * static_cast<std::size_t>(image.GetHeight());
}

/// Every byte, those behind the rows included.
inline bool AreEqual(const CImage& a, const CImage& b)
{
    return a.GetWidth() == b.GetWidth() && a.GetStride() == b.GetStride() && BytesOf(a) == BytesOf(b) &&
           std::memcmp(a.GetData(), b.GetData(), BytesOf(a)) == 0;
}

/// The byte of the image whose border is repeated outwards.
inline int ByteAt(const CImage& image, int x, int y, int c)
{
    return image.GetPixel(std::clamp(x, 0, image.GetWidth() - 1), std::clamp(y, 0, image.GetHeight() - 1))[c];
}

/// The median of a window, in which the border's bytes count as often as they are repeated.
inline unsigned char Median(const CImage& image, int x, int y, int c, long long radiusX, long long radiusY)
{
    const auto weight = [](long long i, long long middle, long long radius, long long length) {
        return static_cast<unsigned long long>(
            1 + (i == 0 ? std::max(radius - middle, 0LL) : 0) +
            (i == length - 1 ? std::max(middle + radius - length + 1, 0LL) : 0));
    };
    unsigned long long arrCounts[256] = {};
    const int nWidth = image.GetWidth();
    const int nHeight = image.GetHeight();
    for (long long j = std::max(y - radiusY, 0LL); j <= std::min(y + radiusY, nHeight - 1LL); ++j) {
        for (long long i = std::max(x - radiusX, 0LL); i <= std::min(x + radiusX, nWidth - 1LL); ++i)
            arrCounts[image.GetPixel(static_cast<int>(i), static_cast<int>(j))[c]] +=
                weight(i, x, radiusX, nWidth) * weight(j, y, radiusY, nHeight);
    }
    unsigned long long nRest = static_cast<unsigned long long>(2 * radiusX + 1) *
                               static_cast<unsigned long long>(2 * radiusY + 1) / 2;
    int nValue = 0;
    while (nRest >= arrCounts[nValue])
        nRest -= arrCounts[nValue++];
    return static_cast<unsigned char>(nValue);
}

inline int GradientX(const CImage& image, int x, int y, int c)
{
    int nSum = 0;
    for (int j = -1; j <= 1; ++j)
        nSum += (j == 0 ? 2 : 1) * (ByteAt(image, x + 1, y + j, c) - ByteAt(image, x - 1, y + j, c));
    return nSum;
}

inline int GradientY(const CImage& image, int x, int y, int c)
{
    int nSum = 0;
    for (int i = -1; i <= 1; ++i)
        nSum += (i == 0 ? 2 : 1) * (ByteAt(image, x + i, y + 1, c) - ByteAt(image, x + i, y - 1, c));
    return nSum;
}

/// One flag for each pixel of a canvas.
struct Mask {
    int nWidth;
    int nHeight;
    std::vector<char> vctSet;

    Mask(int width, int height)
        : nWidth(width), nHeight(height),
          vctSet(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
    }
    char& At(int x, int y)
    {
        return vctSet[static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth) +
                      static_cast<std::size_t>(x)];
    }
    bool IsSet(int x, int y) const { return const_cast<Mask*>(this)->At(x, y) != 0; }
};

inline Mask MaskOf(const CGeometry& shape, int width, int height)
{
    Mask mask(width, height);
    for (const SPixelRun& run : shape.GetPixelRuns(width, height)) {
        for (int x = run.nBegin; x < run.nEnd; ++x)
            mask.At(x, run.nRow) = 1;
    }
    return mask;
}

/// Whether a pixel of that kind lies within the distance.
inline bool IsNear(const Mask& mask, int x, int y, double distance, bool set)
{
    const int nReach = static_cast<int>(distance);
    for (int j = std::max(y - nReach, 0); j <= std::min(y + nReach, mask.nHeight - 1); ++j) {
        for (int i = std::max(x - nReach, 0); i <= std::min(x + nReach, mask.nWidth - 1); ++i) {
            if (mask.IsSet(i, j) == set && (i - x) * (i - x) + (j - y) * (j - y) <= distance * distance)
                return true;
        }
    }
    return false;
}

/// Makes a shape whose coordinates are all moved by an offset.
using ShapeMaker = std::function<ShapePtr(double offset)>;

/// The pixels that a filter is to write.
inline Mask RegionOf(const CImage& image, const ShapeMaker& make, ERegionMode mode, double tolerance)
{
    constexpr int kMargin = 12;
    Mask region(image.GetWidth(), image.GetHeight());
    const ShapePtr pShape = make(kMargin);
    if (mode == ERegionMode::All || !pShape) {
        std::fill(region.vctSet.begin(), region.vctSet.end(), mode != ERegionMode::Outside);
        return region;
    }
    const Mask wide = MaskOf(*pShape, region.nWidth + 2 * kMargin, region.nHeight + 2 * kMargin);
    for (int y = 0; y < region.nHeight; ++y) {
        for (int x = 0; x < region.nWidth; ++x) {
            const bool bInside = tolerance >= 0.0
                                     ? IsNear(wide, x + kMargin, y + kMargin, tolerance, true)
                                     : !IsNear(wide, x + kMargin, y + kMargin, -tolerance, false);
            region.At(x, y) = bInside == (mode == ERegionMode::Inside);
        }
    }
    return region;
}

/// The image with the pixels of the region taken from another one, but for alpha.
inline ImagePtr Merged(const CImage& image, const CImage& filtered, const Mask& region)
{
    ImagePtr result = CopyOf(image);
    const int nChannels = image.GetChannel();
    const std::size_t nColors = static_cast<std::size_t>(nChannels % 2 == 0 ? nChannels - 1 : nChannels);
    for (int y = 0; y < region.nHeight; ++y) {
        for (int x = 0; x < region.nWidth; ++x) {
            if (region.IsSet(x, y))
                std::memcpy(result->GetPixel(x, y), filtered.GetPixel(x, y), nColors);
        }
    }
    return result;
}

/// Every byte of every pixel as the model has it.
inline ImagePtr Modelled(const CImage& image, const Value& value)
{
    ImagePtr result = CopyOf(image);
    for (int y = 0; y < image.GetHeight(); ++y) {
        for (int x = 0; x < image.GetWidth(); ++x) {
            for (int c = 0; c < image.GetChannel(); ++c)
                result->GetPixel(x, y)[c] = value(image, x, y, c);
        }
    }
    return result;
}

inline ImagePtr Filtered(const CImage& image, const Mask& region, const Value& value)
{
    return Merged(image, *Modelled(image, value), region);
}

struct NamedShape {
    const char* pName;
    ShapeMaker make;
};

/// One shape of each kind and relation to the image.
inline std::vector<NamedShape> Shapes(int width, int height)
{
    using namespace Vantor::Geometry;
    const double w = width;
    const double h = height;
    const auto polygon = [](std::vector<Point> points, double o) {
        auto shape = std::make_shared<CPolygon>();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Point a = points[i], b = points[(i + 1) % points.size()];
            shape->AddEdge(CLine(Point(a.x() + o, a.y() + o), Point(b.x() + o, b.y() + o)));
        }
        return shape;
    };
    const std::vector<Point> star = {{w * 0.1, h * 0.3},
                                     {w * 0.9, h * 0.35},
                                     {w * 0.25, h * 0.95},
                                     {w * 0.5, h * 0.05},
                                     {w * 0.8, h * 0.9}};
    return {
        {"none", [](double) { return ShapePtr(); }},
        {"rectangle",
         [=](double o) {
             return std::make_shared<CRectangle>(o + w * 0.25, o + h * 0.25, w * 0.5, h * 0.5);
         }},
        {"rectangle drawn backwards over the corner",
         [=](double o) { return std::make_shared<CRectangle>(o + w * 0.6, o + h * 0.4, -w, -h); }},
        {"rectangle of the image", [=](double o) { return std::make_shared<CRectangle>(o, o, w, h); }},
        {"rectangle around the image",
         [=](double o) { return std::make_shared<CRectangle>(o - 3, o - 4, w + 8, h + 6); }},
        {"rectangle beside the image",
         [=](double o) { return std::make_shared<CRectangle>(o + w + 1, o, 4, h); }},
        {"empty rectangle", [=](double o) { return std::make_shared<CRectangle>(o + 1, o + 1, 0, h); }},
        {"circle",
         [=](double o) { return std::make_shared<CCircle>(Point(o + w * 0.4, o + h * 0.6), w * 0.3); }},
        {"ellipse",
         [=](double o) { return std::make_shared<CEllipse>(o + w * 0.1, o + h * 0.2, w * 0.8, h * 0.5); }},
        {"polygon that crosses itself", [=](double o) { return polygon(star, o); }},
        {"line",
         [=](double o) { return std::make_shared<CLine>(Point(o + w * 0.9, o), Point(o - 2, o + h * 0.7)); }},
        {"point", [=](double o) { return std::make_shared<Point>(o + w * 0.5, o + h * 0.5); }},
        {"array",
         [=](double o) {
             auto array = std::make_shared<CGeometryArray>();
             array->Add(polygon(star, o));
             array->Add(std::make_shared<CRectangle>(o + w * 0.5, o + h * 0.1, w * 0.3, h * 0.7));
             array->Add(std::make_shared<CCircle>(Point(o + w, o + h), h * 0.2));
             return array;
         }},
    };
}

/// Sizes around the widths of vectors; the rows' alignment makes odd strides.
struct Size {
    int nWidth;
    int nHeight;
    int nRowAlignment;
};
inline const std::vector<Size> kSizes = {{1, 1, 1},  {1, 9, 5},   {9, 1, 1},   {2, 2, 7},
                                         {5, 3, 1},  {16, 6, 1},  {17, 23, 9}, {33, 20, 1},
                                         {64, 9, 1}, {65, 31, 3}, {70, 70, 64}};

/// Calls once for every instruction set that Highway offers here, the best last; ends with the usual choice.
inline int ForEachInstructionSet(const std::function<void(const char* name)>& call)
{
    int nCalls = 0;
    std::vector<std::int64_t> vctTargets = hwy::SupportedAndGeneratedTargets();
    std::sort(vctTargets.rbegin(), vctTargets.rend());
    for (const std::int64_t nTarget : vctTargets) {
        hwy::SetSupportedTargetsForTest(nTarget);
        hwy::GetChosenTarget().Update(nTarget);
        call(hwy::TargetName(nTarget));
        ++nCalls;
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    return nCalls;
}

using Filter = std::function<int(CImage& image, const CGeometry* region, ERegionMode mode, double tolerance)>;

/// Each call takes every fourth combination of region, mode and tolerance; four turns in a row take them all.
constexpr int kTurns = 4;

/// The filter under test, called on an image with the combinations whose turn it is; returns what differs
/// from the model first, or an empty text.
inline QString FirstDifference(const CImage& image, const Filter& filter, const Value& value,
                               const std::vector<double>& tolerances, int turn)
{
    QString strDifference;
    int nCombination = turn;
    const ImagePtr modelled = Modelled(image, value);
    for (const NamedShape& shape : Shapes(image.GetWidth(), image.GetHeight())) {
        for (const ERegionMode mode : {ERegionMode::All, ERegionMode::Inside, ERegionMode::Outside}) {
            for (const double tolerance : tolerances) {
                if (nCombination++ % kTurns != 0)
                    continue;
                const Mask region = RegionOf(image, shape.make, mode, tolerance);
                const ImagePtr expected = Merged(image, *modelled, region);
                const ShapePtr pShape = shape.make(0.0);
                ForEachInstructionSet([&](const char* pName) {
                    const ImagePtr result = CopyOf(image);
                    const int nResult = filter(*result, pShape.get(), mode, tolerance);
                    if (strDifference.isEmpty() && (nResult != 0 || !AreEqual(*result, *expected)))
                        strDifference =
                            QStringLiteral("%1, mode %2, tolerance %3, %4, %5x%6, %7 channels: %8")
                                .arg(QLatin1String(shape.pName))
                                .arg(static_cast<int>(mode))
                                .arg(tolerance)
                                .arg(QLatin1String(pName))
                                .arg(image.GetWidth())
                                .arg(image.GetHeight())
                                .arg(image.GetChannel())
                                .arg(nResult);
                });
            }
        }
    }
    return strDifference;
}

} // namespace FilterModel
