// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>

#include <utility>

CImage2DProcessOperationModel::CImage2DProcessOperationModel(SProcessOperation operation)
    : m_operation(std::move(operation))
{
    for (const SProcessParameter& parameter : m_operation.vctParameters)
        m_vctValues.push_back(parameter.varDefault);
}

CImage2DProcessOperationModel::~CImage2DProcessOperationModel() = default;

QString CImage2DProcessOperationModel::SetValue(int nRow, const QVariant& varValue)
{
    if (nRow < 0 || static_cast<std::size_t>(nRow) >= m_vctValues.size())
        return QStringLiteral("There is no such parameter.");
    const auto nIndex = static_cast<std::size_t>(nRow);
    const SProcessParameter& parameter = m_operation.vctParameters[nIndex];
    const QVariant varAccepted = parameter.Accepted(varValue);
    if (!varAccepted.isValid())
        return parameter.Refusal();
    m_vctValues[nIndex] = varAccepted;
    return {};
}
