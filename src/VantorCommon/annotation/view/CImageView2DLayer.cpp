// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CImageView2DLayer.h>

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

CImageView2DLayer::CImageView2DLayer(int nViewID, CImageView2DToolModel* pToolModel, QWidget* pParent)
    : CImageView2DDrawableWidget(pToolModel, pParent), m_nViewID(nViewID)
{
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CImageView2DLayer::SetGeometryModel(CImageView2DGeometryModel* pModel)
{
    if (m_pModel)
        disconnect(m_pModel.data(), nullptr, this, nullptr);
    m_pModel = pModel;
    if (!m_pModel)
        return;
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_ChangeDrawingObject, this,
            &CImageView2DLayer::slot_ChangeDrawingObject);
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_AddDrawableObject, this,
            &CImageView2DLayer::slot_ChangeDrawingObject);
    connect(m_pModel.data(), &CImageView2DGeometryModel::signal_DeleteDrawableObject, this,
            &CImageView2DLayer::slot_ChangeDrawingObject);
}

void CImageView2DLayer::slot_ChangeDrawingObject()
{
    if (!m_pModel)
        return;
    Clear();
    for (const auto& pObject : m_pModel->GetObjectDrawing())
        DrawObject(pObject);
    if (const auto pWaiting = m_pModel->GetObjectDrawingWaiting())
        DrawObject(pWaiting);
}
