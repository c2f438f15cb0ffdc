// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QString>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;

/// The annotations of one 2D image view: the finished objects, newest first, the objects of a drawing in
/// progress, and the rubber segment of a polygon in progress (the waiting object).
///
/// An object stands at most once in each list; adding a null pointer or a present object changes nothing.
/// Receivers of the signals may call the model: an object that leaves a list lives until the signals about it
/// have been emitted. The model relays the property signal of finished objects only. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DGeometryModel : public CBaseModel
{
    Q_OBJECT

public:
    /// @{
    /// Objects are shared with the undo commands and the views.
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
    using ObjectList = std::vector<ObjectPtr>;
    /// @}

    /// Empty; the Qt parent, if any, owns the model.
    explicit CImageView2DGeometryModel(QObject* parent = nullptr);
    ~CImageView2DGeometryModel() override;

    /// The number of finished objects.
    int Size() const { return static_cast<int>(m_vctObjects.size()); }
    /// The finished object at the index, 0 being the newest; null when the index is out of range.
    ObjectPtr GetAt(int nIndex) const;
    /// A copy of the list of finished objects, newest first.
    ObjectList GetObjects() const { return m_vctObjects; }
    /// The finished object with the identifier, or null.
    ObjectPtr FindObject(unsigned int nUID) const;

    /// Puts an object first, selects it and sets its mouse offset to (0, 0); the others keep their selection.
    /// Emits signal_AddDrawableObject.
    void AddObject(ObjectPtr pObject);
    /// Puts former finished objects back, newest first, ahead of the present ones. Unlike AddObject it keeps
    /// selection and mouse offset. It skips null and present objects, and logs and announces each of the
    /// others like an addition, the oldest first.
    void RestoreObjects(const ObjectList& vctObjects);
    /// Replaces all finished objects: signal_ClearObject, then each is announced like an addition, the oldest
    /// first, when all of them are there. Null and repeated ones are skipped; selection and mouse offset
    /// stay.
    void SetObjects(const ObjectList& vctObjects);
    /// Puts the finished objects into the order of the list, the topmost first; those that it does not name
    /// come first, in the order that they have. Emits signal_ChangeOrder when that changes anything.
    void SetOrder(const ObjectList& vctOrder);
    /// @{
    /// Emits signal_BeforeDeleteDrawableObject, removes, emits signal_DeleteDrawableObject. False, and no
    /// signal, when the object is not there.
    bool DeleteObject(ObjectPtr pObject);
    bool DeleteObject(unsigned int nUID);
    /// @}
    /// Emits signal_BeforeClearObject, then removes all finished objects with one signal_ClearObject, also
    /// when there are none.
    void ClearObject();

    /// Unselects every finished object; those that were selected announce it.
    void UnSelectedAll();
    /// Selects or unselects the object and sets its mouse offset (dx, dy) in image pixels; nothing for an
    /// unknown identifier.
    void SetSelectedObject(unsigned int nUID, bool bSelected, double dx, double dy);

    /// Appends to the drawing.
    void AddObjectDrawing(ObjectPtr pObject);
    /// The objects of the drawing in progress, in the order in which they were added.
    ObjectList GetObjectDrawing() const { return m_vctDrawing; }
    /// Empties the drawing; announced even when it was empty.
    void ClearObjectDrawing();

    /// Replaces the waiting object and switches the display of its name off.
    void AddObjectDrawingWaiting(ObjectPtr pObject);
    /// Null when nothing is waiting.
    ObjectPtr GetObjectDrawingWaiting() const { return m_pWaiting; }
    /// Drops the waiting object; announced even when nothing was waiting.
    void ClearObjectDrawingWaiting();

Q_SIGNALS:
    /// A finished object has changed.
    void signal_ChangeDrawableObjectProperty(unsigned int nUID);
    /// The object has come into the list, as its first unless the whole list was replaced.
    void signal_AddDrawableObject(unsigned int nUID, QString strName);
    /// The object is still in the list.
    void signal_BeforeDeleteDrawableObject(unsigned int nUID, QString strName);
    /// The object has left the list.
    void signal_DeleteDrawableObject(unsigned int nUID, QString strName);
    /// The same finished objects stand in another order; these are the fewest whose moves make it.
    void signal_ChangeOrder(const ObjectList& vctMoved);
    /// The drawing or the waiting object has changed.
    void signal_ChangeDrawingObject();
    /// All finished objects are still in the list.
    void signal_BeforeClearObject();
    /// All finished objects have left the list at once, without the two signals above.
    void signal_ClearObject();

private:
    bool Insert(const ObjectPtr& pObject);
    void Announce(const CImageView2DDrawableObject& object);
    void Disconnect(const CImageView2DDrawableObject& object);

    ObjectList m_vctDrawing;
    ObjectPtr m_pWaiting;
    ObjectList m_vctObjects;
};
