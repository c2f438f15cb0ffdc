// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPushButton>

/// A checkable button that only code can check: its state shows a model's, a press merely asks for a change.
class CModelStateButton : public QPushButton
{
public:
    explicit CModelStateButton(QWidget* pParent) : QPushButton(pParent) { setCheckable(true); }

    void ShowState(bool bState)
    {
        m_bState = bState;
        setChecked(bState);
    }

protected:
    void nextCheckState() override {}
    /// Who toggles it without a press (a screen reader does) means a press, too.
    void checkStateSet() override
    {
        if (isChecked() == m_bState)
            return;
        setChecked(m_bState);
        click();
    }

private:
    bool m_bState = false;
};
