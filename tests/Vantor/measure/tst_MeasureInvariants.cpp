// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What holds of every shape, without a model: parts add up, and statistics do not depend on where a shape and
// its image lie or how both are turned and enlarged. Four times 2,500 random shapes.
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/measure/ShapeMeasures.h>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

namespace
{
constexpr int kShapes = 2500;
constexpr int kWidth = 40;
constexpr int kHeight = 30;

/// A shape cut by an upright line: the pixels to its left or to its right.
class CCut : public CGeometry
{
public:
    CCut(ShapePtr shape, int column, bool left) : m_pShape(std::move(shape)), m_nColumn(column), m_bLeft(left)
    {
    }
    EGeometryType GetType() const override { return EGeometryType_Host; }
    CRectangle GetBoundingRectangle() const override { return m_pShape->GetBoundingRectangle(); }
    void MoveTopLeftTo(const CPoint<double>&) override {}
    int GetPoints(CPointList&, CPointList&) const override { return 0; }
    bool Contains(const CPoint<double>& point) const override
    {
        return m_pShape->Contains(point) && (point.x() < m_nColumn) == m_bLeft;
    }
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override
    {
        std::vector<SPixelRun> runs;
        for (SPixelRun run : m_pShape->GetPixelRuns(width, height)) {
            if (m_bLeft)
                run.nEnd = std::min(run.nEnd, m_nColumn);
            else
                run.nBegin = std::max(run.nBegin, m_nColumn);
            if (run.nBegin < run.nEnd)
                runs.push_back(run);
        }
        return runs;
    }
    std::shared_ptr<CGeometry> Clone() const override { return std::make_shared<CCut>(*this); }

private:
    ShapePtr m_pShape;
    int m_nColumn;
    bool m_bLeft;
};

/// The pixels that a shape does not cover.
class COutside : public CCut
{
public:
    explicit COutside(ShapePtr shape) : CCut(shape, 0, true), m_pShape(std::move(shape)) {}
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override
    {
        std::vector<char> covered(static_cast<std::size_t>(width * height), 0);
        for (const auto& [x, y] : PixelsOf(m_pShape.get(), width, height))
            covered[static_cast<std::size_t>(y * width + x)] = 1;
        std::vector<SPixelRun> runs;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (!covered[static_cast<std::size_t>(y * width + x)])
                    runs.push_back({y, x, x + 1});
            }
        }
        return runs;
    }

private:
    ShapePtr m_pShape;
};

/// Whether the statistics of two parts make those of the whole.
bool AddUp(const SRegionStatistics& a, const SRegionStatistics& b, const SRegionStatistics& whole)
{
    bool bGood = whole.failure.empty() && a.count + b.count == whole.count;
    for (std::size_t c = 0; c < whole.channels.size(); ++c) {
        const SChannelStatistics &one = a.channels[c], &other = b.channels[c], &all = whole.channels[c];
        bGood = bGood && one.sum + other.sum == all.sum;
        // fmin and fmax leave out what is not defined
        bGood = bGood && (whole.count == 0 || (std::fmin(one.min, other.min) == all.min &&
                                               std::fmax(one.max, other.max) == all.max));
        for (std::size_t i = 0; i < 256; ++i)
            bGood = bGood && one.histogram[i] + other.histogram[i] == all.histogram[i];
    }
    return bGood;
}

/// Whether everything but the places is equal.
bool AreEqual(const SRegionStatistics& a, const SRegionStatistics& b)
{
    bool bGood = a.failure.empty() && b.failure.empty() && a.count == b.count;
    const auto same = [](const SChannelStatistics& one, const SChannelStatistics& other) {
        return Difference(one, other, true).isEmpty() && one.histogram == other.histogram &&
               IsClose(one.deviation, other.deviation, 0.0);
    };
    for (std::size_t c = 0; bGood && c < a.channels.size(); ++c) {
        SChannelStatistics one = a.channels[c], other = b.channels[c];
        one.centreOfMass = other.centreOfMass = {0, 0};
        bGood = same(one, other);
    }
    return bGood;
}

/// On a grid so fine that no side goes through the middle of a pixel, where shapes are open on one side.
SPlace RandomPlace(std::mt19937& random)
{
    const auto part = [&](int size) { return static_cast<double>(random()) / 4294967296.0 * size; };
    return {part(kWidth), part(kHeight)};
}

