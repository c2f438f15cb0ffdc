// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

class CBaseModel;
class CImage2DProcessToolDlg;

/// The base of the controllers of the median, the Sobel and the OCR tool: it turns the dialog's signals into
/// runs and into values of the model. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessToolCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    ~CImage2DProcessToolCtrl() override;

public Q_SLOTS:
    /// Runs the tool on the source; does nothing without dialog and model.
    void slot_Run();
    /// Stores a value in the model, if there is one; ignores codes that the tool does not know.
    void slot_ChangeData(int nCode, const QString& strValue);

protected:
    /// Connects the dialog's signals. Both may be null: then nothing runs.
    CImage2DProcessToolCtrl(CBaseModel* pModel, CImage2DProcessToolDlg* pDlg);

    /// @{
    /// The work of the two slots, called while dialog and model, or the model, exist.
    virtual void Run() = 0;
    virtual void ChangeData(int nCode, const QString& strValue) = 0;
    /// @}

private:
    QPointer<CBaseModel> m_pToolModel;
    QPointer<CImage2DProcessToolDlg> m_pToolDlg;
};
