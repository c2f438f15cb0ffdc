// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>

/// Stands in the place of the 3D view where it cannot be had: one label that says so. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DNotSupported : public QWidget
{
public:
    /// Made where there is no desktop OpenGL; the parent owns it.
    explicit CImageView3DNotSupported(QWidget* parent = nullptr);
};
