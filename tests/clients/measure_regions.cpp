// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// measure_regions save FROM TO : loads an image and saves it in another format.
// measure_regions tell IMAGE REGIONS : what the library measures, in the form of Measure.java.
// measure_regions find IMAGE SEARCHES : the components of a grey image. SEARCHES has a line for each search:
// lowest and
//     highest value, 4 or 8 neighbours, smallest and largest area, 1 to fill holes, and the box of the
//     region. A line for each component: index of the search, pixels, centroid, box, and the mean of the
//     values, parted by tabs.
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <Vantor/measure/Components.h>
#include <Vantor/measure/LineProfile.h>
#include <Vantor/measure/RegionStatistics.h>
#include <Vantor/measure/ShapeMeasures.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

using namespace Vantor::Algorithms;
using namespace Vantor::Geometry;

namespace
{
int g_nIndex = 0;

void Tell(const std::string& name, double number)
{
    std::printf("%d\t%s\t%.17g\n", g_nIndex, name.c_str(), number);
}

std::wstring Wide(const std::string& path)
{
    return std::wstring(path.begin(), path.end());
}

std::unique_ptr<CGeometry> ShapeOf(const std::string& kind, const std::vector<double>& n)
{
    if (kind == "rectangle")
        return std::make_unique<CRectangle>(n[0], n[1], n[2], n[3]);
    if (kind == "ellipse")
        return std::make_unique<CEllipse>(n[0], n[1], n[2], n[3]);
    if (kind == "line")
        return std::make_unique<CLine>(CPoint<double>(n[0], n[1]), CPoint<double>(n[2], n[3]));
    CPointList corners;
    for (std::size_t i = 0; i + 1 < n.size(); i += 2)
        corners.Add(CPoint<double>(n[i], n[i + 1]));
    auto polygon = std::make_unique<CPolygon>();
    polygon->SetPoints(corners);
    return polygon;
}

void TellPlane(const std::string& plane, const SRegionStatistics& region, const SChannelStatistics& is)
{
    Tell(plane + ".count", static_cast<double>(region.count));
    Tell(plane + ".area", CCalibration().GetArea(static_cast<double>(region.count)));
    Tell(plane + ".mean", is.mean);
    Tell(plane + ".deviation", is.deviation);
    Tell(plane + ".min", is.min);
    Tell(plane + ".max", is.max);
    Tell(plane + ".median", is.median);
    Tell(plane + ".mode", is.mode);
    Tell(plane + ".density", is.sum);
    Tell(plane + ".centroid.x", region.centroid.x);
    Tell(plane + ".centroid.y", region.centroid.y);
    Tell(plane + ".mass.x", is.centreOfMass.x);
    Tell(plane + ".mass.y", is.centreOfMass.y);
    // The mean and the deviation of the rounded values, as the histogram has them.
    double sum = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < is.histogram.size(); ++i) {
        sum += static_cast<double>(i) * is.histogram[i];
        squares += static_cast<double>(i * i) * is.histogram[i];
    }
    const double count = static_cast<double>(region.count);
    Tell(plane + ".rounded.mean", sum / count);
    Tell(plane + ".rounded.deviation", std::sqrt((count * squares - sum * sum) / (count * (count - 1.0))));
}

void TellLine(const CImage& image, const std::vector<double>& n)
{
    const SLineProfile profile = TakeProfile(image, {{n[0], n[1]}, {n[2], n[3]}});
    for (std::size_t i = 0; i < profile.positions.size(); ++i)
        Tell("profile." + std::to_string(i), profile.channels[0][i]);
}

bool TellRegion(const CImage& image, const std::string& kind, const std::vector<double>& numbers)
{
    const std::unique_ptr<CGeometry> pShape = ShapeOf(kind, numbers);
    const SShapeMeasures shape = MeasureShape(*pShape);
    Tell("feret", shape.feret);
    Tell("feretAngle", shape.feretAngle);
    Tell("minFeret", shape.minFeret);
    if (kind == "line") {
        Tell("length", shape.length);
        Tell("angle", shape.angle);
        TellLine(image, numbers);
        return true;
    }
    Tell("perimeter", shape.perimeter);
    Tell("ramanujan", shape.ramanujanPerimeter);
    Tell("outlineArea", shape.area);
    Tell("aspect", shape.aspect);
    Tell("meetsItself", shape.meetsItself);
    const SRegionStatistics region = MeasureRegion(image, pShape.get(), EStatistics::Full);
    for (std::size_t c = 0; c < region.channels.size(); ++c)
        TellPlane(std::to_string(c), region, region.channels[c]);
    if (region.grey) {
        TellPlane("grey", region, *region.grey);
        TellPlane("weighted", region, *region.weightedGrey);
    }
    return region.failure.empty();
}

int TellAll(const CImage& image, const char* path)
{
    std::ifstream regions(path);
    for (std::string line; std::getline(regions, line); ++g_nIndex) {
        std::istringstream words(line);
        std::string kind;
        words >> kind;
        std::vector<double> numbers;
        for (double number; words >> number;)
            numbers.push_back(number);
        if (!TellRegion(image, kind, numbers))
            return 1;
    }
    return 0;
}

void TellComponent(const CImage& image, const SComponent& component)
{
    const CRectangle box = component.polygon->GetBoundingRectangle();
    const SRegionStatistics statistics = MeasureRegion(image, component.polygon.get(), EStatistics::Moments);
    std::printf("%d\t%llu\t%.17g\t%.17g\t%g\t%g\t%g\t%g\t%.17g\n", g_nIndex,
                static_cast<unsigned long long>(component.count), component.centroid.x, component.centroid.y,
                box.x(), box.y(), box.x() + box.width(), box.y() + box.height(), statistics.channels[0].mean);
}

int FindAll(const CImage& image, const char* path)
{
    std::ifstream searches(path);
    SComponentOptions options;
    int nNeighbours = 0;
    double x = 0, y = 0, width = 0, height = 0;
    for (; searches >> options.low >> options.high >> nNeighbours >> options.minArea >> options.maxArea >>
           options.fillHoles >> x >> y >> width >> height;
         ++g_nIndex) {
        options.neighbours = nNeighbours == 4 ? ENeighbours::Four : ENeighbours::Eight;
        const CRectangle region(x, y, width, height);
        const SComponents components = FindComponents(image, &region, options);
        if (!components.failure.empty())
            return 1;
        for (const SComponent& component : components.found)
            TellComponent(image, component);
    }
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const std::string command = argc == 4 ? argv[1] : "";
    CImage image;
    if (command.empty() || image.Load(Wide(argv[2])) != 0) {
        std::fprintf(stderr, "measure_regions save FROM TO | tell IMAGE REGIONS | find IMAGE SEARCHES\n%s\n",
                     image.GetFailureReason().c_str());
        return 1;
    }
    if (command == "save")
        return image.Save(Wide(argv[3]));
    return command == "find" ? FindAll(image, argv[3]) : TellAll(image, argv[3]);
}
