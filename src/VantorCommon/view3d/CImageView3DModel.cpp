// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <Vantor/CVObject.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/log/CLogger.h>

#include <atomic>
#include <climits>
#include <cmath>
#include <cstdint>
#include <new>

using Vantor::Algorithms::CImage;

namespace
{
constexpr float kRed = 0.2126F;
constexpr float kGreen = 0.7152F;
constexpr float kBlue = 0.0722F;
constexpr float kMaxByte = 255.0F;
constexpr float kMaxHeight = 0.1F; // of a mesh that is 1 x 1
constexpr int kPositionFloats = 3;
constexpr int kVertexFloats = 6;
constexpr int kSquareIndices = 6;

constexpr int kProgressBegin = 0;
constexpr int kProgressCopied = 10;
constexpr int kProgressVertices = 30;
constexpr int kProgressDone = 100;

constexpr std::size_t kDefaultLimit = std::size_t(2) << 30;
std::atomic<std::size_t> s_nLimit{kDefaultLimit};

/// In the order of the enumeration.
constexpr std::array<float, EImageView3DParameter_Count> kDefaults = {
    -73.0F, 0.0F, 19.0F, // rotate
    0.0F,   0.0F, 0.0F,  // translate
    1.0F,   1.0F, 1.0F,  // scale
    0.0F,   0.0F, 5.0F,  // camera position
    0.5F,   0.5F, 0.0F,  // camera centre: the middle of the mesh
    0.0F,   1.0F, 0.0F,  // camera up
    22.0F,  0.1F, 100.0F // field of view, near, far
};

std::uint64_t IndexCount(const CImage& image)
{
    return std::uint64_t(image.GetWidth() - 1) * std::uint64_t(image.GetHeight() - 1) * kSquareIndices;
}

/// Whatever the limit, the size getters return int and indices have 32 bits.
bool IsWithinLimit(const CImage& image)
{
    const std::uint64_t nFloats =
        std::uint64_t(image.GetWidth()) * std::uint64_t(image.GetHeight()) * kVertexFloats;
    const std::uint64_t nIndices = IndexCount(image);
    return nFloats <= INT_MAX && nIndices <= INT_MAX &&
           nFloats * sizeof(float) + nIndices * sizeof(unsigned int) <= s_nLimit.load();
}

/// The grey value for a channel count known at compile time, see __InternalGetGrayValue.
template <int kChannels> inline float GrayOf(const unsigned char* pPixel)
{
    if constexpr (kChannels == 1)
        return pPixel[0];
    else if constexpr (kChannels >= 3)
        return kRed * pPixel[0] + kGreen * pPixel[1] + kBlue * pPixel[2];
    else
        return 0.0F;
}

/// The colour value of each byte, 0 to 1.
const std::array<float, 256>& Colours()
{
    static const std::array<float, 256> arrColours = [] {
        std::array<float, 256> arrResult{};
        for (std::size_t i = 0; i < arrResult.size(); ++i)
            arrResult[i] = static_cast<float>(i) / kMaxByte;
        return arrResult;
    }();
    return arrColours;
}

/// Overwrites a row's vertices; x is the same in every row.
template <int kChannels>
void FillRow(std::vector<float>& vctRow, const unsigned char* pRow, const std::size_t* pOffsets, float fY)
{
    constexpr std::size_t kFloats = kChannels == 2 ? kPositionFloats : kVertexFloats;
    const std::array<float, 256>& arrColours = Colours();
    float* pOut = vctRow.data();
    for (std::size_t x = 0; x < vctRow.size() / kFloats; ++x, pOut += kFloats) {
        const unsigned char* pPixel = pRow + pOffsets[x];
        pOut[1] = fY;
        pOut[2] = GrayOf<kChannels>(pPixel) * kMaxHeight / kMaxByte;
        if constexpr (kChannels != 2) // see LoadImage
            for (int i = 0; i < 3; ++i)
                pOut[kPositionFloats + i] = arrColours[pPixel[kChannels == 1 ? 0 : i]];
    }
}

/// A vector with room for n values, which are then appended row by row.
template <typename T> std::vector<T> Reserve(std::size_t n)
{
    std::vector<T> vctResult;
    vctResult.reserve(n);
    return vctResult;
}

template <int kChannels> std::vector<float> BuildVertices(const CImage& image)
{
    constexpr std::size_t kFloats = kChannels == 2 ? kPositionFloats : kVertexFloats;
    const std::size_t w = static_cast<std::size_t>(image.GetWidth());
    const int h = image.GetHeight();
    std::vector<float> vctRow(w * kFloats);
    for (std::size_t x = 0; x < w; ++x)
        vctRow[x * kFloats] = static_cast<float>(x) / static_cast<float>(w);
    std::vector<float> vctVertices = Reserve<float>(vctRow.size() * static_cast<std::size_t>(h));
    for (int r = 0; r < h; ++r) {
        const float fY = static_cast<float>(h - 1 - r) / static_cast<float>(h);
        FillRow<kChannels>(vctRow, image.GetRows()[r], image.GetColumnOffsets(), fY);
        vctVertices.insert(vctVertices.end(), vctRow.begin(), vctRow.end());
    }
    return vctVertices;
}

std::vector<float> BuildVertices(const CImage& image)
{
    switch (image.GetChannel()) {
    case 1:
        return BuildVertices<1>(image);
    case 2:
        return BuildVertices<2>(image);
    default: // an image has no more than four
        return BuildVertices<3>(image);
    }
}

std::vector<unsigned int> BuildIndices(const CImage& image)
{
    const unsigned int w = static_cast<unsigned int>(image.GetWidth());
    const unsigned int h = static_cast<unsigned int>(image.GetHeight());
    std::vector<unsigned int> vctRow;
    for (unsigned int a = 0; a + 1 < w; ++a)
        vctRow.insert(vctRow.end(), {a + w, a + 1, a, a + w, a + w + 1, a + 1});
    std::vector<unsigned int> vctIndices = Reserve<unsigned int>(IndexCount(image));
    for (unsigned int j = 0; j + 1 < h; ++j) {
        vctIndices.insert(vctIndices.end(), vctRow.begin(), vctRow.end());
        for (unsigned int& n : vctRow)
            n += w;
    }
    return vctIndices;
}
} // namespace

