// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMeasureDocks.h"

#include "Viewers.h"

#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/measure/CHistogramCtrl.h>
#include <VantorCommon/measure/CHistogramView.h>
#include <VantorCommon/measure/CMeasurementCtrl.h>
#include <VantorCommon/measure/CMeasurementView.h>
#include <VantorCommon/measure/CMeasuresCtrl.h>
#include <VantorCommon/measure/CMeasuresView.h>
#include <VantorCommon/measure/CProfileCtrl.h>
#include <VantorCommon/measure/CProfileView.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QCoreApplication>

namespace
{
/// Kinds of annotations have translations of their own.
QString Translated(const QString& strText)
{
    const QByteArray english = strText.toUtf8();
    const QString strMeasure = QCoreApplication::translate("MeasureTexts", english.constData());
    return strMeasure != strText ? strMeasure
                                 : QCoreApplication::translate("ShapeKinds", english.constData());
}

Vantor::Algorithms::CCalibration CalibrationOf(const CImageView2DCtrl& ctrl)
{
    return ctrl.GetAnnotationStore()->GetCalibration();
}
} // namespace

CMeasureDocks::CMeasureDocks(const AddDock& addDock, QObject* pParent)
    : QObject(pParent), m_pResults(new CMeasurementView), m_pMeasures(new CMeasuresView),
      m_pHistogram(new CHistogramView), m_pProfile(new CProfileView),
      m_pResultsCtrl(new CMeasurementCtrl(m_pResults, this)),
      m_pMeasuresCtrl(new CMeasuresCtrl(m_pMeasures, this)),
      m_pHistogramCtrl(new CHistogramCtrl(m_pHistogram, this)),
      m_pProfileCtrl(new CProfileCtrl(m_pProfile, this))
{
    m_pResults->SetTexts(&Translated);
    m_pMeasures->SetTexts(&Translated);
    m_pHistogram->SetTexts(&Translated);
    m_pProfile->SetTexts(&Translated);
    m_pResultsCtrl->SetCalibration([](const CImageView2DCtrl& ctrl, int nImage) {
        return ctrl.GetAnnotationStore()->GetCalibration(nImage);
    });
    m_pMeasuresCtrl->SetCalibration(&CalibrationOf);
    m_pProfileCtrl->SetCalibration(&CalibrationOf);
    addDock("Results", tr("Results"), m_pResults);
    addDock("Histogram", tr("Histogram"), m_pHistogram);
    addDock("Profile", tr("Profile"), m_pProfile);
    connect(m_pResultsCtrl, &CMeasurementCtrl::signal_Failed, this, &CMeasureDocks::signal_Failed);
    connect(m_pHistogramCtrl, &CPlotCtrl::signal_Failed, this, &CMeasureDocks::signal_Failed);
    connect(m_pProfileCtrl, &CPlotCtrl::signal_Failed, this, &CMeasureDocks::signal_Failed);
}

CMeasureDocks::~CMeasureDocks() = default;

void CMeasureDocks::SetViewer(const SViewer& viewer)
{
    m_pResultsCtrl->SetTarget(viewer.Ctrl2D(), viewer.View2D());
    m_pMeasuresCtrl->SetTarget(viewer.Ctrl2D());
    m_pHistogramCtrl->SetTarget(viewer.Ctrl2D());
    m_pProfileCtrl->SetTarget(viewer.Ctrl2D());
    disconnect(m_calibrated);
    m_calibrated = connect(viewer.Ctrl2D()->GetAnnotationStore(), &CAnnotationStore::signal_ChangeCalibration,
                           this, [this] {
                               m_pResultsCtrl->Follow();
                               m_pMeasuresCtrl->Follow();
                               m_pProfileCtrl->Follow();
                           });
}