/// A random rectangle, ellipse or polygon by two or more places.
ShapePtr ShapeOf(unsigned kind, const std::vector<SPlace>& p)
{
    if (kind == 0)
        return std::make_shared<CRectangle>(p[0].x, p[0].y, p[1].x - p[0].x, p[1].y - p[0].y);
    if (kind == 1)
        return std::make_shared<CEllipse>(p[0].x, p[0].y, p[1].x - p[0].x, p[1].y - p[0].y);
    return PolygonOf(p);
}
} // namespace

class tst_MeasureInvariants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void partsAndComplementAddUp();
    void movingByWholePixelsChangesNothing();
    void quarterTurnsChangeNothing();
    void enlargedShapesKeepTheirValues();
};

void tst_MeasureInvariants::partsAndComplementAddUp()
{
    std::mt19937 random(1);
    const ImagePtr image = MakeNoise(kWidth, kHeight, 3, 8, 1);
    const SRegionStatistics whole = MeasureRegion(*image, nullptr, EStatistics::Full);
    for (int i = 0; i < kShapes; ++i) {
        const ShapePtr shape = RandomShape(random, kWidth, kHeight);
        const int nColumn = static_cast<int>(random() % kWidth);
        const CCut left(shape, nColumn, true), right(shape, nColumn, false);
        const COutside outside(shape);
        const auto all = MeasureRegions(*image, {shape.get(), &left, &right, &outside}, EStatistics::Full);
        QVERIFY2(AddUp(all[1], all[2], all[0]), qPrintable(QString::number(i)));
        QVERIFY2(AddUp(all[0], all[3], whole), qPrintable(QString::number(i)));
        // The three parts of a triangle around a place in it.
        const SPlace a = RandomPlace(random), b = RandomPlace(random), c = RandomPlace(random);
        const SPlace middle{(a.x + 2 * b.x + c.x) / 4, (a.y + 2 * b.y + c.y) / 4};
        std::uint64_t nPixels = 0;
        double area = 0.0;
        for (const auto& part :
             {PolygonOf({a, b, middle}), PolygonOf({b, c, middle}), PolygonOf({c, a, middle})}) {
            nPixels += CountPixels(*part, kWidth, kHeight);
            area += MeasureShape(*part).area;
        }
        const ShapePtr triangle = PolygonOf({a, b, c});
        QCOMPARE(nPixels, CountPixels(*triangle, kWidth, kHeight));
        QVERIFY(IsClose(area, MeasureShape(*triangle).area));
    }
}

void tst_MeasureInvariants::movingByWholePixelsChangesNothing()
{
    std::mt19937 random(2);
    for (int i = 0; i < kShapes; ++i) {
        const int nBits = i % 2 == 0 ? 8 : 16;
        const int nX = static_cast<int>(random() % 70), nY = static_cast<int>(random() % 20);
        const ImagePtr image = MakeNoise(kWidth, kHeight, 1 + i % 4, nBits, random() % 16);
        const ImagePtr moved = MakeNoise(kWidth + nX, kHeight + nY, 1 + i % 4, nBits, 99);
        const std::size_t nBytes = static_cast<std::size_t>(kWidth * (1 + i % 4) * nBits / 8);
        for (int y = 0; y < kHeight; ++y)
            std::memcpy(moved->GetPixel(nX, y + nY), image->GetPixel(0, y), nBytes);
        const ShapePtr shape =
            ShapeOf(random() % 3, {RandomPlace(random), RandomPlace(random), RandomPlace(random)});
        const ShapePtr there = shape->Clone();
        const CRectangle box = shape->GetBoundingRectangle();
        there->MoveTopLeftTo(Point(box.x() + nX, box.y() + nY));
        const SRegionStatistics before = MeasureRegion(*image, shape.get(), EStatistics::Full);
        const SRegionStatistics after = MeasureRegion(*moved, there.get(), EStatistics::Full);
        QVERIFY2(AreEqual(before, after), qPrintable(QString::number(i)));
        if (before.count == 0)
            continue;
        QVERIFY(IsClose(before.centroid.x + nX, after.centroid.x) &&
                IsClose(before.centroid.y + nY, after.centroid.y));
        QVERIFY(IsClose(before.channels[0].centreOfMass.x + nX, after.channels[0].centreOfMass.x));
        QVERIFY(IsClose(before.channels[0].centreOfMass.y + nY, after.channels[0].centreOfMass.y));
        const SShapeMeasures one = MeasureShape(*shape), two = MeasureShape(*there);
        QVERIFY(IsClose(one.area, two.area) && IsClose(one.perimeter, two.perimeter) &&
                IsClose(one.feret, two.feret));
    }
}

