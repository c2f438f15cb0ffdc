// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/MeasurementColumns_p.h>

#include <functional>

namespace Vantor::Algorithms
{

namespace
{
using Value = std::function<double(const SMeasured&)>;

/// A column, and where its values come from; null for texts.
struct SColumn {
    SMeasurementColumn about;
    Value value;
};

/// The channel or grey whose statistics stand for the pixel as a whole; null without an image.
const SChannelStatistics* GreyOf(const SRegionStatistics& pixels)
{
    if (pixels.grey)
        return &*pixels.grey;
    return pixels.channels.empty() ? nullptr : &pixels.channels.front();
}

/// Red, green, blue or alpha by 0 to 3; null for an image without it.
const SChannelStatistics* ChannelOf(const SRegionStatistics& pixels, std::size_t nColor)
{
    const std::size_t nChannels = pixels.channels.size();
    const bool bColors = nChannels >= 3;
    if (nColor == 3 && nChannels % 2 == 0 && nChannels > 0)
        return &pixels.channels.back();
    return bColors && nColor < 3 ? &pixels.channels[nColor] : nullptr;
}

Value Of(double SShapeMeasures::*pNumber)
{
    return [pNumber](const SMeasured& m) { return m.outline.*pNumber; };
}

Value OfGrey(std::function<double(const SChannelStatistics&)> number)
{
    return [number](const SMeasured& m) {
        const SChannelStatistics* pGrey = m.pixels.count > 0 ? GreyOf(m.pixels) : nullptr;
        return pGrey ? number(*pGrey) : kUndefined;
    };
}

/// A coordinate of a place in pixels, in units.
Value InUnits(std::function<Geometry::SPlace(const SMeasured&)> place, double Geometry::SPlace::*pAxis)
{
    return [place, pAxis](const SMeasured& m) { return m.calibration.ToUnits(place(m)).*pAxis; };
}

Geometry::SPlace CentroidOf(const SMeasured& m)
{
    return m.pixels.centroid;
}

Geometry::SPlace MassOf(const SMeasured& m)
{
    const SChannelStatistics* pGrey = GreyOf(m.pixels);
    return pGrey ? pGrey->centreOfMass : Geometry::SPlace{kUndefined, kUndefined};
}

void AddOutline(std::vector<SColumn>& columns)
{
    using M = SShapeMeasures;
    const auto add = [&columns](const char* pKey, const char* pTitle, EMeasure measure, double M::*pNumber,
                                bool bUsual = false) {
        columns.push_back({{pKey, pTitle, measure, bUsual}, Of(pNumber)});
    };
    add("area", "Area", EMeasure::Area, &M::area, true);
    add("perimeter", "Perimeter", EMeasure::Length, &M::perimeter, true);
    add("length", "Length", EMeasure::Length, &M::length, true);
    add("angle", "Angle", EMeasure::Angle, &M::angle, true);
    add("dx", "dx", EMeasure::Length, &M::dx);
    add("dy", "dy", EMeasure::Length, &M::dy);
    add("x", "X", EMeasure::Length, &M::x);
    add("y", "Y", EMeasure::Length, &M::y);
    add("width", "Width", EMeasure::Length, &M::width);
    add("height", "Height", EMeasure::Length, &M::height);
    add("feret", "Feret", EMeasure::Length, &M::feret);
    add("min-feret", "Minimum Feret", EMeasure::Length, &M::minFeret);
    add("feret-angle", "Feret angle", EMeasure::Angle, &M::feretAngle);
    add("circularity", "Circularity", EMeasure::Number, &M::circularity);
    add("aspect", "Aspect", EMeasure::Number, &M::aspect);
    add("roundness", "Roundness", EMeasure::Number, &M::roundness);
    add("solidity", "Solidity", EMeasure::Number, &M::solidity);
}

void AddPixels(std::vector<SColumn>& columns)
{
    using C = SChannelStatistics;
    const auto add = [&columns](const char* pKey, const char* pTitle, double C::*pNumber, bool bUsual) {
        columns.push_back({{pKey, pTitle, EMeasure::Number, bUsual},
                           OfGrey([pNumber](const C& grey) { return grey.*pNumber; })});
    };
    const auto place = [&columns](const char* pKey, const char* pTitle,
                                  Geometry::SPlace (*of)(const SMeasured&), double Geometry::SPlace::*pAxis) {
        columns.push_back({{pKey, pTitle, EMeasure::Length, false}, InUnits(of, pAxis)});
    };
    add("mean", "Mean", &C::mean, true);
    add("deviation", "Deviation", &C::deviation, true);
    add("min", "Minimum", &C::min, true);
    add("max", "Maximum", &C::max, true);
    add("median", "Median", &C::median, false);
    add("mode", "Mode", &C::mode, false);
    columns.push_back(
        {{"integrated-density", "Integrated density", EMeasure::Area, false}, [](const SMeasured& m) {
             const C* pGrey = GreyOf(m.pixels);
             return pGrey ? m.calibration.GetArea(pGrey->sum) : kUndefined;
         }});
    add("sum", "Sum", &C::sum, false);
    place("centroid-x", "Centroid X", &CentroidOf, &Geometry::SPlace::x);
    place("centroid-y", "Centroid Y", &CentroidOf, &Geometry::SPlace::y);
    place("mass-x", "Centre of mass X", &MassOf, &Geometry::SPlace::x);
    place("mass-y", "Centre of mass Y", &MassOf, &Geometry::SPlace::y);
}

void AddChannels(std::vector<SColumn>& columns)
{
    using C = SChannelStatistics;
    struct SNumber {
        const char* pKey;
        const char* pTitle;
        double C::*pNumber;
    };
    const char* const colors[][2] = {
        {"red", "Red"}, {"green", "Green"}, {"blue", "Blue"}, {"alpha", "Alpha"}};
    for (std::size_t nColor = 0; nColor < 4; ++nColor)
        for (const SNumber& number :
             {SNumber{"mean", "mean", &C::mean}, SNumber{"deviation", "deviation", &C::deviation},
              SNumber{"min", "minimum", &C::min}, SNumber{"max", "maximum", &C::max}})
            columns.push_back(
                {{std::string(colors[nColor][0]) + '-' + number.pKey,
                  std::string(colors[nColor][1]) + ' ' + number.pTitle, EMeasure::Number, false},
                 [nColor, pNumber = number.pNumber](const SMeasured& m) {
                     const C* pChannel = ChannelOf(m.pixels, nColor);
                     return pChannel ? pChannel->*pNumber : kUndefined;
                 }});
}

std::vector<SColumn> MakeColumns()
{
    std::vector<SColumn> columns;
    columns.push_back({{"page", "Page", EMeasure::Number, false}, [](const SMeasured& m) {
                           return m.page > 0 ? static_cast<double>(m.page) : kUndefined;
                       }});
    columns.push_back({{"name", "Name", EMeasure::Text, true}, nullptr});
    columns.push_back({{"kind", "Kind", EMeasure::Text, false}, nullptr});
    columns.push_back({{"unit", "Unit", EMeasure::Text, false}, nullptr});
    columns.push_back({{"pixels", "Pixels", EMeasure::Number, true}, [](const SMeasured& m) {
                           return m.pixels.channels.empty() ? kUndefined
                                                            : static_cast<double>(m.pixels.count);
                       }});
    columns.push_back({{"pixel-area", "Pixel area", EMeasure::Area, false}, [](const SMeasured& m) {
                           return m.pixels.channels.empty()
                                      ? kUndefined
                                      : m.calibration.GetArea(static_cast<double>(m.pixels.count));
                       }});
    AddOutline(columns);
    AddPixels(columns);
    AddChannels(columns);
    return columns;
}

const std::vector<SColumn>& Columns()
{
    static const std::vector<SColumn> s_columns = MakeColumns();
    return s_columns;
}
} // namespace

const std::vector<SMeasurementColumn>& GetMeasurementColumns()
{
    static const std::vector<SMeasurementColumn> s_about = [] {
        std::vector<SMeasurementColumn> about;
        for (const SColumn& column : Columns())
            about.push_back(column.about);
        return about;
    }();
    return s_about;
}

std::vector<double> ValuesOf(const SMeasured& measured)
{
    std::vector<double> values;
    values.reserve(Columns().size());
    for (const SColumn& column : Columns())
        values.push_back(column.value ? column.value(measured) : kUndefined);
    return values;
}

} // namespace Vantor::Algorithms
