// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>

class CImageView2DGeometryModel;

/// The transparent overlay that paints the objects being drawn. It never takes the mouse from the view
/// beneath. Owned by its Qt parent, the 2D view. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DLayer : public CImageView2DDrawableWidget
{
    Q_OBJECT

public:
    /// Paints nothing until it gets a geometry model. Viewport and window are set by the view beneath.
    CImageView2DLayer(int nViewID, CImageView2DToolModel* pToolModel, QWidget* pParent);

    /// The model is not owned. Null: the layer keeps what it paints.
    void SetGeometryModel(CImageView2DGeometryModel* pModel);

    /// The identifier of the view beneath.
    int GetViewID() const { return m_nViewID; }

public Q_SLOTS:
    /// Paints the drawing list of the model, then its waiting object.
    void slot_ChangeDrawingObject();

private:
    int m_nViewID;
    QPointer<CImageView2DGeometryModel> m_pModel;
};
