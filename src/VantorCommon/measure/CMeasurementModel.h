// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/MeasurementTable.h>
#include <VantorCommon/Export.h>

#include <QAbstractTableModel>
#include <functional>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;

/// A row of the table: the measurements of one annotation.
struct SMeasurementRow {
    std::shared_ptr<CImageView2DDrawableObject>
        pObject;    ///< shared with the models of annotations; may be null
    int nImage = 0; ///< index of its image in the list of the view
    std::shared_ptr<const Vantor::Algorithms::SMeasurement> pMeasured; ///< not null
};

/// Measurements as a table, sorted by the numbers of a column. It shows what it is given and changes nothing
/// by itself. GUI thread only.
class VANTORCOMMON_EXPORT CMeasurementModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Another text than an English one.
    using Translate = std::function<QString(const QString& strText)>;

    /// Without rows, with the usual columns; the Qt parent, if any, owns the model.
    explicit CMeasurementModel(QObject* pParent = nullptr);
    ~CMeasurementModel() override;

    /// Shows other rows. Emits signal_Followed.
    void SetRows(std::vector<SMeasurementRow> vctRows);
    /// Shows other columns.
    /// @param vctColumns  indices of Vantor::Algorithms::GetMeasurementColumns; others, and repeated ones,
    /// are
    ///                    left out
    void SetColumns(const std::vector<int>& vctColumns);
    const std::vector<int>& GetColumns() const { return m_vctColumns; } ///< as given
    /// Whether the column "page" stands first, chosen or not.
    void SetPages(bool bPages);
    /// The columns of the table, by index of Vantor::Algorithms::GetMeasurementColumns.
    const std::vector<int>& GetShownColumns() const { return m_vctShown; }
    /// For the titles of columns and the kinds of annotations.
    void SetTexts(Translate translate);

    /// The row of the table; null beyond the last one.
    const SMeasurementRow* GetRow(int nRow) const;
    /// The measurements of some rows, of all without any.
    std::vector<Vantor::Algorithms::SMeasurement> GetMeasurements(const std::vector<int>& vctRows = {}) const;
    /// The statistics of a column of the table over some rows, over all without any.
    Vantor::Algorithms::SMeasurementSummary Summarize(int nColumn,
                                                      const std::vector<int>& vctRows = {}) const;
    /// The title of a column of the table with its unit; empty beyond the last one.
    QString HeaderOf(int nColumn) const;
    /// The column of the table by which it is sorted; -1 without one, or when it is not shown.
    int GetSortedColumn() const;
    /// Whether a column of the table has texts, which have no statistics.
    bool IsText(int nColumn) const;
    /// A number as people read it: whole ones whole, others with three digits behind the point.
    static QString NumberText(double dblValue);
    /// Whether rows are being replaced, so that a selection that changes is nobody's choice.
    bool IsFollowing() const { return m_bFollowing; }

    /// @{
    /// What views ask for.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int nRole) const override;
    QVariant headerData(int nSection, Qt::Orientation eOrientation, int nRole) const override;
    /// @}
    /// Sorts by a column of the table, texts as texts and numbers as numbers; rows without a value stand
    /// last, equal ones as they were given. Emits signal_Followed. No such column: as they were given.
    void sort(int nColumn, Qt::SortOrder eOrder) override;

Q_SIGNALS:
    /// Rows, their order or their columns are others.
    void signal_Followed();

private:
    void Show();
    void ShowColumns();
    void SortRows();
    int ColumnAt(int nColumn) const;

    std::vector<SMeasurementRow> m_vctGiven; ///< in the order in which they came
    std::vector<SMeasurementRow> m_vctRows;  ///< sorted
    std::vector<int> m_vctColumns;
    std::vector<int> m_vctShown;
    bool m_bPages = false;
    int m_nSorted = -1; ///< index of GetMeasurementColumns
    Qt::SortOrder m_eOrder = Qt::AscendingOrder;
    std::string m_strUnit; ///< of all rows; empty for several
    Translate m_translate;
    bool m_bFollowing = false;
};
