// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolCtrl.h>

class CImage2DProcessSobelDlg;
class CImage2DProcessSobelModel;

/// The controller of the Sobel tool: a run replaces the source image by its edges in X, in Y or in both, in
/// the chosen region. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelCtrl : public CImage2DProcessToolCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Both may be null: then nothing runs.
    CImage2DProcessSobelCtrl(CImage2DProcessSobelModel* pModel, CImage2DProcessSobelDlg* pDlg);
    ~CImage2DProcessSobelCtrl() override;

protected:
    /// Filters a copy of the source image by the model's type and makes it the current one. Deliberate: also
    /// after a failure of the filter and for an invalid type, when the copy is unfiltered.
    void Run() override;
    /// Code 0 is the type, as its key; ignores other codes.
    void ChangeData(int nCode, const QString& strValue) override;

private:
    int Filter(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion) const;

    CImage2DProcessSobelModel* m_pModel;
};
