// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolDelegate.h>

#include <QStringList>

/// Edits the values of the OCR tool's parameter tree: the language in a combo box of eng, vie and kor or of
/// what a host offers, the folder in a file dialog, the resolution in a spin box from 1 to 1024. Deliberate:
/// the spin box opens at 70, not at the stored value. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRDlgParameterDelegate : public CImage2DProcessToolDelegate
{
    Q_OBJECT

public:
    /// The parent, if any, owns the delegate.
    explicit CImage2DProcessOCRDlgParameterDelegate(QObject* pParent = nullptr);
    /// @param lstLanguages  in place of the three
    /// @param pParent       owns the delegate; may be null
    CImage2DProcessOCRDlgParameterDelegate(const QStringList& lstLanguages, QObject* pParent);
    ~CImage2DProcessOCRDlgParameterDelegate() override;
};
