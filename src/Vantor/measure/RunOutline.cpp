// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The outline of a component from its runs: row by row the corners between a row and the next, joined by the
// level sides that begin and end there and by the upright sides of the runs; then each hole is joined to what
// lies to the left of its first corner.
#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/measure/RunMath_p.h>

#include <utility>

namespace Vantor::Algorithms
{

using Geometry::CPoint;
using Geometry::SPixelRun;

namespace
{
constexpr std::uint32_t kNone = UINT32_MAX;

struct SCorner {
    int nX;
    int nY;
    std::uint32_t nLevel = kNone;   ///< the other end of its level side
    std::uint32_t nUpright = kNone; ///< the other end of its upright side
    std::uint32_t nNext = kNone;    ///< on the way around
    /// The upper end of the upright side to the left of it, if one is there.
    std::uint32_t nLeft = kNone;
};

/// The left or the right end of a run, and the corner at which the upright side along it begins.
struct SEnd {
    int nX;
    bool bLeft;
    std::uint32_t nTop = kNone;
};
using Ends = std::vector<SEnd>;

class COutliner
{
public:
    explicit COutliner(ENeighbours neighbours) : m_bEight(neighbours == ENeighbours::Eight) {}

    void Trace(const PixelRuns& runs);
    void JoinLoops();
    std::shared_ptr<Geometry::CPolygon> Polygon() const;

private:
    void AddLevel(int nY, const Ends& above, Ends& below);
    void CloseSide(const SEnd& end, int nY);
    void OpenSide(SEnd& end, int nY);
    void AddCorner(int nX, int nY);
    std::uint32_t FollowLoop(std::uint32_t nFirst);
    void JoinHole(std::uint32_t nFirst, std::uint32_t nLast);
    std::uint32_t Copy(std::uint32_t nCorner, int nX, int nY);

