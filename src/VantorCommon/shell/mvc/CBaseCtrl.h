// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QObject>

/// Base of all controllers. A controller gets plain pointers to its model and views, connects them in its
/// constructor and may register the triple with CMVCManager. GUI thread only.
class VANTORCOMMON_EXPORT CBaseCtrl : public QObject
{
public:
    /// The Qt parent, if any, owns the controller.
    explicit CBaseCtrl(QObject* parent = nullptr);
    ~CBaseCtrl() override;

    /// Undoes the newest step. True when this controller did so, false when it ignored the request.
    virtual bool Undo() = 0;
    /// Repeats the step that was undone last. The same result.
    virtual bool Redo() = 0;
};
