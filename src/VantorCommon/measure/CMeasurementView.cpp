// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CMeasurementView.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace Measured = Vantor::Algorithms;

namespace
{
constexpr int kMargin = 3;
constexpr int kGap = 10;        // beside the longest text of a column
constexpr int kMostWidth = 220; // of a column at first

/// A button of the bar; a click leaves the keyboard where it is.
QToolButton* AddButton(QHBoxLayout* pBar)
{
    auto* pButton = new QToolButton;
    pButton->setFocusPolicy(Qt::TabFocus);
    pButton->setAutoRaise(true);
    pButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
    pBar->addWidget(pButton);
    return pButton;
}
} // namespace

CMeasurementView::CMeasurementView(QWidget* pParent)
    : QWidget(pParent), m_pModel(new CMeasurementModel(this)), m_pTable(new QTreeView),
      m_pAllPages(new QCheckBox), m_pColumnMenu(new QMenu(this)), m_pSummary(new QLabel),
      m_translate([](const QString& strText) { return strText; })
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pLayout->setSpacing(kMargin);
    CreateBar();
    CreateTable();
    pLayout->addWidget(m_pTable, 1);
    pLayout->addWidget(m_pSummary);
    m_pSummary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pSummary->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    connect(m_pModel, &CMeasurementModel::signal_Followed, this, &CMeasurementView::TakeSelection);
    connect(m_pModel, &CMeasurementModel::signal_Followed, this, &CMeasurementView::ShowSummary);
    connect(m_pModel, &QAbstractItemModel::modelReset, this, &CMeasurementView::FitColumns);
    connect(m_pModel, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int nFirst) {
        if (nFirst == 0)
            FitColumns();
    });
    connect(m_pColumnMenu, &QMenu::aboutToShow, this, &CMeasurementView::FillColumns);
    ShowTexts();
}

CMeasurementView::~CMeasurementView() = default;

void CMeasurementView::CreateBar()
{
    auto* pBar = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(pBar);
    m_pAllPages->setFocusPolicy(Qt::TabFocus);
    pBar->addWidget(m_pAllPages);
    pBar->addStretch();
    m_pColumns = AddButton(pBar);
    m_pColumns->setMenu(m_pColumnMenu);
    m_pColumns->setPopupMode(QToolButton::InstantPopup);
    m_pCopy = AddButton(pBar);
    m_pSave = AddButton(pBar);
    connect(m_pAllPages, &QCheckBox::toggled, this, &CMeasurementView::signal_ChangeAllPages);
    connect(m_pCopy, &QToolButton::clicked, this, &CMeasurementView::slot_Copy);
    connect(m_pSave, &QToolButton::clicked, this, &CMeasurementView::signal_Save);
}

void CMeasurementView::CreateTable()
{
    m_pTable->setModel(m_pModel);
    m_pTable->setRootIsDecorated(false);
    m_pTable->setUniformRowHeights(true);
    m_pTable->setAlternatingRowColors(true);
    m_pTable->setAllColumnsShowFocus(true);
    m_pTable->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pTable->setTabKeyNavigation(false);
    m_pTable->header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_pTable->setSortingEnabled(true);
    m_pTable->header()->setStretchLastSection(false);
    m_pTable->installEventFilter(this);
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CMeasurementView::GiveSelection);
    connect(m_pTable, &QAbstractItemView::clicked, this, &CMeasurementView::GoTo);
    connect(m_pTable, &QAbstractItemView::activated, this, &CMeasurementView::GoTo);
}

void CMeasurementView::SetTexts(const CMeasurementModel::Translate& translate)
{
    if (!translate)
        return;
    m_translate = translate;
    m_pModel->SetTexts(translate);
    ShowTexts();
}

void CMeasurementView::ShowTexts()
{
    m_pAllPages->setText(m_translate(QStringLiteral("All pages")));
    m_pColumns->setText(m_translate(QStringLiteral("Columns")));
    m_pCopy->setText(m_translate(QStringLiteral("Copy")));
    m_pSave->setText(m_translate(QStringLiteral("Save...")));
    m_pTable->setAccessibleName(m_translate(QStringLiteral("Results")));
    ShowSummary();
}

bool CMeasurementView::HasAllPages() const
{
    return m_pAllPages->isChecked();
}

void CMeasurementView::FillColumns()
{
    m_pColumnMenu->clear();
    const auto& vctChosen = m_pModel->GetColumns();
    int nColumn = 0;
    for (const Measured::SMeasurementColumn& column : Measured::GetMeasurementColumns()) {
        QAction* pAction = m_pColumnMenu->addAction(m_translate(QString::fromStdString(column.title)));
        pAction->setCheckable(true);
        pAction->setChecked(std::count(vctChosen.begin(), vctChosen.end(), nColumn) != 0);
        connect(pAction, &QAction::toggled, this,
                [this, nColumn](bool bShown) { ChooseColumn(nColumn, bShown); });
        ++nColumn;
    }
}

