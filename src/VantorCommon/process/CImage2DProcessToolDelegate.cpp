// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessToolDelegate.h>

#include <QStandardItemModel>

CImage2DProcessToolDelegate::~CImage2DProcessToolDelegate() = default;

QWidget* CImage2DProcessToolDelegate::createEditor(QWidget* pParent, const QStyleOptionViewItem& option,
                                                   const QModelIndex& index) const
{
    if (!qobject_cast<const QStandardItemModel*>(index.model()))
        return nullptr;
    return CImage2DProcessOperationDelegate::createEditor(pParent, option, index);
}

void CImage2DProcessToolDelegate::setEditorData(QWidget*, const QModelIndex&) const
{
}

void CImage2DProcessToolDelegate::setModelData(QWidget* pEditor, QAbstractItemModel* pModel,
                                               const QModelIndex& index) const
{
    const QVariant varValue = ValueOf(pEditor, index);
    if (pModel && varValue.isValid())
        pModel->setData(index, varValue.toString(), Qt::EditRole);
}
