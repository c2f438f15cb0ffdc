// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view3d/CImageView3DCtrl.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/CImageView3DPropertyView.h>

/// What the tests expect of each of the 21 parameters, written down a second time on purpose.
struct SExpectedParameter {
    const char* pGroup;
    const char* pLabel;
    float fDefault;
    double dblMinimum;
    double dblMaximum;
    double dblStep;
    float (CImageView3DModel::*pGetter)() const;
    void (CImageView3DModel::*pSetter)(float);
    void (CImageView3DPropertyView::*pSignal)(double);
    void (CImageView3DCtrl::*pSlot)(double);
};

#define VANTOR_PARAMETER(accessor, edit)                                                                     \
    &CImageView3DModel::Get##accessor, &CImageView3DModel::Set##accessor,                                    \
        &CImageView3DPropertyView::signal_##edit, &CImageView3DCtrl::slot_##edit

// clang-format off
const SExpectedParameter kExpected[] = {
    {"Model", "Rotate X: ", -73.0F, -90, 90, 1, VANTOR_PARAMETER(RotateX, ChangeRotateX)},
    {"Model", "Rotate Y: ", 0.0F, -90, 90, 1, VANTOR_PARAMETER(RotateY, ChangeRotateY)},
    {"Model", "Rotate Z: ", 19.0F, -90, 90, 1, VANTOR_PARAMETER(RotateZ, ChangeRotateZ)},
    {"Model", "Translate X: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(TranslateX, TranslateX)},
    {"Model", "Translate Y: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(TranslateY, TranslateY)},
    {"Model", "Translate Z: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(TranslateZ, TranslateZ)},
    {"Model", "Scale X: ", 1.0F, 1, 100, 1, VANTOR_PARAMETER(ScaleX, ScaleX)},
    {"Model", "Scale Y: ", 1.0F, 1, 100, 1, VANTOR_PARAMETER(ScaleY, ScaleY)},
    {"Model", "Scale Z: ", 1.0F, 1, 100, 1, VANTOR_PARAMETER(ScaleZ, ScaleZ)},
    {"View", "CamPos X: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraPositionX, ChangeCameraPositionX)},
    {"View", "CamPos Y: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraPositionY, ChangeCameraPositionY)},
    {"View", "CamPos Z: ", 5.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraPositionZ, ChangeCameraPositionZ)},
    {"View", "CamCenter X: ", 0.5F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraCenterX, ChangeCameraCenterX)},
    {"View", "CamCenter Y: ", 0.5F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraCenterY, ChangeCameraCenterY)},
    {"View", "CamCenter Z: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraCenterZ, ChangeCameraCenterZ)},
    {"View", "CamUp X: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraUpX, ChangeCameraUpX)},
    {"View", "CamUp Y: ", 1.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraUpY, ChangeCameraUpY)},
    {"View", "CamUp Z: ", 0.0F, -1000, 99.99, 0.1, VANTOR_PARAMETER(CameraUpZ, ChangeCameraUpZ)},
    {"Perspective", "FOV: ", 22.0F, 0, 90, 1, VANTOR_PARAMETER(FOV, ChangeFOV)},
    {"Perspective", "Near: ", 0.1F, -1000, 1000, 1, VANTOR_PARAMETER(Near, ChangeNear)},
    {"Perspective", "Far: ", 100.0F, -1000, 1000, 1, VANTOR_PARAMETER(Far, ChangeFar)},
};
// clang-format on
constexpr int kExpectedCount = sizeof(kExpected) / sizeof(kExpected[0]);
static_assert(kExpectedCount == 21);
