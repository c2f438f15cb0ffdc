// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

#include <VantorCommon/annotation/model/ObjectOrder_p.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/log/CLogger.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace
{
using ObjectPtr = CImageView2DGeometryModel::ObjectPtr;
using ObjectList = CImageView2DGeometryModel::ObjectList;

bool Contains(const ObjectList& vctObjects, const ObjectPtr& pObject)
{
    return std::find(vctObjects.begin(), vctObjects.end(), pObject) != vctObjects.end();
}

int LogUID(const CImageView2DDrawableObject& object)
{
    return static_cast<int>(object.GetUID());
}
} // namespace

CImageView2DGeometryModel::CImageView2DGeometryModel(QObject* parent) : CBaseModel(parent)
{
}

CImageView2DGeometryModel::~CImageView2DGeometryModel() = default;

ObjectPtr CImageView2DGeometryModel::GetAt(int nIndex) const
{
    return nIndex >= 0 && nIndex < Size() ? m_vctObjects[static_cast<std::size_t>(nIndex)] : nullptr;
}

ObjectPtr CImageView2DGeometryModel::FindObject(unsigned int nUID) const
{
    const auto it = std::find_if(m_vctObjects.begin(), m_vctObjects.end(),
                                 [nUID](const ObjectPtr& pObject) { return pObject->GetUID() == nUID; });
    return it != m_vctObjects.end() ? *it : nullptr;
}

void CImageView2DGeometryModel::AddObject(ObjectPtr pObject)
{
    if (!Insert(pObject))
        return;
    pObject->SetSelected(true);
    pObject->SetMouseOffset(QPointF(0.0, 0.0));
    Announce(*pObject);
}

void CImageView2DGeometryModel::RestoreObjects(const ObjectList& vctObjects)
{
    // Deliberate: a receiver may drop the step that owns the list.
    const ObjectList vctCopy = vctObjects; // NOLINT(performance-unnecessary-copy-initialization)
    for (auto it = vctCopy.rbegin(); it != vctCopy.rend(); ++it)
        if (Insert(*it))
            Announce(**it);
}

void CImageView2DGeometryModel::SetObjects(const ObjectList& vctObjects)
{
    ObjectList vctNew;
    std::unordered_set<ObjectPtr> seen;
    for (const ObjectPtr& pObject : vctObjects)
        if (pObject && seen.insert(pObject).second)
            vctNew.push_back(pObject);
    ClearObject();
    m_vctObjects = vctNew;
    for (auto it = vctNew.rbegin(); it != vctNew.rend(); ++it)
        Announce(**it);
}

void CImageView2DGeometryModel::SetOrder(const ObjectList& vctOrder)
{
    std::unordered_map<ObjectPtr, std::size_t> places;
    for (std::size_t i = 0; i < vctOrder.size(); ++i)
        places.emplace(vctOrder[i], i + 1);
    const auto placeOf = [&places](const ObjectPtr& pObject) {
        const auto it = places.find(pObject);
        return it != places.end() ? it->second : 0;
    };
    ObjectList vctSorted = m_vctObjects;
    std::stable_sort(vctSorted.begin(), vctSorted.end(),
                     [&placeOf](const ObjectPtr& a, const ObjectPtr& b) { return placeOf(a) < placeOf(b); });
    if (vctSorted == m_vctObjects)
        return;
    const ObjectList vctMoved = ObjectOrder::Moved(m_vctObjects, vctSorted);
    m_vctObjects = std::move(vctSorted);
    Q_EMIT signal_ChangeOrder(vctMoved);
}

bool CImageView2DGeometryModel::Insert(const ObjectPtr& pObject)
{
    if (!pObject || Contains(m_vctObjects, pObject))
        return false;
    m_vctObjects.insert(m_vctObjects.begin(), pObject);
    return true;
}

