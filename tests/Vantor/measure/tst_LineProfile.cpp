// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/measure/LineProfile.h>

#include <limits>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The value at a place; the image beyond its edge is that of the edge.
double ValueAt(const CImage& image, double x, double y, int c, ESampling sampling)
{
    const auto sample = [&](double column, double row) {
        const int nX = std::clamp(static_cast<int>(std::floor(column)), 0, image.GetWidth() - 1);
        const int nY = std::clamp(static_cast<int>(std::floor(row)), 0, image.GetHeight() - 1);
        return static_cast<double>(SampleAt(image, nX, nY, c));
    };
    if (sampling == ESampling::Nearest)
        return sample(x, y);
    const double u = x - 0.5 - std::floor(x - 0.5), v = y - 0.5 - std::floor(y - 0.5);
    const double above = sample(x - 0.5, y - 0.5) * (1 - u) + sample(x + 0.5, y - 0.5) * u;
    const double below = sample(x - 0.5, y + 0.5) * (1 - u) + sample(x + 0.5, y + 0.5) * u;
    return above * (1 - v) + below * v;
}

/// The profile of one straight line, each value by itself.
double ModelAt(const CImage& image, const SPlace& a, const SPlace& b, double part, int c,
               const SProfileOptions& options)
{
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    double sum = 0.0;
    int nPlaces = 0;
    for (int i = 0; i < options.width; ++i) {
        const double aside = i - (options.width - 1) * 0.5;
        const double x = a.x + part * (b.x - a.x) - aside * (b.y - a.y) / length;
        const double y = a.y + part * (b.y - a.y) + aside * (b.x - a.x) / length;
        if (x < 0 || x > image.GetWidth() || y < 0 || y > image.GetHeight())
            continue;
        sum += ValueAt(image, x, y, c, options.sampling);
        ++nPlaces;
    }
    return nPlaces > 0 ? sum / nPlaces : kNaN;
}

/// Column x, row y, channel c has the value 10 x + y + 100 c.
ImagePtr MakeSlope(int width, int height, int channels)
{
    ImagePtr image = MakeNoise(width, height, channels, 16, 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < channels; ++c) {
                const std::uint16_t nValue = static_cast<std::uint16_t>(10 * x + y + 100 * c);
                std::memcpy(image->GetPixel(x, y) + 2 * c, &nValue, 2);
            }
        }
    }
    return image;
}
} // namespace

class tst_LineProfile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesEqualTheModel_data();
    void linesEqualTheModel();
    void aSlopeIsReadExactlyBetweenTheCentres();
    void positionsAreDistancesInUnits();
    void polylinesGoOnAroundTheirCorners();
    void placesOutsideTheImageHaveNoValue();
    void theEdgeOfTheImageBelongsToIt();
    void aLineWithoutLengthHasItsPlaceTwice();
    void badRequestsFailWithAReason_data();
    void badRequestsFailWithAReason();
    void anEmptyImageIsAFailure();
    void aMillionCornersAreFollowed();
    void cancellingEndsIt();
};

void tst_LineProfile::linesEqualTheModel_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("bilinear");
    for (int nBits : {8, 16}) {
        for (int nChannels = 1; nChannels <= 4; ++nChannels) {
            for (bool bBilinear : {false, true})
                QTest::addRow("%d channels, %d bits, %d", nChannels, nBits, bBilinear)
                    << nChannels << nBits << bBilinear;
        }
    }
}

