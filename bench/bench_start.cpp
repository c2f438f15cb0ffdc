// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// From the start of a process to its first painted frame: the host's main window against an empty Qt window,
// CPU time and peak memory of each process, which it reports itself. Needs a display: tools/xrun.
#include "bench/BenchSupport.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

/// A home folder of its own, and no other folder for user files.
class CHome
{
public:
    CHome()
    {
        std::string strPath = (fs::temp_directory_path() / "vantor_start_XXXXXX").string();
        if (!::mkdtemp(strPath.data()))
            std::abort();
        m_path = strPath;
        ::setenv("HOME", m_path.c_str(), 1);
        for (const char* szName : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            ::unsetenv(szName);
    }
    ~CHome() { Clear(); }
    CHome(const CHome&) = delete;
    CHome& operator=(const CHome&) = delete;

    void Clear() const
    {
        for (const auto& entry : fs::directory_iterator(m_path))
            fs::remove_all(entry);
    }
    bool IsUsed() const
    {
        for (const auto& entry : fs::recursive_directory_iterator(m_path)) {
            if (entry.path().filename() == "settings.data")
                return true;
        }
        return false;
    }

private:
    fs::path m_path;
};

/// The programs of the benchmark's folder.
constexpr std::array<const char*, 2> kHost{"start_host", nullptr};
constexpr std::array<const char*, 2> kEmpty{"start_empty", nullptr};
constexpr std::array<const char*, 2> kRaster{"start_empty", "raster"};

/// The costs of several starts of a program.
struct SCosts {
    std::array<const char*, 2> arrCommand;
    std::vector<double> vctMs;
    std::vector<double> vctMb;
};

/// Runs a program. @return false when it did not report
bool Run(SCosts& costs)
{
    int ends[2];
    const char* szName = costs.arrCommand[0];
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / szName;
    if (::pipe(ends) != 0)
        return false;
    // The memory of a forked process before it becomes another program counts towards its peak: little, here.
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(program.c_str(), szName, costs.arrCommand[1], static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(ends[1]);
    FILE* pOutput = ::fdopen(ends[0], "r");
    double dMs = 0.0; // user and system
    double dMb = 0.0; // peak of the resident memory
    const bool bRead = pOutput && std::fscanf(pOutput, "%lf %lf", &dMs, &dMb) == 2;
    if (pOutput)
        std::fclose(pOutput);
    costs.vctMs.push_back(dMs);
    costs.vctMb.push_back(dMb);
    int nStatus = 0;
    return child > 0 && ::waitpid(child, &nStatus, 0) == child && bRead && nStatus == 0;
}

/// Starts all in turn. The home folder was used before, or is new for each host.
void Start(benchmark::State& state, bool bUsed)
{
    const CHome home;
    SCosts once{kHost, {}, {}};
    SCosts host{kHost, {}, {}};
    SCosts empty{kEmpty, {}, {}};
    SCosts raster{kRaster, {}, {}};
    bool bRun = Run(once) && home.IsUsed();
    for (auto _ : state) {
        if (!bUsed)
            home.Clear();
        bRun = bRun && Run(host) && Run(empty) && Run(raster);
        if (!bRun) {
            state.SkipWithError("a program did not start, or the host has left no settings");
            break;
        }
        state.SetIterationTime(host.vctMs.back() / 1e3);
    }
    state.counters["ours_ms"] = VantorBench::MedianOf(host.vctMs);
    state.counters["peer_ms"] = VantorBench::MedianOf(empty.vctMs);
    state.counters["limit_ms"] = VantorBench::MedianOf(raster.vctMs);
    state.counters["x_peer"] = VantorBench::MedianRatioOf(host.vctMs, empty.vctMs);
    state.counters["x_limit"] = VantorBench::MedianRatioOf(host.vctMs, raster.vctMs);
    state.counters["ours_mb"] = VantorBench::MedianOf(host.vctMb);
    state.counters["peer_mb"] = VantorBench::MedianOf(empty.vctMb);
    state.counters["limit_mb"] = VantorBench::MedianOf(raster.vctMb);
}

void StartAgain(benchmark::State& state)
{
    Start(state, true);
}
void FirstStart(benchmark::State& state)
{
    Start(state, false);
}
} // namespace

BENCHMARK(StartAgain)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);
BENCHMARK(FirstStart)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
