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
#include <Vantor/measure/RegionStatistics.h>

#include <QString>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <vector>

/// Plain models against which the tests of measuring hold the library, and random shapes.
namespace MeasureModel
{

using namespace Vantor::Geometry;
using Vantor::Algorithms::CImage;
using Vantor::Algorithms::SChannelStatistics;
using Vantor::Algorithms::SRegionStatistics;

using Point = CPoint<double>;
using ShapePtr = std::shared_ptr<CGeometry>;
using ImagePtr = std::shared_ptr<CImage>;

/// Noise with flat parts; with 16 bits the high byte has few values, so that the mode has some pixels.
inline ImagePtr MakeNoise(int width, int height, int channels, int bits, unsigned seed, int alignment = 1)
{
    auto image = std::make_shared<CImage>();
    if (image->Create(width, height, channels, bits, Vantor::Algorithms::EImageType::Interleaved,
                      alignment) != 0)
        return nullptr;
    std::mt19937 random(seed);
    const std::size_t nBytes =
        static_cast<std::size_t>(image->GetStride()) * static_cast<std::size_t>(height);
    for (std::size_t i = 0; i < nBytes; ++i) {
        const unsigned nNoise = random();
        const unsigned nKind = i / 61 % 4;
        image->GetData()[i] = static_cast<unsigned char>(nKind == 0   ? nNoise
                                                         : nKind == 1 ? 200 + nNoise % 3
                                                         : nKind == 2 ? nNoise % 2 * 255
                                                                      : 17);
    }
    return image;
}

inline unsigned SampleAt(const CImage& image, int x, int y, int c)
{
    const unsigned char* pPixel = image.GetPixel(x, y);
    if (image.GetBitDepth() == 8)
        return pPixel[c];
    std::uint16_t nSample = 0;
    std::memcpy(&nSample, pPixel + 2 * c, 2);
    return nSample;
}

inline std::shared_ptr<CPolygon> PolygonOf(const std::vector<SPlace>& places)
{
    CPointList list;
    for (const SPlace& place : places)
        list.Add(Point(place.x, place.y));
    auto polygon = std::make_shared<CPolygon>();
    polygon->SetPoints(list);
    return polygon;
}

/// A coordinate on a grid of eighths, so that sides meet pixel centres and corners often.
inline double RandomCoordinate(std::mt19937& random, int from, int to)
{
    return from + static_cast<int>(random() % static_cast<unsigned>((to - from) * 8 + 1)) / 8.0;
}

/// A shape of any kind that has pixels, in or around a box of that size.
inline ShapePtr RandomShape(std::mt19937& random, int width, int height)
{
    const auto x = [&] { return RandomCoordinate(random, -width / 8, width + width / 8); };
    const auto y = [&] { return RandomCoordinate(random, -height / 8, height + height / 8); };
    const auto place = [&] { return Point(x(), y()); };
    const double left = x();
    const double top = y();
    switch (random() % 7) {
    case 0:
        return std::make_shared<CRectangle>(left, top, x() - left, y() - top);
    case 1:
        return std::make_shared<CEllipse>(left, top, x() - left, y() - top);
    case 2:
        return std::make_shared<CCircle>(place(), std::abs(x()) / 2.0);
    case 3:
        return std::make_shared<CLine>(place(), place());
    case 4: {
        auto array = std::make_shared<CGeometryArray>();
        array->Add(std::make_shared<CRectangle>(left, top, x() - left, y() - top));
        array->Add(std::make_shared<CCircle>(place(), 5.0));
        return array;
    }
    default: {
        std::vector<SPlace> places;
        for (unsigned i = 0; i < 3 + random() % 6; ++i)
            places.push_back({x(), y()});
        return PolygonOf(places);
    }
    }
}

/// The pixels of a shape, by the question whether it covers them.
inline std::vector<std::pair<int, int>> PixelsOf(const CGeometry* shape, int width, int height)
{
    std::vector<std::pair<int, int>> pixels;
    std::vector<SPixelRun> runs;
    if (shape)
        runs = shape->GetPixelRuns(width, height);
    for (int y = 0; y < height && !shape; ++y)
        runs.push_back({y, 0, width});
    for (const SPixelRun& run : runs) {
        for (int x = run.nBegin; x < run.nEnd; ++x)
            pixels.emplace_back(x, run.nRow);
    }
    return pixels;
}

/// The statistics of some values, each step as it is defined, one after another.
inline SChannelStatistics ModelOf(const std::vector<std::pair<int, int>>& pixels,
                                  const std::function<long double(int x, int y)>& valueAt, int bits)
{
    SChannelStatistics model;
    model.histogram.assign(256, 0);
    if (pixels.empty())
        return model;
    const long double count = static_cast<long double>(pixels.size());
    long double sum = 0, x = 0, y = 0, spread = 0;
    std::map<unsigned, std::size_t> counts;
    model.min = 1e9;
    model.max = -1e9;
    for (const auto& pixel : pixels) {
        const long double value = valueAt(pixel.first, pixel.second);
        model.min = std::min(model.min, static_cast<double>(value));
        model.max = std::max(model.max, static_cast<double>(value));
        sum += value;
        x += value * (pixel.first + 0.5L);
        y += value * (pixel.second + 0.5L);
        const unsigned nRounded = static_cast<unsigned>(value + 0.5L);
        ++counts[nRounded];
        ++model.histogram[bits == 8 ? nRounded : nRounded / 256];
    }
    const long double mean = sum / count;
    for (const auto& pixel : pixels)
        spread += (valueAt(pixel.first, pixel.second) - mean) * (valueAt(pixel.first, pixel.second) - mean);
    model.mean = static_cast<double>(mean);
    model.sum = static_cast<double>(sum);
    model.deviation = pixels.size() > 1 ? static_cast<double>(std::sqrt(spread / (count - 1))) : 0.0;
    if (sum > 0)
        model.centreOfMass = {static_cast<double>(x / sum), static_cast<double>(y / sum)};
    std::size_t nMost = 0, nUpTo = 0;
    for (const auto& [value, times] : counts) {
        if (times > nMost)
            model.mode = value;
        nMost = std::max(nMost, times);
        if (2 * nUpTo <= pixels.size() && 2 * (nUpTo + times) > pixels.size())
            model.median = value;
        nUpTo += times;
    }
    return model;
}

/// Two undefined numbers are equal.
inline bool IsClose(double a, double b, double tolerance = 1e-12)
{
    return (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= tolerance * std::max(1.0, std::abs(b));
}

/// What differs first, or an empty text. Counts and values of pixels are equal, the rest up to rounding.
inline QString Difference(const SChannelStatistics& is, const SChannelStatistics& wanted, bool exact)
{
    const auto text = [](const char* pName, double a, double b) {
        return QStringLiteral("%1: %2 instead of %3")
            .arg(QLatin1String(pName))
            .arg(a, 0, 'g', 17)
            .arg(b, 0, 'g', 17);
    };
    const double tolerance = exact ? 0.0 : 1e-12;
    if (!IsClose(is.min, wanted.min, tolerance))
        return text("min", is.min, wanted.min);
    if (!IsClose(is.max, wanted.max, tolerance))
        return text("max", is.max, wanted.max);
    if (!IsClose(is.sum, wanted.sum, tolerance))
        return text("sum", is.sum, wanted.sum);
    if (!IsClose(is.mean, wanted.mean))
        return text("mean", is.mean, wanted.mean);
    if (!IsClose(is.deviation, wanted.deviation))
        return text("deviation", is.deviation, wanted.deviation);
    if (!IsClose(is.centreOfMass.x, wanted.centreOfMass.x) ||
        !IsClose(is.centreOfMass.y, wanted.centreOfMass.y))
        return text("centre of mass", is.centreOfMass.x, wanted.centreOfMass.x);
    if (is.histogram.empty())
        return {};
    if (!IsClose(is.median, wanted.median, 0.0))
        return text("median", is.median, wanted.median);
    if (!IsClose(is.mode, wanted.mode, 0.0))
        return text("mode", is.mode, wanted.mode);
    return is.histogram == wanted.histogram ? QString() : QStringLiteral("histogram");
}

/// The same of everything that is known about a region.
inline QString Difference(const SRegionStatistics& is, const CImage& image, const CGeometry* shape)
{
    const auto pixels = PixelsOf(shape, image.GetWidth(), image.GetHeight());
    const int nBits = image.GetBitDepth();
    if (!is.failure.empty())
        return QString::fromStdString(is.failure);
    if (is.count != pixels.size() || static_cast<int>(is.channels.size()) != image.GetChannel())
        return QStringLiteral("%1 pixels instead of %2").arg(is.count).arg(pixels.size());
    for (int c = 0; c < image.GetChannel(); ++c) {
        const auto value = [&](int x, int y) -> long double { return SampleAt(image, x, y, c); };
        const QString difference =
            Difference(is.channels[static_cast<std::size_t>(c)], ModelOf(pixels, value, nBits), true);
        if (!difference.isEmpty())
            return QStringLiteral("channel %1, %2").arg(c).arg(difference);
    }
    const SChannelStatistics place = ModelOf(
        pixels, [](int, int) { return 1.0L; }, 8);
    if (!IsClose(is.centroid.x, place.centreOfMass.x) || !IsClose(is.centroid.y, place.centreOfMass.y))
        return QStringLiteral("centroid");
    if (image.GetChannel() < 3)
        return is.grey || is.weightedGrey ? QStringLiteral("a grey of greys") : QString();
    const auto grey = [&](int x, int y) {
        return (SampleAt(image, x, y, 0) + SampleAt(image, x, y, 1) + SampleAt(image, x, y, 2)) / 3.0L;
    };
    const auto weighted = [&](int x, int y) {
        return (299 * SampleAt(image, x, y, 0) + 587 * SampleAt(image, x, y, 1) +
                114 * SampleAt(image, x, y, 2)) /
               1000.0L;
    };
    const QString difference = Difference(*is.grey, ModelOf(pixels, grey, nBits), false);
    if (!difference.isEmpty())
        return QStringLiteral("grey, ") + difference;
    const QString more = Difference(*is.weightedGrey, ModelOf(pixels, weighted, nBits), false);
    return more.isEmpty() ? more : QStringLiteral("weighted grey, ") + more;
}

} // namespace MeasureModel
