// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace Vantor::Geometry
{

namespace
{
constexpr double kHalfPixel = 0.5;
/// A tolerance: points on the ellipse count as inside although their squares are rounded.
constexpr double kRounding = 1e-12;

double Ratio(double distance, double halfAxis)
{
    if (halfAxis > 0.0)
        return distance / halfAxis;
    return distance == 0.0 ? 0.0 : std::numeric_limits<double>::infinity();
}
} // namespace

int FirstCentreFrom(double coordinate, int limit)
{
    const double first = std::ceil(coordinate - kHalfPixel);
    if (!(first > 0.0))
        return 0;
    return first < limit ? static_cast<int>(first) : limit;
}

int PixelOf(double coordinate, int limit)
{
    const double pixel = std::floor(coordinate);
    if (!(pixel >= 0.0))
        return -1;
    return pixel < limit ? static_cast<int>(pixel) : limit;
}

double AbscissaAt(const CPoint<double>& a, const CPoint<double>& b, double y)
{
    if (y == a.y())
        return a.x();
    if (y == b.y())
        return b.x();
    const long double dx = static_cast<long double>(b.x()) - a.x();
    const long double dy = static_cast<long double>(b.y()) - a.y();
    return static_cast<double>(a.x() + (static_cast<long double>(y) - a.y()) * dx / dy);
}

bool IsFinite(const CPoint<double>& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

std::vector<SPixelRun> UnionOf(std::vector<SPixelRun> runs)
{
    std::sort(runs.begin(), runs.end(), [](const SPixelRun& a, const SPixelRun& b) {
        return std::tie(a.nRow, a.nBegin) < std::tie(b.nRow, b.nBegin);
    });
    std::vector<SPixelRun> vctJoined;
    for (const SPixelRun& run : runs) {
        if (!vctJoined.empty() && vctJoined.back().nRow == run.nRow && run.nBegin <= vctJoined.back().nEnd)
            vctJoined.back().nEnd = std::max(vctJoined.back().nEnd, run.nEnd);
        else
            vctJoined.push_back(run);
    }
    return vctJoined;
}

void CBounds::Include(double x, double y)
{
    if (m_bEmpty) {
        m_dblLeft = m_dblRight = x;
        m_dblTop = m_dblBottom = y;
        m_bEmpty = false;
        return;
    }
    m_dblLeft = std::fmin(m_dblLeft, x);
    m_dblRight = std::fmax(m_dblRight, x);
    m_dblTop = std::fmin(m_dblTop, y);
    m_dblBottom = std::fmax(m_dblBottom, y);
}

void CBounds::Include(const CRectangle& rectangle)
{
    Include(rectangle.x(), rectangle.y());
    Include(rectangle.bottomRight().x(), rectangle.bottomRight().y());
}

CRectangle CBounds::GetRectangle() const
{
    return {m_dblLeft, m_dblTop, m_dblRight - m_dblLeft, m_dblBottom - m_dblTop};
}

bool SUprightEllipse::Contains(double px, double py) const
{
    const double dx = Ratio(px - x, a);
    const double dy = Ratio(py - y, b);
    return dx * dx + dy * dy <= 1.0 + kRounding;
}

std::vector<SPixelRun> SUprightEllipse::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns;
    // Start one pixel farther out on each side, then move the ends inwards by the test that Contains uses.
    const int nLastRow = std::min(FirstCentreFrom(y + b, height) + 1, height);
    for (int nRow = std::max(FirstCentreFrom(y - b, height) - 1, 0); nRow < nLastRow; ++nRow) {
        const double centreY = nRow + kHalfPixel;
        const double dy = Ratio(centreY - y, b);
        const double half = a * std::sqrt(std::max(0.0, 1.0 - dy * dy));
        int nBegin = std::max(FirstCentreFrom(x - half, width) - 1, 0);
        int nEnd = std::min(FirstCentreFrom(x + half, width) + 1, width);
        while (nBegin < nEnd && !Contains(nBegin + kHalfPixel, centreY))
            ++nBegin;
        while (nBegin < nEnd && !Contains(nEnd - kHalfPixel, centreY))
            --nEnd;
        if (nBegin < nEnd)
            vctRuns.push_back({nRow, nBegin, nEnd});
    }
    return vctRuns;
}

} // namespace Vantor::Geometry
