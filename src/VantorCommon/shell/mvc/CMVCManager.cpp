// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <VantorCommon/shell/mvc/CBaseCtrl.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QWidget>
#include <algorithm>

std::vector<SMVC> CMVCManager::m_vctItems;

void CMVCManager::PushMVC(CBaseModel* pModel, QWidget* pView, CBaseCtrl* pCtrl)
{
    m_vctItems.push_back(SMVC{pModel, pCtrl, pView});
    for (QObject* pObject :
         {static_cast<QObject*>(pModel), static_cast<QObject*>(pView), static_cast<QObject*>(pCtrl)})
        if (pObject)
            QObject::connect(pObject, &QObject::destroyed, pObject, [pObject] { RemoveWith(pObject); });
}

void CMVCManager::RemoveWith(const QObject* pObject)
{
    const auto holds = [pObject](const SMVC& item) {
        return item.pModel == pObject || item.pView == pObject || item.pCtrl == pObject;
    };
    m_vctItems.erase(std::remove_if(m_vctItems.begin(), m_vctItems.end(), holds), m_vctItems.end());
}
