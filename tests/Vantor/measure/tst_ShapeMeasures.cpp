// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CArrow.h>
#include <Vantor/measure/ShapeMeasures.h>

#include <array>
#include <limits>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

Q_DECLARE_METATYPE(MeasureModel::ShapePtr)

namespace
{
constexpr double kPi = 3.14159265358979323846;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Places = std::vector<SPlace>;

/// Corners around a middle in the order of their directions: the polygon does not cross itself.
Places RandomStar(std::mt19937& random, int corners)
{
    const auto part = [&] { return random() / 4294967296.0; };
    std::vector<double> angles;
    for (int i = 0; i < corners; ++i)
        angles.push_back((i + 0.9 * part()) * 2 * kPi / corners);
    Places places;
    for (double angle : angles) {
        const double radius = 20 + 200 * part();
        places.push_back({300 + radius * std::cos(angle), 200 + radius * std::sin(angle)});
    }
    return places;
}

double Cross(const SPlace& a, const SPlace& b, const SPlace& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Sums over the triangles from a place to each side: area, and moments of second order about the middle. A
/// triangle's integral of a quadratic is its area by the mean over the middles of its sides.
struct SModel {
    double area = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;

    explicit SModel(const Places& corners)
    {
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const SPlace o = corners[0], a = corners[i], b = corners[(i + 1) % corners.size()];
            const double triangle = Cross(o, a, b) / 2;
            area += triangle;
            for (const auto& [p, q] : {std::pair(o, a), std::pair(a, b), std::pair(b, o)}) {
                const double mx = (p.x + q.x) / 2, my = (p.y + q.y) / 2;
                x += triangle / 3 * mx;
                y += triangle / 3 * my;
                xx += triangle / 3 * mx * mx;
                xy += triangle / 3 * mx * my;
                yy += triangle / 3 * my * my;
            }
        }
        x /= area, y /= area, xx = xx / area - x * x, xy = xy / area - x * y, yy = yy / area - y * y;
        area = std::abs(area);
    }
    double Aspect() const
    {
        const double root = std::sqrt((xx - yy) * (xx - yy) + 4 * xy * xy);
        return std::sqrt((xx + yy + root) / (xx + yy - root));
    }
};

/// The extent across a direction.
double Extent(const Places& places, double nx, double ny)
{
    double low = kInfinity, high = -kInfinity;
    for (const SPlace& place : places) {
        low = std::min(low, place.x * nx + place.y * ny);
        high = std::max(high, place.x * nx + place.y * ny);
    }
    return high - low;
}

/// The smallest rectangle around lies along a line through two of the places.
double MinFeret(const Places& places)
{
    double least = kInfinity;
    for (const SPlace& a : places) {
        for (const SPlace& b : places) {
            const double length = std::hypot(b.x - a.x, b.y - a.y);
            if (length > 0)
                least = std::min(least, Extent(places, (a.y - b.y) / length, (b.x - a.x) / length));
        }
    }
    return least;
}

double MaxFeret(const Places& places)
{
    double most = 0;
    for (const SPlace& a : places) {
        for (const SPlace& b : places)
            most = std::max(most, std::hypot(b.x - a.x, b.y - a.y));
    }
    return most;
}

/// A pair of places is a side of the hull when no other lies to its right.
double HullArea(const Places& places)
{
    double area = 0;
    for (const SPlace& a : places) {
        for (const SPlace& b : places) {
            bool bSide = &a != &b;
            for (const SPlace& c : places)
                bSide = bSide && (&c == &a || &c == &b || Cross(a, b, c) > 0);
            if (bSide)
                area += (a.x * b.y - b.x * a.y) / 2;
        }
    }
    return area;
}

/// Simpson's rule over the ellipse's quarter.
double IntegratedPerimeter(double a, double b)
{
    constexpr int kSteps = 20000;
    const auto speed = [&](int i) {
        const long double t = i * 1.57079632679489661923L / kSteps;
        return std::hypot(a * std::sin(t), b * std::cos(t));
    };
    long double sum = speed(0) + speed(kSteps);
    for (int i = 1; i < kSteps; ++i)
        sum += (i % 2 == 1 ? 4 : 2) * speed(i);
    return static_cast<double>(4 * sum * 1.57079632679489661923L / kSteps / 3);
}

/// Every pair of sides, in whole numbers.
bool DoesMeetItself(const std::vector<std::array<long long, 2>>& p)
{
    const std::size_t n = p.size();
    const auto cross = [](const auto& a, const auto& b, const auto& c) {
        const long long value = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
        return (value > 0) - (value < 0);
    };
    const auto within = [](const auto& a, const auto& b, const auto& c) {
        return std::min(a[0], b[0]) <= c[0] && c[0] <= std::max(a[0], b[0]) && std::min(a[1], b[1]) <= c[1] &&
               c[1] <= std::max(a[1], b[1]);
    };
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = i + 1; j < n; ++j) {
            const auto &a = p[i], &b = p[(i + 1) % n], &c = p[j], &d = p[(j + 1) % n];
            const auto on = [&](const auto& e, const auto& f, const auto& g) {
                return cross(e, f, g) == 0 && within(e, f, g);
            };
            if ((j + 1) % n == i && on(c, d, b))
                return true;
            if ((j + 1) % n == i && on(a, b, c))
                return true;
            if (j == i + 1 && (on(a, b, d) || on(c, d, a)))
                return true;
            if (j == i + 1 || (j + 1) % n == i)
                continue;
            if (on(a, b, c) || on(a, b, d) || on(c, d, a) || on(c, d, b))
                return true;
            if (cross(a, b, c) * cross(a, b, d) < 0 && cross(c, d, a) * cross(c, d, b) < 0)
                return true;
        }
    }
    return false;
}

