// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CProfileView.h>

#include <Vantor/measure/MeasurementTable.h>
#include <VantorCommon/measure/CMeasurementModel.h>
#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/PlotChannels_p.h>

#include <QLabel>
#include <QSpinBox>
#include <utility>

using Vantor::Algorithms::SLineProfile;

namespace
{
constexpr int kMostWidth = 1000;
constexpr double kWeights[] = {0.299, 0.587, 0.114};
} // namespace

CProfileView::CProfileView(QWidget* pParent)
    : CPlotPanel(pParent), m_pWidthLabel(new QLabel), m_pWidth(new QSpinBox)
{
    m_pWidth->setRange(1, kMostWidth);
    m_pWidth->setKeyboardTracking(false);
    m_pWidthLabel->setBuddy(m_pWidth);
    AddToBar(m_pWidthLabel);
    AddToBar(m_pWidth);
    connect(m_pWidth, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &CProfileView::signal_ChangeLineWidth);
    ShowAll();
}

CProfileView::~CProfileView() = default;

int CProfileView::GetLineWidth() const
{
    return m_pWidth->value();
}

void CProfileView::SetProfile(SLineProfile profile, const QString& strUnit, const QString& strName)
{
    m_profile = std::move(profile);
    m_strUnit = strUnit;
    m_strName = strName;
    ShowAll();
}

std::vector<double> CProfileView::ValuesOf(int nChannel) const
{
    const auto& vctChannels = m_profile.channels;
    if (nChannel >= 0)
        return vctChannels[static_cast<std::size_t>(nChannel)];
    std::vector<double> vctValues(m_profile.positions.size(), 0.0);
    for (std::size_t c = 0; c < 3; ++c)
        for (std::size_t i = 0; i < vctValues.size(); ++i)
            vctValues[i] += vctChannels[c][i] * (nChannel == PlotChannels::kWeighted ? kWeights[c] : 1.0);
    if (nChannel == PlotChannels::kGrey)
        for (double& dblValue : vctValues)
            dblValue /= 3.0;
    return vctValues;
}

void CProfileView::ShowAll()
{
    m_pWidthLabel->setText(Text("Width"));
    m_pWidth->setAccessibleName(Text("Width"));
    const auto nChannels = static_cast<int>(m_profile.channels.size());
    const auto& vctPositions = m_profile.positions;
    if (nChannels == 0 || vctPositions.empty()) {
        ShowPlot({}, m_profile.failure.empty() ? Text("Select a ruler or an arrow.")
                                               : QString::fromStdString(m_profile.failure));
        return;
    }
    OfferChannels(nChannels);
    SPlot sPlot;
    sPlot.strX = QStringLiteral("Distance [%1]").arg(m_strUnit);
    sPlot.dblStart = vctPositions.front();
    sPlot.dblStep = vctPositions.size() > 1 && vctPositions[1] > vctPositions[0]
                        ? vctPositions[1] - vctPositions[0]
                        : 1.0;
    const auto number = &CMeasurementModel::NumberText;
    QStringList lstInfo{Text("%1: length %2 %3").arg(m_strName, number(vctPositions.back()), m_strUnit)};
    for (const PlotChannels::SShown& shown : PlotChannels::Shown(GetChannel(), nChannels)) {
        sPlot.vctSeries.push_back({QString::fromLatin1(shown.pName), shown.color, ValuesOf(shown.nChannel)});
        const auto summary = Vantor::Algorithms::SummarizeValues(sPlot.vctSeries.back().vctValues);
        lstInfo << Text("%1: N %2, mean %3, deviation %4, minimum %5, maximum %6")
                       .arg(Text(shown.pName), QString::number(summary.count), number(summary.mean),
                            number(summary.deviation), number(summary.min), number(summary.max));
    }
    ShowPlot(std::move(sPlot), lstInfo.join(QLatin1Char('\n')));
}

QString CProfileView::HoverText(int nIndex) const
{
    const SPlot& plot = GetPlot()->GetPlot();
    QStringList lstValues;
    for (const SPlotSeries& series : plot.vctSeries)
        lstValues << CMeasurementModel::NumberText(series.vctValues[static_cast<std::size_t>(nIndex)]);
    return Text("%1 %2: %3")
        .arg(CMeasurementModel::NumberText(plot.PlaceOf(nIndex)), m_strUnit,
             lstValues.join(QStringLiteral(", ")));
}
