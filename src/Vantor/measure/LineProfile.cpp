// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/LineProfile.h>

#include <Vantor/CProgress.h>
#include <Vantor/Result_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/measure/RegionStatistics.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>

namespace Vantor::Algorithms
{

using Geometry::SPlace;

namespace
{
constexpr int kMaxWidth = 10000;
constexpr double kMostReads = 134217728.0; // 2^27
constexpr double kHalfPixel = 0.5;

/// The sum of the values of the channels at some places in the image, and their number.
struct SSum {
    std::array<double, 4> values{};
    int nPlaces = 0;
};

class CSampler
{
public:
    CSampler(const CImage& image, ESampling sampling)
        : m_pRows(image.GetRows()), m_nWidth(image.GetWidth()), m_nHeight(image.GetHeight()),
          m_nChannels(image.GetChannel()), m_bWide(image.GetBitDepth() == 16), m_eSampling(sampling)
    {
    }

    /// Adds the values at a place, if that lies in the image or on its edge.
    void Add(const SPlace& place, SSum& sum) const
    {
        if (!(place.x >= 0.0 && place.x <= m_nWidth && place.y >= 0.0 && place.y <= m_nHeight))
            return;
        ++sum.nPlaces;
        if (m_eSampling == ESampling::Nearest)
            AddPixel(place.x, place.y, 1.0, sum);
        else
            AddBetween(place.x - kHalfPixel, place.y - kHalfPixel, sum);
    }

private:
    /// The pixel in which the place lies, or the nearest one.
    void AddPixel(double x, double y, double weight, SSum& sum) const
    {
        const int nColumn = std::clamp(static_cast<int>(std::floor(x)), 0, m_nWidth - 1);
        const int nRow = std::clamp(static_cast<int>(std::floor(y)), 0, m_nHeight - 1);
        const std::ptrdiff_t nSample = std::ptrdiff_t(nColumn) * m_nChannels;
        for (int c = 0; c < m_nChannels; ++c) {
            const int nValue = m_bWide ? reinterpret_cast<const std::uint16_t*>(m_pRows[nRow])[nSample + c]
                                       : m_pRows[nRow][nSample + c];
            sum.values[static_cast<std::size_t>(c)] += weight * nValue;
        }
    }
    void AddBetween(double x, double y, SSum& sum) const
    {
        const double left = std::floor(x);
        const double top = std::floor(y);
        const double right = x - left;
        const double below = y - top;
        AddPixel(left, top, (1.0 - right) * (1.0 - below), sum);
        AddPixel(left + 1.0, top, right * (1.0 - below), sum);
        AddPixel(left, top + 1.0, (1.0 - right) * below, sum);
        AddPixel(left + 1.0, top + 1.0, right * below, sum);
    }

    const unsigned char* const* m_pRows;
    int m_nWidth;
    int m_nHeight;
    int m_nChannels;
    bool m_bWide;
    ESampling m_eSampling;
};

/// A straight piece of the line, not of length 0 unless the whole line is.
struct SPiece {
    SPlace start;
    SPlace way; ///< of one pixel of length
    double first;
    double length;
    double units;     ///< distance of the start along the line
    double unitsEach; ///< units of one pixel of length
};

CResult FindPieces(const std::vector<SPlace>& line, const CCalibration& calibration,
                   std::vector<SPiece>& pieces, double& length)
{
    if (line.size() < 2)
        return CResult::Failure("A profile needs a line of two places at least.");
    length = 0.0;
    double units = 0.0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double dx = line[i].x - line[i - 1].x;
        const double dy = line[i].y - line[i - 1].y;
        const double piece = std::hypot(dx, dy);
        if (!std::isfinite(piece))
            return CResult::Failure("The line is not finite.");
        if (piece > 0.0) {
            const double whole = calibration.GetLength(dx, dy);
            pieces.push_back({line[i - 1], {dx / piece, dy / piece}, length, piece, units, whole / piece});
            length += piece;
            units += whole;
        }
    }
    if (pieces.empty())
        pieces.push_back({line[0], {1.0, 0.0}, 0.0, 0.0, 0.0, 0.0});
    return CResult::Success();
}

CResult Check(const CImage& image, const SProfileOptions& options)
{
    if (!image.GetRows())
        return CResult::Failure("The image is empty.");
    if (options.width < 1 || options.width > kMaxWidth)
        return CResult::Failure("The width of a profile is not from 1 to 10000 pixels.");
    if (options.sampling != ESampling::Nearest && options.sampling != ESampling::Bilinear)
        return CResult::Failure("The way of sampling is unknown.");
    return CResult::Success();
}

SSum SumAcross(const CSampler& sampler, const SPiece& piece, double along, int width)
{
    SSum sum;
    for (int i = 0; i < width; ++i) {
        const double aside = i - (width - 1) / 2.0;
        sampler.Add({piece.start.x + along * piece.way.x - aside * piece.way.y,
                     piece.start.y + along * piece.way.y + aside * piece.way.x},
                    sum);
    }
    return sum;
}

CResult Take(const CImage& image, const std::vector<SPlace>& line, const SProfileOptions& options,
             const CCalibration& calibration, SLineProfile& profile)
{
    CResult checked = Check(image, options);
    if (!checked.IsSuccess())
        return checked;
    std::vector<SPiece> vctPieces;
    double length = 0.0;
    CResult found = FindPieces(line, calibration, vctPieces, length);
    if (!found.IsSuccess())
        return found;
    const double steps = std::max(1.0, std::round(length));
    if (!((steps + 1.0) * options.width <= kMostReads))
        return CResult::Failure("The line is too long for a profile.");
    const CSampler sampler(image, options.sampling);
    const std::size_t nSteps = static_cast<std::size_t>(steps);
    profile.channels.resize(static_cast<std::size_t>(image.GetChannel()));
    std::size_t nPiece = 0;
    for (std::size_t i = 0; i <= nSteps; ++i) {
        if (CProgress::IsThreadCancelled())
            return CResult::Failure(kCancelled);
        const double place = length * static_cast<double>(i) / steps;
        while (nPiece + 1 < vctPieces.size() && place >= vctPieces[nPiece + 1].first)
            ++nPiece;
        const SPiece& piece = vctPieces[nPiece];
        const double along = std::min(place - piece.first, piece.length);
        const SSum sum = SumAcross(sampler, piece, along, options.width);
        profile.positions.push_back(piece.units + along * piece.unitsEach);
        for (std::size_t c = 0; c < profile.channels.size(); ++c)
            profile.channels[c].push_back(sum.nPlaces > 0 ? sum.values[c] / sum.nPlaces : kUndefined);
    }
    return CResult::Success();
}
} // namespace

SLineProfile TakeProfile(const CImage& image, const std::vector<SPlace>& line, const SProfileOptions& options,
                         const CCalibration& calibration)
{
    try {
        SLineProfile profile;
        const CResult result = Take(image, line, options, calibration, profile);
        if (!result.IsSuccess())
            profile = {result.GetReason(), {}, {}};
        return profile;
    } catch (const std::bad_alloc&) {
        SLineProfile profile;
        profile.failure = "Out of memory.";
        return profile;
    }
}

} // namespace Vantor::Algorithms