CCalibration Calibrated(double x, double y)
{
    CCalibration calibration;
    return calibration.Set({"mm", x, y}).empty() ? calibration : CCalibration();
}
} // namespace

class tst_ShapeMeasures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomPolygonsEqualTheModel();
    void polygonsOnAGridThatMeetThemselvesAreFound();
    void aPolygonThatCrossesItselfHasNoAreaButPixels();
    void repeatedCornersAndFlatPolygonsDoNotMeetThemselves();
    void ellipsesHaveTheExactPerimeter_data();
    void ellipsesHaveTheExactPerimeter();
    void flatEllipsesAreTwiceTheirLength();
    void ellipsesAndCirclesAreMeasured();
    void rectanglesDrawnInAnyDirectionAreMeasured_data();
    void rectanglesDrawnInAnyDirectionAreMeasured();
    void linesAndArrowsAreMeasured();
    void pointsAndArraysHaveABoxOnly();
    void calibrationsScaleTheOutlineFirst();
    void theBoxIsCountedFromTheOrigin();
    void shapesThatAreNotFiniteFail_data();
    void shapesThatAreNotFiniteFail();
    void aMillionCornersTakeNoTime();
    void pixelsAreCounted();
};

void tst_ShapeMeasures::randomPolygonsEqualTheModel()
{
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        Places corners = RandomStar(random, 3 + static_cast<int>(random() % 20));
        if (i % 2 == 1)
            std::reverse(corners.begin(), corners.end());
        const SShapeMeasures is = MeasureShape(*PolygonOf(corners));
        const SModel model(corners);
        double perimeter = 0;
        for (std::size_t k = 0; k < corners.size(); ++k) {
            const SPlace &a = corners[k], &b = corners[(k + 1) % corners.size()];
            perimeter += std::hypot(b.x - a.x, b.y - a.y);
        }
        if (is.meetsItself)
            QVERIFY(corners.size() < 6 && std::isnan(is.area)); // the middle may lie outside
        else
            QVERIFY(IsClose(is.area, model.area, 1e-11) && IsClose(is.aspect, model.Aspect(), 1e-8));
        QVERIFY(IsClose(is.perimeter, perimeter) && is.ramanujanPerimeter == is.perimeter);
        QVERIFY(IsClose(is.feret, MaxFeret(corners)));
        QVERIFY(IsClose(is.minFeret, MinFeret(corners), 1e-10));
        const double angle = is.feretAngle * kPi / 180;
        QVERIFY(is.feretAngle >= 0 && is.feretAngle < 180);
        QVERIFY(IsClose(Extent(corners, std::cos(angle), -std::sin(angle)), is.feret, 1e-10));
        if (is.meetsItself)
            continue;
        QVERIFY(IsClose(is.solidity, model.area / HullArea(corners), 1e-9));
        QVERIFY(IsClose(is.circularity, 4 * kPi * model.area / perimeter / perimeter, 1e-11));
        QVERIFY(IsClose(is.roundness * is.aspect, 1.0));
    }
}

