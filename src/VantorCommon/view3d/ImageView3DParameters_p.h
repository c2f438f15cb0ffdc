// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/CImageView3DPropertyView.h>

/// One row of the property panel, and its parameter. Getter and setter are the model's GetParameter and
/// SetParameter with the row's number.
struct SImageView3DParameter {
    const char* pGroup;
    const char* pLabel;
    double dblMinimum;
    double dblMaximum;
    double dblStep;
    void (CImageView3DPropertyView::*pSignal)(double);
};

namespace ImageView3D
{
/// Deliberate: the range of a length begins at -1000 and ends at 99.99, the default maximum of a spin box.
constexpr double kLengthMinimum = -1000.0;
constexpr double kLengthMaximum = 99.99;
constexpr double kLengthStep = 0.1;

using P = CImageView3DPropertyView;

/// In the order of EImageView3DParameter.
constexpr SImageView3DParameter kParameters[] = {
    {"Model", "Rotate X: ", -90, 90, 1, &P::signal_ChangeRotateX},
    {"Model", "Rotate Y: ", -90, 90, 1, &P::signal_ChangeRotateY},
    {"Model", "Rotate Z: ", -90, 90, 1, &P::signal_ChangeRotateZ},
    {"Model", "Translate X: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_TranslateX},
    {"Model", "Translate Y: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_TranslateY},
    {"Model", "Translate Z: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_TranslateZ},
    {"Model", "Scale X: ", 1, 100, 1, &P::signal_ScaleX},
    {"Model", "Scale Y: ", 1, 100, 1, &P::signal_ScaleY},
    {"Model", "Scale Z: ", 1, 100, 1, &P::signal_ScaleZ},
    {"View", "CamPos X: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraPositionX},
    {"View", "CamPos Y: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraPositionY},
    {"View", "CamPos Z: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraPositionZ},
    {"View", "CamCenter X: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraCenterX},
    {"View", "CamCenter Y: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraCenterY},
    {"View", "CamCenter Z: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraCenterZ},
    {"View", "CamUp X: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraUpX},
    {"View", "CamUp Y: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraUpY},
    {"View", "CamUp Z: ", kLengthMinimum, kLengthMaximum, kLengthStep, &P::signal_ChangeCameraUpZ},
    {"Perspective", "FOV: ", 0, 90, 1, &P::signal_ChangeFOV},
    {"Perspective", "Near: ", -1000, 1000, 1, &P::signal_ChangeNear},
    {"Perspective", "Far: ", -1000, 1000, 1, &P::signal_ChangeFar},
};
static_assert(sizeof(kParameters) / sizeof(kParameters[0]) == EImageView3DParameter_Count);
} // namespace ImageView3D
