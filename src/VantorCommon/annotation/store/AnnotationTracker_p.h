// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

#include <QObject>
#include <QPointer>
#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// What has become of annotations since somebody asked last: first some were deleted, then some came to their
/// places or changed, the lowest first.
struct SAnnotationChanges {
    using ObjectPtr = CImageView2DGeometryModel::ObjectPtr;

    bool bAll = false;   ///< so much that the whole set is to be read anew; everything else is empty then
    bool bOrder = false; ///< so many moved in the order that the whole order is to be read
    std::vector<std::string> vctDeleted; ///< ids
    std::vector<ObjectPtr> vctCame;      ///< the new ones, and those that moved in the order
    std::vector<ObjectPtr> vctChanged;

    bool Any() const
    {
        return bAll || bOrder || !vctDeleted.empty() || !vctCame.empty() || !vctChanged.empty();
    }
};

/// Collects what changes in a geometry model. A change costs next to nothing until it is asked for, so that
/// a drag may announce hundreds. GUI thread only.
class CAnnotationTracker : public QObject
{
public:
    using ObjectList = CImageView2DGeometryModel::ObjectList;

    /// The functions are called when the set was emptied, with the objects that went, and when an object came
    /// or went or the order changed.
    CAnnotationTracker(CImageView2DGeometryModel* pModel, std::function<void(const ObjectList&)> onClear,
                       std::function<void()> onChange);

    SAnnotationChanges Take();
    /// Counts as a change of everything: for what is not in the model.
    void ChangeAll() { m_sChanges.bAll = true; }
    int Count() const { return static_cast<int>(m_known.size()); }
    /// Replaces all objects of the model, which is told as bAll; calls neither function.
    void Replace(const ObjectList& vctObjects);

private:
    struct SKnown {
        std::string id;
        unsigned int nRevision;
    };

    void Add(unsigned int nUID);
    void Delete(unsigned int nUID);
    void Clear();
    void ReadAll();
    ObjectList Objects(const std::unordered_set<unsigned int>& uids) const;

    QPointer<CImageView2DGeometryModel> m_pModel;
    std::function<void(const ObjectList&)> m_onClear;
    std::function<void()> m_onChange;
    bool m_bReplacing = false;
    ObjectList m_vctLeaving; ///< between the two signals of a model that is emptied
    std::unordered_map<unsigned int, SKnown> m_known;
    std::unordered_set<std::string> m_ids; ///< of m_known
    std::unordered_map<unsigned int, std::string> m_deleted;
    std::unordered_set<unsigned int> m_added;
    std::unordered_set<unsigned int> m_touched;
    std::unordered_set<unsigned int> m_moved; ///< in the order
    SAnnotationChanges m_sChanges;            ///< its flags
};
