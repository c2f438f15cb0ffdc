// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QScrollArea>

/// Shows the status panel of the active view. The host places it, controllers set the panel with setWidget.
/// To keep a panel alive, take it out with takeWidget before setting the next one. GUI thread only.
class VANTORCOMMON_EXPORT CStatusBarDockView : public QScrollArea
{
    Q_OBJECT

public:
    /// Starts empty; resizes its widget with itself.
    explicit CStatusBarDockView(QWidget* parent = nullptr);
};
