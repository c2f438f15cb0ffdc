// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

/// An empty page for the parameters of a view; its user fills it. GUI thread only.
class VANTORCOMMON_EXPORT CViewParameterView : public QWidget
{
    Q_OBJECT

public:
    /// Without a layout.
    explicit CViewParameterView(QWidget* parent = nullptr);
};
