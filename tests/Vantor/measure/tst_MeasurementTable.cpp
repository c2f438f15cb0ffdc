// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/measure/MeasureModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/measure/MeasurementTable.h>
#include <Vantor/measure/ShapeMeasures.h>

#include <QFile>
#include <QTemporaryDir>
#include <set>

using namespace Vantor::Algorithms;
using namespace MeasureModel;

namespace
{
double Value(const SMeasurement& row, const char* pKey)
{
    return row.values[static_cast<std::size_t>(FindMeasurementColumn(pKey))];
}

CCalibration Millimetres()
{
    CCalibration calibration;
    const std::string failure = calibration.Set({"mm", 0.5, 0.25}, {2.0, 4.0});
    return failure.empty() ? calibration : CCalibration();
}

/// A row that is nothing but a value of one column.
SMeasurement RowOf(const char* pKey, double value)
{
    SMeasurement row;
    row.unit = "pixel";
    row.values.assign(GetMeasurementColumns().size(), kUndefined);
    row.values[static_cast<std::size_t>(FindMeasurementColumn(pKey))] = value;
    return row;
}

std::vector<int> ColumnsOf(std::initializer_list<const char*> keys)
{
    std::vector<int> columns;
    for (const char* pKey : keys)
        columns.push_back(FindMeasurementColumn(pKey));
    return columns;
}
} // namespace

