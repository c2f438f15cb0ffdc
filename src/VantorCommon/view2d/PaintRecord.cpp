// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/PaintRecord_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace
{
constexpr std::size_t kMaxParts = 12; // more are painted faster as one

/// Exactly, unlike QRectF's own comparison; what is no number equals itself.
bool IsSameRect(const QRectF& a, const QRectF& b)
{
    const auto differ = [](double x, double y) { return x < y || y < x; };
    return !differ(a.x(), b.x()) && !differ(a.y(), b.y()) && !differ(a.width(), b.width()) &&
           !differ(a.height(), b.height());
}

qint64 Area(const QRect& rect)
{
    return qint64(rect.width()) * rect.height();
}

/// Not so for the two lines of a cross.
bool IsWorthUniting(const QRect& a, const QRect& b)
{
    return a.intersects(b) && Area(a | b) <= Area(a) + Area(b);
}
} // namespace

std::vector<QRect> CPaintRecord::Gather(std::vector<QRect> vctParts)
{
    std::vector<QRect> vctGathered;
    QRect bounding;
    for (const QRect& part : vctParts) {
        if (part.isEmpty())
            continue;
        bounding |= part;
        if (!vctGathered.empty() && IsWorthUniting(vctGathered.back(), part))
            vctGathered.back() |= part;
        else if (vctGathered.size() <= kMaxParts)
            vctGathered.push_back(part);
    }
    return vctGathered.size() > kMaxParts ? std::vector<QRect>{bounding} : vctGathered;
}

CPaintRecord::SItem CPaintRecord::Describe(const Object& object)
{
    const auto* pShape = dynamic_cast<const CImageView2DDrawableGeometry*>(&object);
    return {&object,
            pShape ? pShape->GetData().get() : nullptr,
            object.GetBoundary(),
            object.GetUID(),
            object.GetRevision(),
            object.GetSelected(),
            QRect()};
}

bool CPaintRecord::IsTouched(unsigned int nUID) const
{
    return std::binary_search(m_vctTouched.begin(), m_vctTouched.end(), nUID);
}

bool CPaintRecord::IsSame(const SItem& a, const SItem& b) const
{
    return a.pObject == b.pObject && a.nUID == b.nUID && a.nRevision == b.nRevision &&
           a.bSelected == b.bSelected && a.pGeometry == b.pGeometry && IsSameRect(a.boundary, b.boundary) &&
           !IsTouched(b.nUID);
}

std::vector<QRect> CPaintRecord::Follow(const ObjectList& vctObjects, const Extent& extent)
{
    std::sort(m_vctTouched.begin(), m_vctTouched.end());
    std::vector<SItem> vctNew;
    vctNew.reserve(vctObjects.size());
    for (const ObjectPtr& pObject : vctObjects)
        vctNew.push_back(Describe(*pObject));
    // What is equal at both ends needs no search; mostly that is all, or all but one.
    const std::size_t nCommon = std::min(vctNew.size(), m_vctItems.size());
    std::size_t nBegin = 0;
    while (nBegin < nCommon && IsSame(m_vctItems[nBegin], vctNew[nBegin])) {
        vctNew[nBegin].rect = m_vctItems[nBegin].rect;
        ++nBegin;
    }
    std::size_t nEnd = vctNew.size();
    std::size_t nOldEnd = m_vctItems.size();
    while (nEnd > nBegin && nOldEnd > nBegin && IsSame(m_vctItems[nOldEnd - 1], vctNew[nEnd - 1])) {
        --nEnd;
        --nOldEnd;
        vctNew[nEnd].rect = m_vctItems[nOldEnd].rect;
    }
    std::vector<QRect> vctParts =
        Match(vctNew, nBegin, nEnd, nOldEnd, [&](SItem& item) { item.rect = extent(*item.pObject); });
    m_vctItems = std::move(vctNew);
    m_vctTouched.clear();
    return Gather(std::move(vctParts));
}

/// Compares the new items nBegin .. nEnd - 1 with the old ones nBegin .. nOldEnd - 1.
std::vector<QRect> CPaintRecord::Match(std::vector<SItem>& vctNew, std::size_t nBegin, std::size_t nEnd,
                                       std::size_t nOldEnd, const std::function<void(SItem&)>& measure)
{
    std::unordered_map<const Object*, std::size_t> places;
    for (std::size_t i = nBegin; i < nOldEnd; ++i)
        places.emplace(m_vctItems[i].pObject, i);
    std::vector<QRect> vctParts;
    std::vector<bool> inOrder(nOldEnd, false); // objects that keep their order among each other
    std::size_t nNext = nBegin;                // behind the old place of the object before
    for (std::size_t i = nBegin; i < nEnd; ++i) {
        SItem& item = vctNew[i];
        const auto it = places.find(item.pObject);
        const bool bInOrder = it != places.end() && it->second >= nNext;
        if (bInOrder) {
            const SItem& old = m_vctItems[it->second];
            nNext = it->second + 1;
            inOrder[it->second] = true;
            item.rect = old.rect;
            if (IsSame(old, item))
                continue;
            vctParts.push_back(old.rect);
        }
        measure(item);
        vctParts.push_back(item.rect);
    }
    for (std::size_t i = nBegin; i < nOldEnd; ++i)
        if (!inOrder[i])
            vctParts.push_back(m_vctItems[i].rect);
    return vctParts;
}

std::vector<std::size_t> CPaintRecord::Meeting(const QRect& part) const
{
    std::vector<std::size_t> vctFound;
    for (std::size_t i = 0; i < m_vctItems.size(); ++i)
        if (m_vctItems[i].rect.intersects(part))
            vctFound.push_back(i);
    return vctFound;
}
