// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/operation/SProcessParameter.h>

#include <QStyledItemDelegate>
#include <vector>

/// Edits the values of an operation's parameters: a choice in a combo box, numbers in spin boxes, a text in a
/// line, a folder in a file dialog. Each editor opens at the value of its cell. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param vctParameters  one for each row
    /// @param pParent        owns the delegate; may be null
    explicit CImage2DProcessOperationDelegate(std::vector<SProcessParameter> vctParameters,
                                              QObject* pParent = nullptr);
    ~CImage2DProcessOperationDelegate() override;

    /// The editor of the row's parameter, for the second column; otherwise null. Its accessible name is the
    /// text of the first column.
    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Sets the editor to the value of the cell.
    void setEditorData(QWidget* pEditor, const QModelIndex& index) const override;
    /// Writes the text of a choice, a number as int or double, otherwise a text; does nothing for a cancelled
    /// file dialog.
    void setModelData(QWidget* pEditor, QAbstractItemModel* pModel, const QModelIndex& index) const override;
    /// Leaves the file dialog, which is a window, out of the cell.
    void updateEditorGeometry(QWidget* pEditor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    /// The value of an editor, as setModelData writes it; invalid for an editor that does not fit the row,
    /// and for a cancelled file dialog.
    QVariant ValueOf(QWidget* pEditor, const QModelIndex& index) const;
    /// Keeps Return and Tab in a file dialog from ending the edit; only hiding the dialog ends it.
    bool eventFilter(QObject* pEditor, QEvent* pEvent) override;

private:
    const SProcessParameter* ParameterOf(const QModelIndex& index) const;

    std::vector<SProcessParameter> m_vctParameters;
};