void tst_LineProfile::linesEqualTheModel()
{
    QFETCH(int, channels);
    QFETCH(int, bits);
    QFETCH(bool, bilinear);
    const ImagePtr image = MakeNoise(60, 40, channels, bits, 4);
    std::mt19937 random(5);
    const auto coordinate = [&](int size) { return random() / 4294967296.0 * (size + 10) - 5; };
    for (int i = 0; i < 60; ++i) {
        const SProfileOptions options{bilinear ? ESampling::Bilinear : ESampling::Nearest, 1 + i % 6};
        const SPlace a{coordinate(60), coordinate(40)}, b{coordinate(60), coordinate(40)};
        const SLineProfile is = TakeProfile(*image, {a, b}, options);
        QCOMPARE(is.failure, std::string());
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const std::size_t nSteps = static_cast<std::size_t>(std::max(1.0, std::round(length)));
        QCOMPARE(is.positions.size(), nSteps + 1);
        QCOMPARE(static_cast<int>(is.channels.size()), channels);
        for (std::size_t k = 0; k <= nSteps; ++k) {
            const double part = static_cast<double>(k) / static_cast<double>(nSteps);
            QVERIFY(IsClose(is.positions[k], part * length));
            for (int c = 0; c < channels; ++c) {
                const double wanted = ModelAt(*image, a, b, part, c, options);
                QVERIFY2(IsClose(is.channels[static_cast<std::size_t>(c)][k], wanted, 1e-10),
                         qPrintable(QStringLiteral("line %1, place %2").arg(i).arg(k)));
            }
        }
    }
}

void tst_LineProfile::aSlopeIsReadExactlyBetweenTheCentres()
{
    const ImagePtr image = MakeSlope(50, 40, 2);
    const SLineProfile is = TakeProfile(*image, {{5.25, 7.75}, {35.25, 7.75}}, {ESampling::Bilinear, 5});
    QCOMPARE(is.positions.size(), std::size_t(31));
    for (std::size_t i = 0; i <= 30; ++i) {
        QVERIFY(IsClose(is.channels[0][i], 10 * (4.75 + static_cast<double>(i)) + 7.25));
        QVERIFY(IsClose(is.channels[1][i] - is.channels[0][i], 100.0));
    }
    const SLineProfile nearest = TakeProfile(*image, {{5.25, 7.75}, {35.25, 7.75}}, {ESampling::Nearest, 1});
    QCOMPARE(nearest.channels[0][3], 87.0);
}

void tst_LineProfile::positionsAreDistancesInUnits()
{
    CCalibration calibration;
    QCOMPARE(calibration.Set({"mm", 2.0, 0.5}, {3, 4}), std::string());
    const SLineProfile is =
        TakeProfile(*MakeSlope(50, 40, 1), {{1, 1}, {11, 1}, {11, 21}}, SProfileOptions(), calibration);
    QCOMPARE(is.positions.size(), std::size_t(31));
    QCOMPARE(is.positions.front(), 0.0);
    QCOMPARE(is.positions[5], 10.0);
    QCOMPARE(is.positions[10], 20.0);
    QCOMPARE(is.positions[20], 25.0);
    QCOMPARE(is.positions.back(), 30.0);
}

void tst_LineProfile::polylinesGoOnAroundTheirCorners()
{
    const ImagePtr image = MakeSlope(50, 40, 1);
    // The second corner is there twice.
    const SLineProfile is = TakeProfile(*image, {{2.5, 2.5}, {6.5, 2.5}, {6.5, 2.5}, {6.5, 12.5}, {9.5, 8.5}},
                                        {ESampling::Nearest, 1});
    QCOMPARE(is.positions.size(), std::size_t(20));
    QCOMPARE(is.channels[0].front(), 22.0);
    QCOMPARE(is.channels[0][4], 62.0);
    QCOMPARE(is.channels[0][5], 63.0);
    QCOMPARE(is.channels[0][14], 72.0);
    QCOMPARE(is.channels[0].back(), 98.0);
    const SLineProfile wide = TakeProfile(*image, {{20, 20}, {30, 20}, {30, 10}}, {ESampling::Bilinear, 3});
    QVERIFY(IsClose(wide.channels[0][15], 10 * 29.5 + 14.5));
}

void tst_LineProfile::placesOutsideTheImageHaveNoValue()
{
    const SLineProfile is = TakeProfile(*MakeSlope(10, 10, 1), {{-3, 5}, {13, 5}}, {ESampling::Nearest, 1});
    QVERIFY(std::isnan(is.channels[0][2]) && is.channels[0][3] == 5.0);
    QVERIFY(is.channels[0][13] == 95.0 && std::isnan(is.channels[0][14]));
    // Of a wide line that which lies inside counts.
    const SLineProfile wide =
        TakeProfile(*MakeSlope(10, 10, 1), {{2, 0.5}, {8, 0.5}}, {ESampling::Nearest, 5});
    QCOMPARE(wide.channels[0][0], 21.0);
    const SLineProfile far = TakeProfile(*MakeSlope(10, 10, 1), {{1e300, 5}, {1e300, 6}}, SProfileOptions());
    QCOMPARE(far.failure, std::string());
    QVERIFY(std::isnan(far.channels[0][0]));
}

