// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/operation/SProcessOperation.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The state of a tool that consists of an operation: the values of its parameters. It emits no signals; only
/// the tool itself changes it. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationModel : public CBaseModel
{
public:
    /// Starts with the defaults.
    explicit CImage2DProcessOperationModel(SProcessOperation operation);
    ~CImage2DProcessOperationModel() override;

    const SProcessOperation& GetOperation() const { return m_operation; } ///< as passed to the constructor
    const ProcessValues& GetValues() const { return m_vctValues; }        ///< one for each parameter
    /// Sets a value, in any form that SProcessParameter::Accepted takes.
    /// @param nRow      0 for the first parameter
    /// @param varValue  may be anything
    /// @return empty; otherwise why nothing changed, as a sentence in English
    QString SetValue(int nRow, const QVariant& varValue);

private:
    SProcessOperation m_operation;
    ProcessValues m_vctValues;
};
