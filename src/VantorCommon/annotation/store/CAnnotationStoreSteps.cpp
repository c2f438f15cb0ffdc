// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The steps of CAnnotationStore.
#include <VantorCommon/annotation/store/CAnnotationStore.h>

#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace
{
using ObjectPtr = CAnnotationStore::ObjectPtr;
using ObjectList = CAnnotationStore::ObjectList;
} // namespace

void CAnnotationStore::RunCall(std::function<void()> funcDo, std::function<void()> funcUndo)
{
    m_p->execute(std::make_unique<CCommandCall>(std::move(funcDo), std::move(funcUndo)));
}

/// Those that are in the view, the topmost first.
ObjectList CAnnotationStore::Present(const ObjectList& vctObjects) const
{
    ObjectList vctPresent;
    if (!m_p->pGeometry)
        return vctPresent;
    const std::unordered_set<ObjectPtr> wanted(vctObjects.begin(), vctObjects.end());
    for (const ObjectPtr& pObject : m_p->pGeometry->GetObjects())
        if (wanted.count(pObject) != 0)
            vctPresent.push_back(pObject);
    return vctPresent;
}

void CAnnotationStore::Rename(const ObjectPtr& pObject, const QString& strName)
{
    if (Present({pObject}).empty())
        return;
    const auto nameOf = [pObject] { return pObject->IsNamed() ? pObject->GetName() : QString(); };
    if (strName == nameOf())
        return;
    m_p->execute(CCommandCall::Exchange(
        strName, nameOf, [pObject](const QString& strTo) { pObject->RestoreName(strTo, !strTo.isEmpty()); }));
}

bool CAnnotationStore::SetShape(const ObjectPtr& pObject, const SShapeData& data)
{
    if (Present({pObject}).empty())
        return false;
    const SShapeKind* pKind = ShapeKinds::Of(*pObject);
    const ObjectPtr pLike = pKind && pKind->read ? pKind->read(data) : nullptr;
    if (!pLike)
        return false;
    const SShapeData before = AnnotationDocument::ShapeOf(*pObject);
    const SShapeData after = AnnotationDocument::ShapeOf(*pLike);
    if (before.vctNumbers == after.vctNumbers && before.strText == after.strText)
        return true;
    m_p->execute(CCommandCall::Exchange(
        after, [pObject] { return AnnotationDocument::ShapeOf(*pObject); },
        [pObject](const SShapeData& to) { AnnotationDocument::ChangeShape(*pObject, to); }));
    return true;
}

void CAnnotationStore::SetOrder(const ObjectList& vctOrder)
{
    const auto pGeometry = m_p->pGeometry;
    if (vctOrder == pGeometry->GetObjects())
        return;
    m_p->execute(CCommandCall::Exchange(
        vctOrder, [pGeometry] { return pGeometry ? pGeometry->GetObjects() : ObjectList(); },
        [pGeometry](const ObjectList& vctTo) {
            if (pGeometry)
                pGeometry->SetOrder(vctTo);
        }));
}

void CAnnotationStore::MoveTo(const ObjectList& vctObjects, int nIndex)
{
    const ObjectList vctMoved = Present(vctObjects);
    if (vctMoved.empty())
        return;
    const std::unordered_set<ObjectPtr> moved(vctMoved.begin(), vctMoved.end());
    ObjectList vctOrder;
    for (const ObjectPtr& pObject : m_p->pGeometry->GetObjects())
        if (moved.count(pObject) == 0)
            vctOrder.push_back(pObject);
    const int nPlace = std::clamp(nIndex, 0, static_cast<int>(vctOrder.size()));
    vctOrder.insert(vctOrder.begin() + nPlace, vctMoved.begin(), vctMoved.end());
    SetOrder(vctOrder);
}

/// An object changes its place with the one above unless that moves, too.
void CAnnotationStore::Raise(const ObjectList& vctObjects)
{
    const ObjectList vctMoved = Present(vctObjects);
    if (vctMoved.empty())
        return;
    const std::unordered_set<ObjectPtr> moved(vctMoved.begin(), vctMoved.end());
    ObjectList vctOrder = m_p->pGeometry->GetObjects();
    for (std::size_t i = 1; i < vctOrder.size(); ++i)
        if (moved.count(vctOrder[i]) != 0 && moved.count(vctOrder[i - 1]) == 0)
            std::swap(vctOrder[i], vctOrder[i - 1]);
    SetOrder(vctOrder);
}

void CAnnotationStore::Lower(const ObjectList& vctObjects)
{
    const ObjectList vctMoved = Present(vctObjects);
    if (vctMoved.empty())
        return;
    const std::unordered_set<ObjectPtr> moved(vctMoved.begin(), vctMoved.end());
    ObjectList vctOrder = m_p->pGeometry->GetObjects();
    for (std::size_t i = vctOrder.size() - 1; i > 0; --i)
        if (moved.count(vctOrder[i - 1]) != 0 && moved.count(vctOrder[i]) == 0)
            std::swap(vctOrder[i], vctOrder[i - 1]);
    SetOrder(vctOrder);
}

