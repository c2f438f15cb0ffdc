// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The model of the snip tool. It holds nothing: a selection lives only as long as the drag that makes it.
/// GUI thread only.
class VANTORCOMMON_EXPORT CSnipToolModel : public CBaseModel
{
public:
    /// The Qt parent, if any, owns the model.
    explicit CSnipToolModel(QObject* parent = nullptr);
    ~CSnipToolModel() override;
};
