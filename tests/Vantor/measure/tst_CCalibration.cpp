// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/image/SImageMetadata.h>
#include <Vantor/measure/CCalibration.h>

#include <cmath>
#include <limits>

using namespace Vantor::Algorithms;
using Vantor::Annotations::SCalibration;
using Vantor::Geometry::SPlace;

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
} // namespace

class tst_CCalibration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void atFirstAUnitIsAPixel();
    void placesGoToUnitsAndBack();
    void lengthsAreaAndAngleFollowPixelsThatAreNotSquare();
    void anglesGoAnticlockwiseAsSeen_data();
    void anglesGoAnticlockwiseAsSeen();
    void aKnownLengthGivesTheUnit();
    void aFileSaysTheSizeInMillimetres_data();
    void aFileSaysTheSizeInMillimetres();
    void calibrationsAreEqualByAllNumbers();
    void lengthsOfScaleBarsAreRound();
    void badCalibrationsAreRefusedWithAReason_data();
    void badCalibrationsAreRefusedWithAReason();
};

void tst_CCalibration::atFirstAUnitIsAPixel()
{
    const CCalibration calibration;
    QCOMPARE(calibration.GetSize().unit, std::string("pixel"));
    QCOMPARE(calibration.GetLength(3, 4), 5.0);
    QCOMPARE(calibration.GetArea(7), 7.0);
    QCOMPARE(calibration.ToUnits({3, 4}).x, 3.0);
}

void tst_CCalibration::placesGoToUnitsAndBack()
{
    CCalibration calibration;
    QCOMPARE(calibration.Set({"mm", 0.5, 0.25}, {10, 20}), std::string());
    const SPlace units = calibration.ToUnits({14, 16});
    QCOMPARE(units.x, 2.0);
    QCOMPARE(units.y, -1.0);
    const SPlace pixels = calibration.ToPixels(units);
    QCOMPARE(pixels.x, 14.0);
    QCOMPARE(pixels.y, 16.0);
}

void tst_CCalibration::lengthsAreaAndAngleFollowPixelsThatAreNotSquare()
{
    CCalibration calibration;
    QCOMPARE(calibration.Set({"mm", 3.0, 4.0}), std::string());
    QCOMPARE(calibration.GetLength(1, 1), 5.0);
    QCOMPARE(calibration.GetArea(10), 120.0);
    QCOMPARE(calibration.GetAngle(4, -3), 45.0);
}

void tst_CCalibration::anglesGoAnticlockwiseAsSeen_data()
{
    QTest::addColumn<double>("dx");
    QTest::addColumn<double>("dy");
    QTest::addColumn<double>("angle");
    QTest::newRow("right") << 1.0 << 0.0 << 0.0;
    QTest::newRow("up") << 0.0 << -1.0 << 90.0;
    QTest::newRow("left") << -1.0 << 0.0 << 180.0;
    QTest::newRow("down") << 0.0 << 1.0 << -90.0;
    QTest::newRow("down left") << -1.0 << 1.0 << -135.0;
    QTest::newRow("nowhere") << -0.0 << 0.0 << 0.0;
}

void tst_CCalibration::anglesGoAnticlockwiseAsSeen()
{
    QFETCH(double, dx);
    QFETCH(double, dy);
    QTEST(CCalibration().GetAngle(dx, dy), "angle");
}

void tst_CCalibration::aKnownLengthGivesTheUnit()
{
    CCalibration calibration;
    QCOMPARE(calibration.Set({"um", 2.0, 3.0}, {1, 2}), std::string());
    QCOMPARE(calibration.SetByLength(30, -40, 10.0, "mm"), std::string());
    QCOMPARE(calibration.GetLength(30, 40), 10.0);
    QCOMPARE(calibration.GetLength(50, 0), 10.0); // the pixels are square
    QCOMPARE(calibration.GetSize().unit, std::string("mm"));
    QCOMPARE(calibration.GetOrigin().y, 2.0);
    QCOMPARE(calibration.SetByLength(0, 0, 10.0, "mm"), std::string("The way has no length."));
    QCOMPARE(calibration.SetByLength(kNaN, 0, 10.0, "mm"), std::string("The way has no length."));
    QVERIFY(!calibration.SetByLength(1, 0, -10.0, "mm").empty());
    QCOMPARE(calibration.GetLength(50, 0), 10.0);
}

void tst_CCalibration::aFileSaysTheSizeInMillimetres_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("width"); // of a pixel; 0: refused
    QTest::newRow("inches") << int(EResolutionUnit::Inch) << 254.0 << 0.1;
    QTest::newRow("centimetres") << int(EResolutionUnit::Centimetre) << 40.0 << 0.25;
    QTest::newRow("no unit") << int(EResolutionUnit::None) << 72.0 << 0.0;
    QTest::newRow("unknown") << int(EResolutionUnit::Inch) << 0.0 << 0.0;
    QTest::newRow("not a number") << int(EResolutionUnit::Inch) << std::nan("") << 0.0;
}