    bool m_bEight;
    std::vector<SCorner> m_corners;
    std::uint32_t m_nBegun = kNone; ///< a corner of this level that waits for the other end of its side
    std::uint32_t m_nLeft = kNone;  ///< the upper end of the upright side that was met last at this level
};

void COutliner::Trace(const PixelRuns& runs)
{
    Ends above, below;
    std::size_t i = 0;
    for (int nRow = runs.front().nRow; nRow <= runs.back().nRow + 1; ++nRow) {
        below.clear();
        for (; i < runs.size() && runs[i].nRow == nRow; ++i) {
            below.push_back({runs[i].nBegin, true});
            below.push_back({runs[i].nEnd, false});
        }
        AddLevel(nRow, above, below);
        above.swap(below);
    }
}

/// Takes the ends of two rows from the left to the right.
void COutliner::AddLevel(int nY, const Ends& above, Ends& below)
{
    m_nLeft = kNone;
    auto upper = above.begin();
    for (auto lower = below.begin(); lower != below.end() || upper != above.end();) {
        const bool bUpper = upper != above.end() && (lower == below.end() || upper->nX <= lower->nX);
        const bool bLower = lower != below.end() && (upper == above.end() || lower->nX <= upper->nX);
        if (bUpper && bLower && upper->bLeft == lower->bLeft) { // the side goes on
            m_nLeft = lower->nTop = upper->nTop;
        } else if (bUpper && bLower) {
            // Two pixels meet at a corner: the one above lies to its left if that run ends here. The corner
            // that comes first belongs to the level side on the left.
            const bool bUpperFirst = m_bEight == upper->bLeft;
            if (bUpperFirst)
                CloseSide(*upper, nY);
            OpenSide(*lower, nY);
            if (!bUpperFirst)
                CloseSide(*upper, nY);
        } else if (bUpper) {
            CloseSide(*upper, nY);
        } else {
            OpenSide(*lower, nY);
        }
        upper += bUpper;
        lower += bLower;
    }
}

void COutliner::CloseSide(const SEnd& end, int nY)
{
    AddCorner(end.nX, nY);
    const auto nCorner = static_cast<std::uint32_t>(m_corners.size() - 1);
    m_corners[nCorner].nUpright = end.nTop;
    m_corners[end.nTop].nUpright = nCorner;
    m_nLeft = end.nTop;
}

void COutliner::OpenSide(SEnd& end, int nY)
{
    AddCorner(end.nX, nY);
    m_nLeft = end.nTop = static_cast<std::uint32_t>(m_corners.size() - 1);
}

void COutliner::AddCorner(int nX, int nY)
{
    const auto nCorner = static_cast<std::uint32_t>(m_corners.size());
    SCorner corner{nX, nY};
    corner.nLeft = m_nLeft;
    corner.nLevel = m_nBegun;
    if (m_nBegun != kNone)
        m_corners[m_nBegun].nLevel = nCorner;
    m_nBegun = m_nBegun == kNone ? nCorner : kNone;
    m_corners.push_back(corner);
}

/// @return the corner before the first one
std::uint32_t COutliner::FollowLoop(std::uint32_t nFirst)
{
    for (std::uint32_t nAt = nFirst;;) {
        const std::uint32_t nAcross = m_corners[nAt].nLevel;
        m_corners[nAt].nNext = nAcross;
        const std::uint32_t nNext = m_corners[nAcross].nUpright;
        m_corners[nAcross].nNext = nNext;
        if (nNext == nFirst)
            return nAcross;
        nAt = nNext;
    }
}

/// The first loop is the outer one. Every other is a hole, whose first corner is its topmost, of these the
/// leftmost one; so what lies to the left of it belongs to a loop that came before.
void COutliner::JoinLoops()
{
    const auto nCorners = static_cast<std::uint32_t>(m_corners.size());
    for (std::uint32_t nFirst = 0; nFirst < nCorners; ++nFirst) {
        if (m_corners[nFirst].nNext != kNone)
            continue;
        const std::uint32_t nLast = FollowLoop(nFirst);
        if (nFirst != 0)
            JoinHole(nFirst, nLast);
    }
}

/// A way from the upright side on the left, from whose upper end on, to the hole, and back.
void COutliner::JoinHole(std::uint32_t nFirst, std::uint32_t nLast)
{
    const std::uint32_t nFrom = m_corners[nFirst].nLeft;
    const int nX = m_corners[nFrom].nX;
    const int nY = m_corners[nFirst].nY;
    const std::uint32_t nBack = Copy(nFrom, nX, m_corners[nFrom].nY);
    const std::uint32_t nUp = Copy(nBack, nX, nY);
    const std::uint32_t nEnd = Copy(nUp, m_corners[nFirst].nX, nY);
    const std::uint32_t nThere = Copy(nFirst, nX, nY);
    m_corners[nBack].nNext = m_corners[nFrom].nNext;
    m_corners[nUp].nNext = nBack;
    m_corners[nEnd].nNext = nUp;
    m_corners[nLast].nNext = nEnd;
    m_corners[nThere].nNext = nFirst;
    m_corners[nFrom].nNext = nThere;
}

std::uint32_t COutliner::Copy(std::uint32_t nNext, int nX, int nY)
{
    SCorner corner{nX, nY};
    corner.nNext = nNext;
    m_corners.push_back(corner);
    return static_cast<std::uint32_t>(m_corners.size() - 1);
}

std::shared_ptr<Geometry::CPolygon> COutliner::Polygon() const
{
    std::vector<CPoint<double>> vertices;
    vertices.reserve(m_corners.size());
    const SCorner* pBefore = nullptr;
    std::uint32_t nAt = 0;
    do {
        const SCorner& corner = m_corners[nAt];
        if (!pBefore || pBefore->nX != corner.nX || pBefore->nY != corner.nY)
            vertices.emplace_back(corner.nX, corner.nY);
        pBefore = &corner;
        nAt = corner.nNext;
    } while (nAt != 0);
    auto polygon = std::make_shared<Geometry::CPolygon>();
    polygon->SetVertices(std::move(vertices));
    return polygon;
}
} // namespace

std::shared_ptr<Geometry::CPolygon> OutlineOf(const PixelRuns& runs, ENeighbours neighbours)
{
    COutliner outliner(neighbours);
    outliner.Trace(runs);
    outliner.JoinLoops();
    return outliner.Polygon();
}

} // namespace Vantor::Algorithms
