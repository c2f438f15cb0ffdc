// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CStatusField.h"

/// The place of the current page or image in the status bar: "3 / 300".
class CPageField : public CStatusField
{
    Q_OBJECT

public:
    explicit CPageField(QWidget* pParent);

    /// Shows nothing, and is disabled, unless there are several.
    /// @param nPage  from 1 on
    void ShowPage(int nPage, int nCount);
    int GetCount() const { return m_nCount; }

Q_SIGNALS:
    /// The user has typed it; 1 to the count.
    void signal_Page(int nPage);

protected:
    /// "3" or "3 / 300"; what follows the slash means nothing.
    bool Take(const QString& strText) override;

private:
    int m_nCount = 0;
};
