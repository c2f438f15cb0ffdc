// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/EnumKey.h>

#include <QComboBox>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

/// Edits the first row of a parameter tree by a combo box of the keys of an enumeration, in the order of
/// their declaration; the cell gets the key as text. Every other cell has no editor. The values run from 0
/// without a gap. It has no state. GUI thread only.
template <class Enum> class CImage2DProcessEnumDelegate : public QStyledItemDelegate
{
public:
    /// As Qt's: the parent, if any, owns the delegate.
    using QStyledItemDelegate::QStyledItemDelegate;

    /// A combo box for the first value of a QStandardItemModel, otherwise null.
    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override
    {
        const bool bStandard = dynamic_cast<const QStandardItemModel*>(index.model()) != nullptr;
        if (!bStandard || index.column() != 1 || index.row() != 0)
            return nullptr;
        auto* pCombo = new QComboBox(pParent);
        pCombo->setAccessibleName(index.sibling(index.row(), 0).data().toString());
        const QMetaEnum keys = QMetaEnum::fromType<Enum>();
        for (int i = 0; i < keys.keyCount(); ++i)
            pCombo->addItem(EnumKey::FromValue(static_cast<Enum>(i)));
        return pCombo;
    }

    /// Deliberate: nothing. The combo box opens on its first entry, whatever the cell holds.
    void setEditorData(QWidget*, const QModelIndex&) const override {}

    /// Writes the chosen key; nothing for another editor than the combo box, or another row.
    void setModelData(QWidget* pEditor, QAbstractItemModel* pModel, const QModelIndex& index) const override
    {
        const auto* pCombo = qobject_cast<QComboBox*>(pEditor);
        if (pCombo && pModel && index.row() == 0)
            pModel->setData(index, EnumKey::FromValue(static_cast<Enum>(pCombo->currentIndex())),
                            Qt::EditRole);
    }
};
