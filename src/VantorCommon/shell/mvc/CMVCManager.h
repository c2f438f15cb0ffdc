// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <optional>
#include <vector>

class CBaseCtrl;
class CBaseModel;
class QObject;
class QWidget;

/// One record of the registry. The pointers are not owned; any of them may be null.
struct SMVC {
    CBaseModel* pModel; ///< the state
    CBaseCtrl* pCtrl;   ///< what connects the two
    QWidget* pView;     ///< the widget; with the host's main window it stands alone
};

/// The same three pointers, as the centre lists its viewers.
struct SMVCItem {
    CBaseModel* pModel; ///< a CImageViewerModel
    CBaseCtrl* pCtrl;   ///< a CImageViewerCtrl
    QWidget* pView;     ///< a CImageViewer
};

/// The process-wide registry of triples, in which code finds objects to which it has no pointer. GUI thread
/// only.
///
/// A record disappears when one of its objects is destroyed, so that a look-up never returns a dangling
/// pointer.
class VANTORCOMMON_EXPORT CMVCManager
{
public:
    CMVCManager() = delete;

    /// Appends a record without checking for duplicates or nulls. A host registers its main window alone,
    /// with nulls for the rest: the screen capture minimises that window. Deliberate: the order of the
    /// arguments (model, view, controller) is not the order of the record's fields.
    static void PushMVC(CBaseModel* pModel, QWidget* pView, CBaseCtrl* pCtrl);

    /// The record pushed first among those for which the predicate (taking a const SMVC&) holds.
    template <class Predicate> static std::optional<SMVC> FindFirst(Predicate matches)
    {
        for (const SMVC& item : m_vctItems)
            if (matches(item))
                return item;
        return std::nullopt;
    }

    /// All records, oldest first.
    static std::vector<SMVC> m_vctItems;

private:
    static void RemoveWith(const QObject* pObject);
};
