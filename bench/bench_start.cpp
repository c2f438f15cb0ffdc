// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// From the start of a process to its first painted frame: the host's main window against an empty Qt window,
// CPU time and peak memory of each process as it reports them itself. Needs a display: tools/xrun.
#include "bench/BenchSupport.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

struct SCost {
    double dMs = 0.0; ///< user and system
    double dMb = 0.0; ///< peak of the resident memory
};

/// A home folder of its own, and no other place for the files of a user.
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

/// Runs a program of the benchmark's folder. @return false when it did not report
bool Run(const char* name, SCost& cost)
{
    int ends[2];
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / name;
    if (::pipe(ends) != 0)
        return false;
    // What a forked process holds before it becomes another program counts for its peak: little, here.
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(program.c_str(), name, static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(ends[1]);
    FILE* pOutput = ::fdopen(ends[0], "r");
    const bool bRead = pOutput && std::fscanf(pOutput, "%lf %lf", &cost.dMs, &cost.dMb) == 2;
    if (pOutput)
        std::fclose(pOutput);
    int nStatus = 0;
    return child > 0 && ::waitpid(child, &nStatus, 0) == child && bRead && nStatus == 0;
}

/// Both in turn. The home folder has been used by both before, or is new to each host.
void Start(benchmark::State& state, bool bUsed)
{
    const CHome home;
    SCost host, empty;
    std::vector<double> vctHost, vctEmpty, vctHostMb, vctEmptyMb;
    bool bRun = Run("start_host", host) && Run("start_empty", empty) && home.IsUsed();
    for (auto _ : state) {
        if (!bUsed)
            home.Clear();
        bRun = bRun && Run("start_host", host) && Run("start_empty", empty);
        if (!bRun) {
            state.SkipWithError("a program did not start, or the host has left no settings");
            break;
        }
        vctHost.push_back(host.dMs);
        vctEmpty.push_back(empty.dMs);
        vctHostMb.push_back(host.dMb);
        vctEmptyMb.push_back(empty.dMb);
        state.SetIterationTime(host.dMs / 1e3);
    }
    state.counters["ours_ms"] = VantorBench::MedianOf(vctHost);
    state.counters["peer_ms"] = VantorBench::MedianOf(vctEmpty);
    state.counters["x_peer"] = VantorBench::MedianRatioOf(vctHost, vctEmpty);
    state.counters["ours_mb"] = VantorBench::MedianOf(vctHostMb);
    state.counters["peer_mb"] = VantorBench::MedianOf(vctEmptyMb);
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
