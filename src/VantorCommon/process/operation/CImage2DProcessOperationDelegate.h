// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/operation/SProcessParameter.h>

#include <QStyledItemDelegate>
#include <vector>

/// Edits the values of an operation's parameters: a choice by a combo box, numbers by spin boxes, a text by a
/// line, a folder by a file dialog. Each editor opens at the value of its cell. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param vctParameters  one for each row
    /// @param pParent        owns the delegate; may be null
    explicit CImage2DProcessOperationDelegate(std::vector<SProcessParameter> vctParameters,
                                              QObject* pParent = nullptr);
    ~CImage2DProcessOperationDelegate() override;

    /// By the parameter of the row, for the second column; otherwise null. Its name for those who do not see
    /// is the text of the first column.
    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Begins with the value of the cell.
    void setEditorData(QWidget* pEditor, const QModelIndex& index) const override;
    /// Writes the text of a choice, a number as int or double, else a text; nothing from a file dialog that
    /// was cancelled.
    void setModelData(QWidget* pEditor, QAbstractItemModel* pModel, const QModelIndex& index) const override;
    /// The file dialog is a window and is not put into the cell.
    void updateEditorGeometry(QWidget* pEditor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    /// What an editor holds, as setModelData writes it; invalid for an editor that does not fit the row, and
    /// for a file dialog that was cancelled.
    QVariant ValueOf(QWidget* pEditor, const QModelIndex& index) const;
    /// Keeps Return and Tab in a file dialog from ending the edit: only its hiding does.
    bool eventFilter(QObject* pEditor, QEvent* pEvent) override;

private:
    const SProcessParameter* ParameterOf(const QModelIndex& index) const;

    std::vector<SProcessParameter> m_vctParameters;
};
