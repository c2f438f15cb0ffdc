// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CPreferencesPage.h"

#include <VantorCommon/settings/CSettingManager.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

CPreferencesPage::CPreferencesPage(const QStringList& lstLanguages, QWidget* pParent)
    : QWidget(pParent), m_lstLanguages(lstLanguages)
{
    auto* pRows = new QFormLayout(this);
    for (const Preferences::SRow& row : Preferences::Rows()) {
        AddRow(pRows, row);
        if (row.strKey != CSettingManager::kLoaderResolutionY)
            continue;
        auto* pReload = new QPushButton(tr("&Open the Documents Again"), this);
        pReload->setAutoDefault(false);
        pReload->setToolTip(tr("Documents that are open keep their resolution until then"));
        connect(pReload, &QPushButton::clicked, this, &CPreferencesPage::signal_Reload);
        pRows->addRow(QString(), pReload);
    }
    ShowSettings();
}

void CPreferencesPage::AddRow(QFormLayout* pRows, const Preferences::SRow& row)
{
    switch (row.eKind) {
    case Preferences::EKind_Number:
        return pRows->addRow(row.strLabel, MakeNumber(row));
    case Preferences::EKind_Switch:
        return pRows->addRow(MakeSwitch(row));
    case Preferences::EKind_Text:
        return pRows->addRow(row.strLabel, MakeText(row));
    case Preferences::EKind_Folder:
        return pRows->addRow(row.strLabel, MakeFolder(row));
    }
}

QWidget* CPreferencesPage::MakeNumber(const Preferences::SRow& row)
{
    auto* pBox = new QSpinBox(this);
    pBox->setObjectName(row.strKey);
    pBox->setRange(row.nMinimum, row.nMaximum);
    pBox->setSuffix(row.strSuffix);
    pBox->setKeyboardTracking(false); // a number that is being typed is none yet
    connect(pBox, qOverload<int>(&QSpinBox::valueChanged), this,
            [this, strKey = row.strKey](int nValue) { Enter(strKey, nValue); });
    m_vctShow.emplace_back([pBox, strKey = row.strKey] { pBox->setValue(Preferences::Number(strKey)); });
    return pBox;
}

QWidget* CPreferencesPage::MakeSwitch(const Preferences::SRow& row)
{
    auto* pBox = new QCheckBox(row.strLabel, this);
    pBox->setObjectName(row.strKey);
    connect(pBox, &QCheckBox::toggled, this,
            [this, strKey = row.strKey](bool bOn) { Enter(strKey, bOn ? 1 : 0); });
    m_vctShow.emplace_back([pBox, strKey = row.strKey] { pBox->setChecked(Preferences::IsOn(strKey)); });
    return pBox;
}

/// A language, or several: "eng+kor". Others than the installed ones can be typed.
QWidget* CPreferencesPage::MakeText(const Preferences::SRow& row)
{
    auto* pBox = new QComboBox(this);
    pBox->setObjectName(row.strKey);
    pBox->setEditable(true);
    pBox->setInsertPolicy(QComboBox::NoInsert);
    pBox->addItems(m_lstLanguages);
    connect(pBox, &QComboBox::currentTextChanged, this, [this, strKey = row.strKey](const QString& strText) {
        if (!strText.contains(QLatin1Char('\''))) // which the settings refuse
            Enter(strKey, strText.trimmed());
    });
    m_vctShow.emplace_back([pBox, strKey = row.strKey] { pBox->setEditText(Preferences::Text(strKey)); });
    return pBox;
}

QWidget* CPreferencesPage::MakeFolder(const Preferences::SRow& row)
{
    auto* pPair = new QWidget(this);
    auto* pLine = new QLineEdit(pPair);
    pLine->setObjectName(row.strKey);
    pLine->setAccessibleName(QString(row.strLabel).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    pLine->setPlaceholderText(tr("Where the program was started"));
    auto* pChoose = new QPushButton(tr("C&hoose..."), pPair);
    pChoose->setAutoDefault(false);
    auto* pLayout = new QHBoxLayout(pPair);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pLine, 1);
    pLayout->addWidget(pChoose);
    pPair->setFocusProxy(pLine);
    connect(pLine, &QLineEdit::textChanged, this, [this, strKey = row.strKey](const QString& strText) {
        if (!strText.contains(QLatin1Char('\'')))
            Enter(strKey, strText);
    });
    connect(pChoose, &QPushButton::clicked, this, [this, pLine] {
        const QString strFolder = QFileDialog::getExistingDirectory(this, QString(), pLine->text());
        if (!strFolder.isEmpty())
            pLine->setText(QDir::toNativeSeparators(strFolder));
    });
    m_vctShow.emplace_back([pLine, strKey = row.strKey] { pLine->setText(Preferences::Text(strKey)); });
    return pPair;
}

void CPreferencesPage::ShowSettings()
{
    const QSignalBlocker blocker(this);
    for (const auto& show : m_vctShow)
        show();
}

void CPreferencesPage::Enter(const QString& strKey, const QVariant& value)
{
    if (signalsBlocked()) // it is only being shown
        return;
    Preferences::Set(strKey, value);
    Q_EMIT signal_Changed();
}
