// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CPlotCtrl.h>

#include <VantorCommon/measure/CPlotPanel.h>
#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/LiveMeasure_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QSaveFile>
#include <utility>

namespace
{
bool IsTable(const QString& strPath)
{
    return strPath.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
}

/// On a thread of the pool. @return why it failed; empty for a success
QString Write(const QString& strPath, const QByteArray& table, const QImage& picture)
{
    QSaveFile file(strPath);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("The file or its folder cannot be written.");
    const bool bWritten = picture.isNull() ? file.write(table) == table.size() : picture.save(&file, "PNG");
    if (!bWritten)
        file.cancelWriting();
    return file.commit() ? QString() : QStringLiteral("The file could not be written whole.");
}
} // namespace

CPlotCtrl::CPlotCtrl(CPlotPanel* pPanel, QObject* pParent)
    : QObject(pParent), m_pPanel(pPanel),
      m_pLive(std::make_unique<CLiveMeasure>(pPanel, [this]() -> CJob::Work {
          if (const CImageView2DCtrl* pCtrl = m_pLive->GetTarget())
              return Take(*pCtrl);
          Clear();
          return nullptr;
      }))
{
    if (pPanel)
        connect(pPanel, &CPlotPanel::signal_Save, this, &CPlotCtrl::slot_Save);
}

CPlotCtrl::~CPlotCtrl() = default;

void CPlotCtrl::SetTarget(CImageView2DCtrl* pCtrl)
{
    m_pLive->SetTarget(pCtrl);
}

void CPlotCtrl::SetCalibration(Calibrate calibrate)
{
    m_calibrate = std::move(calibrate);
    Follow();
}

void CPlotCtrl::Follow()
{
    m_pLive->FollowLater();
}

Vantor::Algorithms::CCalibration CPlotCtrl::CalibrationOf(const CImageView2DCtrl& ctrl) const
{
    return m_calibrate ? m_calibrate(ctrl) : Vantor::Algorithms::CCalibration();
}

void CPlotCtrl::slot_Save()
{
    if (!m_pPanel)
        return;
    auto* pDialog = new QFileDialog(m_pPanel->window(), QStringLiteral("Save Plot"));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    pDialog->setNameFilters({QStringLiteral("PNG (*.png *.PNG)"), QStringLiteral("CSV (*.csv *.CSV)")});
    pDialog->setDefaultSuffix(QStringLiteral("png"));
    connect(pDialog, &QFileDialog::filterSelected, pDialog,
            [pDialog](const QString& strFilter) { pDialog->setDefaultSuffix(strFilter.left(3).toLower()); });
    connect(pDialog, &QFileDialog::fileSelected, this, &CPlotCtrl::slot_SaveTo);
    pDialog->open();
}

void CPlotCtrl::slot_SaveTo(const QString& strPath)
{
    if (!m_pPanel || m_pPanel->GetPlot()->GetPlot().Count() == 0)
        return;
    const CPlotView& plot = *m_pPanel->GetPlot();
    SJob sJob;
    sJob.strTitle = QStringLiteral("Save %1").arg(QFileInfo(strPath).fileName());
    sJob.bMustFinish = true;
    CJobs::Get().Start(
        this, sJob,
        [this, strPath, table = plot.GetPlot().ToTable(','),
         picture = IsTable(strPath) ? QImage() : plot.GetPicture()](Vantor::CProgress&) -> CJob::Finish {
            const QString strFailure = Write(strPath, table, picture);
            return [this, strPath, strFailure] {
                if (strFailure.isEmpty())
                    Q_EMIT signal_Saved(strPath);
                else
                    Q_EMIT signal_Failed(QStringLiteral("Cannot save plot %1. %2").arg(strPath, strFailure));
            };
        });
}
