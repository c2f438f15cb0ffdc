// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/log/CLogView.h>

#include <VantorCommon/log/CLogModel.h>

#include <QAbstractButton>
#include <QBrush>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <optional>

namespace
{
constexpr int c_nMaximumRows = 500;
constexpr int c_nCellPadding = 16;
constexpr QRgb c_nGround = qRgb(32, 32, 32); // white and yellow are unreadable on a light one
constexpr QRgb c_nPlainText = qRgb(192, 192, 192);

std::optional<QColor> LevelColor(ELogLevel eLevel)
{
    switch (eLevel) {
    case NORMAL:
        return QColor(0, 255, 0);
    case DEBUG:
        return QColor(255, 255, 255);
    case WARNING:
        return QColor(255, 255, 0);
    case ERROR:
        return QColor(255, 0, 0);
    }
    return {};
}
} // namespace

CLogView::CLogView(QWidget* pParent) : QWidget(pParent), m_pTableView(new QTableView)
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setSpacing(0);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pTableView);

    m_pItemModel = new QStandardItemModel(m_pTableView);
    m_pTableView->setModel(m_pItemModel);
    m_pTableView->setTextElideMode(Qt::ElideNone);
    m_pTableView->setWordWrap(false);
    m_pTableView->setShowGrid(false); // its lines suit a light background
    m_pTableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTableView->setTabKeyNavigation(false); // the key moves to the next control
    m_pTableView->setAccessibleName(QStringLiteral("Log"));
    if (auto* pCorner = m_pTableView->findChild<QAbstractButton*>()) {
        pCorner->setToolTip(QStringLiteral("Select all lines"));
        pCorner->setAccessibleName(pCorner->toolTip());
    }
    QPalette ground = m_pTableView->palette();
    ground.setColor(QPalette::Base, QColor(c_nGround));
    ground.setColor(QPalette::Text, QColor(c_nPlainText));
    m_pTableView->setPalette(ground);
    m_pTableView->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + c_nCellPadding / 4);
    SetUpHeader();
    connect(CLogModel::GetInstance(), &CLogModel::signal_NewMessage, this, &CLogView::slot_NewMessage);
}

void CLogView::SetUpHeader()
{
    m_pItemModel->setHorizontalHeaderLabels(
        {QStringLiteral("DateTime"), QStringLiteral("Type"), QStringLiteral("Message")});
    QHeaderView* pHeader = m_pTableView->horizontalHeader();
    const QFontMetrics metrics = m_pTableView->fontMetrics();
    pHeader->resizeSection(0, metrics.horizontalAdvance(QStringLiteral("0000-00-00 00::00::00")) +
                                  c_nCellPadding);
    pHeader->resizeSection(1, metrics.horizontalAdvance(QStringLiteral("WARNING")) + c_nCellPadding);
    pHeader->setStretchLastSection(true);
}

void CLogView::slot_NewMessage(const SLogMessage& sMessage)
{
    if (!m_pItemModel || !m_pTableView)
        return;
    if (m_pItemModel->rowCount() >= c_nMaximumRows) {
        m_pItemModel->clear();
        SetUpHeader();
    }
    const std::optional<QColor> color = LevelColor(sMessage.eLevel);
    QList<QStandardItem*> row;
    for (const QString& strText :
         {sMessage.dtTime.toString(QStringLiteral("yyyy-MM-dd hh::mm::ss")),
          CLogModel::GetInstance()->ToString(sMessage.eLevel), sMessage.strMessage}) {
        auto* pItem = new QStandardItem(strText);
        pItem->setEditable(false);
        if (color)
            pItem->setForeground(*color);
        row << pItem;
    }
    row.first()->setData(static_cast<int>(sMessage.eLevel));
    m_pItemModel->appendRow(row);
    ShowRow(m_pItemModel->rowCount() - 1);
    m_pTableView->scrollToBottom();
}

void CLogView::SetLevels(const std::set<ELogLevel>& setLevels)
{
    m_setLevels = setLevels;
    if (!m_pItemModel || !m_pTableView)
        return;
    for (int i = 0; i < m_pItemModel->rowCount(); ++i)
        ShowRow(i);
    m_pTableView->scrollToBottom();
}

/// Shows a row, or hides it, by its level.
void CLogView::ShowRow(int nRow)
{
    const auto eLevel = static_cast<ELogLevel>(m_pItemModel->item(nRow)->data().toInt());
    m_pTableView->setRowHidden(nRow, m_setLevels.count(eLevel) == 0);
}

void CLogView::showEvent(QShowEvent* pEvent)
{
    QWidget::showEvent(pEvent);
    if (m_pTableView) // later, when it has its size
        QTimer::singleShot(0, m_pTableView, &QTableView::scrollToBottom);
}
