// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolDlg.h>

class CImage2DProcessSobelModel;

/// The dialog of the Sobel tool: one parameter, the type. The model is not owned and may be null. GUI thread
/// only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelDlg : public CImage2DProcessToolDlg
{
    Q_OBJECT

public:
    /// Shows the model's type; the parent owns the dialog. Without a model edits emit nothing.
    CImage2DProcessSobelDlg(CImage2DProcessSobelModel* pModel, QWidget* pParent);
    ~CImage2DProcessSobelDlg() override;
};
