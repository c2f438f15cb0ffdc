// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CPageMemory.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QCoreApplication>
#include <algorithm>

using Vantor::Algorithms::CImage;

namespace
{
constexpr int kLookMs = 1000;
/// Large images lie on whole large pages.
constexpr qint64 kLarge = qint64(4) << 20;
constexpr qint64 kLargePage = qint64(2) << 20;
} // namespace

/// A deferred image that has pixels.
struct CPageMemory::SRendered {
    quint64 nUse = 0; ///< 0: nobody has told of one
    CImageView2DModel* pModel = nullptr;
    int nIndex = 0;
    unsigned int nUID = 0;
    qint64 nBytes = 0;
};

CPageMemory& CPageMemory::Get()
{
    static QPointer<CPageMemory> s_pMemory;
    if (!s_pMemory)
        s_pMemory = new CPageMemory(QCoreApplication::instance());
    return *s_pMemory;
}

CPageMemory::CPageMemory(QObject* pParent) : QObject(pParent)
{
    m_timer.setInterval(kLookMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { Trim(); });
}

CPageMemory::~CPageMemory() = default;

qint64 CPageMemory::BytesOf(const CImage& image)
{
    const qint64 nBytes = qint64(image.GetStride()) * image.GetHeight();
    return nBytes < kLarge ? nBytes : (nBytes + kLargePage - 1) / kLargePage * kLargePage;
}

void CPageMemory::SetLimit(qint64 nBytes)
{
    m_nLimit = std::max<qint64>(nBytes, 0);
}

void CPageMemory::Watch(CImageView2DModel* pModel)
{
    if (std::find(m_vctModels.begin(), m_vctModels.end(), pModel) == m_vctModels.end())
        m_vctModels.emplace_back(pModel);
    m_timer.start();
}

void CPageMemory::Use(const CImage& image)
{
    m_uses[image.GetUID()] = ++m_nUses;
}

std::vector<CPageMemory::SRendered> CPageMemory::Rendered() const
{
    std::vector<SRendered> vctRendered;
    for (CImageView2DModel* pModel : m_vctModels)
        for (int i = 0; pModel && i < pModel->GetImageCount(); ++i) {
            const auto pImage = pModel->GetImage(i);
            if (!pImage || !pImage->IsDeferred() || !pImage->HasPixels())
                continue;
            const auto it = m_uses.find(pImage->GetUID());
            vctRendered.push_back(
                {it != m_uses.end() ? it->second : 0, pModel, i, pImage->GetUID(), BytesOf(*pImage)});
        }
    return vctRendered;
}

qint64 CPageMemory::GetUsed() const
{
    qint64 nBytes = 0;
    for (const SRendered& each : Rendered())
        nBytes += each.nBytes;
    return nBytes;
}

void CPageMemory::Trim(qint64 nComing)
{
    m_vctModels.erase(std::remove(m_vctModels.begin(), m_vctModels.end(), nullptr), m_vctModels.end());
    if (m_vctModels.empty())
        m_timer.stop();
    std::vector<SRendered> vctRendered = Rendered();
    std::sort(vctRendered.begin(), vctRendered.end(),
              [](const SRendered& a, const SRendered& b) { return a.nUse < b.nUse; });
    qint64 nUsed = nComing;
    std::unordered_map<unsigned int, quint64> uses;
    for (const SRendered& each : vctRendered) {
        nUsed += each.nBytes;
        uses[each.nUID] = each.nUse;
    }
    m_uses.swap(uses); // what is no longer known of is forgotten
    for (const SRendered& each : vctRendered)
        if (nUsed > m_nLimit && each.pModel->DropPixels(each.nIndex))
            nUsed -= each.nBytes;
}
