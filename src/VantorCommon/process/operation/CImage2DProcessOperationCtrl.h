// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

#include <QVariant>

class CImage2DProcessOperationDlg;
class CImage2DProcessOperationModel;
struct SProcessFound;

/// The controller of a tool that consists of an operation: Run applies the operation to a copy of the source
/// image, in the chosen region, and replaces the image by it, or adds the shapes that it finds. The dialog
/// shows refusals and failures. Neither model nor dialog is owned. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals.
    /// @param pModel, pDlg  not null; nothing runs after one of them was destroyed
    CImage2DProcessOperationCtrl(CImage2DProcessOperationModel* pModel, CImage2DProcessOperationDlg* pDlg);
    ~CImage2DProcessOperationCtrl() override;

public Q_SLOTS:
    /// Applies the operation to a copy of the source image and makes that the current one, or adds the shapes
    /// that it finds; an undoable step.
    void slot_Run();
    /// Stores a value; for one that does not fit, the dialog shows the old value again, with the reason.
    void slot_ChangeValue(int nRow, const QVariant& varValue);

private:
    void Find();
    void ShowFound(const SProcessFound& found);

    QPointer<CImage2DProcessOperationDlg> m_pDlg;
    QPointer<CImage2DProcessOperationModel> m_pModel;
};