void CImageView2DGeometryModel::Announce(const CImageView2DDrawableObject& object)
{
    connect(&object, &CImageView2DDrawableObject::signal_ChangeDrawableObjectProperty, this,
            &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty);
    CLogger::Write(NORMAL, "AddObject(%d)", LogUID(object));
    Q_EMIT signal_AddDrawableObject(object.GetUID(), object.GetName());
}

void CImageView2DGeometryModel::Disconnect(const CImageView2DDrawableObject& object)
{
    disconnect(&object, &CImageView2DDrawableObject::signal_ChangeDrawableObjectProperty, this,
               &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty);
}

bool CImageView2DGeometryModel::DeleteObject(ObjectPtr pObject)
{
    if (!Contains(m_vctObjects, pObject))
        return false;
    const unsigned int nUID = pObject->GetUID();
    const QString strName = pObject->GetName();
    Q_EMIT signal_BeforeDeleteDrawableObject(nUID, strName);
    // Look the position up now, because a receiver may have changed the list.
    m_vctObjects.erase(std::remove(m_vctObjects.begin(), m_vctObjects.end(), pObject), m_vctObjects.end());
    Disconnect(*pObject);
    CLogger::Write(NORMAL, "DeleteObject(%d)", LogUID(*pObject));
    Q_EMIT signal_DeleteDrawableObject(nUID, strName);
    return true;
}

bool CImageView2DGeometryModel::DeleteObject(unsigned int nUID)
{
    return DeleteObject(FindObject(nUID));
}

void CImageView2DGeometryModel::ClearObject()
{
    Q_EMIT signal_BeforeClearObject();
    const ObjectList vctCleared = std::exchange(m_vctObjects, {});
    for (const ObjectPtr& pObject : vctCleared)
        Disconnect(*pObject);
    Q_EMIT signal_ClearObject();
}

void CImageView2DGeometryModel::UnSelectedAll()
{
    // Usually few objects are selected; hold only those while the signals are emitted.
    ObjectList vctSelected;
    for (const ObjectPtr& pObject : m_vctObjects)
        if (pObject->GetSelected())
            vctSelected.push_back(pObject);
    for (const ObjectPtr& pObject : vctSelected)
        pObject->SetSelected(false);
}

void CImageView2DGeometryModel::SetSelectedObject(unsigned int nUID, bool bSelected, double dx, double dy)
{
    const ObjectPtr pObject = FindObject(nUID);
    if (!pObject)
        return;
    pObject->SetSelected(bSelected);
    pObject->SetMouseOffset(QPointF(dx, dy));
    CLogger::Write(NORMAL, "SetSelectedObject(%d, %d, %f, %f)", LogUID(*pObject), bSelected ? 1 : 0, dx, dy);
}

void CImageView2DGeometryModel::AddObjectDrawing(ObjectPtr pObject)
{
    if (!pObject || Contains(m_vctDrawing, pObject))
        return;
    m_vctDrawing.push_back(pObject);
    CLogger::Write(NORMAL, "Add Object %d", LogUID(*pObject));
    Q_EMIT signal_ChangeDrawingObject();
}

void CImageView2DGeometryModel::ClearObjectDrawing()
{
    const ObjectList vctCleared = std::exchange(m_vctDrawing, {});
    CLogger::Write(NORMAL, "Clear Object");
    Q_EMIT signal_ChangeDrawingObject();
}

void CImageView2DGeometryModel::AddObjectDrawingWaiting(ObjectPtr pObject)
{
    if (!pObject || pObject == m_pWaiting)
        return;
    const ObjectPtr pPrevious = std::exchange(m_pWaiting, pObject);
    pObject->SetDisplayName(false);
    CLogger::Write(NORMAL, "Add Object Waiting %d", LogUID(*pObject));
    Q_EMIT signal_ChangeDrawingObject();
}

void CImageView2DGeometryModel::ClearObjectDrawingWaiting()
{
    const ObjectPtr pPrevious = std::exchange(m_pWaiting, nullptr);
    CLogger::Write(NORMAL, "Clear Object Waiting ");
    Q_EMIT signal_ChangeDrawingObject();
}
