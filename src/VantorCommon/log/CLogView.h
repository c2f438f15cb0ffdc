// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QWidget>

class QStandardItemModel;
class QTableView;
struct SLogMessage;

/// Lists the log messages as they leave the queue of CLogModel, one row each, coloured by level on a dark
/// ground, the newest in sight. At 500 rows it is emptied and starts again. It shows what is announced from
/// its construction on, and cannot be edited. GUI thread only.
class VANTORCOMMON_EXPORT CLogView : public QWidget
{
    Q_OBJECT

public:
    /// Makes the one log model if it is not there yet.
    explicit CLogView(QWidget* pParent = nullptr);

public Q_SLOTS:
    /// Adds a row. Deliberate: its time has doubled colons, "2016-05-01 14::03::07", unlike the log file's.
    void slot_NewMessage(const SLogMessage& sMessage);

protected:
    /// A hidden table does not scroll: it catches up.
    void showEvent(QShowEvent* pEvent) override;

private:
    /// The header's labels and widths, which go with every clearing.
    void SetUpHeader();

    QPointer<QStandardItemModel> m_pItemModel;
    QPointer<QTableView> m_pTableView;
};
