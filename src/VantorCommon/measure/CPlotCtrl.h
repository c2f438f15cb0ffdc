// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/job/CJob.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>

class CImageView2DCtrl;
class CLiveMeasure;
class CPlotPanel;

/// Lets a panel with a plot follow the image and the shapes of a 2D view, one view at a time, also while they
/// change; jobs measure beside the GUI thread. Saves the plot. Nothing is owned, everything may be null or
/// die first. GUI thread only.
class VANTORCOMMON_EXPORT CPlotCtrl : public QObject
{
    Q_OBJECT

public:
    /// The calibration of the current image of a controller.
    using Calibrate = std::function<Vantor::Algorithms::CCalibration(const CImageView2DCtrl& ctrl)>;

    ~CPlotCtrl() override;

    void SetTarget(CImageView2DCtrl* pCtrl); ///< shows what is on this controller's view
    /// Whom to ask for calibrations; without it a unit is a pixel. Call Follow when one has changed.
    void SetCalibration(Calibrate calibrate);
    /// Looks what has changed since, soon.
    void Follow();

public Q_SLOTS:
    /// Asks for a file, and saves the plot there.
    void slot_Save();
    /// Saves the plot in a job: the values as CSV in a file whose name ends with "csv", otherwise the picture
    /// as PNG. One of the signals tells the end.
    void slot_SaveTo(const QString& strPath);

Q_SIGNALS:
    void signal_Saved(const QString& strPath); ///< the file is whole
    /// The plot was not saved: one line in English with path and reason.
    void signal_Failed(const QString& strMessage);

protected:
    /// For a panel, which is not owned; shows nothing yet.
    CPlotCtrl(CPlotPanel* pPanel, QObject* pParent);

    /// Takes what is to be measured. @return the work of a job; null when there is nothing new
    virtual CJob::Work Take(const CImageView2DCtrl& ctrl) = 0;
    /// There is nothing to be shown.
    virtual void Clear() = 0;
    /// See SetCalibration.
    Vantor::Algorithms::CCalibration CalibrationOf(const CImageView2DCtrl& ctrl) const;

private:
    QPointer<CPlotPanel> m_pPanel;
    Calibrate m_calibrate;
    std::unique_ptr<CLiveMeasure> m_pLive;
};
