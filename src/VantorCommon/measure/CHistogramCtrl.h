// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/measure/CPlotCtrl.h>

class CHistogramView;

/// Shows the histogram of the shape that is drawn or selected, or else of the current image. See CPlotCtrl.
class VANTORCOMMON_EXPORT CHistogramCtrl : public CPlotCtrl
{
    Q_OBJECT

public:
    /// Shows nothing yet.
    explicit CHistogramCtrl(CHistogramView* pView, QObject* pParent = nullptr);
    ~CHistogramCtrl() override;

protected:
    CJob::Work Take(const CImageView2DCtrl& ctrl) override;
    void Clear() override;

private:
    struct SSource;

    QPointer<CHistogramView> m_pView;
    std::unique_ptr<SSource> m_pShown; ///< null: nothing is shown
};
