// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CHistogramView.h>

#include <VantorCommon/measure/CMeasurementModel.h>
#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/PlotChannels_p.h>

#include <QCheckBox>
#include <utility>

using Vantor::Algorithms::SChannelStatistics;
using Vantor::Algorithms::SRegionStatistics;

CHistogramView::CHistogramView(QWidget* pParent) : CPlotPanel(pParent), m_pLogarithmic(new QCheckBox)
{
    m_pLogarithmic->setFocusPolicy(Qt::TabFocus);
    AddToBar(m_pLogarithmic);
    connect(m_pLogarithmic, &QCheckBox::toggled, this, [this] { ShowAll(); });
    ShowAll();
}

CHistogramView::~CHistogramView() = default;

void CHistogramView::SetStatistics(SRegionStatistics statistics, int nBits, const QString& strName)
{
    m_statistics = std::move(statistics);
    m_nBits = nBits;
    m_strName = strName;
    ShowAll();
}

const SChannelStatistics* CHistogramView::Of(int nChannel) const
{
    if (nChannel == PlotChannels::kGrey)
        return m_statistics.grey ? &*m_statistics.grey : nullptr;
    if (nChannel == PlotChannels::kWeighted)
        return m_statistics.weightedGrey ? &*m_statistics.weightedGrey : nullptr;
    return &m_statistics.channels[static_cast<std::size_t>(nChannel)];
}

void CHistogramView::ShowAll()
{
    m_pLogarithmic->setText(Text("Logarithmic"));
    const auto nChannels = static_cast<int>(m_statistics.channels.size());
    if (nChannels > 0)
        OfferChannels(nChannels);
    SPlot sPlot;
    sPlot.strX = QStringLiteral("Value");
    sPlot.bBars = true;
    sPlot.bLogarithmic = m_pLogarithmic->isChecked();
    sPlot.dblStep = m_nBits == 16 ? 256.0 : 1.0;
    QStringList lstInfo;
    for (const PlotChannels::SShown& shown : PlotChannels::Shown(GetChannel(), nChannels)) {
        const SChannelStatistics* pChannel = Of(shown.nChannel);
        if (!pChannel || pChannel->histogram.empty())
            continue;
        sPlot.vctSeries.push_back({QString::fromLatin1(shown.pName),
                                   shown.color,
                                   {pChannel->histogram.begin(), pChannel->histogram.end()}});
        lstInfo << InfoOf(shown.pName, *pChannel);
    }
    if (lstInfo.isEmpty())
        lstInfo << QString::fromStdString(m_statistics.failure);
    lstInfo.prepend(m_strName.isEmpty() ? Text("Whole image") : m_strName);
    ShowPlot(std::move(sPlot),
             nChannels > 0 || !m_statistics.failure.empty() ? lstInfo.join(QLatin1Char('\n')) : QString());
}

/// Of 16 bits only bins of several values are counted, not the mode.
QString CHistogramView::InfoOf(const char* pName, const SChannelStatistics& channel) const
{
    const auto number = &CMeasurementModel::NumberText;
    QString strMode = number(channel.mode);
    if (m_nBits == 8 && m_statistics.count > 0)
        strMode += QStringLiteral(" (%1)").arg(channel.histogram[static_cast<std::size_t>(channel.mode)]);
    return Text("%1: N %2, mean %3, deviation %4, minimum %5, maximum %6, mode %7")
        .arg(Text(pName), QString::number(m_statistics.count), number(channel.mean),
             number(channel.deviation), number(channel.min), number(channel.max), strMode);
}

QString CHistogramView::HoverText(int nIndex) const
{
    const SPlot& plot = GetPlot()->GetPlot();
    QStringList lstCounts;
    for (const SPlotSeries& series : plot.vctSeries)
        lstCounts << CMeasurementModel::NumberText(series.vctValues[static_cast<std::size_t>(nIndex)]);
    const auto nFirst = static_cast<int>(plot.PlaceOf(nIndex));
    QString strValue = QString::number(nFirst);
    if (plot.dblStep > 1.0)
        strValue += QStringLiteral(" - %1").arg(nFirst + static_cast<int>(plot.dblStep) - 1);
    return Text("Value %1: %2").arg(strValue, lstCounts.join(QStringLiteral(", ")));
}
