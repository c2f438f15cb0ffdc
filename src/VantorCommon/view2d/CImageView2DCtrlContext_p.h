// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/center/SCenterOptions.h>

#include <QPointer>

class CImageView2D;
class CImageView2DCtrl;
class CImageView2DGeometryModel;
class CImageView2DModel;
class CImageView2DToolModel;

/// The objects on which the parts of one 2D controller work. The controller owns the parts; models and view
/// may be null or destroyed first.
struct SImageView2DCtrlContext {
    CImageView2DCtrl* pCtrl = nullptr;
    QPointer<CImageView2DModel> pModel;
    QPointer<CImageView2DGeometryModel> pGeometryModel;
    QPointer<CImageView2DToolModel> pToolModel;
    QPointer<CImageView2D> pView;
    SCenterOptions sOptions; ///< as set last
};
