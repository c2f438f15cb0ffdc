// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CAnnotationTableView.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QHeaderView>
#include <QKeyEvent>
#include <utility>

namespace
{
bool IsOfTable(const QKeyEvent& event)
{
    return event.key() == Qt::Key_F2 || event.key() == Qt::Key_Delete || event.key() == Qt::Key_Backspace;
}

void SetSelected(const CAnnotationTableModel& model, const QItemSelection& selection, bool bSelected)
{
    for (const QItemSelectionRange& range : selection)
        for (int nRow = range.top(); nRow <= range.bottom(); ++nRow)
            if (const auto pObject = model.GetObject(nRow))
                pObject->SetSelected(bSelected);
}
} // namespace

CAnnotationTableView::CAnnotationTableView(QWidget* pParent)
    : QTreeView(pParent), m_pModel(new CAnnotationTableModel(this))
{
    setModel(m_pModel);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(EditKeyPressed | DoubleClicked);
    setDragDropMode(InternalMove);
    setTabKeyNavigation(false);
    header()->setMinimumSectionSize(20);
    header()->moveSection(CAnnotationTableModel::EColumn_Page, 0);
    setColumnHidden(CAnnotationTableModel::EColumn_Page, true);
    connect(m_pModel, &CAnnotationTableModel::signal_Followed, this, &CAnnotationTableView::TakeSelection);
    connect(m_pModel, &CAnnotationTableModel::signal_Followed, this,
            [this] { setColumnHidden(CAnnotationTableModel::EColumn_Page, m_pModel->GetPage() == 0); });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CAnnotationTableView::GiveSelection);
    connect(this, &QAbstractItemView::clicked, this, &CAnnotationTableView::Show);
}

CAnnotationTableView::~CAnnotationTableView() = default;

void CAnnotationTableView::TakeSelection()
{
    QItemSelection selection;
    const int nRows = m_pModel->rowCount();
    for (int nRow = 0; nRow < nRows; ++nRow) {
        const int nFirst = nRow;
        while (nRow < nRows && m_pModel->GetObject(nRow)->GetSelected())
            ++nRow;
        if (nRow > nFirst)
            selection.select(m_pModel->index(nFirst, 0),
                             m_pModel->index(nRow - 1, CAnnotationTableModel::EColumn_Count - 1));
    }
    m_bTaking = true;
    m_bDifferent = false;
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (m_bDifferent && !selection.isEmpty() && !hasFocus())
        selectionModel()->setCurrentIndex(m_pModel->index(selection.first().top(), 0),
                                          QItemSelectionModel::NoUpdate);
    m_bTaking = false;
}

void CAnnotationTableView::GiveSelection(const QItemSelection& selected, const QItemSelection& deselected)
{
    m_bDifferent = true;
    if (m_bTaking)
        return;
    SetSelected(*m_pModel, deselected, false);
    SetSelected(*m_pModel, selected, true);
}

void CAnnotationTableView::Show(const QModelIndex& index)
{
    if (const auto pObject = m_pModel->GetObject(index.row()))
        Q_EMIT signal_Show(pObject);
}

bool CAnnotationTableView::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ShortcutOverride && IsOfTable(*static_cast<QKeyEvent*>(pEvent))) {
        pEvent->accept();
        return true;
    }
    return QTreeView::event(pEvent);
}

void CAnnotationTableView::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Delete || pEvent->key() == Qt::Key_Backspace) {
        Q_EMIT signal_Delete();
        return;
    }
    const QModelIndex before = currentIndex();
    QTreeView::keyPressEvent(pEvent);
    if (currentIndex().row() != before.row())
        Show(currentIndex());
}

bool CAnnotationTableView::edit(const QModelIndex& index, EditTrigger eTrigger, QEvent* pEvent)
{
    const bool bRename = eTrigger == EditKeyPressed && index.isValid();
    return QTreeView::edit(bRename ? index.sibling(index.row(), CAnnotationTableModel::EColumn_Name) : index,
                           eTrigger, pEvent);
}
