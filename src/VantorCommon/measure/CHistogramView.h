// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/RegionStatistics.h>
#include <VantorCommon/measure/CPlotPanel.h>

class QCheckBox;

/// A panel with the histogram of an image or of a shape in it: of each channel and of the greys, with linear
/// or logarithmic heights, and the statistics below. A CHistogramCtrl fills it. It belongs to its Qt parent.
/// GUI thread only.
class VANTORCOMMON_EXPORT CHistogramView : public CPlotPanel
{
    Q_OBJECT

public:
    /// Empty until it gets statistics.
    explicit CHistogramView(QWidget* pParent = nullptr);
    ~CHistogramView() override;

    /// Shows statistics.
    /// @param statistics  with histograms, see EStatistics::Full; without channels nothing is shown
    /// @param nBits       of a sample of the image: 8 or 16
    /// @param strName     of the shape; empty for a whole image
    void SetStatistics(Vantor::Algorithms::SRegionStatistics statistics, int nBits, const QString& strName);

protected:
    void ShowAll() override;
    QString HoverText(int nIndex) const override;

private:
    const Vantor::Algorithms::SChannelStatistics* Of(int nChannel) const;
    QString InfoOf(const char* pName, const Vantor::Algorithms::SChannelStatistics& channel) const;

    QCheckBox* m_pLogarithmic;
    Vantor::Algorithms::SRegionStatistics m_statistics;
    int m_nBits = 8;
    QString m_strName;
};
