// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/measure/CPlotCtrl.h>

class CProfileView;

/// Shows the profile of the ruler, line or arrow that is drawn or selected. See CPlotCtrl.
class VANTORCOMMON_EXPORT CProfileCtrl : public CPlotCtrl
{
    Q_OBJECT

public:
    /// Shows nothing yet.
    explicit CProfileCtrl(CProfileView* pView, QObject* pParent = nullptr);
    ~CProfileCtrl() override;

protected:
    CJob::Work Take(const CImageView2DCtrl& ctrl) override;
    void Clear() override;

private:
    QPointer<CProfileView> m_pView;
};
