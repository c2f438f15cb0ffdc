// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/operation/SProcessOperation.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The state of a tool that is made of an operation: the values of its parameters. It announces no change;
/// only the tool itself writes it. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationModel : public CBaseModel
{
public:
    /// Begins with the defaults.
    explicit CImage2DProcessOperationModel(SProcessOperation operation);
    ~CImage2DProcessOperationModel() override;

    const SProcessOperation& GetOperation() const { return m_operation; } ///< as it was given
    const ProcessValues& GetValues() const { return m_vctValues; }        ///< one for each parameter
    /// Sets a value, given as SProcessParameter::Accepted takes it.
    /// @param nRow      0 for the first parameter
    /// @param varValue  may be anything
    /// @return empty; else why nothing was changed, as a sentence in English
    QString SetValue(int nRow, const QVariant& varValue);

private:
    SProcessOperation m_operation;
    ProcessValues m_vctValues;
};