void CAnnotationStore::ChangeAll(const ObjectList& vctObjects, bool bValue,
                                 bool (CImageView2DDrawableObject::*get)() const,
                                 void (*set)(CImageView2DDrawableObject&, bool))
{
    ObjectList vctChanged = Present(vctObjects);
    vctChanged.erase(std::remove_if(vctChanged.begin(), vctChanged.end(),
                                    [&](const ObjectPtr& pObject) { return ((*pObject).*get)() == bValue; }),
                     vctChanged.end());
    if (vctChanged.empty())
        return;
    m_p->execute(CCommandCall::Exchange(
        std::vector<bool>(vctChanged.size(), bValue),
        [vctChanged, get] {
            std::vector<bool> vctFound;
            for (const ObjectPtr& pObject : vctChanged)
                vctFound.push_back(((*pObject).*get)());
            return vctFound;
        },
        [vctChanged, set](const std::vector<bool>& vctTo) {
            for (std::size_t i = 0; i < vctChanged.size(); ++i)
                set(*vctChanged[i], vctTo[i]);
        }));
}

void CAnnotationStore::SetLocked(const ObjectList& vctObjects, bool bLocked)
{
    ChangeAll(vctObjects, bLocked, &CImageView2DDrawableObject::IsLocked,
              [](CImageView2DDrawableObject& object, bool bTo) { object.SetLocked(bTo); });
}

void CAnnotationStore::SetVisible(const ObjectList& vctObjects, bool bVisible)
{
    ChangeAll(vctObjects, bVisible, &CImageView2DDrawableObject::IsVisible,
              [](CImageView2DDrawableObject& object, bool bTo) {
                  object.SetVisible(bTo);
                  if (!bTo)
                      object.SetSelected(false);
              });
}

ObjectList CAnnotationStore::GetSelected() const
{
    ObjectList vctSelected;
    if (m_p->pGeometry)
        for (const ObjectPtr& pObject : m_p->pGeometry->GetObjects())
            if (pObject->GetSelected())
                vctSelected.push_back(pObject);
    return vctSelected;
}

void CAnnotationStore::SelectAll()
{
    if (m_p->pGeometry)
        for (const ObjectPtr& pObject : m_p->pGeometry->GetObjects())
            pObject->SetSelected(pObject->IsVisible());
}

ObjectList CAnnotationStore::Duplicate(const ObjectList& vctObjects, const QPointF& offset)
{
    std::vector<Vantor::Annotations::SObject> vctFile;
    for (const ObjectPtr& pObject : Present(vctObjects))
        vctFile.push_back(AnnotationDocument::WriteObject(*pObject));
    return Paste(vctFile, offset);
}

ObjectList CAnnotationStore::Paste(const std::vector<Vantor::Annotations::SObject>& vctObjects,
                                   const QPointF& offset)
{
    ObjectList vctCopies;
    for (Vantor::Annotations::SObject object : vctObjects) {
        object.id.clear();
        const ObjectPtr pCopy = AnnotationDocument::ReadObject(object);
        if (!pCopy)
            continue;
        if (!offset.isNull())
            pCopy->MoveTopLeftTo(pCopy->GetBoundary().topLeft() + offset);
        vctCopies.push_back(pCopy);
    }
    if (!m_p->pGeometry)
        return {};
    Add(vctCopies);
    return vctCopies;
}

void CAnnotationStore::Add(const ObjectList& vctObjects)
{
    ObjectList vctNew;
    std::copy_if(vctObjects.begin(), vctObjects.end(), std::back_inserter(vctNew),
                 [](const ObjectPtr& pObject) { return bool(pObject); });
    const auto pGeometry = m_p->pGeometry;
    if (vctNew.empty() || !pGeometry)
        return;
    RunCall(
        [=] {
            if (!pGeometry)
                return;
            pGeometry->UnSelectedAll();
            for (const ObjectPtr& pObject : vctNew)
                pObject->SetSelected(pObject->IsVisible());
            pGeometry->RestoreObjects(vctNew);
        },
        [=] {
            for (const ObjectPtr& pObject : vctNew)
                if (pGeometry)
                    pGeometry->DeleteObject(pObject);
        });
}

ObjectList CAnnotationStore::Import(const Vantor::Annotations::SPage& page)
{
    Vantor::Annotations::SPage shown = page;
    AnnotationDocument::Move(shown, m_p->pictures.Of(m_p->ctrl.GetCurrentImgage()).map);
    return Paste(shown.objects, QPointF());
}
