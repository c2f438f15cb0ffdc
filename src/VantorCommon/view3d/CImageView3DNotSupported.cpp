// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DNotSupported.h>

#include <QLabel>
#include <QVBoxLayout>

CImageView3DNotSupported::CImageView3DNotSupported(QWidget* parent) : QWidget(parent)
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(new QLabel(QStringLiteral("System doesnot support OpenGL"), this));
}