void tst_MeasureInvariants::quarterTurnsChangeNothing()
{
    std::mt19937 random(3);
    const ImagePtr image = MakeNoise(kWidth, kHeight, 3, 8, 1);
    const ImagePtr turned = std::make_shared<CImage>();
    QCOMPARE(turned->CopyFrom(image.get()), 0);
    QCOMPARE(turned->Rotate(Point(0, 0), 1.5707963267948966, 0.0, ERotationMode::GrowCanvas), 0);
    QCOMPARE(turned->GetWidth(), kHeight);
    for (int i = 0; i < kShapes; ++i) {
        const unsigned nKind = random() % 3;
        std::vector<SPlace> places{RandomPlace(random), RandomPlace(random)};
        for (unsigned n = random() % 5; n > 0; --n)
            places.push_back(RandomPlace(random));
        const ShapePtr shape = ShapeOf(nKind, places);
        for (SPlace& place : places)
            place = {kHeight - place.y, place.x};
        const ShapePtr there = ShapeOf(nKind, places);
        const SRegionStatistics before = MeasureRegion(*image, shape.get(), EStatistics::Full);
        const SRegionStatistics after = MeasureRegion(*turned, there.get(), EStatistics::Full);
        QVERIFY2(AreEqual(before, after), qPrintable(QString::number(i)));
        if (before.count > 0)
            QVERIFY(IsClose(kHeight - before.centroid.y, after.centroid.x) &&
                    IsClose(before.centroid.x, after.centroid.y));
        const SShapeMeasures one = MeasureShape(*shape), two = MeasureShape(*there);
        QCOMPARE(one.meetsItself, two.meetsItself);
        QVERIFY(IsClose(one.area, two.area) && IsClose(one.perimeter, two.perimeter) &&
                IsClose(one.feret, two.feret));
        QVERIFY(IsClose(one.minFeret, two.minFeret, 1e-9));
        QVERIFY(IsClose(one.aspect, two.aspect, 1e-6) && IsClose(one.solidity, two.solidity, 1e-9));
    }
}

void tst_MeasureInvariants::enlargedShapesKeepTheirValues()
{
    std::mt19937 random(4);
    const ImagePtr image = MakeNoise(kWidth, kHeight, 1, 16, 1);
    const ImagePtr large = MakeNoise(3 * kWidth, 3 * kHeight, 1, 16, 1);
    for (int y = 0; y < 3 * kHeight; ++y) {
        for (int x = 0; x < 3 * kWidth; ++x)
            std::memcpy(large->GetPixel(x, y), image->GetPixel(x / 3, y / 3), 2);
    }
    CCalibration threefold;
    QCOMPARE(threefold.Set({"third", 3.0, 3.0}), std::string());
    for (int i = 0; i < kShapes; ++i) {
        // The sides lie between pixels, so that each pixel becomes nine.
        const double x = random() % kWidth, y = random() % kHeight, w = 1 + random() % 20,
                     h = 1 + random() % 20;
        const CRectangle shape(x, y, w, h), there(3 * x, 3 * y, 3 * w, 3 * h);
        const SRegionStatistics before = MeasureRegion(*image, &shape, EStatistics::Full);
        const SRegionStatistics after = MeasureRegion(*large, &there, EStatistics::Full);
        QCOMPARE(after.count, 9 * before.count);
        QCOMPARE(after.channels[0].sum, 9 * before.channels[0].sum);
        QVERIFY(IsClose(after.channels[0].mean, before.channels[0].mean));
        QCOMPARE(after.channels[0].median, before.channels[0].median);
        QCOMPARE(after.channels[0].mode, before.channels[0].mode);
        QVERIFY(IsClose(after.centroid.x, 3 * before.centroid.x));
        QVERIFY(IsClose(after.channels[0].centreOfMass.y, 3 * before.channels[0].centreOfMass.y));
        std::vector<SPlace> places{RandomPlace(random), RandomPlace(random), RandomPlace(random),
                                   RandomPlace(random)};
        const unsigned nKind = random() % 3;
        const SShapeMeasures one = MeasureShape(*ShapeOf(nKind, places), threefold);
        for (SPlace& place : places)
            place = {3 * place.x, 3 * place.y};
        const SShapeMeasures two = MeasureShape(*ShapeOf(nKind, places));
        QVERIFY(IsClose(one.area, two.area) && IsClose(one.perimeter, two.perimeter) &&
                IsClose(one.feret, two.feret));
        QVERIFY(IsClose(one.minFeret, two.minFeret) && IsClose(one.feretAngle, two.feretAngle));
        QVERIFY(IsClose(one.circularity, two.circularity) && IsClose(one.x, two.x));
    }
}

VANTOR_CORE_TEST_MAIN(tst_MeasureInvariants)
#include "tst_MeasureInvariants.moc"
