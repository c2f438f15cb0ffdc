// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingCtrl.h>

#include <VantorCommon/database/CDatabaseHelper.h>
#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/database/CDatabaseModelSetting.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingCtrlFile_p.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/settings/CSettingModel.h>

#include <QDir>

namespace
{
QString TypeName(const QVariant& value)
{
    switch (value.type()) {
    case QVariant::Bool:
        return QStringLiteral("bool");
    case QVariant::Int:
        return QStringLiteral("int");
    case QVariant::Double:
        return QStringLiteral("double");
    case QVariant::String:
        return QStringLiteral("string");
    default:
        return {};
    }
}
} // namespace

CSettingCtrl::CSettingCtrl(CSettingDlg* pView)
    : m_pView(pView), m_pFactory(std::make_unique<CDatabaseModelFactory>()),
      m_pDatabaseHelper(std::make_unique<CDatabaseHelper>(m_pFactory.get()))
{
    OpenSettingFile();
    LoadParameter();
    UpdateParameterView();
    if (!m_pView)
        return;
    connect(m_pView, &CSettingDlg::signal_UpdateSetingParameter, this,
            &CSettingCtrl::slot_UpdateSettingParameter);
    connect(CSettingModel::GetInstance(), &CSettingModel::signal_UpdateSettingParameter, m_pView,
            &CSettingDlg::signal_UpdateSetingParameter);
}

CSettingCtrl::~CSettingCtrl() = default;

bool CSettingCtrl::OpenSettingFile()
{
    const QString strFolder = CSettingManager::GetFolder(CSettingManager::kConfigFolder);
    if (strFolder == CSettingManager::GetDefaultFolder())
        QDir().mkpath(strFolder);
    const QString strPath = strFolder + QDir::separator() + QStringLiteral("settings.data");
    return EnsureSettingFile(strFolder, strPath) &&
           m_pDatabaseHelper->OpenDatabase(QStringLiteral("localhost"), strPath, QString(), QString());
}

void CSettingCtrl::LoadParameter()
{
    CDatabaseHelper::RecordList vecRecords;
    if (!m_pDatabaseHelper->SelectFromTable(CDatabaseModelSetting::TABLE_NAME, vecRecords, {})) {
        CLogger::Write(WARNING, "Cannot load settings");
        Q_EMIT signal_Failed(QStringLiteral("The settings cannot be loaded."));
    }
    for (const auto& pRecord : vecRecords) {
        const auto pSetting = std::dynamic_pointer_cast<CDatabaseModelSetting>(pRecord);
        CSettingManager::Set(pSetting->GetName(), QVariant(pSetting->GetValue()));
    }
}

bool CSettingCtrl::Store(const QString& strKey, const QVariant& value)
{
    const QString strText = value.toString();
    if (strKey.contains(QLatin1Char('\'')) || strText.contains(QLatin1Char('\'')))
        return false;
    const QString strType = TypeName(value);
    // Only a number or a Boolean may stand unquoted in a statement: SQL would calculate a date.
    const QVariant bare = strType.isEmpty() ? QVariant(strText) : value;
    const CDatabaseHelper::ValueMap mapWhere = {{CDatabaseModelSetting::COLUMN_NAME, strKey}};
    const CDatabaseHelper::ValueMap mapSet = {{CDatabaseModelSetting::COLUMN_VALUE, bare},
                                              {CDatabaseModelSetting::COLUMN_TYPE, strType}};
    const QString& strTable = CDatabaseModelSetting::TABLE_NAME;
    CDatabaseHelper::RecordList vecRecords;
    if (!m_pDatabaseHelper->SelectFromTable(strTable, vecRecords, mapWhere))
        return false;
    if (!vecRecords.empty())
        return m_pDatabaseHelper->UpdateTable(strTable, mapSet, mapWhere, false);

    auto pSetting = std::make_shared<CDatabaseModelSetting>();
    pSetting->SetName(strKey);
    pSetting->SetValue(strText);
    pSetting->SetType(strType);
    return m_pDatabaseHelper->InsertToTable({pSetting}, false);
}

bool CSettingCtrl::UpdateParameter(const QString& strKey, QVariant value)
{
    if (!Store(strKey, value)) {
        CLogger::Write(ERROR, "Update Setting {%s} NG", qUtf8Printable(strKey));
        Q_EMIT signal_Failed(QStringLiteral("The setting %1 cannot be stored.").arg(strKey));
        return false;
    }
    CLogger::Write(NORMAL, "Update Setting {%s} OK", qUtf8Printable(strKey));
    UpdateParameterView();
    return true;
}

void CSettingCtrl::UpdateParameterView()
{
    if (m_pView)
        m_pView->UpdateParameter();
}

void CSettingCtrl::slot_UpdateSettingParameter(const QString& strKey, const QVariant& var)
{
    UpdateParameter(strKey, var);
}

bool CSettingCtrl::Undo()
{
    return false;
}

bool CSettingCtrl::Redo()
{
    return false;
}
