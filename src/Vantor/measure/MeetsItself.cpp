// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/OutlineMath_p.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

namespace Vantor::Algorithms
{

using Geometry::SPlace;

namespace
{
bool IsBefore(const SPlace& a, const SPlace& b)
{
    return std::tie(a.x, a.y) < std::tie(b.x, b.y);
}

/// A side of the chain, from its first to its last place in the order of the sweep.
struct SSide {
    SPlace first;
    SPlace last;
    std::size_t nIndex;
};

/// Which of two sides lies above the other where the sweep has both. Sides on one line are equal.
struct SAbove {
    bool operator()(const SSide* a, const SSide* b) const
    {
        if (IsBefore(b->first, a->first))
            return Side(*b, *a) < 0.0L;
        return Side(*a, *b) > 0.0L;
    }
    /// > 0 when the later side lies to the left of the earlier one.
    static long double Side(const SSide& earlier, const SSide& later)
    {
        const long double first = Turn(earlier.first, earlier.last, later.first);
        return first != 0.0L ? first : Turn(earlier.first, earlier.last, later.last);
    }
};

bool AreApart(const SSide& a, const SSide& b)
{
    const auto sign = [](long double value) { return (value > 0.0L) - (value < 0.0L); };
    const int nA1 = sign(Turn(a.first, a.last, b.first));
    const int nA2 = sign(Turn(a.first, a.last, b.last));
    const int nB1 = sign(Turn(b.first, b.last, a.first));
    const int nB2 = sign(Turn(b.first, b.last, a.last));
    if (nA1 == 0 && nA2 == 0) // on one line
        return IsBefore(a.last, b.first) || IsBefore(b.last, a.first);
    return nA1 * nA2 > 0 || nB1 * nB2 > 0;
}

/// Whether two sides share more than the place where one follows the other.
bool DoMeet(const SSide& a, const SSide& b, std::size_t sides)
{
    const bool bNeighbours = (a.nIndex + 1) % sides == b.nIndex || (b.nIndex + 1) % sides == a.nIndex;
    if (!bNeighbours)
        return !AreApart(a, b);
    const bool bOnOneLine = Turn(a.first, a.last, b.first) == 0.0L && Turn(a.first, a.last, b.last) == 0.0L;
    return bOnOneLine && IsBefore(a.first, b.last) && IsBefore(b.first, a.last);
}

bool HasEqualPlaces(Places places)
{
    std::sort(places.begin(), places.end(), IsBefore);
    return std::adjacent_find(places.begin(), places.end(), [](const SPlace& a, const SPlace& b) {
               return a.x == b.x && a.y == b.y;
           }) != places.end();
}

/// A side begins or ends. Where several meet, the ends come first.
struct SEvent {
    const SPlace* pPlace;
    bool bBegins;
    std::size_t nSide;

    bool operator<(const SEvent& other) const
    {
        if (IsBefore(*pPlace, *other.pPlace) || IsBefore(*other.pPlace, *pPlace))
            return IsBefore(*pPlace, *other.pPlace);
        return std::tie(bBegins, nSide) < std::tie(other.bBegins, other.nSide);
    }
};
} // namespace

bool MeetsItself(const Places& chain)
{
    const std::size_t nSides = chain.size();
    if (nSides < 3)
        return false;
    // The sweep does not see sides that end where others begin.
    if (HasEqualPlaces(chain))
        return true;
    std::vector<SSide> vctSides;
    std::vector<SEvent> vctEvents;
    vctSides.reserve(nSides);
    for (std::size_t i = 0; i < nSides; ++i) {
        const SPlace& to = chain[(i + 1) % nSides];
        const bool bForward = IsBefore(chain[i], to);
        vctSides.push_back({bForward ? chain[i] : to, bForward ? to : chain[i], i});
        vctEvents.push_back({&vctSides.back().first, true, i});
        vctEvents.push_back({&vctSides.back().last, false, i});
    }
    std::sort(vctEvents.begin(), vctEvents.end());

    using Sweep = std::set<const SSide*, SAbove>;
    Sweep sweep;
    std::vector<Sweep::iterator> vctPlaces(nSides);
    const auto meet = [nSides](const SSide* a, const SSide* b) { return DoMeet(*a, *b, nSides); };
    for (const SEvent& event : vctEvents) {
        if (event.bBegins) {
            const auto [it, bInserted] = sweep.insert(&vctSides[event.nSide]);
            if (!bInserted)
                return true;
            const auto next = std::next(it);
            if ((it != sweep.begin() && meet(*std::prev(it), *it)) ||
                (next != sweep.end() && meet(*it, *next)))
                return true;
            vctPlaces[event.nSide] = it;
        } else {
            const auto next = sweep.erase(vctPlaces[event.nSide]);
            if (next != sweep.begin() && next != sweep.end() && meet(*std::prev(next), *next))
                return true;
        }
    }
    return false;
}

} // namespace Vantor::Algorithms
