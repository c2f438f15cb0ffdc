// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

#include <QVariant>

class CImage2DProcessOperationDlg;
class CImage2DProcessOperationModel;

/// The controller of a tool that is made of an operation: Run replaces the source image by what the operation
/// makes of a copy, in the chosen region. What is refused or fails is told in the dialog. Neither model nor
/// dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals.
    /// @param pModel, pDlg  not null; where one has died, nothing runs
    CImage2DProcessOperationCtrl(CImage2DProcessOperationModel* pModel, CImage2DProcessOperationDlg* pDlg);
    ~CImage2DProcessOperationCtrl() override;

public Q_SLOTS:
    /// Applies the operation to a copy of the source image and makes that the current one, an undoable step.
    void slot_Run();
    /// Stores a value; one that does not fit is put back in the dialog, with the reason as its message.
    void slot_ChangeValue(int nRow, const QVariant& varValue);

private:
    QPointer<CImage2DProcessOperationDlg> m_pDlg;
    QPointer<CImage2DProcessOperationModel> m_pModel;
};
