// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

#include <QAbstractTableModel>
#include <QPointer>
#include <QStringList>
#include <functional>

class QTimer;
struct SShapeKind;

/// The finished annotations of a geometry model as a table, the topmost first.
///
/// It follows the model once the present event is over, whatever has happened by then, and changes nothing by
/// itself: what somebody edits goes out as signals, for whoever makes undoable steps. Position and size are
/// those of the bounding box, in image pixels. GUI thread only.
class VANTORCOMMON_EXPORT CAnnotationTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// @{
    /// Objects are shared with the geometry model.
    using ObjectPtr = CImageView2DGeometryModel::ObjectPtr;
    using ObjectList = CImageView2DGeometryModel::ObjectList;
    /// @}

    /// The columns; the last one is their number.
    enum EColumn : int {
        EColumn_Name,
        EColumn_Kind,
        EColumn_Position,
        EColumn_Size,
        EColumn_Locked,
        EColumn_Visible,
        EColumn_Page, ///< views show it first
        EColumn_Count
    };

    /// Empty; the Qt parent, if any, owns the model.
    explicit CAnnotationTableModel(QObject* pParent = nullptr);
    ~CAnnotationTableModel() override;

    /// Shows the annotations of another model, which is not owned, may be null and may die first.
    void SetGeometryModel(CImageView2DGeometryModel* pGeometry);
    /// Says on which page of several the annotations are, from 1 on; 0: there is nothing to say.
    void SetPage(int nPage);
    /// What SetPage has said.
    int GetPage() const { return m_nPage; }
    /// Other texts than English ones: the headers by column (missing ones stay), and the name of a kind.
    void SetTexts(const QStringList& lstHeaders, std::function<QString(const SShapeKind&)> kindText);
    /// The annotation of a row; null beyond the last one.
    ObjectPtr GetObject(int nRow) const;

    /// @{
    /// What views ask for; see EColumn. Names can be edited, locks and visibility checked.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int nRole) const override;
    QVariant headerData(int nSection, Qt::Orientation eOrientation, int nRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// @}
    /// Emits one of the signals below. @return whether it has emitted one
    bool setData(const QModelIndex& index, const QVariant& value, int nRole) override;

    /// @{
    /// Rows are dragged to another place of the same table.
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& lstIndexes) const override;
    Qt::DropActions supportedDropActions() const override;
    bool dropMimeData(const QMimeData* pData, Qt::DropAction eAction, int nRow, int nColumn,
                      const QModelIndex& parent) override;
    /// @}

Q_SIGNALS:
    /// The rows are those of the geometry model again, with its values.
    void signal_Followed();
    /// An annotation shall have a name.
    void signal_Rename(const ObjectPtr& pObject, const QString& strName);
    /// @{
    /// Annotations shall be locked or free, visible or not: all selected ones when the edited one is among
    /// them.
    void signal_SetLocked(const ObjectList& vctObjects, bool bLocked);
    void signal_SetVisible(const ObjectList& vctObjects, bool bVisible);
    /// @}
    /// Annotations shall move so that the topmost of them gets the index, counted without them.
    void signal_MoveTo(const ObjectList& vctObjects, int nIndex);

private:
    void FollowLater();
    void Follow();
    void ReplaceRows(int nFirst, int nOld, const ObjectList& vctNew);
    ObjectList WithSelected(const ObjectPtr& pObject) const;

    QPointer<CImageView2DGeometryModel> m_pGeometry;
    ObjectList m_vctRows;
    QTimer* m_pFollow;
    int m_nPage = 0;
    QStringList m_lstHeaders;
    std::function<QString(const SShapeKind&)> m_kindText;
};