void tst_ShapeMeasures::polygonsOnAGridThatMeetThemselvesAreFound()
{
    std::mt19937 random(2);
    int nMeeting = 0;
    for (int i = 0; i < 20000; ++i) {
        const long long nGrid = 3 + random() % 12;
        std::vector<std::array<long long, 2>> corners;
        for (unsigned n = 3 + random() % 6; n > 0;) {
            const std::array<long long, 2> corner{static_cast<long long>(random()) % nGrid,
                                                  static_cast<long long>(random()) % nGrid};
            if (corners.empty() || corners.back() != corner) {
                corners.push_back(corner);
                --n;
            }
        }
        while (corners.size() > 1 && corners.back() == corners.front())
            corners.pop_back();
        if (corners.size() < 3)
            continue;
        Places places;
        for (const auto& corner : corners)
            places.push_back({static_cast<double>(corner[0]), static_cast<double>(corner[1])});
        const bool bMeets = DoesMeetItself(corners);
        nMeeting += bMeets;
        QVERIFY2(MeasureShape(*PolygonOf(places)).meetsItself == bMeets, qPrintable(QString::number(i)));
    }
    QVERIFY(nMeeting > 5000 && nMeeting < 18000);
}

void tst_ShapeMeasures::aPolygonThatCrossesItselfHasNoAreaButPixels()
{
    const auto bow = PolygonOf({{0, 0}, {10, 10}, {10, 0}, {0, 10}});
    const SShapeMeasures is = MeasureShape(*bow);
    QCOMPARE(is.failure, std::string());
    QVERIFY(is.meetsItself);
    QVERIFY(std::isnan(is.area) && std::isnan(is.circularity) && std::isnan(is.solidity) &&
            std::isnan(is.aspect));
    QVERIFY(IsClose(is.perimeter, 20 + 2 * std::sqrt(200)));
    QVERIFY(IsClose(is.feret, std::sqrt(200)));
    QCOMPARE(CountPixels(*bow, 10, 10), std::uint64_t(PixelsOf(bow.get(), 10, 10).size()));
    QVERIFY(CountPixels(*bow, 10, 10) > 40);
}

void tst_ShapeMeasures::repeatedCornersAndFlatPolygonsDoNotMeetThemselves()
{
    const SShapeMeasures square =
        MeasureShape(*PolygonOf({{0, 0}, {0, 0}, {4, 0}, {4, 4}, {4, 4}, {0, 4}, {0, 0}}));
    QVERIFY(!square.meetsItself);
    QCOMPARE(square.area, 16.0);
    const SShapeMeasures flat = MeasureShape(*PolygonOf({{1, 1}, {4, 5}}));
    QVERIFY(!flat.meetsItself);
    QCOMPARE(flat.area, 0.0);
    QCOMPARE(flat.perimeter, 10.0);
    QCOMPARE(flat.feret, 5.0);
    QCOMPARE(flat.minFeret, 0.0);
    const SShapeMeasures none = MeasureShape(CPolygon());
    QCOMPARE(none.area, 0.0);
    QCOMPARE(none.perimeter, 0.0);
    QVERIFY(std::isnan(none.circularity));
}

void tst_ShapeMeasures::ellipsesHaveTheExactPerimeter_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<double>("ramanujan"); // how much his formula is too small, by the perimeter
    QTest::newRow("circle") << 1.0 << 0.0;
    QTest::newRow("2:1") << 0.5 << 3e-6;
    QTest::newRow("3:1") << 1.0 / 3 << 4e-5;
    QTest::newRow("10:1") << 0.1 << 1e-3;
    QTest::newRow("1000:1") << 0.001 << 5e-3;
}

void tst_ShapeMeasures::ellipsesHaveTheExactPerimeter()
{
    QFETCH(double, ratio);
    QFETCH(double, ramanujan);
    for (bool bUpright : {false, true}) {
        const double width = bUpright ? 300.0 * ratio : 300.0, height = bUpright ? 300.0 : 300.0 * ratio;
        const SShapeMeasures is = MeasureShape(CEllipse(7, -3, width, height));
        const double exact = IntegratedPerimeter(width / 2, height / 2);
        QVERIFY2(IsClose(is.perimeter / exact, 1.0, 1e-13),
                 qPrintable(QString::number(is.perimeter / exact - 1)));
        const double error = 1.0 - is.ramanujanPerimeter / exact;
        QVERIFY2(error > ramanujan / 2 - 1e-15 && error < ramanujan + 1e-15,
                 qPrintable(QString::number(error)));
    }
}

void tst_ShapeMeasures::flatEllipsesAreTwiceTheirLength()
{
    const SShapeMeasures is = MeasureShape(CEllipse(0, 0, 100, 0));
    QCOMPARE(is.perimeter, 200.0);
    QCOMPARE(is.area, 0.0);
    QVERIFY(std::isnan(is.solidity));
    QCOMPARE(MeasureShape(CEllipse(0, 0, 0, 0)).perimeter, 0.0);
}

