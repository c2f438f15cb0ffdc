// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

class CImage2DProcessSobelDlg;
class CImage2DProcessSobelModel;

/// The controller of the Sobel tool: Run replaces the source image by its edges in X, in Y or in both, in the
/// chosen region. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Null is allowed for both: then nothing runs.
    CImage2DProcessSobelCtrl(CImage2DProcessSobelModel* pModel, CImage2DProcessSobelDlg* pDlg);
    ~CImage2DProcessSobelCtrl() override;

    /// @{
    /// A run is undone by its viewer; nothing here, false.
    bool Undo() override;
    bool Redo() override;
    /// @}

public Q_SLOTS:
    /// Filters a copy of the source image by the model's type and makes it the current one. Deliberate: also
    /// when the filter has failed, and for a type that is none; the copy is unfiltered then.
    void slot_Run();
    /// Code 0 is the type, given by its key; other codes are ignored.
    void slot_ChangeData(int nCode, const QString& strValue);

private:
    int Filter(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion) const;

    QPointer<CImage2DProcessSobelDlg> m_pDlg;
    QPointer<CImage2DProcessSobelModel> m_pModel;
};
