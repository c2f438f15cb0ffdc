// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/MeasurementTable.h>

#include <Vantor/CProgress.h>
#include <Vantor/file/AtomicFile_p.h>
#include <Vantor/file/CsvText_p.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <Vantor/measure/MeasurementColumns_p.h>

#include <QByteArray>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
/// Shapes that are measured at once: their histograms are in memory together.
constexpr std::size_t kAtOnce = 256;

using Shapes = std::vector<SMeasuredShape>;

bool IsColumn(int column)
{
    return column >= 0 && column < static_cast<int>(GetMeasurementColumns().size());
}

const SMeasurementColumn& ColumnAt(int column)
{
    return GetMeasurementColumns()[static_cast<std::size_t>(column)];
}

/// The statistics of some shapes; without channels when there is no image.
std::vector<SRegionStatistics> PixelsOf(const CImage* image, const Shapes& shapes, std::size_t nFirst,
                                        std::size_t nEnd)
{
    if (!image || image->GetWidth() == 0)
        return std::vector<SRegionStatistics>(nEnd - nFirst);
    std::vector<const Geometry::CGeometry*> regions;
    for (std::size_t i = nFirst; i < nEnd; ++i)
        regions.push_back(shapes[i].geometry);
    return MeasureRegions(*image, regions, EStatistics::Full);
}

SShapeMeasures OutlineOf(const CImage* image, const SMeasuredShape& shape, const CCalibration& calibration)
{
    if (shape.geometry)
        return MeasureShape(*shape.geometry, calibration);
    const Geometry::CRectangle whole(0.0, 0.0, image ? image->GetWidth() : 0.0,
                                     image ? image->GetHeight() : 0.0);
    return MeasureShape(whole, calibration);
}

std::vector<SMeasurement> Measure(const CImage* image, const Shapes& shapes, const CCalibration& calibration)
{
    std::vector<SMeasurement> rows;
    rows.reserve(shapes.size());
    for (std::size_t nFirst = 0; nFirst < shapes.size(); nFirst += kAtOnce) {
        const std::size_t nEnd = std::min(shapes.size(), nFirst + kAtOnce);
        const std::vector<SRegionStatistics> pixels = PixelsOf(image, shapes, nFirst, nEnd);
        const double dDone = static_cast<double>(nEnd) / static_cast<double>(shapes.size());
        if (!CProgress::Tell(dDone) || pixels.size() != nEnd - nFirst)
            return {};
        for (std::size_t i = nFirst; i < nEnd; ++i) {
            const SShapeMeasures outline = OutlineOf(image, shapes[i], calibration);
            rows.push_back({shapes[i].name, shapes[i].kind, shapes[i].page, calibration.GetSize().unit,
                            ValuesOf({shapes[i].page, outline, pixels[i - nFirst], calibration})});
        }
    }
    return rows;
}

std::string TextOf(const SMeasurement& row, const std::string& key)
{
    return key == "name" ? row.name : key == "kind" ? row.kind : row.unit;
}

bool HasSeveralUnits(const std::vector<SMeasurement>& rows)
{
    return !rows.empty() && UnitOfMeasurements(rows).empty();
}

CResult Write(const std::string& path, const std::string& bytes)
{
    AtomicFile file;
    CResult result = file.Open(path);
    if (!result.IsSuccess())
        return result;
    file.Device().write(bytes.data(), static_cast<qint64>(bytes.size()));
    return file.Commit();
}
} // namespace

int FindMeasurementColumn(const std::string& key)
{
    const auto& columns = GetMeasurementColumns();
    const auto it = std::find_if(columns.begin(), columns.end(),
                                 [&key](const SMeasurementColumn& column) { return column.key == key; });
    return it != columns.end() ? static_cast<int>(it - columns.begin()) : -1;
}

std::vector<int> GetUsualMeasurementColumns()
{
    std::vector<int> usual;
    for (int i = 0; IsColumn(i); ++i)
        if (ColumnAt(i).usual)
            usual.push_back(i);
    return usual;
}

