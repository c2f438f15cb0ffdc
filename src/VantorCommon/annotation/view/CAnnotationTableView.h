// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/view/CAnnotationTableModel.h>

#include <QTreeView>

/// A panel with the annotations of one 2D view as a table. Its selection is that of the annotations, whoever
/// changes it. F2 or a double click renames, a check box locks or hides (all that are selected when its row
/// is), Delete and Backspace delete, rows are dragged into another order; all of that goes out by signals, a
/// CAnnotationTableCtrl makes steps of it. It belongs to its Qt parent. GUI thread only.
class VANTORCOMMON_EXPORT CAnnotationTableView : public QTreeView
{
    Q_OBJECT

public:
    /// Empty until its model gets a geometry model.
    explicit CAnnotationTableView(QWidget* pParent = nullptr);
    ~CAnnotationTableView() override;

    /// What is shown; it belongs to the view.
    CAnnotationTableModel* GetModel() const { return m_pModel; }

Q_SIGNALS:
    /// Somebody has gone to the row of an annotation, which shall be seen.
    void signal_Show(const CAnnotationTableModel::ObjectPtr& pObject);
    /// What is selected shall be deleted.
    void signal_Delete();

protected:
    /// Keeps the keys of the table from shortcuts of the window.
    bool event(QEvent* pEvent) override;
    /// Delete and Backspace delete; the keys that go to another row show its annotation.
    void keyPressEvent(QKeyEvent* pEvent) override;
    /// F2 renames whatever column it is in.
    bool edit(const QModelIndex& index, EditTrigger eTrigger, QEvent* pEvent) override;

private:
    void TakeSelection();
    void GiveSelection(const QItemSelection& selected, const QItemSelection& deselected);
    void Show(const QModelIndex& index);

    CAnnotationTableModel* m_pModel;
    bool m_bTaking = false;    ///< the selection is being made that of the annotations
    bool m_bDifferent = false; ///< and it was another one
};
