// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Connected components beside a model that floods one pixel after another.
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/measure/Components.h>
#include <Vantor/measure/RegionStatistics.h>

#include <set>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

namespace
{
using Pixel = std::pair<int, int>; ///< row and column
using Pixels = std::set<Pixel>;

/// The pixels that hang together with the first, which leave the set.
Pixels Flood(Pixels& from, bool eight)
{
    Pixels flooded;
    std::vector<Pixel> open{*from.begin()};
    from.erase(from.begin());
    while (!open.empty()) {
        const Pixel at = open.back();
        open.pop_back();
        flooded.insert(at);
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const Pixel next{at.first + dy, at.second + dx};
                if ((eight || dx == 0 || dy == 0) && from.erase(next) != 0)
                    open.push_back(next);
            }
        }
    }
    return flooded;
}

/// Floods what is not of the set, within the region and a pixel around the image; what is dry then and was
/// not reached from beyond the region is a hole.
Pixels WithoutHoles(const Pixels& pixels, const Pixels& region, int width, int height, bool eight)
{
    Pixels background;
    for (int y = -1; y <= height; ++y) {
        for (int x = -1; x <= width; ++x) {
            if (pixels.count({y, x}) == 0)
                background.insert({y, x});
        }
    }
    Pixels filled = pixels;
    while (!background.empty()) {
        const Pixels part = Flood(background, !eight);
        if (std::all_of(part.begin(), part.end(), [&](const Pixel& at) { return region.count(at) != 0; }))
            filled.insert(part.begin(), part.end());
    }
    return filled;
}

unsigned ValueAt(const CImage& image, int x, int y, int channel)
{
    if (channel >= 0 || image.GetChannel() < 3)
        return SampleAt(image, x, y, std::max(channel, 0));
    return (299 * SampleAt(image, x, y, 0) + 587 * SampleAt(image, x, y, 1) + 114 * SampleAt(image, x, y, 2) +
            500) /
           1000;
}

std::vector<Pixels> Model(const CImage& image, const CGeometry* shape, const SComponentOptions& options)
{
    Pixels region, pixels;
    for (const auto& [x, y] : PixelsOf(shape, image.GetWidth(), image.GetHeight())) {
        const unsigned nValue = ValueAt(image, x, y, options.channel);
        region.insert({y, x});
        if (nValue >= options.low && nValue <= options.high)
            pixels.insert({y, x});
    }
    const bool bEight = options.neighbours == ENeighbours::Eight;
    if (options.fillHoles)
        pixels = WithoutHoles(pixels, region, image.GetWidth(), image.GetHeight(), bEight);
    std::vector<Pixels> components;
    while (!pixels.empty()) {
        Pixels component = Flood(pixels, bEight);
        if (component.size() >= options.minArea && component.size() <= options.maxArea)
            components.push_back(component);
    }
    return components;
}

Pixels PixelsOf(const CPolygon& polygon, const CImage& image)
{
    Pixels pixels;
    for (const auto& [x, y] : MeasureModel::PixelsOf(&polygon, image.GetWidth(), image.GetHeight()))
        pixels.insert({y, x});
    return pixels;
}

/// What differs first, or an empty text.
QString Difference(const CImage& image, const SComponents& is, const std::vector<Pixels>& wanted)
{
    if (!is.failure.empty())
        return QString::fromStdString(is.failure);
    if (is.found.size() != wanted.size())
        return QStringLiteral("%1 components instead of %2").arg(is.found.size()).arg(wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const SComponent& component = is.found[i];
        if (PixelsOf(*component.polygon, image) != wanted[i])
            return QStringLiteral("other pixels in component %1").arg(i);
        double x = 0.0, y = 0.0;
        for (const Pixel& at : wanted[i]) {
            x += at.second + 0.5;
            y += at.first + 0.5;
        }
        const double count = static_cast<double>(wanted[i].size());
        if (component.count != wanted[i].size() || !IsClose(component.centroid.x, x / count) ||
            !IsClose(component.centroid.y, y / count))
            return QStringLiteral("other numbers of component %1").arg(i);
    }
    return {};
}

/// Of 0 and 255, from lines of text.
ImagePtr Drawn(const std::vector<const char*>& lines)
{
    auto image = std::make_shared<CImage>();
    const int nWidth = static_cast<int>(std::strlen(lines.front()));
    if (image->Create(nWidth, static_cast<int>(lines.size()), 1, 8, EImageType::Interleaved, 1) != 0)
        return nullptr;
    for (std::size_t y = 0; y < lines.size(); ++y) {
        for (int x = 0; x < nWidth; ++x)
            *image->GetPixel(x, static_cast<int>(y)) = lines[y][x] == '#' ? 255 : 0;
    }
    return image;
}

std::vector<std::uint64_t> AreasOf(const SComponents& components)
{
    std::vector<std::uint64_t> areas;
    for (const SComponent& component : components.found)
        areas.push_back(component.count);
    return areas;
}

