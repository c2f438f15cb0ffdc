// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/Export.h>

#include <QObject>
#include <functional>
#include <memory>

class CImageView2DCtrl;
class CMeasuresView;

/// Shows the measurements of the shape of a 2D view that is drawn or selected, also while it changes; jobs
/// measure beside the GUI thread. Nothing is owned, everything may be null or die first. GUI thread only.
class VANTORCOMMON_EXPORT CMeasuresCtrl : public QObject
{
    Q_OBJECT

public:
    /// The calibration of the current image of a controller.
    using Calibrate = std::function<Vantor::Algorithms::CCalibration(const CImageView2DCtrl& ctrl)>;

    /// Shows nothing yet.
    explicit CMeasuresCtrl(CMeasuresView* pView, QObject* pParent = nullptr);
    ~CMeasuresCtrl() override;

    void SetTarget(CImageView2DCtrl* pCtrl); ///< shows what is on this controller's view
    /// Whom to ask for calibrations; without it a unit is a pixel. Call Follow when one has changed.
    void SetCalibration(Calibrate calibrate);
    /// Measures again, soon.
    void Follow();

private:
    struct SPrivate;

    std::unique_ptr<SPrivate> m_p;
};
