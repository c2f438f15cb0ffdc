// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>

namespace Vantor::Algorithms
{

/// Decides for each piece of fresh memory, of the size of a large page, whether to ask for a large page; it
/// does while they are cheap. On a virtual machine whose host reclaims idle memory, the first touch of a
/// large page may cost twenty times its usual price, and several times the price of small pages, which the
/// system used a moment ago. Any thread.
class CLargePages
{
public:
    using Cost = std::chrono::nanoseconds;

    /// A piece of small pages (4 KiB each) costs about this; a cheap large page costs a fifth of it.
    static constexpr Cost kDear = std::chrono::milliseconds(1);
    /// What one expensive page may add to each of the small pieces after it: some percent of their own cost.
    static constexpr Cost kShare = std::chrono::microseconds(40);

    /// Whether the next piece is to be a large page.
    bool WantsLarge()
    {
        if (m_nSmall.load(std::memory_order_relaxed) <= 0)
            return true;
        m_nSmall.fetch_sub(1, std::memory_order_relaxed);
        return false;
    }
    /// Records what the first touch of a large page cost. After an expensive one it makes as many pieces
    /// small as balance that cost, then tries a large page again.
    void NoteCost(Cost cost)
    {
        if (cost > kDear)
            m_nSmall.store(static_cast<int>(std::min(cost, kLongest) / kShare), std::memory_order_relaxed);
    }

private:
    static constexpr Cost kLongest = std::chrono::seconds(1);

    std::atomic<int> m_nSmall{0}; ///< pieces that are still to be small
};

} // namespace Vantor::Algorithms
