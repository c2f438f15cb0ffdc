// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{

class CImage;

/// What the values of a column are.
enum class EMeasure : int {
    Text = 0,   ///< no number: the name, the kind, the unit
    Number = 1, ///< without a unit, such as a count or a sample value
    Length = 2, ///< in units
    Area = 3,   ///< in square units
    Angle = 4   ///< in degrees
};

/// A column of a table of measurements.
struct SMeasurementColumn {
    std::string key;   ///< for settings and programs; it never changes
    std::string title; ///< for people, in English
    EMeasure measure;  ///< what it has
    bool usual;        ///< tables show it at first
};

/// All columns: what SShapeMeasures and SRegionStatistics have. The values of colours ("mean" and so on) are
/// those of the grey (R + G + B) / 3, and each channel has columns of its own.
VANTOR_EXPORT const std::vector<SMeasurementColumn>& GetMeasurementColumns();
/// The index of the column with a key; -1 without one.
VANTOR_EXPORT int FindMeasurementColumn(const std::string& key);
/// The columns that tables show at first, by index.
VANTOR_EXPORT std::vector<int> GetUsualMeasurementColumns();

/// A shape that shall be measured, and how the table calls it.
struct SMeasuredShape {
    std::string name;                              ///< UTF-8
    std::string kind;                              ///< UTF-8, such as "rectangle"
    int page = 0;                                  ///< of the image in its list, from 1 on; 0: there is none
    const Geometry::CGeometry* geometry = nullptr; ///< not owned; null stands for the whole image
};

/// A row of the table: everything that there is to be known of one shape.
struct SMeasurement {
    std::string name;           ///< as in SMeasuredShape
    std::string kind;           ///< as in SMeasuredShape
    int page = 0;               ///< as in SMeasuredShape
    std::string unit;           ///< of lengths
    std::vector<double> values; ///< for each column; NaN where there is none, as for texts
};

/// Measures shapes, see MeasureShape and MeasureRegions. Asks the progress of its thread whether to go on;
/// never throws.
/// @param image        of 8 or 16 bits, which nobody changes meanwhile; null: outlines alone are measured
/// @param shapes       only read
/// @param calibration  of the image
/// @return one for each shape, in their order; none when it was cancelled or memory runs out
VANTOR_EXPORT std::vector<SMeasurement> MeasureShapes(const CImage* image,
                                                      const std::vector<SMeasuredShape>& shapes,
                                                      const CCalibration& calibration = CCalibration());

/// The statistics of some values. Those that are NaN are left out.
struct SMeasurementSummary {
    std::uint64_t count = 0; ///< of values
    /// @{
    /// NaN without a value.
    double mean = std::numeric_limits<double>::quiet_NaN();
    double deviation = std::numeric_limits<double>::quiet_NaN(); ///< by count - 1; 0 for one value
    double min = std::numeric_limits<double>::quiet_NaN();
    double max = std::numeric_limits<double>::quiet_NaN();
    /// @}
};
/// The statistics of any values.
VANTOR_EXPORT SMeasurementSummary SummarizeValues(const std::vector<double>& values);
/// The statistics of a column.
/// @param rows    of a table
/// @param column  an index of GetMeasurementColumns; no value for any other one
VANTOR_EXPORT SMeasurementSummary SummarizeMeasurements(const std::vector<SMeasurement>& rows, int column);

/// How a table is written.
enum class ETableForm : int {
    Csv = 0, ///< commas, quotes where they are needed, lines that end with CR LF: RFC 4180
    Tsv = 1  ///< tabs, lines that end with LF: for the clipboard
};

/// The unit in which all rows are; empty when they differ, or without rows.
VANTOR_EXPORT std::string UnitOfMeasurements(const std::vector<SMeasurement>& rows);
/// The title of a column with its unit, such as "Area [mm²]".
/// @param column  an index of GetMeasurementColumns
/// @param unit    see UnitOfMeasurements; empty: "[unit]"
VANTOR_EXPORT std::string MeasurementHeader(int column, const std::string& unit);
/// The text of a row in a column: numbers with a dot and as many digits as tell them apart, nothing for NaN.
VANTOR_EXPORT std::string MeasurementText(const SMeasurement& row, int column);

/// The table as UTF-8: a line of headers, and one for each row. Rows in several units have the column "unit"
/// whether it was asked for or not. May throw std::bad_alloc.
/// @param rows     in the order of the table
/// @param columns  indices of GetMeasurementColumns, in the order of the table; others are left out
/// @param form     of the text
VANTOR_EXPORT std::string WriteMeasurements(const std::vector<SMeasurement>& rows,
                                            const std::vector<int>& columns,
                                            ETableForm form = ETableForm::Csv);
/// Writes the table as a CSV file, in one step: after a failure a file that stood there is whole.
/// @param rows     see WriteMeasurements
/// @param columns  see WriteMeasurements
/// @param path     in UTF-8
/// @return why it failed, a sentence in English; empty for a success
VANTOR_EXPORT std::string SaveMeasurements(const std::vector<SMeasurement>& rows,
                                           const std::vector<int>& columns, const std::string& path);

} // namespace Vantor::Algorithms
