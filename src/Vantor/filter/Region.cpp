// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Region_p.h>

#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

namespace Vantor::Algorithms
{

using Geometry::CGeometry;
using Geometry::CPoint;
using Geometry::CRectangle;
using Geometry::SPixelRun;

namespace
{
/// The work of growing a region goes with the size of the image and twice this, squared.
constexpr double kMaxTolerance = 4096.0;

struct SCanvas {
    int nWidth;
    int nHeight;
};

PixelRuns WholeOf(const SCanvas& canvas)
{
    PixelRuns runs;
    runs.reserve(static_cast<std::size_t>(canvas.nHeight));
    for (int nRow = 0; nRow < canvas.nHeight; ++nRow)
        runs.push_back({nRow, 0, canvas.nWidth});
    return runs;
}

PixelRuns ComplementOf(const PixelRuns& runs, const SCanvas& canvas)
{
    PixelRuns complement;
    std::size_t nRun = 0;
    for (int nRow = 0; nRow < canvas.nHeight; ++nRow) {
        int nBegin = 0;
        for (; nRun < runs.size() && runs[nRun].nRow == nRow; ++nRun) {
            if (nBegin < runs[nRun].nBegin)
                complement.push_back({nRow, nBegin, runs[nRun].nBegin});
            nBegin = runs[nRun].nEnd;
        }
        if (nBegin < canvas.nWidth)
            complement.push_back({nRow, nBegin, canvas.nWidth});
    }
    return complement;
}

/// How far a disc of the radius reaches to the left and right, indexed by the distance from its middle row.
std::vector<int> HalfWidths(double radius)
{
    std::vector<int> vctHalf(static_cast<std::size_t>(radius) + 1);
    for (std::size_t i = 0; i < vctHalf.size(); ++i) {
        const double rest = radius * radius - static_cast<double>(i * i);
        double half = std::floor(std::sqrt(rest));
        while (half * half > rest)
            half -= 1.0;
        while ((half + 1.0) * (half + 1.0) <= rest)
            half += 1.0;
        vctHalf[i] = static_cast<int>(half);
    }
    return vctHalf;
}

/// Appends the region grown by half a disc: every pixel reaches its own row and the rows after it in walking
/// order (step 1 walks down, -1 up). The work does not depend on the radius.
void AppendGrown(PixelRuns& grown, const PixelRuns& runs, const SCanvas& canvas,
                 const std::vector<int>& halfWidths, int step)
{
    const std::size_t nWidth = static_cast<std::size_t>(canvas.nWidth);
    const int nFar = static_cast<int>(halfWidths.size());
    std::vector<int> vctDistance(nWidth, nFar); // rows since the column's last pixel of the region
    std::vector<int> vctEdges(nWidth + 1, 0);   // +1 where a reach begins, -1 after its end
    const auto rowOf = [](const SPixelRun& run, int nRow) { return run.nRow < nRow; };
    for (int i = 0; i < canvas.nHeight; ++i) {
        const int nRow = step > 0 ? i : canvas.nHeight - 1 - i;
        for (int& nDistance : vctDistance)
            nDistance = std::min(nDistance + 1, nFar);
        for (auto run = std::lower_bound(runs.begin(), runs.end(), nRow, rowOf);
             run != runs.end() && run->nRow == nRow; ++run)
            std::fill(vctDistance.begin() + run->nBegin, vctDistance.begin() + run->nEnd, 0);
        for (int x = 0; x < canvas.nWidth; ++x) {
            const int nDistance = vctDistance[static_cast<std::size_t>(x)];
            if (nDistance >= nFar)
                continue;
            const int nHalf = halfWidths[static_cast<std::size_t>(nDistance)];
            ++vctEdges[static_cast<std::size_t>(std::max(x - nHalf, 0))];
            --vctEdges[static_cast<std::size_t>(std::min(x + nHalf + 1, canvas.nWidth))];
        }
        int nReaches = 0;
        for (int x = 0; x <= canvas.nWidth; ++x) {
            const int nBefore = nReaches;
            nReaches += std::exchange(vctEdges[static_cast<std::size_t>(x)], 0);
            if (nBefore == 0 && nReaches > 0)
                grown.push_back({nRow, x, canvas.nWidth});
            else if (nBefore > 0 && nReaches == 0)
                grown.back().nEnd = x;
        }
    }
}

PixelRuns Grow(const PixelRuns& runs, const SCanvas& canvas, double radius)
{
    const std::vector<int> vctHalf = HalfWidths(radius);
    PixelRuns grown;
    AppendGrown(grown, runs, canvas, vctHalf, 1);
    AppendGrown(grown, runs, canvas, vctHalf, -1);
    return Geometry::UnionOf(std::move(grown));
}

/// The part of the runs that lies on the canvas after the canvas's origin has moved by an offset in x and y.
PixelRuns Crop(const PixelRuns& runs, int offset, const SCanvas& canvas)
{
    PixelRuns cropped;
    for (const SPixelRun& run : runs) {
        const SPixelRun moved{run.nRow - offset, std::max(run.nBegin - offset, 0),
                              std::min(run.nEnd - offset, canvas.nWidth)};
        if (moved.nRow >= 0 && moved.nRow < canvas.nHeight && moved.nBegin < moved.nEnd)
            cropped.push_back(moved);
    }
    return cropped;
}

/// Checks what the filters rely on; a shape of a host's own may get it wrong.
bool AreInOrder(const PixelRuns& runs, const SCanvas& canvas)
{
    SPixelRun last{-1, 0, 0};
    for (const SPixelRun& run : runs) {
        if (run.nRow < last.nRow || (run.nRow == last.nRow && run.nBegin < last.nEnd))
            return false;
        if (run.nRow < 0 || run.nRow >= canvas.nHeight || run.nBegin < 0 || run.nEnd > canvas.nWidth ||
            run.nBegin >= run.nEnd)
            return false;
        last = run;
    }
    return true;
}

/// The shape's pixels, grown or shrunk, on the image. The function draws the shape on a canvas with a margin,
/// so that the parts around the image count.
CResult FindChanged(const SCanvas& image, const CGeometry& geometry, double tolerance, PixelRuns& runs)
{
    const int nMargin = static_cast<int>(std::ceil(std::abs(tolerance)));
    if (image.nWidth > INT_MAX - 2 * nMargin || image.nHeight > INT_MAX - 2 * nMargin)
        return CResult::Failure("The image is too large for a tolerance.");
    const SCanvas canvas{image.nWidth + 2 * nMargin, image.nHeight + 2 * nMargin};
    const CRectangle bounds = geometry.GetBoundingRectangle();
    if (!std::isfinite(bounds.x()) || !std::isfinite(bounds.y()))
        return CResult::Failure("A region without bounds has no tolerance.");
    const std::shared_ptr<CGeometry> pMoved = geometry.Clone();
    pMoved->MoveTopLeftTo(CPoint<double>(bounds.x() + nMargin, bounds.y() + nMargin));
    runs = pMoved->GetPixelRuns(canvas.nWidth, canvas.nHeight);
    if (!AreInOrder(runs, canvas))
        return CResult::Failure("The pixels of the region are not in order.");
    if (tolerance > 0.0)
        runs = Grow(runs, canvas, tolerance);
    else
        runs = ComplementOf(Grow(ComplementOf(runs, canvas), canvas, -tolerance), canvas);
    runs = Crop(runs, nMargin, image);
    return CResult::Success();
}
} // namespace

CResult FindRegion(int width, int height, const CGeometry* geometry, ERegionMode mode, double tolerance,
                   PixelRuns& runs)
{
    if (mode != ERegionMode::All && mode != ERegionMode::Inside && mode != ERegionMode::Outside)
        return CResult::Failure("The region mode is unknown.");
    if (!(std::abs(tolerance) <= kMaxTolerance))
        return CResult::Failure("The tolerance is not a number from -4096 to 4096.");
    const SCanvas image{width, height};
    if (mode == ERegionMode::All || !geometry) {
        runs = mode == ERegionMode::Outside ? PixelRuns() : WholeOf(image);
        return CResult::Success();
    }
    if (tolerance == 0.0) {
        runs = geometry->GetPixelRuns(width, height);
        if (!AreInOrder(runs, image))
            return CResult::Failure("The pixels of the region are not in order.");
    } else {
        CResult result = FindChanged(image, *geometry, tolerance, runs);
        if (!result.IsSuccess())
            return result;
    }
    if (mode == ERegionMode::Outside)
        runs = ComplementOf(runs, image);
    return CResult::Success();
}

} // namespace Vantor::Algorithms
