// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/viewer/CImageViewerModel.h>

CImageViewerModel::CImageViewerModel(QObject* parent) : CBaseModel(parent)
{
}

CImageViewerModel::~CImageViewerModel() = default;
