// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QWidget>
#include <vector>

class CImageView3DModel;
class QDoubleSpinBox;

/// The panel with the parameters of a 3D model: a spin box for each, in the groups "Model", "View" and
/// "Perspective". An edit only emits a signal; the receiver changes the model, whose signal updates the
/// panel. The model is not owned. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DPropertyView : public QWidget
{
    Q_OBJECT

public:
    /// Shows the model's values; without a model, the boxes' initial ones.
    CImageView3DPropertyView(CImageView3DModel* pModel, QWidget* pParent);
    ~CImageView3DPropertyView() override;

    /// Sets every box to the model's value. The boxes still emit: a value outside a box's range comes back as
    /// the clamped one, unless the box showed that already. A box that has the model's value keeps its text,
    /// so that users can type a number digit by digit.
    void UpdateValue();

public Q_SLOTS:
    /// Calls UpdateValue.
    void slot_ChangeTransformMatrix();

Q_SIGNALS:
    /// @{
    /// A box shows another number: degrees for the rotation (-90 to 90) and the field of view (0 to 90),
    /// units of the mesh for the rest.
    void signal_ChangeRotateX(double dblAngle);
    void signal_ChangeRotateY(double dblAngle);
    void signal_ChangeRotateZ(double dblAngle);
    void signal_TranslateX(double dblTrans);
    void signal_TranslateY(double dblTrans);
    void signal_TranslateZ(double dblTrans);
    void signal_ScaleX(double dblValue);
    void signal_ScaleY(double dblValue);
    void signal_ScaleZ(double dblValue);
    void signal_ChangeCameraPositionX(double dblValue);
    void signal_ChangeCameraPositionY(double dblValue);
    void signal_ChangeCameraPositionZ(double dblValue);
    void signal_ChangeCameraCenterX(double dblValue);
    void signal_ChangeCameraCenterY(double dblValue);
    void signal_ChangeCameraCenterZ(double dblValue);
    void signal_ChangeCameraUpX(double dblValue);
    void signal_ChangeCameraUpY(double dblValue);
    void signal_ChangeCameraUpZ(double dblValue);
    void signal_ChangeFOV(double dblValue);
    void signal_ChangeNear(double dblValue);
    void signal_ChangeFar(double dblValue);
    /// @}

private:
    QPointer<CImageView3DModel> m_pModel;
    std::vector<QDoubleSpinBox*> m_vctBoxes; ///< in the order of EImageView3DParameter
};
