// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QStyledItemDelegate>

/// Edits the values of the OCR tool's parameter tree: the language by a combo box, the folder by a file
/// dialog, the resolution by a spin box. Every other cell has no editor. It has no state. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRDlgParameterDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The parent, if any, owns the delegate.
    explicit CImage2DProcessOCRDlgParameterDelegate(QObject* pParent = nullptr);
    ~CImage2DProcessOCRDlgParameterDelegate() override;

    /// By the row, for the second column of a QStandardItemModel; otherwise null. The spin box runs from 1 to
    /// 1024. Deliberate: it opens at 70, not at the stored value.
    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Deliberate: nothing. Each editor opens as it was made, whatever the cell holds.
    void setEditorData(QWidget* pEditor, const QModelIndex& index) const override;
    /// Writes the value as text; nothing from a file dialog that was cancelled.
    void setModelData(QWidget* pEditor, QAbstractItemModel* pModel, const QModelIndex& index) const override;
    /// The file dialog is a window and is not put into the cell.
    void updateEditorGeometry(QWidget* pEditor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    /// Keeps Return and Tab in a file dialog from ending the edit: only its hiding does.
    bool eventFilter(QObject* pEditor, QEvent* pEvent) override;
};