float __InternalGetGrayValue(const unsigned char* pPixel, int nChannel)
{
    if (!pPixel)
        return 0.0F;
    if (nChannel == 1)
        return GrayOf<1>(pPixel);
    return nChannel == 3 || nChannel == 4 ? GrayOf<3>(pPixel) : 0.0F;
}

CImageView3DModel::CImageView3DModel() : m_arrParameters(kDefaults)
{
}

CImageView3DModel::~CImageView3DModel() = default;

void CImageView3DModel::SetParameter(EImageView3DParameter eParameter, float fValue)
{
    float& fStored = m_arrParameters[eParameter];
    if (!std::isfinite(fValue) || Vantor::CVObject::CompareEqual(fValue, fStored))
        return;
    fStored = fValue;
    Q_EMIT signal_ChangeTransformMatrix();
}

void CImageView3DModel::LoadImage(std::shared_ptr<CImage> pImage)
{
    const QMutexLocker lock(&m_mutex);
    if (!pImage)
        return;
    Q_EMIT signal_ChangeProgressValue(kProgressBegin);
    if (pImage->GetWidth() == 0)
        return;
    if (!IsWithinLimit(*pImage)) {
        Fail(QStringLiteral("The image of %1 x %2 pixels is too large for the 3D view"), *pImage);
        std::vector<float> vctNoVertices;
        std::vector<unsigned int> vctNoIndices;
        HandOver(vctNoVertices, vctNoIndices);
        Q_EMIT signal_LoadFinished();
        return;
    }
    try {
        CImage copy;
        if (copy.CopyFrom(pImage.get()) != 0)
            throw std::bad_alloc();
        Build(copy);
    } catch (const std::bad_alloc&) {
        Fail(QStringLiteral("Not enough memory for the 3D view of %1 x %2 pixels"), *pImage);
        Q_EMIT signal_ChangeProgressValue(kProgressBegin);
    }
}

/// @param strWhat  with placeholders for the image's width and height
void CImageView3DModel::Fail(const QString& strWhat, const CImage& image)
{
    const QString strMessage = strWhat.arg(image.GetWidth()).arg(image.GetHeight());
    CLogger::Write(WARNING, "%s", qUtf8Printable(strMessage));
    Q_EMIT signal_Failed(strMessage + QLatin1Char('.'));
}

void CImageView3DModel::Build(const CImage& image)
{
    Q_EMIT signal_ChangeProgressValue(kProgressCopied);
    std::vector<float> vctVertices = BuildVertices(image);
    Q_EMIT signal_ChangeProgressValue(kProgressVertices);
    std::vector<unsigned int> vctIndices = BuildIndices(image);
    HandOver(vctVertices, vctIndices);
    Q_EMIT signal_ChangeProgressValue(kProgressDone);
    Q_EMIT signal_ChangeProgressValue(kProgressBegin);
    Q_EMIT signal_LoadFinished();
}

void CImageView3DModel::HandOver(std::vector<float>& vctVertices, std::vector<unsigned int>& vctIndices)
{
    const std::lock_guard lock(m_handOverMutex);
    m_vctVertices.swap(vctVertices);
    m_vctIndices.swap(vctIndices);
    m_bFresh = true;
}

bool CImageView3DModel::TakeBuffers(std::vector<float>& vctVertices, std::vector<unsigned int>& vctIndices)
{
    std::vector<float> vctNewVertices;
    std::vector<unsigned int> vctNewIndices;
    {
        const std::lock_guard lock(m_handOverMutex);
        if (!m_bFresh)
            return false;
        vctNewVertices.swap(m_vctVertices);
        vctNewIndices.swap(m_vctIndices);
        m_bFresh = false;
    }
    vctVertices = std::move(vctNewVertices);
    vctIndices = std::move(vctNewIndices);
    return true;
}

void CImageView3DModel::ClearBufferData()
{
    const std::lock_guard lock(m_handOverMutex);
    m_vctVertices.clear();
    m_vctIndices.clear();
    m_bFresh = false;
}

void CImageView3DModel::SetBufferLimit(std::size_t nBytes)
{
    s_nLimit = nBytes;
}

std::size_t CImageView3DModel::GetBufferLimit()
{
    return s_nLimit;
}
