// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// This file is compiled once for each instruction set, see filter/engine/RowKernels.cpp. The compiler makes
// constructors of its own for the common one: a structure with vectors has one that is written here.
#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Vantor/measure/engine/SumKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/measure/PixelSums_p.h>
#include <Vantor/measure/engine/SplitKernels_p.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace Vantor::Algorithms
{
namespace HWY_NAMESPACE
{
using Geometry::SPixelRun;

#if HWY_TARGET == HWY_SCALAR // no vector instructions: one pixel at a time

template <class T, int Channels>
void AddRuns(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end, SPixelSums& sums)
{
    for (const SPixelRun* pRun = begin; pRun != end; ++pRun) {
        const T* p =
            reinterpret_cast<const T*>(source.pRows[pRun->nRow]) + std::ptrdiff_t(pRun->nBegin) * Channels;
        for (int x = pRun->nBegin; x < pRun->nEnd; ++x, p += Channels) {
            for (int c = 0; c < Channels; ++c) {
                const std::uint64_t v = p[c];
                sums.arrMin[c] = std::min<std::uint32_t>(sums.arrMin[c], p[c]);
                sums.arrMax[c] = std::max<std::uint32_t>(sums.arrMax[c], p[c]);
                sums.arrSum[c] += v;
                sums.arrSumX[c] += v * static_cast<unsigned>(x);
                sums.arrSumY[c] += v * static_cast<unsigned>(pRun->nRow);
                sums.arrSquares[c] += v * v;
            }
            if constexpr (Channels >= 3) {
                const std::uint32_t r = p[0], g = p[1], b = p[2];
                sums.arrMixed[0] += std::uint64_t(r) * g;
                sums.arrMixed[1] += std::uint64_t(r) * b;
                sums.arrMixed[2] += std::uint64_t(g) * b;
                for (int i = 0; i < 2; ++i) {
                    const std::uint32_t grey =
                        kGreys[i].nRed * r + kGreys[i].nGreen * g + kGreys[i].nBlue * b;
                    sums.arrGreyMin[i] = std::min(sums.arrGreyMin[i], grey);
                    sums.arrGreyMax[i] = std::max(sums.arrGreyMax[i], grey);
                }
            }
        }
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// Vectors of 8 or 16 bits a sample, of samples twice as wide, and of products.
template <class T> using DOf = hn::ScalableTag<T>;
template <class T> using WideSample = hwy::MakeWide<T>;
template <class T> using DWide = hn::Repartition<WideSample<T>, DOf<T>>;
template <class T> using V = hn::Vec<DOf<T>>;
template <class T> using VWide = hn::Vec<DWide<T>>;
using D32 = hn::Repartition<std::uint32_t, DOf<std::uint8_t>>;
using DI16 = hn::Repartition<std::int16_t, DOf<std::uint8_t>>;
using DI32 = hn::Repartition<std::int32_t, DOf<std::uint8_t>>;
using D64 = hn::Repartition<std::uint64_t, DOf<std::uint8_t>>;
using V32 = hn::Vec<D32>;
using VI32 = hn::Vec<DI32>;
using V64 = hn::Vec<D64>;

constexpr D32 kD32;
constexpr DI16 kDI16;
constexpr DI32 kDI32;
constexpr D64 kD64;

/// After that many vectors the lanes are emptied, before one can overflow: a vector adds at most 4 * 255^2 to
/// a lane of 32 bits and 2^31 * 2^18 to one of 64; a piece of a row adds up to less than 2^32 in a lane.
constexpr int kMostVectors = 512;

/// The samples of a vector in the even and in the odd places, each as wide as two.
template <class T> struct SHalves {
    VWide<T> even;
    VWide<T> odd;
};

template <class T> HWY_INLINE SHalves<T> HalvesOf(V<T> v)
{
    constexpr DWide<T> d;
    const auto wide = hn::BitCast(d, v);
    return {hn::And(wide, hn::Set(d, hwy::LimitsMax<T>())), hn::ShiftRight<sizeof(T) * 8>(wide)};
}

/// The sum of the two numbers of 32 bits in each lane of 64.
HWY_INLINE V64 Folded(V32 v)
{
    const V64 pair = hn::BitCast(kD64, v);
    return hn::Add(hn::And(pair, hn::Set(kD64, 0xFFFFFFFFu)), hn::ShiftRight<32>(pair));
}

HWY_INLINE V64 SumsIn64(V<std::uint8_t> v, const SHalves<std::uint8_t>&)
{
    return hn::SumsOf8(v);
}
HWY_INLINE V64 SumsIn64(V<std::uint16_t>, const SHalves<std::uint16_t>& halves)
{
    return Folded(hn::Add(halves.even, halves.odd));
}

/// Sums of products of samples, in lanes that kMostVectors cannot fill.
template <class T> struct SProducts;

template <> struct SProducts<std::uint8_t> {
    VI32 sum;
    VI32 more;

    HWY_INLINE SProducts() { sum = more = hn::Zero(kDI32); }
    HWY_INLINE void Add(const SHalves<std::uint8_t>& a, const SHalves<std::uint8_t>& b)
    {
        AddHalf(a.even, b.even);
        AddHalf(a.odd, b.odd);
    }
    HWY_INLINE void AddHalf(VWide<std::uint8_t> a, VWide<std::uint8_t> b)
    {
        sum = hn::ReorderWidenMulAccumulate(kDI32, hn::BitCast(kDI16, a), hn::BitCast(kDI16, b), sum, more);
    }
    HWY_INLINE V64 In64() const { return Folded(hn::BitCast(kD32, hn::Add(sum, more))); }
};

template <> struct SProducts<std::uint16_t> {
    V64 sum;

    HWY_INLINE SProducts() { sum = hn::Zero(kD64); }
    HWY_INLINE void Add(const SHalves<std::uint16_t>& a, const SHalves<std::uint16_t>& b)
    {
        const V64 both = hn::Add(Folded(hn::Mul(a.even, b.even)), Folded(hn::Mul(a.odd, b.odd)));
        sum = hn::Add(sum, both);
    }
    HWY_INLINE V64 In64() const { return sum; }
};

/// What is added up of one channel.
template <class T> struct SPlane {
    V<T> min;
    V<T> max;
    V64 piece; ///< sum of the piece of a row that is being added
    V64 sum;
    V64 x; ///< value times column of the vector's first lane
    V64 y;
    SProducts<T> places; ///< value times lane
    SProducts<T> squares;

    HWY_INLINE SPlane()
    {
        min = hn::Set(DOf<T>(), hwy::LimitsMax<T>());
        max = hn::Zero(DOf<T>());
        piece = sum = x = y = hn::Zero(kD64);
    }
};

/// The extremes of the two greys, as whole numbers.
template <class T> struct SGreys;

/// Sums of three fit 16 bits; weighted ones need 32.
template <> struct SGreys<std::uint8_t> {
    using VW = VWide<std::uint8_t>;
    VW min;
    VW max;
    VI32 weightedMin;
    VI32 weightedMax;

    HWY_INLINE SGreys()
    {
        min = hn::Set(DWide<std::uint8_t>(), 0xFFFF);
        max = hn::Zero(DWide<std::uint8_t>());
        weightedMin = hn::Set(kDI32, INT32_MAX);
        weightedMax = hn::Zero(kDI32);
    }

    /// @param Minimum  whether these are the samples of which the minimum is wanted, or those for the maximum
    template <bool Minimum> HWY_INLINE void Add(const SHalves<std::uint8_t>* v)
    {
        AddHalf<Minimum>(v[0].even, v[1].even, v[2].even);
        AddHalf<Minimum>(v[0].odd, v[1].odd, v[2].odd);
    }
    template <bool Minimum> HWY_INLINE void AddHalf(VW r, VW g, VW b)
    {
        constexpr DWide<std::uint8_t> d;
        const VW sum = hn::Add(hn::Add(r, g), b);
        const VW none = hn::Zero(d);
        const VI32 low = Weighted(hn::InterleaveLower(d, r, g), hn::InterleaveLower(d, b, none));
        const VI32 high = Weighted(hn::InterleaveUpper(d, r, g), hn::InterleaveUpper(d, b, none));
        if constexpr (Minimum) {
            min = hn::Min(min, sum);
            weightedMin = hn::Min(weightedMin, hn::Min(low, high));
        } else {
            max = hn::Max(max, sum);
            weightedMax = hn::Max(weightedMax, hn::Max(low, high));
        }
    }
    static HWY_INLINE VI32 Weighted(VW redGreen, VW blue)
    {
        constexpr SGreyWeights kWeights = kGreys[1];
        const VI32 both = hn::Set(kDI32, int(kWeights.nRed | kWeights.nGreen << 16));
        VI32 more = hn::Zero(kDI32);
        VI32 sum = hn::ReorderWidenMulAccumulate(kDI32, hn::BitCast(kDI16, blue),
                                                 hn::Set(kDI16, std::int16_t(kWeights.nBlue)),
                                                 hn::Zero(kDI32), more);
        sum = hn::ReorderWidenMulAccumulate(kDI32, hn::BitCast(kDI16, redGreen), hn::BitCast(kDI16, both),
                                            sum, more);
        return hn::Add(sum, more);
    }
};

template <> struct SGreys<std::uint16_t> {
    V32 min;
    V32 max;
    V32 weightedMin;
    V32 weightedMax;

    HWY_INLINE SGreys()
    {
        min = weightedMin = hn::Set(kD32, UINT32_MAX);
        max = weightedMax = hn::Zero(kD32);
    }

    template <bool Minimum> HWY_INLINE void Add(const SHalves<std::uint16_t>* v)
    {
        AddHalf<Minimum>(v[0].even, v[1].even, v[2].even);
        AddHalf<Minimum>(v[0].odd, v[1].odd, v[2].odd);
    }
    template <bool Minimum> HWY_INLINE void AddHalf(V32 r, V32 g, V32 b)
    {
        constexpr SGreyWeights kWeights = kGreys[1];
        const V32 sum = hn::Add(hn::Add(r, g), b);
        const V32 weighted = hn::Add(
            hn::Mul(r, hn::Set(kD32, kWeights.nRed)),
            hn::Add(hn::Mul(g, hn::Set(kD32, kWeights.nGreen)), hn::Mul(b, hn::Set(kD32, kWeights.nBlue))));
        if constexpr (Minimum) {
            min = hn::Min(min, sum);
            weightedMin = hn::Min(weightedMin, weighted);
        } else {
            max = hn::Max(max, sum);
            weightedMax = hn::Max(weightedMax, weighted);
        }
    }
};

/// Calls visit with every lane of a vector.
template <class D, class Visit> HWY_INLINE void ForEachLane(D d, hn::Vec<D> v, const Visit& visit)
{
    HWY_ALIGN hn::TFromD<D> arrLanes[HWY_MAX_BYTES / sizeof(hn::TFromD<D>)];
    hn::Store(v, d, arrLanes);
    for (std::size_t i = 0; i < hn::Lanes(d); ++i)
        visit(arrLanes[i]);
}

HWY_INLINE std::uint64_t TotalOf(V64 v)
{
    std::uint64_t nTotal = 0;
    ForEachLane(kD64, v, [&](std::uint64_t lane) { nTotal += lane; });
    return nTotal;
}

template <class D> HWY_INLINE void IncludeMin(D d, hn::Vec<D> v, std::uint32_t& min)
{
    ForEachLane(d, v, [&](auto lane) { min = std::min(min, static_cast<std::uint32_t>(lane)); });
}
template <class D> HWY_INLINE void IncludeMax(D d, hn::Vec<D> v, std::uint32_t& max)
{
    ForEachLane(d, v, [&](auto lane) { max = std::max(max, static_cast<std::uint32_t>(lane)); });
}

template <class T, int Channels> class CAdder
{
public:
    explicit CAdder(int width);
    /// Adds pieces of a row until it is done; empties the lanes into the sums when they might overflow.
    void AddRun(const T* samples, const SPixelRun& run, SPixelSums& sums);
    void Empty(SPixelSums& sums);

private:
    static constexpr bool kColors = Channels >= 3;
    static constexpr DOf<T> kD = {};

    static HWY_INLINE void Load(const T* samples, V<T>* v);
    static HWY_INLINE void LoadRest(const T* samples, int count, bool readable, V<T>* v);
    template <bool Whole> HWY_INLINE void AddVector(const V<T>* v, hn::Mask<DOf<T>> valid, V32 column);
    void AddPiece(const T* samples, int column, int row, int count);

    SPlane<T> m_planes[Channels];
    SProducts<T> m_mixed[3];
    SGreys<T> m_greys;
    SHalves<T> m_places;
    int m_nWidth;
    int m_nVectors = 0;
};

template <class T, int Channels>
CAdder<T, Channels>::CAdder(int width) : m_places(HalvesOf<T>(hn::Iota(kD, 0))), m_nWidth(width)
{
}

template <class T, int Channels> HWY_INLINE void CAdder<T, Channels>::Load(const T* samples, V<T>* v)
{
    if constexpr (Channels == 1)
        v[0] = hn::LoadU(kD, samples);
    else if constexpr (Channels == 2)
        hn::LoadInterleaved2(kD, samples, v[0], v[1]);
    else if constexpr (Channels == 3)
        hn::LoadInterleaved3(kD, samples, v[0], v[1], v[2]);
    else
        hn::LoadInterleaved4(kD, samples, v[0], v[1], v[2], v[3]);
}

/// Loads pixels that do not fill a vector; what is in the other lanes does not matter.
/// @param readable  whether the row goes on for a whole vector: that saves a copy
template <class T, int Channels>
HWY_INLINE void CAdder<T, Channels>::LoadRest(const T* samples, int count, bool readable, V<T>* v)
{
    if (readable) {
        Load(samples, v);
        return;
    }
    HWY_ALIGN T arrRest[HWY_MAX_BYTES / sizeof(T) * Channels] = {};
    std::memcpy(arrRest, samples, static_cast<std::size_t>(count) * Channels * sizeof(T));
    Load(arrRest, v);
}

/// @param Whole  all lanes are valid; otherwise the others are 0
template <class T, int Channels>
template <bool Whole>
HWY_INLINE void CAdder<T, Channels>::AddVector(const V<T>* v, hn::Mask<DOf<T>> valid, V32 column)
{
    SHalves<T> halves[Channels], forMin[Channels];
    for (int c = 0; c < Channels; ++c) {
        SPlane<T>& plane = m_planes[c];
        const V<T> high = Whole ? v[c] : hn::IfThenElse(valid, v[c], hn::Set(kD, hwy::LimitsMax<T>()));
        halves[c] = HalvesOf<T>(v[c]);
        forMin[c] = Whole ? halves[c] : HalvesOf<T>(high);
        const V64 sum = SumsIn64(v[c], halves[c]);
        plane.min = hn::Min(plane.min, high);
        plane.max = hn::Max(plane.max, v[c]);
        plane.piece = hn::Add(plane.piece, sum);
        plane.x = hn::Add(plane.x, hn::MulEven(hn::BitCast(kD32, sum), column));
        plane.places.Add(halves[c], m_places);
        plane.squares.Add(halves[c], halves[c]);
    }
    if constexpr (kColors) {
        m_mixed[0].Add(halves[0], halves[1]);
        m_mixed[1].Add(halves[0], halves[2]);
        m_mixed[2].Add(halves[1], halves[2]);
        m_greys.template Add<true>(forMin);
        m_greys.template Add<false>(halves);
    }
}

template <class T, int Channels>
void CAdder<T, Channels>::AddPiece(const T* samples, int column, int row, int count)
{
    const int nLanes = static_cast<int>(hn::Lanes(kD));
    const auto all = hn::FirstN(kD, static_cast<std::size_t>(nLanes));
    V<T> v[Channels];
    for (; count >= nLanes; count -= nLanes, column += nLanes, samples += nLanes * Channels) {
        Load(samples, v);
        AddVector<true>(v, all, hn::Set(kD32, static_cast<std::uint32_t>(column)));
    }
    if (count > 0) {
        const auto valid = hn::FirstN(kD, static_cast<std::size_t>(count));
        LoadRest(samples, count, m_nWidth - column >= nLanes, v);
        for (V<T>& plane : v)
            plane = hn::IfThenElseZero(valid, plane);
        AddVector<false>(v, valid, hn::Set(kD32, static_cast<std::uint32_t>(column)));
    }
    for (SPlane<T>& plane : m_planes) {
        plane.sum = hn::Add(plane.sum, plane.piece);
        plane.y = hn::Add(plane.y, hn::MulEven(hn::BitCast(kD32, plane.piece),
                                               hn::Set(kD32, static_cast<std::uint32_t>(row))));
        plane.piece = hn::Zero(kD64);
    }
}

template <class T, int Channels>
void CAdder<T, Channels>::AddRun(const T* samples, const SPixelRun& run, SPixelSums& sums)
{
    const int nLanes = static_cast<int>(hn::Lanes(kD));
    for (int nColumn = run.nBegin; nColumn < run.nEnd;) {
        if (m_nVectors == kMostVectors)
            Empty(sums);
        const int nCount = std::min(run.nEnd - nColumn, (kMostVectors - m_nVectors) * nLanes);
        AddPiece(samples + std::ptrdiff_t(nColumn) * Channels, nColumn, run.nRow, nCount);
        m_nVectors += (nCount + nLanes - 1) / nLanes;
        nColumn += nCount;
    }
}

template <class T, int Channels> void CAdder<T, Channels>::Empty(SPixelSums& sums)
{
    for (int c = 0; c < Channels; ++c) {
        const SPlane<T>& plane = m_planes[c];
        IncludeMin(kD, plane.min, sums.arrMin[c]);
        IncludeMax(kD, plane.max, sums.arrMax[c]);
        sums.arrSum[c] += TotalOf(plane.sum);
        sums.arrSumX[c] += TotalOf(plane.x);
        sums.arrSumX[c] += TotalOf(plane.places.In64());
        sums.arrSumY[c] += TotalOf(plane.y);
        sums.arrSquares[c] += TotalOf(plane.squares.In64());
        m_planes[c] = SPlane<T>();
    }
    if constexpr (kColors) {
        for (int i = 0; i < 3; ++i) {
            sums.arrMixed[i] += TotalOf(m_mixed[i].In64());
            m_mixed[i] = SProducts<T>();
        }
        const DWide<T> dWide;
        const hn::DFromV<decltype(m_greys.weightedMin)> dWeighted;
        IncludeMin(dWide, m_greys.min, sums.arrGreyMin[0]);
        IncludeMax(dWide, m_greys.max, sums.arrGreyMax[0]);
        IncludeMin(dWeighted, m_greys.weightedMin, sums.arrGreyMin[1]);
        IncludeMax(dWeighted, m_greys.weightedMax, sums.arrGreyMax[1]);
        m_greys = SGreys<T>();
    }
    m_nVectors = 0;
}

template <class T, int Channels>
void AddRuns(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end, SPixelSums& sums)
{
    CAdder<T, Channels> adder(source.nWidth);
    for (const SPixelRun* pRun = begin; pRun != end; ++pRun)
        adder.AddRun(reinterpret_cast<const T*>(source.pRows[pRun->nRow]), *pRun, sums);
    if (begin != end)
        adder.Empty(sums);
}

#endif

template <class T>
void AddSamples(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end, SPixelSums& sums)
{
    if (source.nChannels == 1)
        AddRuns<T, 1>(source, begin, end, sums);
    else if (source.nChannels == 2)
        AddRuns<T, 2>(source, begin, end, sums);
    else if (source.nChannels == 3)
        AddRuns<T, 3>(source, begin, end, sums);
    else
        AddRuns<T, 4>(source, begin, end, sums);
}

void AddPixels(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end, SPixelSums& sums)
{
    if (source.nBits == 8)
        AddSamples<std::uint8_t>(source, begin, end, sums);
    else
        AddSamples<std::uint16_t>(source, begin, end, sums);
}

} // namespace HWY_NAMESPACE
} // namespace Vantor::Algorithms
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Vantor::Algorithms
{

namespace
{
HWY_EXPORT(AddPixels);

void SumPixels(const SPixelSource& source, const Geometry::SPixelRun* begin, const Geometry::SPixelRun* end,
               SPixelSums& sums)
{
    HWY_DYNAMIC_DISPATCH(AddPixels)(source, begin, end, sums);
}

const SPixelKernels kKernels{SumPixels, SplitPixels};
} // namespace

VANTOR_ENGINE_FUNCTION const SPixelKernels* VantorGetPixelKernels()
{
    return &kKernels;
}

} // namespace Vantor::Algorithms
#endif
