// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

/// An empty page for the parameters of a tool; its user fills it. GUI thread only.
class VANTORCOMMON_EXPORT CToolParameterView : public QWidget
{
    Q_OBJECT

public:
    /// Without a layout.
    explicit CToolParameterView(QWidget* parent = nullptr);
};