class tst_MeasurementTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyColumnHasAKeyOfItsOwn()
    {
        std::set<std::string> keys;
        const auto& columns = GetMeasurementColumns();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            QVERIFY(!columns[i].title.empty());
            QVERIFY(keys.insert(columns[i].key).second);
            QCOMPARE(FindMeasurementColumn(columns[i].key), static_cast<int>(i));
        }
        QCOMPARE(FindMeasurementColumn("weight"), -1);
        QCOMPARE(GetUsualMeasurementColumns(), ColumnsOf({"name", "pixels", "area", "perimeter", "length",
                                                          "angle", "mean", "deviation", "min", "max"}));
    }

    void aRowHasTheMeasuresOfOutlineAndPixels()
    {
        const ImagePtr image = MakeNoise(60, 50, 3, 8, 5);
        const CEllipse shape(10, 8, 30, 21);
        const CCalibration calibration = Millimetres();
        const auto rows = MeasureShapes(image.get(), {{"door", "ellipse", 3, &shape}}, calibration);
        QCOMPARE(rows.size(), std::size_t(1));
        const SMeasurement& row = rows.front();
        const SShapeMeasures outline = MeasureShape(shape, calibration);
        const SRegionStatistics pixels = MeasureRegion(*image, &shape, EStatistics::Full);
        QCOMPARE(row.name, std::string("door"));
        QCOMPARE(row.kind, std::string("ellipse"));
        QCOMPARE(row.unit, std::string("mm"));
        QCOMPARE(Value(row, "page"), 3.0);
        QCOMPARE(Value(row, "pixels"), static_cast<double>(pixels.count));
        QCOMPARE(Value(row, "pixel-area"), static_cast<double>(pixels.count) * 0.125);
        QCOMPARE(Value(row, "area"), outline.area);
        QCOMPARE(Value(row, "perimeter"), outline.perimeter);
        QCOMPARE(Value(row, "x"), (10.0 - 2.0) * 0.5);
        QCOMPARE(Value(row, "feret-angle"), outline.feretAngle);
        QCOMPARE(Value(row, "solidity"), outline.solidity);
        QVERIFY(std::isnan(Value(row, "length")));
        QVERIFY(std::isnan(Value(row, "name")));
        QCOMPARE(Value(row, "mean"), pixels.grey->mean);
        QCOMPARE(Value(row, "median"), pixels.grey->median);
        QCOMPARE(Value(row, "mode"), pixels.grey->mode);
        QCOMPARE(Value(row, "sum"), pixels.grey->sum);
        QCOMPARE(Value(row, "integrated-density"), pixels.grey->sum * 0.125);
        QCOMPARE(Value(row, "centroid-x"), (pixels.centroid.x - 2.0) * 0.5);
        QCOMPARE(Value(row, "mass-y"), (pixels.grey->centreOfMass.y - 4.0) * 0.25);
        QCOMPARE(Value(row, "red-mean"), pixels.channels[0].mean);
        QCOMPARE(Value(row, "blue-max"), pixels.channels[2].max);
        QVERIFY(std::isnan(Value(row, "alpha-mean")));
    }

    void theValuesAreThoseOfTheChannelsThatTheImageHas()
    {
        const CRectangle box(1, 1, 9, 9);
        for (int nChannels = 1; nChannels <= 4; ++nChannels) {
            const ImagePtr image = MakeNoise(20, 20, nChannels, 8, 5);
            const SRegionStatistics pixels = MeasureRegion(*image, &box, EStatistics::Full);
            const auto rows = MeasureShapes(image.get(), {{"", "", 0, &box}});
            const SMeasurement& row = rows.at(0);
            QCOMPARE(Value(row, "mean"), nChannels < 3 ? pixels.channels[0].mean : pixels.grey->mean);
            QCOMPARE(std::isnan(Value(row, "green-mean")), nChannels < 3);
            QCOMPARE(std::isnan(Value(row, "alpha-mean")), nChannels % 2 == 1);
            if (nChannels % 2 == 0)
                QCOMPARE(Value(row, "alpha-mean"), pixels.channels.back().mean);
        }
    }

    void withoutAnImageThereAreOutlinesAlone()
    {
        const CLine line({1, 2}, {4, 6});
        const auto rows = MeasureShapes(nullptr, {{"", "", 0, &line}});
        QCOMPARE(Value(rows.at(0), "length"), 5.0);
        for (const char* pKey : {"mean", "pixels", "pixel-area", "sum", "centroid-x", "page"})
            QVERIFY(std::isnan(Value(rows.at(0), pKey)));
    }

    void aShapeBesideTheImageHasNoValuesAndNoPixels()
    {
        const ImagePtr image = MakeNoise(20, 20, 1, 8, 5);
        const CRectangle box(30, 30, 4, 5);
        const auto rows = MeasureShapes(image.get(), {{"", "", 0, &box}});
        QCOMPARE(Value(rows.at(0), "pixels"), 0.0);
        QCOMPARE(Value(rows.at(0), "area"), 20.0);
        QVERIFY(std::isnan(Value(rows.at(0), "mean")));
        QVERIFY(std::isnan(Value(rows.at(0), "sum")));
    }

    void noShapeIsTheWholeImage()
    {
        const ImagePtr image = MakeNoise(20, 30, 1, 16, 5);
        const auto rows = MeasureShapes(image.get(), {{"all", "", 0, nullptr}});
        QCOMPARE(Value(rows.at(0), "pixels"), 600.0);
        QCOMPARE(Value(rows.at(0), "area"), 600.0);
        QCOMPARE(Value(rows.at(0), "height"), 30.0);
    }

    void everyOneOfManyShapesHasItsRow()
    {
        const ImagePtr image = MakeNoise(64, 64, 1, 8, 5);
        std::vector<CRectangle> boxes;
        for (int i = 0; i < 1000; ++i)
            boxes.emplace_back(i % 60, i / 60, 1 + i % 4, 1 + i % 3);
        std::vector<SMeasuredShape> shapes;
        for (const CRectangle& box : boxes)
            shapes.push_back({std::to_string(shapes.size()), "rectangle", 0, &box});
        const auto rows = MeasureShapes(image.get(), shapes);
        QCOMPARE(rows.size(), shapes.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            QCOMPARE(rows[i].name, shapes[i].name);
            QCOMPARE(Value(rows[i], "mean"),
                     MeasureRegion(*image, &boxes[i], EStatistics::Moments).channels[0].mean);
        }
    }

    void cancellingLeavesNoRows()
    {
        const ImagePtr image = MakeNoise(20, 20, 1, 8, 5);
        const CRectangle box(1, 1, 4, 5);
        Vantor::CProgress progress;
        const Vantor::CProgress::CScope scope(&progress);
        QCOMPARE(MeasureShapes(image.get(), {{"", "", 0, &box}}).size(), std::size_t(1));
        progress.Cancel();
        QVERIFY(MeasureShapes(image.get(), {{"", "", 0, &box}}).empty());
    }

    void theSummaryIsOfTheValuesThatAreThere()
    {
        const int nArea = FindMeasurementColumn("area");
        const std::vector<SMeasurement> rows{RowOf("area", 4.0), RowOf("length", 100.0), RowOf("area", -2.0),
                                             RowOf("area", 7.0)};
        const SMeasurementSummary summary = SummarizeMeasurements(rows, nArea);
        QCOMPARE(summary.count, std::uint64_t(3));
        QCOMPARE(summary.mean, 3.0);
        QCOMPARE(summary.deviation, std::sqrt(21.0));
        QCOMPARE(summary.min, -2.0);
        QCOMPARE(summary.max, 7.0);
        QCOMPARE(SummarizeMeasurements({RowOf("area", 4.0)}, nArea).deviation, 0.0);
        for (int nColumn : {-1, FindMeasurementColumn("name"), FindMeasurementColumn("feret"), 1000}) {
            QCOMPARE(SummarizeMeasurements(rows, nColumn).count, std::uint64_t(0));
            QVERIFY(std::isnan(SummarizeMeasurements(rows, nColumn).mean));
        }
    }

    void theSummaryOfLargeNumbersKeepsTheirDifferences()
    {
        std::vector<SMeasurement> rows;
        for (const double value : {1e9 + 1.0, 1e9 + 2.0, 1e9 + 3.0})
            rows.push_back(RowOf("sum", value));
        QCOMPARE(SummarizeMeasurements(rows, FindMeasurementColumn("sum")).deviation, 1.0);
    }

    void aCsvFileHasUnitsDotsAndQuotes()
    {
        SMeasurement row = RowOf("area", 1234.5);
        row.name = "a \"door\", left";
        row.unit = "mm";
        SMeasurement formula = RowOf("angle", -0.1);
        formula.name = "=1+1";
        formula.unit = "mm";
        QCOMPARE(QString::fromStdString(
                     WriteMeasurements({row, formula}, ColumnsOf({"name", "area", "length", "angle"}))),
                 QStringLiteral("Name,Area [mm\u00b2],Length [mm],Angle [\u00b0]\r\n"
                                "\"a \"\"door\"\", left\",1234.5,,\r\n"
                                "\"'=1+1\",,,-0.1\r\n"));
    }

    void aTableForTheClipboardHasTabsOnly()
    {
        SMeasurement row = RowOf("mean", 0.1 + 0.2);
        row.name = "a\tb\nc";
        QCOMPARE(QString::fromStdString(
                     WriteMeasurements({row}, ColumnsOf({"name", "mean", "area"}), ETableForm::Tsv)),
                 QStringLiteral("Name\tMean\tArea [pixel\u00b2]\na b c\t0.30000000000000004\t\n"));
    }

    void rowsInSeveralUnitsSayTheirs()
    {
        SMeasurement row = RowOf("length", 1.0);
        SMeasurement other = RowOf("length", 2.0);
        other.unit = "mm";
        QCOMPARE(WriteMeasurements({row, other}, ColumnsOf({"length"})),
                 std::string("Length [unit],Unit\r\n1,pixel\r\n2,mm\r\n"));
        QCOMPARE(WriteMeasurements({row, other}, ColumnsOf({"unit", "length"})),
                 std::string("Unit,Length [unit]\r\npixel,1\r\nmm,2\r\n"));
    }

    void columnsThatDoNotExistAreLeftOut()
    {
        QCOMPARE(WriteMeasurements({RowOf("dx", 3.0)}, {-1, FindMeasurementColumn("dx"), 1000}),
                 std::string("dx [pixel]\r\n3\r\n"));
        QCOMPARE(MeasurementHeader(1000, "mm"), std::string());
        QCOMPARE(MeasurementText(RowOf("dx", 3.0), 1000), std::string());
    }

    void aFileIsWrittenWholeOrNotAtAll()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("table.csv"));
        const std::vector<SMeasurement> rows{RowOf("dx", 3.0)};
        QCOMPARE(SaveMeasurements(rows, ColumnsOf({"dx"}), path.toStdString()), std::string());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("dx [pixel]\r\n3\r\n"));
        QVERIFY(!SaveMeasurements(rows, ColumnsOf({"dx"}), folder.path().toStdString() + "/no/table.csv")
                     .empty());
        QVERIFY(!SaveMeasurements(rows, ColumnsOf({"dx"}), folder.path().toStdString()).empty());
    }
};

VANTOR_CORE_TEST_MAIN(tst_MeasurementTable)
#include "tst_MeasurementTable.moc"
