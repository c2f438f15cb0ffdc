// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

/// The status panel of a 2D view, without content. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DStatusView : public QWidget
{
    Q_OBJECT

public:
    /// Without a layout.
    explicit CImageView2DStatusView(QWidget* parent = nullptr);
};
