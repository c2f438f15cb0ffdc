// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// A namespace, so that the value names are known to the meta-object system; everything in it is reachable at
/// global scope.
namespace ImageView2DMode
{
Q_NAMESPACE_EXPORT(VANTORCOMMON_EXPORT)

/// What the mouse does in a 2D image view. The values and the names are part of the interface.
enum EImageView2DMode : int {
    EImageView2DMode_Selecting = 0,
    EImageView2DMode_Panning = 1,
    EImageView2DMode_Drawing_Rectanlge = 2,
    EImageView2DMode_Drawing_Ellipse = 3,
    EImageView2DMode_Drawing_Circle = 4,
    EImageView2DMode_Drawing_Polygon = 5,
    EImageView2DMode_Drawing_Line = 6
};
Q_ENUM_NS(EImageView2DMode)
} // namespace ImageView2DMode

using namespace ImageView2DMode;

/// The kind of view that a frame shows; frames ignore other values.
enum EImageView2DType : int { EImageView2DType_2D = 0, EImageView2DType_3D = 1 };

/// The tool mode and the view type, shared by the views of the centre area. Every change is announced once,
/// without arguments; receivers read the model back. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DToolModel : public CBaseModel
{
    Q_OBJECT

public:
    explicit CImageView2DToolModel(QObject* parent = nullptr);
    ~CImageView2DToolModel() override;

    /// An equal value changes nothing and emits nothing.
    void SetViewMode(EImageView2DMode eMode);
    EImageView2DMode GetViewMode() const { return m_eMode; }

    /// An equal value changes nothing and emits nothing. Any value is stored.
    void SetViewType(EImageView2DType eType);
    EImageView2DType GetViewType() const { return m_eType; }

Q_SIGNALS:
    void signal_ChangeViewMode();
    void signal_ChangeViewType();

private:
    EImageView2DMode m_eMode = EImageView2DMode_Selecting;
    EImageView2DType m_eType = EImageView2DType_2D;
};
