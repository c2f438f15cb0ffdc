// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CMeasurementModel.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Measured = Vantor::Algorithms;
using Vantor::Algorithms::EMeasure;
using Vantor::Algorithms::SMeasurement;

namespace
{
constexpr double kWhole = 1e15; // from here on every double is a whole number, or nearly

bool IsKnown(int nColumn)
{
    return nColumn >= 0 && nColumn < static_cast<int>(Measured::GetMeasurementColumns().size());
}

const Measured::SMeasurementColumn& About(int nColumn)
{
    return Measured::GetMeasurementColumns()[static_cast<std::size_t>(nColumn)];
}

double ValueOf(const SMeasurementRow& row, int nColumn)
{
    return row.pMeasured->values[static_cast<std::size_t>(nColumn)];
}

/// For std::stable_sort. NaN comes last in both orders.
bool ComesBefore(double a, double b, bool bAscending)
{
    if (std::isnan(a) || std::isnan(b))
        return !std::isnan(a) && std::isnan(b);
    return bAscending ? a < b : b < a;
}
} // namespace

CMeasurementModel::CMeasurementModel(QObject* pParent)
    : QAbstractTableModel(pParent), m_vctColumns(Measured::GetUsualMeasurementColumns()),
      m_vctShown(m_vctColumns), m_translate([](const QString& strText) { return strText; })
{
}

CMeasurementModel::~CMeasurementModel() = default;

void CMeasurementModel::SetRows(std::vector<SMeasurementRow> vctRows)
{
    m_vctGiven = std::move(vctRows);
    Show();
}

