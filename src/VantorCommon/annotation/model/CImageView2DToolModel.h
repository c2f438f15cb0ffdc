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
    EImageView2DMode_Selecting = 0,         ///< selects, moves and resizes annotations
    EImageView2DMode_Panning = 1,           ///< drags the image
    EImageView2DMode_Drawing_Rectanlge = 2, ///< a drag draws a rectangle
    EImageView2DMode_Drawing_Ellipse = 3,   ///< a drag draws an ellipse
    EImageView2DMode_Drawing_Circle = 4,    ///< a drag from the centre draws a circle
    EImageView2DMode_Drawing_Polygon = 5,   ///< clicks draw a polygon
    EImageView2DMode_Drawing_Line = 6       ///< a drag draws a ruler
};
Q_ENUM_NS(EImageView2DMode)
} // namespace ImageView2DMode

using namespace ImageView2DMode;

/// The kind of view that a frame shows; frames ignore other values.
enum EImageView2DType : int {
    EImageView2DType_2D = 0, ///< the picture
    EImageView2DType_3D = 1  ///< the height field
};

/// The tool mode and the view type, shared by the views of the centre area. Every change is announced once,
/// without arguments; receivers read the model back. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DToolModel : public CBaseModel
{
    Q_OBJECT

public:
    /// Selecting, 2D; the Qt parent, if any, owns the model.
    explicit CImageView2DToolModel(QObject* parent = nullptr);
    ~CImageView2DToolModel() override;

    /// @{
    /// What the mouse does. An equal value changes nothing and emits nothing. Any value is stored.
    void SetViewMode(EImageView2DMode eMode);
    EImageView2DMode GetViewMode() const { return m_eMode; }
    /// @}

    /// @{
    /// What the frames show. An equal value changes nothing and emits nothing. Any value is stored.
    void SetViewType(EImageView2DType eType);
    EImageView2DType GetViewType() const { return m_eType; }
    /// @}

Q_SIGNALS:
    void signal_ChangeViewMode(); ///< the mode is another one
    void signal_ChangeViewType(); ///< the type is another one

private:
    EImageView2DMode m_eMode = EImageView2DMode_Selecting;
    EImageView2DType m_eType = EImageView2DType_2D;
};
