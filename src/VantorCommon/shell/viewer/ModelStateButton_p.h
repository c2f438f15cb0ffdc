// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPushButton>

/// A checkable button that only code can check: it shows the state of a model, and a press only requests a
/// change.
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
    /// Toggling it without a press (as screen readers do) counts as a press.
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
