// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QDialog>

class QComboBox;

/// Asks which image viewer to act on. GUI thread only.
class VANTORCOMMON_EXPORT CSelectionDialog : public QDialog
{
    Q_OBJECT

public:
    /// Starts without items. Run it modally.
    explicit CSelectionDialog(QWidget* parent = nullptr);

    /// Appends an item at the end.
    void AddSelectionItem(const QString& strItem);
    /// The text of the chosen item, empty without items.
    QString GetSelectedItem() const;

private:
    QComboBox* m_pComboBox;
};
