// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// Completes the triple of a viewer; it has no content. GUI thread only.
class VANTORCOMMON_EXPORT CImageViewerModel : public CBaseModel
{
    Q_OBJECT

public:
    /// The Qt parent, if any, owns the model.
    explicit CImageViewerModel(QObject* parent = nullptr);
    ~CImageViewerModel() override;
};
