// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>

#include <QString>
#include <QStringList>
#include <functional>
#include <limits>
#include <random>
#include <vector>

/// Plain models against which the tests of the shapes hold the library.
namespace GeometryModel
{

using Vantor::Geometry::CGeometry;
using Vantor::Geometry::CPoint;
using Vantor::Geometry::CPointList;
using Vantor::Geometry::CRectangle;
using Vantor::Geometry::SPixelRun;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
/// Values with which every shape has to cope.
const std::vector<double> kNasty = {0.0,  -0.0,  1.0,    -1.0,         0.5,       1e-300,     1e9,
                                    -1e9, 1e308, -1e308, 2147483648.0, kInfinity, -kInfinity, kNaN};

/// A coordinate from -20 to 60 on a grid of eighths, so that edges meet pixel centres and corners often.
inline double RandomCoordinate(std::mt19937& random)
{
    return static_cast<int>(random() % 641) / 8.0 - 20.0;
}

/// One character for each pixel, '#' or '.', of the runs; starts with an error text when a run lies
/// outside, is empty, touches the one before or is out of order.
inline QStringList Picture(const std::vector<SPixelRun>& runs, int width, int height)
{
    QStringList picture;
    for (int y = 0; y < height; ++y)
        picture << QString(width, QLatin1Char('.'));
    SPixelRun last{-1, 0, 0};
    for (const SPixelRun& run : runs) {
        const bool bOrdered = run.nRow > last.nRow || (run.nRow == last.nRow && run.nBegin > last.nEnd);
        if (run.nRow < 0 || run.nRow >= height || run.nBegin < 0 || run.nEnd > width ||
            run.nBegin >= run.nEnd || !bOrdered)
            return {QStringLiteral("bad run: row %1, %2 to %3").arg(run.nRow).arg(run.nBegin).arg(run.nEnd)};
        for (int x = run.nBegin; x < run.nEnd; ++x)
            picture[run.nRow][x] = QLatin1Char('#');
        last = run;
    }
    return picture;
}

/// The same picture from a question asked for every pixel.
inline QStringList Picture(const std::function<bool(int x, int y)>& covers, int width, int height)
{
    QStringList picture;
    for (int y = 0; y < height; ++y) {
        QString row;
        for (int x = 0; x < width; ++x)
            row += QLatin1Char(covers(x, y) ? '#' : '.');
        picture << row;
    }
    return picture;
}

/// The points of a list as "(x, y) (x, y)".
inline QString Text(const CPointList& list)
{
    QStringList texts;
    for (int i = 0; i < list.Size(); ++i) {
        const auto* pPoint = dynamic_cast<const CPoint<double>*>(list.At(i).get());
        texts << (pPoint ? QStringLiteral("(%1, %2)").arg(pPoint->x()).arg(pPoint->y())
                         : QStringLiteral("?"));
    }
    return texts.join(QLatin1Char(' '));
}

inline QString Outline(const CGeometry& geometry)
{
    CPointList outline, handles;
    return geometry.GetPoints(outline, handles) == 0 ? Text(outline) : QStringLiteral("failed");
}

inline QString Handles(const CGeometry& geometry)
{
    CPointList outline, handles;
    handles.Add(CPoint<double>(99.0, 99.0)); // is to be emptied
    return geometry.GetPoints(outline, handles) == 0 ? Text(handles) : QStringLiteral("failed");
}

inline QString Text(const CRectangle& r)
{
    return QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

/// Asks the shape everything; what matters is that it comes back, with runs inside the image.
inline bool Survives(CGeometry& geometry)
{
    bool bGood = true;
    for (int nSize : {0, 1, 7}) {
        const QStringList picture = Picture(geometry.GetPixelRuns(nSize, nSize), nSize, nSize);
        bGood = bGood && picture.size() == nSize && !picture.join(QString()).startsWith(QLatin1String("bad"));
    }
    for (double x : kNasty) {
        for (double y : {0.5, 1e308, kInfinity, kNaN})
            geometry.Contains(CPoint<double>(x, y));
    }
    geometry.GetBoundingRectangle();
    const QString strOutline = Outline(geometry);
    geometry.MoveTopLeftTo(CPoint<double>(kNaN, 1.0));
    geometry.MoveTopLeftTo(CPoint<double>(1.0, kInfinity));
    return bGood && Outline(geometry) == strOutline && geometry.Clone()->GetType() == geometry.GetType();
}

} // namespace GeometryModel