using Areas = std::vector<std::uint64_t>;
} // namespace

class tst_Components : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomImagesAndRegionsAreAsTheModelSays();
    void largeRunsAreAsTheModelSays();
    void aRectangleHasFourCorners();
    void aRingIsOnePolygon();
    void cornersJoinEightNeighboursOnly();
    void holesAreFilledOrKept();
    void anAreaWithItsHolesDecides();
    void openPlacesAtTheEdgeOfTheRegionAreNoHoles();
    void polygonsGiveTheStatisticsOfTheirPixels();
    void moreThanAllowedFail();
    void badOptionsFail();
    void cancelledSearchesFail();
};

void tst_Components::randomImagesAndRegionsAreAsTheModelSays()
{
    std::mt19937 random(1);
    std::size_t nFound = 0;
    for (int i = 0; i < 1500; ++i) {
        const int nWidth = 1 + static_cast<int>(random() % 30), nHeight = 1 + static_cast<int>(random() % 24);
        const int nChannels = 1 + static_cast<int>(random() % 4);
        const int nBits = random() % 2 == 0 ? 8 : 16;
        const ImagePtr image = MakeNoise(nWidth, nHeight, nChannels, nBits, random(), 4);
        const unsigned nMost = nBits == 8 ? 255 : 65535;
        SComponentOptions options;
        options.channel = static_cast<int>(random() % static_cast<unsigned>(nChannels + 1)) - 1;
        options.low = random() % (nMost + 1);
        options.high = random() % 2 == 0 ? nMost : options.low + random() % (nMost + 1 - options.low);
        options.neighbours = random() % 2 == 0 ? ENeighbours::Four : ENeighbours::Eight;
        options.fillHoles = random() % 2 == 0;
        options.minArea = 1 + random() % 3;
        if (random() % 3 == 0)
            options.maxArea = options.minArea + random() % 20;
        const ShapePtr shape = random() % 3 == 0 ? nullptr : RandomShape(random, nWidth, nHeight);
        const SComponents is = FindComponents(*image, shape.get(), options);
        const QString difference = Difference(*image, is, Model(*image, shape.get(), options));
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(i).arg(difference)));
        nFound += is.found.size();
    }
    QVERIFY2(nFound > 3000, qPrintable(QString::number(nFound)));
}

void tst_Components::largeRunsAreAsTheModelSays()
{
    std::mt19937 random(2);
    for (int i = 0; i < 40; ++i) {
        // Rectangles, some of them erased again, make long runs and nested holes.
        const ImagePtr image = Drawn(std::vector<const char*>(70, std::string(150, '.').c_str()));
        for (int n = 0; n < 60; ++n) {
            const int nX = static_cast<int>(random() % 150), nY = static_cast<int>(random() % 70);
            const int nRight = std::min(150, nX + 1 + static_cast<int>(random() % 60));
            const int nBottom = std::min(70, nY + 1 + static_cast<int>(random() % 20));
            for (int y = nY; y < nBottom; ++y)
                std::memset(image->GetPixel(nX, y), n % 2 == 0 ? 255 : 0,
                            static_cast<std::size_t>(nRight - nX));
        }
        SComponentOptions options;
        options.neighbours = i % 2 == 0 ? ENeighbours::Four : ENeighbours::Eight;
        options.fillHoles = i % 4 < 2;
        const QString difference =
            Difference(*image, FindComponents(*image, nullptr, options), Model(*image, nullptr, options));
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(i).arg(difference)));
    }
}

void tst_Components::aRectangleHasFourCorners()
{
    const SComponents is = FindComponents(*Drawn({".....", ".###.", ".###.", "....."}), nullptr);
    QCOMPARE(is.found.size(), std::size_t{1});
    const auto& corners = is.found[0].polygon->GetVertices();
    QCOMPARE(corners.size(), std::size_t{4});
    const CRectangle box = is.found[0].polygon->GetBoundingRectangle();
    QVERIFY(box.x() == 1 && box.y() == 1 && box.width() == 3 && box.height() == 2);
    QVERIFY(is.found[0].centroid.x == 2.5 && is.found[0].centroid.y == 2.0);
}

void tst_Components::aRingIsOnePolygon()
{
    const ImagePtr image = Drawn({"#####", "#...#", "#...#", "#####"});
    const SComponents is = FindComponents(*image, nullptr);
    QCOMPARE(AreasOf(is), Areas{14});
    // Four outside, four inside, and the way to the hole and back: from the upper left corner down and
    // across.
    QCOMPARE(is.found[0].polygon->GetVertices().size(), std::size_t{4 + 4 + 4});
    QVERIFY(!is.found[0].polygon->Contains(Point(2.5, 1.5)));
    QVERIFY(is.found[0].polygon->Contains(Point(2.5, 0.5)));
}

void tst_Components::cornersJoinEightNeighboursOnly()
{
    const ImagePtr image = Drawn({"##..", "##..", "..#.", "...#"});
    SComponentOptions options;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), Areas{6});
    options.neighbours = ENeighbours::Four;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), (Areas{4, 1, 1}));
}

