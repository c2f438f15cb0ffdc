// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

/// Compares an operation with a peer and with the limit of the machine, in the same run.
namespace VantorBench
{

using Callable = std::function<void()>;

inline double SecondsOf(const Callable& callable)
{
    const auto start = std::chrono::steady_clock::now();
    callable();
    benchmark::ClobberMemory();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double MedianOf(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The median of a[i] / b[i].
inline double MedianRatioOf(const std::vector<double>& a, const std::vector<double>& b)
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        ratios.push_back(a[i] / b[i]);
    return MedianOf(std::move(ratios));
}

/// Runs ours, the peer and the limit in turn, one round of all per iteration, after one uncounted round, and
/// reports as counters the medians in milliseconds (ours_ms, peer_ms, limit_ms) and the medians of the ratios
/// of each round (x_peer = ours / peer, x_limit = ours / limit). Skips an empty callable. Does not time the
/// preparation of ours. The benchmark needs UseManualTime(): its time is that of ours.
inline void Compare(benchmark::State& state, const Callable& ours, const Callable& peer = {},
                    const Callable& limit = {}, const Callable& prepare = {})
{
    std::vector<double> vctOurs, vctPeer, vctLimit;
    for (const Callable* pCallable : {&prepare, &ours, &peer, &limit}) {
        if (*pCallable)
            (*pCallable)();
    }
    for (auto _ : state) {
        if (prepare)
            prepare();
        vctOurs.push_back(SecondsOf(ours));
        if (peer)
            vctPeer.push_back(SecondsOf(peer));
        if (limit)
            vctLimit.push_back(SecondsOf(limit));
        state.SetIterationTime(vctOurs.back());
    }
    constexpr double kMilliseconds = 1e3;
    state.counters["ours_ms"] = MedianOf(vctOurs) * kMilliseconds;
    if (peer) {
        state.counters["peer_ms"] = MedianOf(vctPeer) * kMilliseconds;
        state.counters["x_peer"] = MedianRatioOf(vctOurs, vctPeer);
    }
    if (limit) {
        state.counters["limit_ms"] = MedianOf(vctLimit) * kMilliseconds;
        state.counters["x_limit"] = MedianRatioOf(vctOurs, vctLimit);
    }
}

} // namespace VantorBench