void tst_ShapeMeasures::ellipsesAndCirclesAreMeasured()
{
    const SShapeMeasures wide = MeasureShape(CEllipse(50, 20, -40, 10));
    QVERIFY(IsClose(wide.area, kPi * 100));
    QCOMPARE(wide.feret, 40.0);
    QCOMPARE(wide.minFeret, 10.0);
    QCOMPARE(wide.feretAngle, 0.0);
    QCOMPARE(wide.aspect, 4.0);
    QCOMPARE(wide.roundness, 0.25);
    QCOMPARE(wide.solidity, 1.0);
    QCOMPARE(wide.x, 10.0);
    QCOMPARE(MeasureShape(CEllipse(0, 0, 10, 40)).feretAngle, 90.0);
    const SShapeMeasures circle = MeasureShape(CCircle(Point(5, 6), 3));
    QVERIFY(IsClose(circle.circularity, 1.0) && IsClose(circle.perimeter, 6 * kPi));
    QVERIFY(std::isnan(circle.length) && std::isnan(circle.angle) && !circle.meetsItself);
}

void tst_ShapeMeasures::rectanglesDrawnInAnyDirectionAreMeasured_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    for (double width : {30.0, -30.0}) {
        for (double height : {40.0, -40.0})
            QTest::addRow("%g x %g", width, height) << width << height;
    }
}

void tst_ShapeMeasures::rectanglesDrawnInAnyDirectionAreMeasured()
{
    QFETCH(double, width);
    QFETCH(double, height);
    const SShapeMeasures is = MeasureShape(CRectangle(5, 6, width, height));
    QCOMPARE(is.area, 1200.0);
    QCOMPARE(is.perimeter, 140.0);
    QCOMPARE(is.width, 30.0);
    QCOMPARE(is.x, std::min(5.0, 5.0 + width));
    QCOMPARE(is.feret, 50.0);
    QCOMPARE(is.minFeret, 30.0);
    QVERIFY(IsClose(is.feretAngle, 180 - std::atan2(40, 30) * 180 / kPi));
    QVERIFY(IsClose(is.aspect, 4.0 / 3));
    QCOMPARE(is.solidity, 1.0);
}

void tst_ShapeMeasures::linesAndArrowsAreMeasured()
{
    const CLine line(Point(10, 10), Point(13, 6));
    const CArrow arrow(Point(10, 10), Point(13, 6));
    for (const CGeometry* pShape :
         {static_cast<const CGeometry*>(&line), static_cast<const CGeometry*>(&arrow)}) {
        const SShapeMeasures is = MeasureShape(*pShape);
        QCOMPARE(is.length, 5.0);
        QCOMPARE(is.dx, 3.0);
        QCOMPARE(is.dy, -4.0);
        QVERIFY(IsClose(is.angle, std::atan2(4, 3) * 180 / kPi));
        QCOMPARE(is.feret, 5.0);
        QCOMPARE(is.minFeret, 0.0);
        QVERIFY(std::isnan(is.area) && std::isnan(is.perimeter));
    }
    const SShapeMeasures none = MeasureShape(CLine(Point(1, 1), Point(1, 1)));
    QCOMPARE(none.length, 0.0);
    QCOMPARE(none.angle, 0.0);
    QCOMPARE(none.feret, 0.0);
}

void tst_ShapeMeasures::pointsAndArraysHaveABoxOnly()
{
    const SShapeMeasures point = MeasureShape(Point(3, 4));
    QCOMPARE(point.x, 3.0);
    QCOMPARE(point.width, 0.0);
    QVERIFY(std::isnan(point.area) && std::isnan(point.length) && std::isnan(point.feret));
    CGeometryArray array;
    array.Add(std::make_shared<CRectangle>(1, 2, 3, 4));
    array.Add(std::make_shared<CRectangle>(11, 2, 3, 4));
    const SShapeMeasures both = MeasureShape(array);
    QCOMPARE(both.width, 13.0);
    QVERIFY(std::isnan(both.area) && std::isnan(both.perimeter));
    QCOMPARE(CountPixels(array, 100, 100), std::uint64_t(24));
}

