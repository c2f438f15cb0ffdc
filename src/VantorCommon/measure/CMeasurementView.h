// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/measure/CMeasurementModel.h>

#include <QWidget>

class QCheckBox;
class QItemSelection;
class QLabel;
class QMenu;
class QModelIndex;
class QToolButton;
class QTreeView;

/// A panel with the measurements of annotations: a table that a click on a header sorts, a menu of its
/// columns, a line with the statistics of the sorted column over the selected rows (over all, with fewer than
/// two). Its selection is that of the annotations on show. A CMeasurementCtrl fills it. It belongs to its Qt
/// parent. GUI thread only.
class VANTORCOMMON_EXPORT CMeasurementView : public QWidget
{
    Q_OBJECT

public:
    /// Empty until its model gets rows.
    explicit CMeasurementView(QWidget* pParent = nullptr);
    ~CMeasurementView() override;

    CMeasurementModel* GetModel() const { return m_pModel; } ///< what is shown; it belongs to the view
    /// Other texts than English ones, for everything but names.
    void SetTexts(const CMeasurementModel::Translate& translate);
    /// The image on show: rows of others do not share the selection of their annotations.
    void SetShownImage(int nImage) { m_nShown = nImage; }
    /// Whether annotations of all images of the list are wanted; off at first.
    bool HasAllPages() const;
    /// The selected rows from top to bottom.
    std::vector<int> GetSelectedRows() const;

public Q_SLOTS:
    /// Puts the selected rows, all without any, on the clipboard: TSV with headers in English.
    void slot_Copy();

Q_SIGNALS:
    /// Somebody has chosen other columns.
    void signal_ChangeColumns();
    /// Somebody wants the rows of one page, or of all.
    void signal_ChangeAllPages(bool bAll);
    /// The table shall be saved.
    void signal_Save();
    /// Somebody has gone to a row, whose annotation shall be seen.
    void signal_Show(const SMeasurementRow& row);

protected:
    /// Keeps the key that copies from shortcuts of the window.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void CreateBar();
    void CreateTable();
    void ShowTexts();
    void FillColumns();
    void ChooseColumn(int nColumn, bool bShown);
    void TakeSelection();
    void GiveSelection(const QItemSelection& selected, const QItemSelection& deselected);
    void ShowSummary();
    void FitColumns();
    void GoTo(const QModelIndex& index);

    CMeasurementModel* m_pModel;
    QTreeView* m_pTable;
    QCheckBox* m_pAllPages;
    QToolButton* m_pColumns;
    QMenu* m_pColumnMenu;
    QToolButton* m_pCopy;
    QToolButton* m_pSave;
    QLabel* m_pSummary;
    CMeasurementModel::Translate m_translate;
    int m_nShown = 0;
    bool m_bTaking = false; ///< the selection is being made that of the annotations
};
