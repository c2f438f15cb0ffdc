// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CJobBar.h"

#include "LibraryTexts.h"

#include <QAccessible>
#include <QDateTime>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

namespace
{
constexpr int kIntervalMs = 100;
constexpr qint64 kQuickMs = 300; // what ends before is not listed
constexpr std::size_t kMaxRows = 3;
constexpr int kBarWidth = 100;
constexpr int kSteps = 1000;  // of a bar
constexpr int kMaxTitle = 32; // characters
} // namespace

CJobBar::CJobBar(QWidget* pParent)
    : QWidget(pParent), m_pLayout(new QHBoxLayout(this)), m_pMore(new QLabel(this))
{
    setAccessibleName(tr("Running work"));
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->addWidget(m_pMore);
    m_pMore->hide();
    m_timer.setInterval(kIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &CJobBar::Update);
    CJobs& jobs = CJobs::Get();
    connect(&jobs, &CJobs::signal_Changed, this, &CJobBar::Update);
    jobs.SetMemoryQuestion([this](const QString& strTitle, qint64 nNeeded, qint64 nFree) {
        return MayBegin(strTitle, nNeeded, nFree);
    });
}

CJobBar::~CJobBar()
{
    CJobs::Get().SetMemoryQuestion({});
}

void CJobBar::Update()
{
    const auto vctJobs = CJobs::Get().GetJobs();
    const auto isOver = [&](const SRow& row) {
        return std::find(vctJobs.begin(), vctJobs.end(), row.pJob) == vctJobs.end();
    };
    for (const SRow& row : m_vctRows)
        if (isOver(row))
            row.pWidget->deleteLater();
    m_vctRows.erase(std::remove_if(m_vctRows.begin(), m_vctRows.end(), isOver), m_vctRows.end());
    const qint64 nNow = QDateTime::currentMSecsSinceEpoch();
    QHash<const CJob*, qint64> begun;
    int nHidden = 0;
    for (const auto& pJob : vctJobs) {
        begun[pJob.get()] = m_begun.value(pJob.get(), nNow);
        const bool bListed = std::any_of(m_vctRows.begin(), m_vctRows.end(),
                                         [&](const SRow& row) { return row.pJob == pJob; });
        if (bListed || nNow - begun[pJob.get()] < kQuickMs)
            continue;
        if (m_vctRows.size() < kMaxRows)
            AddRow(pJob);
        else
            ++nHidden;
    }
    m_begun = begun;
    for (const SRow& row : m_vctRows)
        row.pBar->setValue(qRound(row.pJob->GetProgress().GetDone() * kSteps));
    m_pMore->setText(tr("and %n more", nullptr, nHidden));
    m_pMore->setVisible(nHidden > 0);
    if (vctJobs.empty())
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
}

void CJobBar::AddRow(const CJobs::JobPtr& pJob)
{
    const QString strTitle = LibraryTexts::Sentence(pJob->GetTitle());
    auto* pWidget = new QWidget(this);
    auto* pText = new QLabel(
        strTitle.size() > kMaxTitle ? strTitle.left(kMaxTitle) + QChar(0x2026) : strTitle, pWidget);
    pText->setTextFormat(Qt::PlainText);
    pText->setToolTip(strTitle.toHtmlEscaped());
    pText->setAccessibleName(tr("%1 is running").arg(strTitle));
    auto* pBar = new QProgressBar(pWidget);
    pBar->setRange(0, kSteps);
    pBar->setFixedWidth(kBarWidth);
    pBar->setAccessibleName(strTitle);
    auto* pCancel = new QToolButton(pWidget);
    pCancel->setIcon(QIcon(QStringLiteral(":/Image/close.png")));
    pCancel->setAutoRaise(true);
    pCancel->setFocusPolicy(Qt::TabFocus);
    pCancel->setToolTip(tr("Cancel: %1").arg(strTitle).toHtmlEscaped());
    pCancel->setAccessibleName(tr("Cancel: %1").arg(strTitle));
    connect(pCancel, &QToolButton::clicked, this, [pJob, pCancel] {
        pCancel->setEnabled(false);
        CJobs::Get().Cancel(pJob);
    });
    auto* pLayout = new QHBoxLayout(pWidget);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pText);
    pLayout->addWidget(pBar);
    pLayout->addWidget(pCancel);
    m_pLayout->insertWidget(m_pLayout->count() - 1, pWidget);
    m_vctRows.push_back({pJob, pWidget, pBar});
    QAccessibleEvent alert(pText, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

bool CJobBar::MayBegin(const QString& strTitle, qint64 nNeeded, qint64 nFree)
{
    QMessageBox box(QMessageBox::Warning, tr("Little Memory"),
                    tr("%1 may need %2 of memory; %3 are free.")
                        .arg(LibraryTexts::Sentence(strTitle), QLocale().formattedDataSize(nNeeded),
                             QLocale().formattedDataSize(nFree)),
                    QMessageBox::NoButton, window());
    box.setTextFormat(Qt::PlainText);
    const auto* pBegin = box.addButton(tr("&Begin"), QMessageBox::AcceptRole);
    auto* pCancel = box.addButton(tr("&Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(pCancel);
    box.setEscapeButton(pCancel);
    box.exec();
    return box.clickedButton() == pBegin;
}
