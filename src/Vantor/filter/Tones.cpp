// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Tones_p.h>

#include <algorithm>
#include <cmath>

namespace Vantor::Algorithms
{

namespace
{
constexpr double kWhite = 255.0;

/// Maps one band.
struct SBandMap {
    const SFilterJob* pJob;
    SBand band;
    const ToneTable* pTable;

    void Run() const
    {
        const int nChannels = pJob->nChannels;
        const bool bAlpha = nChannels % 2 == 0;
        for (const Geometry::SPixelRun* pRun = band.pBegin; pRun != band.pEnd && TellRun(band, pRun);
             ++pRun) {
            unsigned char* pRow = pJob->pRows[pRun->nRow];
            const std::ptrdiff_t nEnd = std::ptrdiff_t(pRun->nEnd) * nChannels;
            for (std::ptrdiff_t i = std::ptrdiff_t(pRun->nBegin) * nChannels; i < nEnd; ++i) {
                if (!bAlpha || i % nChannels != nChannels - 1)
                    pRow[i] = (*pTable)[pRow[i]];
            }
        }
    }
};
} // namespace

ToneTable InvertedTones()
{
    ToneTable table;
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(table.size() - 1 - i);
    return table;
}

ToneTable AdjustedTones(double brightness, double contrast, double gamma)
{
    ToneTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double value =
            std::clamp((static_cast<double>(i) / kWhite - 0.5) * contrast + 0.5 + brightness, 0.0, 1.0);
        table[i] = static_cast<unsigned char>(std::lround(kWhite * std::pow(value, 1.0 / gamma)));
    }
    return table;
}

void MapTones(const SFilterJob& job, const ToneTable& table)
{
    std::vector<SBandMap> vctMaps;
    for (const SBand& band : MakeBands(job.runs))
        vctMaps.push_back({&job, band, &table});
    RunWorkers(vctMaps);
}

} // namespace Vantor::Algorithms
