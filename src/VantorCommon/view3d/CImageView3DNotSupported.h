// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

/// Replaces the 3D view where it is not available: one label that says so. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DNotSupported : public QWidget
{
public:
    /// For systems without desktop OpenGL; the parent owns it.
    explicit CImageView3DNotSupported(QWidget* parent = nullptr);
};