void tst_ShapeMeasures::calibrationsScaleTheOutlineFirst()
{
    std::mt19937 random(3);
    const CCalibration calibration = Calibrated(0.5, 3.0);
    for (int i = 0; i < 100; ++i) {
        Places corners = RandomStar(random, 9);
        const SShapeMeasures is = MeasureShape(*PolygonOf(corners), calibration);
        for (SPlace& corner : corners)
            corner = {corner.x * 0.5, corner.y * 3.0};
        const SShapeMeasures scaled = MeasureShape(*PolygonOf(corners));
        QCOMPARE(is.area, scaled.area);
        QCOMPARE(is.perimeter, scaled.perimeter);
        QCOMPARE(is.feretAngle, scaled.feretAngle);
        QCOMPARE(is.solidity, scaled.solidity);
        QVERIFY(IsClose(is.height, scaled.height));
    }
    const SShapeMeasures circle = MeasureShape(CCircle(Point(5, 6), 10), calibration);
    QVERIFY(IsClose(circle.perimeter, MeasureShape(CEllipse(0, 0, 10, 60)).perimeter));
    QCOMPARE(circle.feretAngle, 90.0);
    QCOMPARE(MeasureShape(CLine(Point(0, 0), Point(8, 1)), calibration).length, 5.0);
    QVERIFY(IsClose(MeasureShape(CLine(Point(0, 0), Point(6, -1)), calibration).angle, 45.0));
}

void tst_ShapeMeasures::theBoxIsCountedFromTheOrigin()
{
    CCalibration calibration;
    QCOMPARE(calibration.Set({"mm", 2.0, 3.0}, {10, 20}), std::string());
    const SShapeMeasures is = MeasureShape(CRectangle(11, 19, 5, 6), calibration);
    QCOMPARE(is.x, 2.0);
    QCOMPARE(is.y, -3.0);
    QCOMPARE(is.width, 10.0);
    QCOMPARE(is.height, 18.0);
    QCOMPARE(is.area, 180.0);
}

void tst_ShapeMeasures::shapesThatAreNotFiniteFail_data()
{
    QTest::addColumn<ShapePtr>("shape");
    QTest::newRow("rectangle") << ShapePtr(std::make_shared<CRectangle>(1, 1, kInfinity, 5));
    QTest::newRow("too large") << ShapePtr(std::make_shared<CRectangle>(1, 1, 1.1e100, 5));
    QTest::newRow("ellipse") << ShapePtr(std::make_shared<CEllipse>(kNaN, 1, 4, 5));
    QTest::newRow("circle") << ShapePtr(std::make_shared<CCircle>(Point(1, kNaN), 5));
    QTest::newRow("polygon") << ShapePtr(PolygonOf({{1, 1}, {kNaN, 5}, {9, 9}}));
    QTest::newRow("line") << ShapePtr(std::make_shared<CLine>(Point(1, 2), Point(3, -kInfinity)));
}

void tst_ShapeMeasures::shapesThatAreNotFiniteFail()
{
    QFETCH(ShapePtr, shape);
    const SShapeMeasures is = MeasureShape(*shape);
    QCOMPARE(is.failure, std::string("The shape is not finite or reaches beyond 1e100."));
    QVERIFY(std::isnan(is.x) && std::isnan(is.area) && std::isnan(is.perimeter) && std::isnan(is.length));
}

void tst_ShapeMeasures::aMillionCornersTakeNoTime()
{
    Places corners;
    for (int i = 0; i < 1000000; ++i) {
        const double radius = 1000 + i % 7;
        corners.push_back({radius * std::cos(i * 2 * kPi / 1e6), radius * std::sin(i * 2 * kPi / 1e6)});
    }
    const clock_t start = clock();
    const SShapeMeasures is = MeasureShape(*PolygonOf(corners));
    QVERIFY(!is.meetsItself);
    QVERIFY(IsClose(is.area, kPi * 1003 * 1003, 1e-4) && IsClose(is.feret, 2012, 1e-6));
    // A side far away is a neighbour of none, and one that crosses others is found.
    corners.resize(100000);
    corners.insert(corners.begin() + 50000, {-2000, -1});
    QVERIFY(MeasureShape(*PolygonOf(corners)).meetsItself);
    QVERIFY2(clock() - start < 60 * CLOCKS_PER_SEC,
             qPrintable(QString::number((clock() - start) / 1000000.0)));
}

void tst_ShapeMeasures::pixelsAreCounted()
{
    QCOMPARE(CountPixels(CRectangle(-5, -5, 10, 10), 100, 100), std::uint64_t(25));
    QCOMPARE(CountPixels(CRectangle(-5, -5, 1e9, 1e9), 100, 50), std::uint64_t(5000));
    QCOMPARE(CountPixels(CPolygon(), 100, 50), std::uint64_t(0));
}

VANTOR_CORE_TEST_MAIN(tst_ShapeMeasures)
#include "tst_ShapeMeasures.moc"
