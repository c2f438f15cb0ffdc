// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/operation/CImage2DProcessOperationDelegate.h>

/// Edits the cells of a parameter tree of texts, with the editors of an operation's parameters. Deliberate:
/// an editor opens at the default of its parameter, whatever the cell holds. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessToolDelegate : public CImage2DProcessOperationDelegate
{
    Q_OBJECT

public:
    /// As CImage2DProcessOperationDelegate: one parameter for each row; the parent, if any, owns the
    /// delegate.
    using CImage2DProcessOperationDelegate::CImage2DProcessOperationDelegate;
    ~CImage2DProcessToolDelegate() override;

    /// The editor of the row, for the second column of a QStandardItemModel; otherwise null.
    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Deliberate: does nothing. Each editor opens as it was made.
    void setEditorData(QWidget* pEditor, const QModelIndex& index) const override;
    /// Writes the value as text; ignores an editor that does not fit the row, and a cancelled file dialog.
    void setModelData(QWidget* pEditor, QAbstractItemModel* pModel, const QModelIndex& index) const override;
};