void tst_LineProfile::theEdgeOfTheImageBelongsToIt()
{
    const SLineProfile is = TakeProfile(*MakeSlope(10, 10, 1), {{0, 0}, {10, 10}}, SProfileOptions());
    QCOMPARE(is.channels[0].front(), 0.0);
    QCOMPARE(is.channels[0].back(), 99.0);
}

void tst_LineProfile::aLineWithoutLengthHasItsPlaceTwice()
{
    const SLineProfile is =
        TakeProfile(*MakeSlope(10, 10, 1), {{3.5, 4.5}, {3.5, 4.5}}, {ESampling::Bilinear, 3});
    QCOMPARE(is.positions, (std::vector<double>{0.0, 0.0}));
    QCOMPARE(is.channels[0], (std::vector<double>{34.0, 34.0}));
}

void tst_LineProfile::badRequestsFailWithAReason_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("sampling");
    QTest::addColumn<double>("x");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray width = "The width of a profile is not from 1 to 10000 pixels.";
    QTest::newRow("no width") << 0 << 0 << 5.0 << width;
    QTest::newRow("too wide") << 10001 << 0 << 5.0 << width;
    QTest::newRow("unknown sampling") << 1 << 2 << 5.0 << QByteArray("The way of sampling is unknown.");
    QTest::newRow("not a number") << 1 << 0 << kNaN << QByteArray("The line is not finite.");
    QTest::newRow("infinite") << 1 << 0 << std::numeric_limits<double>::infinity()
                              << QByteArray("The line is not finite.");
    QTest::newRow("too long") << 1 << 0 << 1e300 << QByteArray("The line is too long for a profile.");
    QTest::newRow("too much") << 10000 << 0 << 20000.0 << QByteArray("The line is too long for a profile.");
}

void tst_LineProfile::badRequestsFailWithAReason()
{
    QFETCH(int, width);
    QFETCH(int, sampling);
    QFETCH(double, x);
    QFETCH(QByteArray, reason);
    const SLineProfile is =
        TakeProfile(*MakeSlope(10, 10, 1), {{1, 1}, {x, 2}}, {static_cast<ESampling>(sampling), width});
    QCOMPARE(is.failure, reason.toStdString());
    QVERIFY(is.positions.empty() && is.channels.empty());
}

void tst_LineProfile::anEmptyImageIsAFailure()
{
    QCOMPARE(TakeProfile(CImage(), {{1, 1}, {2, 2}}).failure, std::string("The image is empty."));
    QCOMPARE(TakeProfile(*MakeSlope(3, 3, 1), {{1, 1}}).failure,
             std::string("A profile needs a line of two places at least."));
}

void tst_LineProfile::aMillionCornersAreFollowed()
{
    std::vector<SPlace> places;
    for (int i = 0; i < 1000000; ++i)
        places.push_back({i / 1e5, i % 2 * 1e-3 + 5});
    const SLineProfile is = TakeProfile(*MakeSlope(10, 10, 1), places);
    QCOMPARE(is.failure, std::string());
    QVERIFY(IsClose(static_cast<double>(is.positions.size()), 1001.0, 2e-3));
}

void tst_LineProfile::cancellingEndsIt()
{
    Vantor::CProgress progress;
    const Vantor::CProgress::CScope scope(&progress);
    QVERIFY(progress.Cancel());
    QCOMPARE(TakeProfile(*MakeSlope(10, 10, 1), {{1, 1}, {2, 2}}).failure, std::string(Vantor::kCancelled));
}

VANTOR_CORE_TEST_MAIN(tst_LineProfile)
#include "tst_LineProfile.moc"
