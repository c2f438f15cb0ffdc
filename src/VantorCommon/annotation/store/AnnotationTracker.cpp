// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationTracker_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <utility>

namespace
{
constexpr std::size_t kManyMoved = 100; // the ids of all are shorter than so many objects
} // namespace

CAnnotationTracker::CAnnotationTracker(CImageView2DGeometryModel* pModel,
                                       std::function<void(const ObjectList&)> onClear,
                                       std::function<void()> onChange)
    : m_pModel(pModel), m_onClear(std::move(onClear)), m_onChange(std::move(onChange))
{
    if (!pModel)
        return;
    ReadAll();
    m_sChanges = {};
    using M = CImageView2DGeometryModel;
    connect(pModel, &M::signal_AddDrawableObject, this, [this](unsigned int nUID) { Add(nUID); });
    connect(pModel, &M::signal_BeforeDeleteDrawableObject, this, [this](unsigned int nUID) { Delete(nUID); });
    connect(pModel, &M::signal_ChangeDrawableObjectProperty, this,
            [this](unsigned int nUID) { m_touched.insert(nUID); });
    connect(pModel, &M::signal_BeforeClearObject, this, [this] { m_vctLeaving = m_pModel->GetObjects(); });
    connect(pModel, &M::signal_ClearObject, this, [this] { Clear(); });
    connect(pModel, &M::signal_ChangeOrder, this, [this](const ObjectList& vctMoved) {
        for (const auto& pObject : vctMoved)
            m_moved.insert(pObject->GetUID());
        m_onChange();
    });
}

void CAnnotationTracker::Add(unsigned int nUID)
{
    const auto pObject = m_bReplacing ? nullptr : m_pModel->FindObject(nUID);
    if (!pObject)
        return;
    // A step that is made again may bring an object back beside one of its id that came from a file.
    if (m_ids.count(pObject->GetId().toStdString()) != 0)
        pObject->SetId(QString());
    m_known[nUID] = SKnown{pObject->GetId().toStdString(), pObject->GetRevision()};
    m_ids.insert(m_known[nUID].id);
    m_added.insert(nUID);
    m_onChange();
}

void CAnnotationTracker::Delete(unsigned int nUID)
{
    const auto it = m_known.find(nUID);
    if (it == m_known.end())
        return;
    // What has come since the last question was never there for whoever asks.
    if (m_added.erase(nUID) == 0 || m_deleted.count(nUID) != 0)
        m_deleted[nUID] = it->second.id;
    m_touched.erase(nUID);
    m_moved.erase(nUID);
    m_ids.erase(it->second.id);
    m_known.erase(it);
    m_onChange();
}

void CAnnotationTracker::Clear()
{
    const ObjectList vctGone = std::exchange(m_vctLeaving, {});
    if (m_bReplacing)
        return;
    for (auto& [nUID, known] : m_known)
        m_deleted[nUID] = std::move(known.id);
    m_known.clear();
    m_ids.clear();
    m_added.clear();
    m_touched.clear();
    m_moved.clear();
    m_onClear(vctGone);
}

void CAnnotationTracker::Replace(const CImageView2DGeometryModel::ObjectList& vctObjects)
{
    if (!m_pModel)
        return;
    m_bReplacing = true;
    m_pModel->SetObjects(vctObjects);
    m_bReplacing = false;
    ReadAll();
}

void CAnnotationTracker::ReadAll()
{
    m_known.clear();
    m_ids.clear();
    m_deleted.clear();
    m_added.clear();
    m_touched.clear();
    m_moved.clear();
    const ObjectList vctObjects = m_pModel->GetObjects();
    m_known.reserve(vctObjects.size());
    m_ids.reserve(vctObjects.size());
    for (const auto& pObject : vctObjects) {
        SKnown& known = m_known[pObject->GetUID()];
        known = SKnown{pObject->GetId().toStdString(), pObject->GetRevision()};
        m_ids.insert(known.id);
    }
    m_sChanges = {};
    m_sChanges.bAll = true;
}

/// The lowest first.
CImageView2DGeometryModel::ObjectList
CAnnotationTracker::Objects(const std::unordered_set<unsigned int>& uids) const
{
    CImageView2DGeometryModel::ObjectList vctObjects;
    if (!m_pModel || uids.empty())
        return vctObjects;
    if (uids.size() == 1) {
        if (const auto pObject = m_pModel->FindObject(*uids.begin()))
            vctObjects.push_back(pObject);
        return vctObjects;
    }
    const auto vctAll = m_pModel->GetObjects();
    for (auto it = vctAll.rbegin(); it != vctAll.rend(); ++it)
        if (uids.count((*it)->GetUID()) != 0)
            vctObjects.push_back(*it);
    return vctObjects;
}

SAnnotationChanges CAnnotationTracker::Take()
{
    SAnnotationChanges sChanges = std::exchange(m_sChanges, {});
    const auto deleted = std::exchange(m_deleted, {});
    const auto added = std::exchange(m_added, {});
    auto touched = std::exchange(m_touched, {});
    auto came = std::exchange(m_moved, {});
    sChanges.bOrder = came.size() > kManyMoved;
    if (sChanges.bOrder)
        came.clear();
    came.insert(added.begin(), added.end());
    for (unsigned int nUID : came)
        touched.erase(nUID);
    for (const auto& pObject : Objects(touched)) {
        const auto it = m_known.find(pObject->GetUID());
        if (it == m_known.end() || it->second.nRevision == pObject->GetRevision())
            continue;
        it->second.nRevision = pObject->GetRevision();
        sChanges.vctChanged.push_back(pObject);
    }
    for (const auto& [nUID, id] : deleted)
        sChanges.vctDeleted.push_back(id);
    sChanges.vctCame = Objects(came);
    for (const auto& pObject : sChanges.vctCame)
        m_known[pObject->GetUID()].nRevision = pObject->GetRevision();
    if (sChanges.bAll) {
        sChanges = {};
        sChanges.bAll = true;
    }
    return sChanges;
}
