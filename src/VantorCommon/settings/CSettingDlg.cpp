// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingDlg.h>

#include <VantorCommon/settings/CSettingManager.h>

#include <QFormLayout>
#include <QGroupBox>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
constexpr int c_nMaximumResolution = 9999;
}

CSettingDlg::CSettingDlg(QWidget* pParent) : QDialog(pParent), m_pTabs(new QTabWidget)
{
    setWindowTitle(QStringLiteral("Settings"));
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pTabs);
    CreateView();
}

void CSettingDlg::CreateView()
{
    if (m_pResolutionX)
        return;
    auto* pGroup = new QGroupBox(QStringLiteral("PDF"));
    auto* pRows = new QFormLayout(pGroup);
    m_pResolutionX =
        AddResolution(pRows, QStringLiteral("Resolution X:"), CSettingManager::kDialogResolutionX);
    m_pResolutionY =
        AddResolution(pRows, QStringLiteral("Resolution Y:"), CSettingManager::kDialogResolutionY);

    auto* pPage = new QWidget;
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->setAlignment(Qt::AlignTop);
    pLayout->addWidget(pGroup);
    AddSettingTab(pPage, QStringLiteral("General"));
}

QSpinBox* CSettingDlg::AddResolution(QFormLayout* pRows, const QString& strLabel, const QString& strKey)
{
    auto* pBox = new QSpinBox;
    pBox->setObjectName(strKey);
    pBox->setMaximum(c_nMaximumResolution);
    pRows->addRow(strLabel, pBox);
    connect(pBox, qOverload<int>(&QSpinBox::valueChanged), this, &CSettingDlg::slot_ChangeValueInt);
    return pBox;
}

void CSettingDlg::AddSettingTab(QWidget* pPage, const QString& strTitle)
{
    if (pPage)
        m_pTabs->addTab(pPage, strTitle);
}

void CSettingDlg::UpdateParameter()
{
    ShowSetting(m_pResolutionX);
    ShowSetting(m_pResolutionY);
}

void CSettingDlg::ShowSetting(QSpinBox* pBox)
{
    const int nSetting = CSettingManager::GetInt(pBox->objectName(), 0);
    if (pBox == m_pAnnouncing)
        m_mapStored[pBox] = nSetting;
    const auto itStored = m_mapStored.find(pBox);
    if (itStored != m_mapStored.end() && itStored->second == nSetting)
        return;
    m_mapStored.erase(pBox);
    const QSignalBlocker blocker(pBox);
    pBox->setValue(nSetting);
}

int CSettingDlg::GetGeneralPDFResolutionX() const
{
    return m_pResolutionX->value();
}

int CSettingDlg::GetGeneralPDFResolutionY() const
{
    return m_pResolutionY->value();
}

void CSettingDlg::Announce(const QVariant& value)
{
    QObject* pEditor = sender();
    if (!pEditor || pEditor->objectName().isEmpty())
        return;
    const QScopedValueRollback<QObject*> announcing(m_pAnnouncing, pEditor);
    Q_EMIT signal_UpdateSetingParameter(pEditor->objectName(), value);
}

void CSettingDlg::slot_ChangeValueInt(int nValue)
{
    Announce(nValue);
}

void CSettingDlg::slot_ChangeValueDouble(double dblValue)
{
    Announce(dblValue);
}

void CSettingDlg::slot_ChangeValueString(const QString& strValue)
{
    Announce(strValue);
}
