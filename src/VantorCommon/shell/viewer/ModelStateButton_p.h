// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPushButton>

/// A checkable button that only code can check: its state shows a model's, a press merely asks for a change.
class CModelStateButton : public QPushButton
{
public:
    explicit CModelStateButton(QWidget* pParent) : QPushButton(pParent) { setCheckable(true); }

protected:
    void nextCheckState() override {}
};
