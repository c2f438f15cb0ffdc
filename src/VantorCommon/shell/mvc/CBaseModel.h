// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QObject>

/// Base of all models: state that announces every change by a signal without payload whose name begins with
/// signal_Change; receivers read the model back. It has no meta-object of its own and holds no data. GUI
/// thread, unless a model says otherwise.
class VANTORCOMMON_EXPORT CBaseModel : public QObject
{
public:
    /// The Qt parent, if any, owns the model.
    explicit CBaseModel(QObject* parent = nullptr);
    ~CBaseModel() override;
};
