// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/log/CLogger.h>

#include <QPointer>
#include <QWidget>
#include <set>

class QStandardItemModel;
class QTableView;
struct SLogMessage;

/// Lists the log messages as they leave the queue of CLogModel, one row each, coloured by level on a dark
/// background, and scrolls to the newest. At 500 rows it clears itself. It shows the messages from its
/// construction on, read-only. GUI thread only.
class VANTORCOMMON_EXPORT CLogView : public QWidget
{
    Q_OBJECT

public:
    /// Makes the one log model if it is not there yet.
    explicit CLogView(QWidget* pParent = nullptr);

    /// Shows the messages of these levels only, also those that are listed already; all at first. Hidden ones
    /// count among the 500.
    void SetLevels(const std::set<ELogLevel>& setLevels);

public Q_SLOTS:
    /// Adds a row. Deliberate: its time has doubled colons, "2016-05-01 14::03::07", unlike the log file's.
    void slot_NewMessage(const SLogMessage& sMessage);

protected:
    /// Scrolls to the newest row, because a hidden table does not scroll.
    void showEvent(QShowEvent* pEvent) override;

private:
    /// Sets the header's labels and widths, which every clearing drops.
    void SetUpHeader();
    void ShowRow(int nRow);

    QPointer<QStandardItemModel> m_pItemModel;
    QPointer<QTableView> m_pTableView;
    std::set<ELogLevel> m_setLevels{NORMAL, DEBUG, WARNING, ERROR};
};