void tst_Components::holesAreFilledOrKept()
{
    const ImagePtr image = Drawn({"#####..", "#...#..", "#.#.#.#", "#...#..", "#####.."});
    SComponentOptions options;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), (Areas{16, 1, 1}));
    options.fillHoles = true;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), (Areas{25, 1}));
}

void tst_Components::anAreaWithItsHolesDecides()
{
    const ImagePtr image = Drawn({"####.##", "#..#.##", "####.##"});
    SComponentOptions options;
    options.minArea = 6;
    options.maxArea = 10;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), (Areas{10, 6}));
    options.fillHoles = true;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), Areas{6});
    options.maxArea = 12;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), (Areas{12, 6}));
    options.minArea = 7;
    QCOMPARE(AreasOf(FindComponents(*image, nullptr, options)), Areas{12});
}

void tst_Components::openPlacesAtTheEdgeOfTheRegionAreNoHoles()
{
    const ImagePtr image = Drawn({"####", "#..#", "####"});
    SComponentOptions options;
    options.fillHoles = true;
    const CRectangle cut(0, 0, 3, 3), whole(0, 0, 4, 3);
    QCOMPARE(AreasOf(FindComponents(*image, &whole, options)), Areas{12});
    QCOMPARE(AreasOf(FindComponents(*image, &cut, options)), Areas{7}); // the hole is open on the right
}

void tst_Components::polygonsGiveTheStatisticsOfTheirPixels()
{
    const ImagePtr image = MakeNoise(60, 50, 1, 16, 5);
    SComponentOptions options;
    options.low = 20000;
    options.neighbours = ENeighbours::Four;
    options.minArea = 2;
    const SComponents is = FindComponents(*image, nullptr, options);
    QVERIFY2(is.found.size() > 5, qPrintable(QString::number(is.found.size())));
    for (const SComponent& component : is.found) {
        const SRegionStatistics statistics =
            MeasureRegion(*image, component.polygon.get(), EStatistics::Moments);
        QCOMPARE(statistics.count, component.count);
        QCOMPARE(statistics.centroid.x, component.centroid.x);
        QVERIFY(statistics.channels[0].min >= 20000.0);
    }
}

void tst_Components::moreThanAllowedFail()
{
    const ImagePtr image = Drawn({"#.#.#", ".....", "#.#.#"});
    SComponentOptions options;
    options.most = 6;
    QCOMPARE(FindComponents(*image, nullptr, options).found.size(), std::size_t{6});
    options.most = 5;
    const SComponents is = FindComponents(*image, nullptr, options);
    QCOMPARE(is.failure,
             std::string("There are more than 5 components. A larger smallest area leaves some out."));
    QVERIFY(is.found.empty());
    options.minArea = 2; // those that are left out do not count
    QCOMPARE(AreasOf(FindComponents(*Drawn({"#.#.#.", "......", "#.#.##"}), nullptr, options)), Areas{2});
}

void tst_Components::badOptionsFail()
{
    const ImagePtr image = Drawn({"##"});
    const auto failure = [&](const SComponentOptions& options) {
        const SComponents is = FindComponents(*image, nullptr, options);
        return is.found.empty() ? is.failure : std::string();
    };
    SComponentOptions options;
    QCOMPARE(FindComponents(CImage(), nullptr, options).failure, std::string("The image is empty."));
    options.channel = 1;
    QCOMPARE(failure(options), std::string("The image does not have that channel."));
    options.channel = -2;
    QCOMPARE(failure(options), std::string("The image does not have that channel."));
    options = {};
    options.low = 9;
    options.high = 8;
    QCOMPARE(failure(options), std::string("The lowest value is above the highest one."));
    options = {};
    options.maxArea = 0;
    QCOMPARE(failure(options), std::string("The smallest area is above the largest one."));
    options = {};
    options.most = 0;
    QCOMPARE(failure(options), std::string("No component is allowed."));
    const CRectangle outside(10, 10, 5, 5), endless(0, 0, std::nan(""), 2);
    for (const CRectangle* pRegion : {&outside, &endless}) {
        const SComponents is = FindComponents(*image, pRegion, {});
        QVERIFY(is.found.empty() && is.failure.empty());
    }
}

void tst_Components::cancelledSearchesFail()
{
    const ImagePtr image = MakeNoise(40, 40, 1, 8, 3);
    Vantor::CProgress progress;
    const Vantor::CProgress::CScope scope(&progress);
    QVERIFY(!FindComponents(*image, nullptr).found.empty());
    QVERIFY(progress.GetDone() > 0.8);
    QVERIFY(progress.Cancel());
    const SComponents is = FindComponents(*image, nullptr);
    QCOMPARE(is.failure, std::string(Vantor::kCancelled));
    QVERIFY(is.found.empty());
}

VANTOR_CORE_TEST_MAIN(tst_Components)
#include "tst_Components.moc"
