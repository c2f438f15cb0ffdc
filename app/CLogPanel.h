// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QWidget>

/// The log with a choice of the levels that are shown, which the settings keep.
class CLogPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CLogPanel(QWidget* pParent);
};
