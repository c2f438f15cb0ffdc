// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/model/ObjectOrder_p.h>

#include <algorithm>
#include <unordered_map>

namespace
{
/// For each number whether it belongs to a longest rising row of them.
std::vector<bool> LongestRising(const std::vector<std::size_t>& vctNumbers)
{
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::vector<std::size_t> vctEnds; // where the lowest end of a row of each length stands
    std::vector<std::size_t> vctBefore(vctNumbers.size(), kNone);
    for (std::size_t i = 0; i < vctNumbers.size(); ++i) {
        const auto it = std::lower_bound(
            vctEnds.begin(), vctEnds.end(), vctNumbers[i],
            [&](std::size_t nEnd, std::size_t nNumber) { return vctNumbers[nEnd] < nNumber; });
        if (it != vctEnds.begin())
            vctBefore[i] = *(it - 1);
        if (it == vctEnds.end())
            vctEnds.push_back(i);
        else
            *it = i;
    }
    std::vector<bool> vctRising(vctNumbers.size(), false);
    for (std::size_t i = vctEnds.empty() ? kNone : vctEnds.back(); i != kNone; i = vctBefore[i])
        vctRising[i] = true;
    return vctRising;
}
} // namespace

ObjectOrder::ObjectList ObjectOrder::Moved(const ObjectList& vctFrom, const ObjectList& vctTo)
{
    const auto [itFrom, itTo] = std::mismatch(vctFrom.begin(), vctFrom.end(), vctTo.begin(), vctTo.end());
    const auto nSame = std::mismatch(vctFrom.rbegin(), std::make_reverse_iterator(itFrom), vctTo.rbegin(),
                                     std::make_reverse_iterator(itTo))
                           .first -
                       vctFrom.rbegin();
    std::unordered_map<const CImageView2DDrawableObject*, std::size_t> places;
    for (auto it = itFrom; it != vctFrom.end() - nSame; ++it)
        places.emplace(it->get(), places.size());
    std::vector<std::size_t> vctPlaces;
    for (auto it = itTo; it != vctTo.end() - nSame; ++it)
        vctPlaces.push_back(places[it->get()]);
    const auto vctStays = LongestRising(vctPlaces);
    ObjectList vctMoved;
    for (std::size_t i = 0; i < vctStays.size(); ++i)
        if (!vctStays[i])
            vctMoved.push_back(itTo[static_cast<std::ptrdiff_t>(i)]);
    return vctMoved;
}
