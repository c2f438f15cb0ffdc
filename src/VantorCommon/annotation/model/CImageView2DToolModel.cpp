// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>

CImageView2DToolModel::CImageView2DToolModel(QObject* parent) : CBaseModel(parent)
{
}

CImageView2DToolModel::~CImageView2DToolModel() = default;

void CImageView2DToolModel::SetViewMode(EImageView2DMode eMode)
{
    if (m_eMode == eMode)
        return;
    m_eMode = eMode;
    Q_EMIT signal_ChangeViewMode();
}

void CImageView2DToolModel::SetViewType(EImageView2DType eType)
{
    if (m_eType == eType)
        return;
    m_eType = eType;
    Q_EMIT signal_ChangeViewType();
}
