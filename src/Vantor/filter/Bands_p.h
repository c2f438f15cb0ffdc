// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CProgress.h>
#include <Vantor/filter/Region_p.h>

#include <cstddef>
#include <system_error>
#include <thread>

namespace Vantor::Algorithms
{

/// The pixels that a filter works on: the image's rows and, in ascending order, the runs to write.
struct SFilterJob {
    unsigned char* const* pRows;
    int nWidth;
    int nHeight;
    int nChannels;
    const PixelRuns& runs;
};

/// Consecutive runs of whole rows, at least one.
struct SBand {
    const Geometry::SPixelRun* pBegin;
    const Geometry::SPixelRun* pEnd;

    int FirstRow() const { return pBegin->nRow; }
    int LastRow() const { return pEnd[-1].nRow; }
};

/// All runs of a job; there may be none.
inline SBand WholeOf(const SFilterJob& job)
{
    return {job.runs.data(), job.runs.data() + job.runs.size()};
}

/// The columns from the leftmost to the rightmost pixel of some runs; empty is nBegin >= nEnd.
struct SColumns {
    int nBegin;
    int nEnd;

    void Include(const SColumns& other);
};

/// Cuts the runs into one band, or into two of about the same number of pixels when a second thread pays for
/// a region of this size and the process may use a second processor.
std::vector<SBand> MakeBands(const PixelRuns& runs);

/// The columns of all runs of a band, which holds at least one.
SColumns ColumnsOf(const SBand& band);

/// Tells how much of a band is done before a run of it begins. @return whether to go on
inline bool TellRun(const SBand& band, const Geometry::SPixelRun* pRun)
{
    return CProgress::Tell(static_cast<double>(pRun - band.pBegin) /
                           static_cast<double>(band.pEnd - band.pBegin));
}

/// Calls visit(pixel, row, column) for every pixel of a band, in order, until the thread's work is to end.
template <class Visit> void ForEachPixel(const SFilterJob& job, const SBand& band, const Visit& visit)
{
    for (const Geometry::SPixelRun* pRun = band.pBegin; pRun != band.pEnd && !CProgress::IsThreadCancelled();
         ++pRun) {
        unsigned char* pPixel = job.pRows[pRun->nRow] + std::ptrdiff_t(pRun->nBegin) * job.nChannels;
        for (int x = pRun->nBegin; x < pRun->nEnd; ++x, pPixel += job.nChannels)
            visit(pPixel, pRun->nRow, x);
    }
}

/// Calls worker.Run() for one or two workers, the second on a thread of its own if one can be started, which
/// has the progress of this one. Run() must not throw.
template <class Worker> void RunWorkers(std::vector<Worker>& workers)
{
    std::thread second;
    if (workers.size() > 1) {
        try {
            second = std::thread([&workers, pProgress = CProgress::OfThread()] {
                const CProgress::CScope scope(pProgress);
                workers[1].Run();
            });
        } catch (const std::system_error&) {
            workers[1].Run();
        }
    }
    if (!workers.empty())
        workers[0].Run();
    if (second.joinable())
        second.join();
}

} // namespace Vantor::Algorithms