void tst_CCalibration::aFileSaysTheSizeInMillimetres()
{
    QFETCH(const int, unit);
    QFETCH(const double, x);
    QFETCH(const double, width);
    SImageMetadata metadata;
    metadata.resolutionUnit = EResolutionUnit(unit);
    metadata.resolutionX = x;
    metadata.resolutionY = 2.0 * x;
    CCalibration calibration;
    QVERIFY(calibration.Set({"um", 1.0, 1.0, 3.0, 4.0}).empty());
    const CCalibration before = calibration;
    QCOMPARE(calibration.SetByResolution(metadata).empty(), width > 0.0);
    if (width > 0.0) {
        QCOMPARE(calibration.GetSize().x, width);
        QCOMPARE(calibration.GetSize().y, width / 2.0);
        QCOMPARE(calibration.GetSize().unit, std::string("mm"));
        QCOMPARE(calibration.GetOrigin().y, 4.0);
    } else {
        QVERIFY(calibration == before);
    }
}

void tst_CCalibration::calibrationsAreEqualByAllNumbers()
{
    const CCalibration pixel;
    QVERIFY(pixel.IsPixel() && pixel == CCalibration());
    for (const SCalibration& size : {SCalibration{"mm", 1, 1, 0, 0}, SCalibration{"pixel", 2, 1, 0, 0},
                                     SCalibration{"pixel", 1, 2, 0, 0}, SCalibration{"pixel", 1, 1, 3, 0},
                                     SCalibration{"pixel", 1, 1, 0, 3}}) {
        CCalibration other;
        QCOMPARE(other.Set(size), std::string());
        QVERIFY(other != pixel && !other.IsPixel());
    }
}

void tst_CCalibration::lengthsOfScaleBarsAreRound()
{
    const std::pair<double, double> lengths[] = {
        {1.0, 1.0},   {0.999, 0.5},     {2.0, 2.0},  {4.999, 2.0},   {5.0, 5.0},      {9.99, 5.0},
        {10.0, 10.0}, {1234.0, 1000.0}, {0.1, 0.1},  {0.0499, 0.02}, {1e-7, 1e-7},    {3e-29, 2e-29},
        {1e22, 1e22}, {0.0, 0.0},       {-3.0, 0.0}, {kNaN, 0.0},    {kInfinity, 0.0}};
    for (const auto& [most, wanted] : lengths)
        QCOMPARE(CCalibration::RoundLength(most), wanted);
    for (int i = -22; i <= 22; ++i) { // also where a logarithm is rounded
        const double power = QByteArray("1e" + QByteArray::number(i)).toDouble();
        QCOMPARE(CCalibration::RoundLength(power), power);
    }
}

void tst_CCalibration::badCalibrationsAreRefusedWithAReason_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<double>("origin");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray size = "The size of a pixel is not a number from 1e-30 to 1e9 units.";
    const QByteArray unit = "The name of the unit has no letters or more than 64 bytes.";
    QTest::newRow("zero") << 0.0 << 1.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("zero in y") << 1.0 << 0.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("negative") << 1.0 << -1.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("not a number") << kNaN << 1.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("infinite") << 1.0 << kInfinity << QByteArray("mm") << 0.0 << size;
    QTest::newRow("too large") << 1.1e9 << 1.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("too small") << 9e-31 << 1.0 << QByteArray("mm") << 0.0 << size;
    QTest::newRow("no unit") << 1.0 << 1.0 << QByteArray() << 0.0 << unit;
    QTest::newRow("a long unit") << 1.0 << 1.0 << QByteArray(65, 'm') << 0.0 << unit;
    QTest::newRow("a unit of two lines") << 1.0 << 1.0 << QByteArray("m\nm") << 0.0
                                         << QByteArray("The name of the unit holds control characters.");
    QTest::newRow("origin") << 1.0 << 1.0 << QByteArray("mm") << kNaN
                            << QByteArray("The origin is not a place from -1e9 to 1e9 pixels.");
}

void tst_CCalibration::badCalibrationsAreRefusedWithAReason()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(QByteArray, unit);
    QFETCH(double, origin);
    QFETCH(QByteArray, reason);
    CCalibration calibration;
    QCOMPARE(calibration.Set({"um", 2.0, 3.0}, {1, 2}), std::string());
    QCOMPARE(calibration.Set({unit.toStdString(), x, y}, {0, origin}), reason.toStdString());
    QCOMPARE(calibration.GetSize().unit, std::string("um"));
    QCOMPARE(calibration.GetSize().y, 3.0);
    QCOMPARE(calibration.GetOrigin().y, 2.0);
    QCOMPARE(calibration.Set({std::string(64, 'm'), 1e-30, 1e9}, {-5, 1e9}), std::string());
}

VANTOR_CORE_TEST_MAIN(tst_CCalibration)
#include "tst_CCalibration.moc"
