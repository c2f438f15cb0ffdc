// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/ProcessOperations.h>

#include <Vantor/geometry/CPolygon.h>
#include <Vantor/image/CImage.h>
#include <Vantor/measure/Components.h>

#include <climits>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;

namespace
{
constexpr ERegionMode kInside = ERegionMode::Inside;
constexpr double kExact = 0.0; // the region neither grows nor shrinks

enum EThreshold { EThreshold_Value, EThreshold_Otsu, EThreshold_Mean };

/// @param filter  calls a filter of the image; its reason becomes the operation's
template <class Filter> auto ByFilter(Filter filter)
{
    return [filter](CImage& image, const CGeometry* pRegion, const ProcessValues& v, const ProcessProgress&) {
        return filter(image, pRegion, v) == 0 ? QString() : QString::fromStdString(image.GetFailureReason());
    };
}

int Threshold(CImage& image, const CGeometry* pRegion, const ProcessValues& v)
{
    switch (v[0].toInt()) {
    case EThreshold_Otsu:
        return image.ThresholdByOtsu(pRegion, kInside, kExact);
    case EThreshold_Mean:
        return image.ThresholdByMean(v[2].toInt(), v[3].toDouble(), pRegion, kInside, kExact);
    default:
        return image.Threshold(v[1].toInt(), pRegion, kInside, kExact);
    }
}

/// The rows of the parameters of what finds particles.
enum EParticles {
    EParticles_Channel,
    EParticles_Low,
    EParticles_High,
    EParticles_Neighbours,
    EParticles_MinArea,
    EParticles_MaxArea,
    EParticles_Holes,
    EParticles_Most
};

QString FindParticles(const CImage& image, const CGeometry* pRegion, const ProcessValues& v,
                      const ProcessProgress&, SProcessOperation::Shapes& vctFound)
{
    using namespace Vantor::Algorithms;
    SComponentOptions options;
    options.channel = SComponentOptions::kGrey + v[EParticles_Channel].toInt();
    options.low = v[EParticles_Low].toUInt();
    options.high = v[EParticles_High].toUInt();
    options.neighbours = v[EParticles_Neighbours].toInt() == 0 ? ENeighbours::Eight : ENeighbours::Four;
    options.minArea = v[EParticles_MinArea].toUInt();
    options.maxArea = v[EParticles_MaxArea].toUInt();
    options.fillHoles = v[EParticles_Holes].toInt() != 0;
    options.most = v[EParticles_Most].toInt();
    const SComponents components = FindComponents(image, pRegion, options);
    for (const SComponent& component : components.found)
        vctFound.push_back(component.polygon);
    return QString::fromStdString(components.failure);
}

/// Its parameters, in the order of EParticles.
SProcessOperation ParticlesOperation()
{
    using P = SProcessParameter;
    const auto text = [](const char* pText) { return QString::fromLatin1(pText); };
    SProcessOperation operation;
    operation.strTitle = text("Find Particles");
    operation.vctParameters = {
        P::Choice(text("Values of"),
                  {text("Grey"), text("Channel 1"), text("Channel 2"), text("Channel 3"), text("Channel 4")}),
        P::Whole(text("Lowest value"), 128, 0, 65535),
        P::Whole(text("Highest value"), 65535, 0, 65535),
        P::Choice(text("Neighbours"), {text("Eight"), text("Four")}),
        P::Whole(text("Smallest area, pixels"), 10, 1, INT_MAX),
        P::Whole(text("Largest area, pixels"), INT_MAX, 1, INT_MAX),
        P::Choice(text("Holes"), {text("Kept"), text("Filled")}),
        P::Whole(text("Most particles"), 10000, 1, 100000)};
    operation.find = FindParticles;
    return operation;
}

std::vector<SProcessOperation> Table()
{
    using P = SProcessParameter;
    using V = ProcessValues;
    const auto text = [](const char* pText) { return QString::fromLatin1(pText); };
    const P sigma = P::Real(text("Sigma"), 2.0, 0.1, 100.0, 0.5);
    return {
        {text("Gaussian Blur"), {sigma}, ByFilter([](CImage& image, const CGeometry* pRegion, const V& v) {
             return image.GaussianBlur(v[0].toDouble(), pRegion, kInside, kExact);
         })},
        {text("Unsharp Mask"),
         {sigma, P::Real(text("Amount"), 1.0, 0.0, 10.0, 0.1)},
         ByFilter([](CImage& image, const CGeometry* pRegion, const V& v) {
             return image.UnsharpMask(v[0].toDouble(), v[1].toDouble(), pRegion, kInside, kExact);
         })},
        {text("Threshold"),
         {P::Choice(text("Method"), {text("Value"), text("Otsu"), text("Adaptive mean")}),
          P::Whole(text("Value"), 128, 0, 255), P::Whole(text("Radius of the mean"), 10, 0, 1000),
          P::Real(text("Offset from the mean"), 5.0, -255.0, 255.0, 1.0)},
         ByFilter(Threshold)},
        {text("Brightness, Contrast, Gamma"),
         {P::Real(text("Brightness"), 0.0, -1.0, 1.0, 0.05), P::Real(text("Contrast"), 1.0, 0.0, 10.0, 0.1),
          P::Real(text("Gamma"), 1.0, 0.1, 10.0, 0.1)},
         ByFilter([](CImage& image, const CGeometry* pRegion, const V& v) {
             return image.AdjustTones(v[0].toDouble(), v[1].toDouble(), v[2].toDouble(), pRegion, kInside,
                                      kExact);
         })},
        {text("Invert"), {}, ByFilter([](CImage& image, const CGeometry* pRegion, const V&) {
             return image.Invert(pRegion, kInside, kExact);
         })},
        ParticlesOperation(),
    };
}
} // namespace

const std::vector<SProcessOperation>& ProcessOperations::All()
{
    static const std::vector<SProcessOperation> vctOperations = Table();
    return vctOperations;
}