/// Rows are places: they come and go at the end, and all of them change.
void CMeasurementModel::Show()
{
    m_bFollowing = true;
    const auto nNow = static_cast<int>(m_vctGiven.size());
    const int nBefore = rowCount();
    if (nNow < nBefore)
        beginRemoveRows({}, nNow, nBefore - 1);
    else if (nNow > nBefore)
        beginInsertRows({}, nBefore, nNow - 1);
    m_vctRows = m_vctGiven;
    SortRows();
    const bool bSame = std::all_of(m_vctRows.begin(), m_vctRows.end(), [this](const SMeasurementRow& row) {
        return row.pMeasured->unit == m_vctRows.front().pMeasured->unit;
    });
    m_strUnit = m_vctRows.empty() ? "pixel" : bSame ? m_vctRows.front().pMeasured->unit : std::string();
    if (nNow < nBefore)
        endRemoveRows();
    else if (nNow > nBefore)
        endInsertRows();
    if (nNow > 0)
        Q_EMIT dataChanged(index(0, 0), index(nNow - 1, columnCount() - 1));
    if (columnCount() > 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    m_bFollowing = false;
    Q_EMIT signal_Followed();
}

void CMeasurementModel::SortRows()
{
    if (!IsKnown(m_nSorted))
        return;
    const bool bAscending = m_eOrder == Qt::AscendingOrder;
    const bool bText = About(m_nSorted).measure == EMeasure::Text;
    std::stable_sort(m_vctRows.begin(), m_vctRows.end(),
                     [=](const SMeasurementRow& a, const SMeasurementRow& b) {
                         if (!bText)
                             return ComesBefore(ValueOf(a, m_nSorted), ValueOf(b, m_nSorted), bAscending);
                         const int nOrder = Measured::MeasurementText(*a.pMeasured, m_nSorted)
                                                .compare(Measured::MeasurementText(*b.pMeasured, m_nSorted));
                         return bAscending ? nOrder < 0 : nOrder > 0;
                     });
}

void CMeasurementModel::sort(int nColumn, Qt::SortOrder eOrder)
{
    m_nSorted = ColumnAt(nColumn);
    m_eOrder = eOrder;
    Show();
}

void CMeasurementModel::SetColumns(const std::vector<int>& vctColumns)
{
    m_vctColumns.clear();
    for (const int nColumn : vctColumns)
        if (IsKnown(nColumn) && std::count(m_vctColumns.begin(), m_vctColumns.end(), nColumn) == 0)
            m_vctColumns.push_back(nColumn);
    ShowColumns();
}

void CMeasurementModel::SetPages(bool bPages)
{
    if (std::exchange(m_bPages, bPages) != bPages)
        ShowColumns();
}

void CMeasurementModel::ShowColumns()
{
    m_bFollowing = true;
    beginResetModel();
    m_vctShown = m_vctColumns;
    const int nPage = Measured::FindMeasurementColumn("page");
    if (m_bPages && std::count(m_vctShown.begin(), m_vctShown.end(), nPage) == 0)
        m_vctShown.insert(m_vctShown.begin(), nPage);
    endResetModel();
    m_bFollowing = false;
    Q_EMIT signal_Followed();
}

void CMeasurementModel::SetTexts(Translate translate)
{
    if (!translate)
        return;
    m_translate = std::move(translate);
    Show();
}

const SMeasurementRow* CMeasurementModel::GetRow(int nRow) const
{
    return nRow >= 0 && nRow < rowCount() ? &m_vctRows[static_cast<std::size_t>(nRow)] : nullptr;
}

std::vector<SMeasurement> CMeasurementModel::GetMeasurements(const std::vector<int>& vctRows) const
{
    std::vector<SMeasurement> vctMeasurements;
    if (vctRows.empty())
        for (const SMeasurementRow& row : m_vctRows)
            vctMeasurements.push_back(*row.pMeasured);
    for (const int nRow : vctRows)
        if (const SMeasurementRow* pRow = GetRow(nRow))
            vctMeasurements.push_back(*pRow->pMeasured);
    return vctMeasurements;
}

Measured::SMeasurementSummary CMeasurementModel::Summarize(int nColumn, const std::vector<int>& vctRows) const
{
    const int nKnown = ColumnAt(nColumn);
    std::vector<double> vctValues;
    if (IsKnown(nKnown) && vctRows.empty())
        for (const SMeasurementRow& row : m_vctRows)
            vctValues.push_back(ValueOf(row, nKnown));
    for (const int nRow : vctRows)
        if (const SMeasurementRow* pRow = GetRow(nRow); pRow && IsKnown(nKnown))
            vctValues.push_back(ValueOf(*pRow, nKnown));
    return Measured::SummarizeValues(vctValues);
}

QString CMeasurementModel::HeaderOf(int nColumn) const
{
    const int nKnown = ColumnAt(nColumn);
    if (!IsKnown(nKnown))
        return {};
    const QString strTitle = QString::fromStdString(About(nKnown).title);
    const QString strHeader = QString::fromStdString(Measured::MeasurementHeader(nKnown, m_strUnit));
    return m_translate(strTitle) + strHeader.mid(strTitle.size());
}

int CMeasurementModel::GetSortedColumn() const
{
    const auto it = std::find(m_vctShown.begin(), m_vctShown.end(), m_nSorted);
    return it != m_vctShown.end() ? static_cast<int>(it - m_vctShown.begin()) : -1;
}

bool CMeasurementModel::IsText(int nColumn) const
{
    return IsKnown(ColumnAt(nColumn)) && About(ColumnAt(nColumn)).measure == EMeasure::Text;
}

QString CMeasurementModel::NumberText(double dblValue)
{
    if (std::isnan(dblValue))
        return {};
    if (std::abs(dblValue) >= kWhole)
        return QString::number(dblValue, 'g', 6);
    if (dblValue == std::floor(dblValue))
        return QString::number(static_cast<qint64>(dblValue));
    const bool bSmall = std::abs(dblValue) < 1.0;
    return bSmall ? QString::number(dblValue, 'g', 4) : QString::number(dblValue, 'f', 3);
}

int CMeasurementModel::ColumnAt(int nColumn) const
{
    return nColumn >= 0 && nColumn < columnCount() ? m_vctShown[static_cast<std::size_t>(nColumn)] : -1;
}

int CMeasurementModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_vctRows.size());
}

int CMeasurementModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_vctShown.size());
}

QVariant CMeasurementModel::data(const QModelIndex& index, int nRole) const
{
    const SMeasurementRow* pRow = GetRow(index.row());
    const int nColumn = ColumnAt(index.column());
    if (!pRow || !IsKnown(nColumn))
        return {};
    const bool bText = IsText(index.column());
    if (nRole == Qt::TextAlignmentRole)
        return QVariant::fromValue<int>((bText ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (nRole != Qt::DisplayRole)
        return {};
    if (!bText)
        return NumberText(ValueOf(*pRow, nColumn));
    const QString strText = QString::fromStdString(Measured::MeasurementText(*pRow->pMeasured, nColumn));
    return About(nColumn).key == "kind" ? m_translate(strText) : strText;
}

QVariant CMeasurementModel::headerData(int nSection, Qt::Orientation eOrientation, int nRole) const
{
    if (eOrientation != Qt::Horizontal)
        return {};
    if (nRole == Qt::TextAlignmentRole)
        return QVariant::fromValue<int>((IsText(nSection) ? Qt::AlignLeft : Qt::AlignRight) |
                                        Qt::AlignVCenter);
    return nRole == Qt::DisplayRole ? QVariant(HeaderOf(nSection)) : QVariant();
}
