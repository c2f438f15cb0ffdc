// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CLogPanel.h"

#include "HostSettings.h"

#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <set>
#include <vector>

namespace
{
constexpr int kMargin = 4; // pixels, left of the row
}

CLogPanel::CLogPanel(QWidget* pParent) : QWidget(pParent)
{
    auto* pChoice = new QComboBox(this);
    auto* pLog = new CLogView(this);
    const std::pair<QString, std::set<ELogLevel>> levels[] = {
        {tr("All messages"), {NORMAL, DEBUG, WARNING, ERROR}},
        {tr("Without the details"), {NORMAL, WARNING, ERROR}},
        {tr("Warnings and errors"), {WARNING, ERROR}},
        {tr("Errors"), {ERROR}}};
    std::vector<std::set<ELogLevel>> vctLevels;
    for (const auto& [strText, setLevels] : levels) {
        pChoice->addItem(strText);
        vctLevels.push_back(setLevels);
    }
    auto* pLabel = new QLabel(tr("Messages that are shown:"), this);
    pLabel->setBuddy(pChoice);
    pChoice->setAccessibleName(tr("Messages that are shown"));
    pChoice->setToolTip(pChoice->accessibleName());
    connect(pChoice, qOverload<int>(&QComboBox::currentIndexChanged), this, [pLog, vctLevels](int nChoice) {
        pLog->SetLevels(vctLevels[static_cast<std::size_t>(nChoice)]);
        CSettingManager::Set(HostSettings::kLogLevels, nChoice);
    });
    const int nKept = CSettingManager::GetInt(HostSettings::kLogLevels, 0);
    pChoice->setCurrentIndex(nKept >= 0 && nKept < pChoice->count() ? nKept : 0);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(2);
    auto* pRow = new QHBoxLayout;
    pRow->setContentsMargins(kMargin, 0, 0, 0);
    pRow->addWidget(pLabel);
    pRow->addWidget(pChoice);
    pRow->addStretch();
    pLayout->addLayout(pRow);
    pLayout->addWidget(pLog, 1);
}
