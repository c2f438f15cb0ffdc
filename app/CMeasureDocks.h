// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QString>
#include <functional>

class CHistogramCtrl;
class CHistogramView;
class CMeasurementCtrl;
class CMeasurementView;
class CMeasuresCtrl;
class CMeasuresView;
class CProfileCtrl;
class CProfileView;
class QWidget;
struct SViewer;

/// The panels that measure what the active viewer shows: results, histogram and profile.
class CMeasureDocks : public QObject
{
    Q_OBJECT

public:
    /// Puts a panel into a dock of the window, hidden, and owns it from then on.
    using AddDock = std::function<void(const char* pName, const QString& strTitle, QWidget* pPanel)>;

    explicit CMeasureDocks(const AddDock& addDock, QObject* pParent);
    ~CMeasureDocks() override;

    /// The measurements of what is selected, to stand beside its other properties.
    CMeasuresView* GetMeasures() const { return m_pMeasures; }
    /// Measures in another viewer.
    void SetViewer(const SViewer& viewer);

Q_SIGNALS:
    /// A table or a plot was not saved: one line in English.
    void signal_Failed(const QString& strMessage);

private:
    CMeasurementView* m_pResults;
    CMeasuresView* m_pMeasures;
    CHistogramView* m_pHistogram;
    CProfileView* m_pProfile;
    CMeasurementCtrl* m_pResultsCtrl;
    CMeasuresCtrl* m_pMeasuresCtrl;
    CHistogramCtrl* m_pHistogramCtrl;
    CProfileCtrl* m_pProfileCtrl;
    QMetaObject::Connection m_calibrated; ///< of the viewer
};
