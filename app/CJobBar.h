// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJobs.h>

#include <QHash>
#include <QTimer>
#include <QWidget>
#include <vector>

class QHBoxLayout;
class QLabel;
class QProgressBar;

/// The place of the status bar that lists what runs beside the window, each with its progress and a button
/// that cancels it. What ends at once is not listed. Asks before a job begins that needs more memory than is
/// free.
class CJobBar : public QWidget
{
    Q_OBJECT

public:
    explicit CJobBar(QWidget* pParent);
    ~CJobBar() override;

private:
    struct SRow {
        CJobs::JobPtr pJob;
        QWidget* pWidget;
        QProgressBar* pBar;
    };

    void Update();
    void AddRow(const CJobs::JobPtr& pJob);
    bool MayBegin(const QString& strTitle, qint64 nNeeded, qint64 nFree);

    QHBoxLayout* m_pLayout;
    QLabel* m_pMore; ///< how many are not shown
    QTimer m_timer;  ///< while something runs
    std::vector<SRow> m_vctRows;
    QHash<const CJob*, qint64> m_begun; ///< milliseconds of the clock
};
