// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// One log call, alone and from eight threads: CLogger::Write against an asynchronous spdlog logger with a
// sink that writes nothing; the limit is snprintf and a reading of the clock. A figure is the time of a round
// divided by its calls from all threads together. Both queues are emptied between rounds, uncounted.
#include "bench/BenchSupport.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QCoreApplication>
#include <QVariant>

#include <spdlog/async.h>
#include <spdlog/sinks/null_sink.h>

#include <chrono>
#include <cstdio>
#include <thread>

namespace
{
constexpr int kCallsPerRound = 4000; // fewer than fit into the peer's queue, so that it never waits
constexpr int kRounds = 200;
constexpr double kNanoseconds = 1e9;

using OneCall = void (*)(int);

spdlog::logger& Peer()
{
    static const auto pLogger = spdlog::create_async<spdlog::sinks::null_sink_mt>("peer");
    return *pLogger;
}

void CallOurs(int i)
{
    CLogger::Write(WARNING, "Cannot load image %s, line %d", "scan_0001.tif", i);
}

void CallPeer(int i)
{
    Peer().warn("Cannot load image {}, line {}", "scan_0001.tif", i);
}

void CallLimit(int i)
{
    char buffer[1024];
    std::snprintf(buffer, sizeof buffer, "Cannot load image %s, line %d", "scan_0001.tif", i);
    benchmark::DoNotOptimize(buffer);
    benchmark::DoNotOptimize(std::chrono::system_clock::now());
}

void EmptyBoth()
{
    while (!CLogModel::GetInstance()->IsEmpty())
        CLogModel::GetInstance()->slot_OnTimer();
    while (spdlog::thread_pool()->queue_size() > 0)
        std::this_thread::yield();
}

/// The seconds of one call in a round of kCallsPerRound, which the threads share.
double SecondsOfACall(OneCall call, int nThreads)
{
    const auto run = [call, nThreads] {
        for (int i = 0; i < kCallsPerRound / nThreads; ++i)
            call(i);
    };
    const double dblSeconds = VantorBench::SecondsOf([&] {
        std::vector<std::thread> vctThreads;
        for (int i = 1; i < nThreads; ++i)
            vctThreads.emplace_back(run);
        run();
        for (std::thread& thread : vctThreads)
            thread.join();
    });
    EmptyBoth();
    return dblSeconds / kCallsPerRound;
}

void LogCall(benchmark::State& state)
{
    const int nThreads = static_cast<int>(state.range(0));
    std::vector<double> vctOurs, vctPeer, vctLimit;
    for (const OneCall call : {CallOurs, CallPeer, CallLimit})
        SecondsOfACall(call, nThreads);
    for (auto _ : state) {
        vctOurs.push_back(SecondsOfACall(CallOurs, nThreads));
        vctPeer.push_back(SecondsOfACall(CallPeer, nThreads));
        vctLimit.push_back(SecondsOfACall(CallLimit, nThreads));
        state.SetIterationTime(vctOurs.back());
    }
    state.counters["ours_ns"] = VantorBench::MedianOf(vctOurs) * kNanoseconds;
    state.counters["peer_ns"] = VantorBench::MedianOf(vctPeer) * kNanoseconds;
    state.counters["limit_ns"] = VantorBench::MedianOf(vctLimit) * kNanoseconds;
    state.counters["x_peer"] = VantorBench::MedianRatioOf(vctOurs, vctPeer);
    state.counters["x_limit"] = VantorBench::MedianRatioOf(vctOurs, vctLimit);
}
} // namespace

BENCHMARK(LogCall)->ArgName("threads")->Arg(1)->Arg(8)->Iterations(kRounds)->UseManualTime();

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    // A folder that cannot be created, so that the log drains its messages without a file.
    CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"), QStringLiteral("/dev/null/logs"));
    Peer(); // makes the peer's thread pool
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
