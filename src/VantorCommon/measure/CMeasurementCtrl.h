// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/Export.h>

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class CImageView2D;
class CImageView2DCtrl;
class CMeasurementView;

/// Lets a table show the measurements of the annotations of a 2D view, one view at a time, and keeps its
/// columns in the settings. It follows annotations and images while they change, also while a shape is drawn;
/// jobs measure what is new, on copies, beside the GUI thread. Nothing is owned, everything may be null or
/// die first. GUI thread only.
class VANTORCOMMON_EXPORT CMeasurementCtrl : public QObject
{
    Q_OBJECT

public:
    /// The calibration of an image of a controller's list, by its index.
    using Calibrate =
        std::function<Vantor::Algorithms::CCalibration(const CImageView2DCtrl& ctrl, int nImage)>;

    /// Shows nothing yet.
    explicit CMeasurementCtrl(CMeasurementView* pTable, QObject* pParent = nullptr);
    ~CMeasurementCtrl() override;

    /// Shows the measurements of this controller's annotations; the view is where they are brought into
    /// sight.
    void SetTarget(CImageView2DCtrl* pCtrl, CImageView2D* pView);
    /// Whom to ask for calibrations; without it a unit is a pixel. Call Follow when one has changed.
    void SetCalibration(Calibrate calibrate);
    /// Measures what has changed since, and everything of which the calibration is another, soon.
    void Follow();

public Q_SLOTS:
    /// Asks for a file, and saves the table there.
    void slot_Save();
    /// Saves the table as CSV, as it is shown, in a job. One of the signals tells the end.
    void slot_SaveTo(const QString& strPath);

Q_SIGNALS:
    void signal_Saved(const QString& strPath); ///< the file is whole
    /// The table was not saved: one line in English with path and reason.
    void signal_Failed(const QString& strMessage);

private:
    struct SPrivate;

    std::unique_ptr<SPrivate> m_p;
};
