// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QScrollArea>

/// Shows the property panel of the active view, which its user sets with setWidget. The host places it. A
/// widget that is to outlive its stay here is taken out with takeWidget before the next one is set. GUI
/// thread only.
class VANTORCOMMON_EXPORT CPropertyDockView : public QScrollArea
{
    Q_OBJECT

public:
    /// Empty, its widget resized with it.
    explicit CPropertyDockView(QWidget* parent = nullptr);
};
