// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolCtrl.h>

class CImage2DProcessMedianDlg;
class CImage2DProcessMedianModel;

/// The controller of the median tool: a run replaces the source image by its median over 3x3 pixels, in the
/// chosen region. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessMedianCtrl : public CImage2DProcessToolCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Both may be null: then nothing runs.
    CImage2DProcessMedianCtrl(CImage2DProcessMedianModel* pModel, CImage2DProcessMedianDlg* pDlg);
    ~CImage2DProcessMedianCtrl() override;

protected:
    /// Filters a copy of the source image and makes it the current one. Deliberate: 3x3, whatever the type.
    void Run() override;
    /// Code 0 is the type, as its key; ignores other codes.
    void ChangeData(int nCode, const QString& strValue) override;

private:
    CImage2DProcessMedianModel* m_pModel;
};