/// The table has its columns in the order of the menu.
void CMeasurementView::ChooseColumn(int nColumn, bool bShown)
{
    std::vector<int> vctColumns = m_pModel->GetColumns();
    vctColumns.erase(std::remove(vctColumns.begin(), vctColumns.end(), nColumn), vctColumns.end());
    if (bShown)
        vctColumns.push_back(nColumn);
    std::sort(vctColumns.begin(), vctColumns.end());
    m_pModel->SetColumns(vctColumns);
    Q_EMIT signal_ChangeColumns();
}

void CMeasurementView::FitColumns()
{
    for (int i = 0; i < m_pModel->columnCount(); ++i) {
        m_pTable->resizeColumnToContents(i);
        m_pTable->setColumnWidth(i, std::min(m_pTable->columnWidth(i) + kGap, kMostWidth));
    }
    m_pTable->header()->setSortIndicator(m_pModel->GetSortedColumn(),
                                         m_pTable->header()->sortIndicatorOrder());
}

void CMeasurementView::TakeSelection()
{
    const auto isSelected = [this](int nRow) {
        const SMeasurementRow* pRow = m_pModel->GetRow(nRow);
        return pRow && pRow->nImage == m_nShown && pRow->pObject && pRow->pObject->GetSelected();
    };
    QItemSelection selection;
    const int nRows = m_pModel->rowCount();
    for (int nRow = 0; nRow < nRows; ++nRow) {
        const int nFirst = nRow;
        while (isSelected(nRow))
            ++nRow;
        if (nRow > nFirst)
            selection.select(m_pModel->index(nFirst, 0),
                             m_pModel->index(nRow - 1, m_pModel->columnCount() - 1));
    }
    m_bTaking = true;
    m_pTable->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_bTaking = false;
}

void CMeasurementView::GiveSelection(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (m_bTaking || m_pModel->IsFollowing())
        return;
    const auto give = [this](const QItemSelection& selection, bool bSelected) {
        for (const QItemSelectionRange& range : selection)
            for (int nRow = range.top(); nRow <= range.bottom(); ++nRow)
                if (const SMeasurementRow* pRow = m_pModel->GetRow(nRow);
                    pRow && pRow->pObject && pRow->nImage == m_nShown)
                    pRow->pObject->SetSelected(bSelected);
    };
    give(deselected, false);
    give(selected, true);
    ShowSummary();
}

std::vector<int> CMeasurementView::GetSelectedRows() const
{
    std::vector<int> vctRows;
    for (const QItemSelectionRange& range : m_pTable->selectionModel()->selection())
        for (int nRow = range.top(); nRow <= range.bottom(); ++nRow)
            vctRows.push_back(nRow);
    std::sort(vctRows.begin(), vctRows.end());
    vctRows.erase(std::unique(vctRows.begin(), vctRows.end()), vctRows.end());
    return vctRows;
}

void CMeasurementView::ShowSummary()
{
    std::vector<int> vctRows = GetSelectedRows();
    if (vctRows.size() < 2)
        vctRows.clear();
    const int nColumn = m_pModel->GetSortedColumn();
    const std::size_t nRows =
        vctRows.empty() ? static_cast<std::size_t>(m_pModel->rowCount()) : vctRows.size();
    QString strText = m_translate(QStringLiteral("Shapes: %1")).arg(nRows);
    if (nColumn >= 0 && !m_pModel->IsText(nColumn)) {
        const auto summary = m_pModel->Summarize(nColumn, vctRows);
        const auto number = &CMeasurementModel::NumberText;
        strText += QStringLiteral("   ") +
                   m_translate(QStringLiteral("%1: N %2, mean %3, deviation %4, minimum %5, maximum %6"))
                       .arg(m_pModel->HeaderOf(nColumn), QString::number(summary.count), number(summary.mean),
                            number(summary.deviation), number(summary.min), number(summary.max));
    }
    m_pSummary->setText(strText);
    m_pSummary->setToolTip(strText);
    m_pCopy->setEnabled(m_pModel->rowCount() > 0);
    m_pSave->setEnabled(m_pModel->rowCount() > 0);
}

void CMeasurementView::slot_Copy()
{
    const auto vctRows = m_pModel->GetMeasurements(GetSelectedRows());
    if (!vctRows.empty())
        QApplication::clipboard()->setText(QString::fromStdString(
            Measured::WriteMeasurements(vctRows, m_pModel->GetShownColumns(), Measured::ETableForm::Tsv)));
}

void CMeasurementView::GoTo(const QModelIndex& index)
{
    if (const SMeasurementRow* pRow = m_pModel->GetRow(index.row()))
        Q_EMIT signal_Show(SMeasurementRow(*pRow));
}

bool CMeasurementView::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const bool bKey = pEvent->type() == QEvent::ShortcutOverride || pEvent->type() == QEvent::KeyPress;
    if (!bKey || !static_cast<QKeyEvent*>(pEvent)->matches(QKeySequence::Copy))
        return QWidget::eventFilter(pWatched, pEvent);
    if (pEvent->type() == QEvent::KeyPress)
        slot_Copy();
    pEvent->accept();
    return true;
}
