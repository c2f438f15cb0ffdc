// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QPointer>
#include <memory>

class CImageView2DModel;
class CImageView3D;
class CImageView3DModel;
class CImageView3DPropertyView;
class CPropertyDockView;
class CStatusBarDockView;
class CToolBoxDockView;
class QSemaphore;

/// The controller of a 3D view: while the view is visible it loads the current image of the list into the 3D
/// model on a thread of the global pool; it sets the model's parameters on request of view and panel, and
/// puts the panel into the property dock when the view becomes active.
///
/// Models, view and docks are not owned; any of them may be null, and an operation without its target does
/// nothing. The models must outlive the controller, whose destructor waits for its work in the pool. The
/// controller owns the panel. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Makes the panel and connects view and models. It does not use the tool box and the status dock.
    CImageView3DCtrl(CImageView3DModel* pModel3D, CImageView2DModel* pModel2D, CImageView3D* pView,
                     CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                     CStatusBarDockView* pStatusBarDockView);
    ~CImageView3DCtrl() override;

    /// @{
    /// Do nothing and return false, because a 3D view has no undoable steps.
    bool Undo() override;
    bool Redo() override;
    /// @}

public Q_SLOTS:
    /// Puts the panel into the property dock.
    void slot_Active3DView();
    /// Starts a build, or drops the mesh when there is no image. One build runs at a time; a change during a
    /// build starts another one after it, so that the newest image always comes last.
    void slot_ChangeCurrentImage();

    // clang-format off
    /// @{
    /// Set a parameter of the model. A value beyond the range of float becomes the largest float; NaN is
    /// refused. The panel's ranges do not apply.
    void slot_ChangeRotateX(double dblAngle);
    void slot_ChangeRotateY(double dblAngle);
    void slot_ChangeRotateZ(double dblAngle);
    void slot_TranslateX(double dblTrans);
    void slot_TranslateY(double dblTrans);
    void slot_TranslateZ(double dblTrans);
    void slot_ScaleX(double dblValue);
    void slot_ScaleY(double dblValue);
    void slot_ScaleZ(double dblValue);
    void slot_ChangeCameraPositionX(double dblValue);
    void slot_ChangeCameraPositionY(double dblValue);
    void slot_ChangeCameraPositionZ(double dblValue);
    void slot_ChangeCameraCenterX(double dblValue);
    void slot_ChangeCameraCenterY(double dblValue);
    void slot_ChangeCameraCenterZ(double dblValue);
    void slot_ChangeCameraUpX(double dblValue);
    void slot_ChangeCameraUpY(double dblValue);
    void slot_ChangeCameraUpZ(double dblValue);
    void slot_ChangeFOV(double dblValue);
    void slot_ChangeNear(double dblValue);
    void slot_ChangeFar(double dblValue);
    /// @}
    // clang-format on

Q_SIGNALS:
    /// The view could not show an image; the reason, one line in English.
    void signal_Failed(const QString& strMessage);

private:
    void ConnectPanel();
    void SetParameter(int nParameter, double dblValue);
    void StartBuild();
    void BuildEnded();

    QPointer<CImageView3DModel> m_pModel3D;
    QPointer<CImageView2DModel> m_pModel2D;
    QPointer<CImageView3D> m_pView;
    QPointer<CPropertyDockView> m_pPropertyDockView;
    QPointer<CImageView3DPropertyView> m_pPropertyView;
    /// The build releases it when it finishes; shared, because the release may outlast the controller.
    std::shared_ptr<QSemaphore> m_pEnded;
    bool m_bBuilding = false;
    bool m_bBuildAgain = false;
};
