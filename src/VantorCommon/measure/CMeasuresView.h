// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/measure/CMeasurementModel.h>

#include <QWidget>
#include <memory>

class QGroupBox;
class QLabel;

/// A panel with the measurements of one shape, line by line, for a place beside its other properties. It
/// takes no room while there is none. A CMeasuresCtrl fills it. It belongs to its Qt parent. GUI thread only.
class VANTORCOMMON_EXPORT CMeasuresView : public QWidget
{
    Q_OBJECT

public:
    using MeasurementPtr =
        std::shared_ptr<const Vantor::Algorithms::SMeasurement>; ///< null: nothing is shown

    /// Shows nothing.
    explicit CMeasuresView(QWidget* pParent = nullptr);
    ~CMeasuresView() override;

    /// Shows the usual columns of a measurement, as far as they have values.
    void SetMeasurement(MeasurementPtr pMeasured);
    /// What is shown; null for nothing.
    const MeasurementPtr& GetMeasurement() const { return m_pMeasured; }
    /// Other texts than English ones.
    void SetTexts(const CMeasurementModel::Translate& translate);

private:
    void ShowAll();

    QGroupBox* m_pBox;
    QLabel* m_pNames;
    QLabel* m_pValues;
    MeasurementPtr m_pMeasured;
    CMeasurementModel::Translate m_translate;
};