std::vector<SMeasurement> MeasureShapes(const CImage* image, const std::vector<SMeasuredShape>& shapes,
                                        const CCalibration& calibration)
{
    try {
        return Measure(image, shapes, calibration);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

SMeasurementSummary SummarizeValues(const std::vector<double>& values)
{
    SMeasurementSummary summary;
    long double sum = 0.0L;
    for (const double value : values) {
        if (std::isnan(value))
            continue;
        summary.min = summary.count == 0 ? value : std::min(summary.min, value);
        summary.max = summary.count == 0 ? value : std::max(summary.max, value);
        sum += value;
        ++summary.count;
    }
    if (summary.count == 0)
        return summary;
    const long double mean = sum / static_cast<long double>(summary.count);
    long double squares = 0.0L;
    for (const double value : values)
        squares += std::isnan(value) ? 0.0L : (value - mean) * (value - mean);
    const auto others = static_cast<long double>(summary.count - 1);
    summary.mean = static_cast<double>(mean);
    summary.deviation = summary.count == 1 ? 0.0 : static_cast<double>(std::sqrt(squares / others));
    return summary;
}

SMeasurementSummary SummarizeMeasurements(const std::vector<SMeasurement>& rows, int column)
{
    std::vector<double> values;
    for (const SMeasurement& row : rows)
        if (IsColumn(column) && static_cast<std::size_t>(column) < row.values.size())
            values.push_back(row.values[static_cast<std::size_t>(column)]);
    return SummarizeValues(values);
}

std::string UnitOfMeasurements(const std::vector<SMeasurement>& rows)
{
    const bool bSame = !rows.empty() && std::all_of(rows.begin(), rows.end(), [&](const SMeasurement& row) {
        return row.unit == rows.front().unit;
    });
    return bSame ? rows.front().unit : std::string();
}

std::string MeasurementHeader(int column, const std::string& unit)
{
    if (!IsColumn(column))
        return {};
    const SMeasurementColumn& about = ColumnAt(column);
    const std::string name = unit.empty() ? "unit" : unit;
    switch (about.measure) {
    case EMeasure::Length:
        return about.title + " [" + name + ']';
    case EMeasure::Area:
        return about.title + " [" + name + "\u00b2]";
    case EMeasure::Angle:
        return about.title + " [\u00b0]";
    case EMeasure::Text:
    case EMeasure::Number:
        break;
    }
    return about.title;
}

std::string MeasurementText(const SMeasurement& row, int column)
{
    if (!IsColumn(column))
        return {};
    if (ColumnAt(column).measure == EMeasure::Text)
        return TextOf(row, ColumnAt(column).key);
    const auto nColumn = static_cast<std::size_t>(column);
    if (nColumn >= row.values.size() || std::isnan(row.values[nColumn]))
        return {};
    return QByteArray::number(row.values[nColumn], 'g', QLocale::FloatingPointShortest).toStdString();
}

std::string WriteMeasurements(const std::vector<SMeasurement>& rows, const std::vector<int>& columns,
                              ETableForm form)
{
    const bool bCsv = form == ETableForm::Csv;
    const std::string unit = UnitOfMeasurements(rows);
    std::vector<int> shown;
    std::copy_if(columns.begin(), columns.end(), std::back_inserter(shown), IsColumn);
    const int nUnit = FindMeasurementColumn("unit");
    if (HasSeveralUnits(rows) && std::find(shown.begin(), shown.end(), nUnit) == shown.end())
        shown.push_back(nUnit);
    std::string table;
    const auto line = [&](const auto& textOf) {
        for (std::size_t i = 0; i < shown.size(); ++i)
            table += (i == 0 ? "" : bCsv ? "," : "\t") + textOf(shown[i]);
        table += bCsv ? "\r\n" : "\n";
    };
    const auto field = [bCsv](const std::string& text) { return bCsv ? CsvField(text) : TsvField(text); };
    line([&](int column) { return field(MeasurementHeader(column, unit)); });
    for (const SMeasurement& row : rows)
        line([&](int column) {
            const std::string text = MeasurementText(row, column);
            return ColumnAt(column).measure == EMeasure::Text ? field(text) : text;
        });
    return table;
}

std::string SaveMeasurements(const std::vector<SMeasurement>& rows, const std::vector<int>& columns,
                             const std::string& path)
{
    try {
        const CResult result = Write(path, WriteMeasurements(rows, columns));
        return result.IsSuccess() ? std::string() : result.GetReason();
    } catch (const std::bad_alloc&) {
        return "Out of memory.";
    }
}

} // namespace Vantor::Algorithms
