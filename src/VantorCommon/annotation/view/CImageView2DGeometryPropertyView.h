// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

class CImageView2DGeometryModel;

/// The place for the properties of an annotation: a panel, at least 200 pixels wide, bound to the model. It
/// has no contents yet. The model is not owned and may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DGeometryPropertyView : public QWidget
{
    Q_OBJECT

public:
    /// Follows the model's changes of single objects.
    explicit CImageView2DGeometryPropertyView(CImageView2DGeometryModel* pModel, QWidget* pParent = nullptr);
    ~CImageView2DGeometryPropertyView() override;

public Q_SLOTS:
    /// Does nothing yet.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);
};
