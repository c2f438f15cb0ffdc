// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

class CImage2DProcessMedianDlg;
class CImage2DProcessMedianModel;

/// The controller of the median tool: Run replaces the source image by its median over 3x3 pixels, in the
/// chosen region. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessMedianCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Null is allowed for both: then nothing runs.
    CImage2DProcessMedianCtrl(CImage2DProcessMedianModel* pModel, CImage2DProcessMedianDlg* pDlg);
    ~CImage2DProcessMedianCtrl() override;

    /// @{
    /// A run is undone by its viewer; nothing here, false.
    bool Undo() override;
    bool Redo() override;
    /// @}

public Q_SLOTS:
    /// Filters a copy of the source image and makes it the current one. Deliberate: 3x3 whatever the type is.
    void slot_Run();
    /// Code 0 is the type, given by its key; other codes are ignored.
    void slot_ChangeData(int nCode, const QString& strValue);

private:
    QPointer<CImage2DProcessMedianDlg> m_pDlg;
    QPointer<CImage2DProcessMedianModel> m_pModel;
};
