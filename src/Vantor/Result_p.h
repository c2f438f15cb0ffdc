// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>
#include <utility>

namespace Vantor
{

/// How an operation inside the core ended: a success, or a failure with its reason. The outer functions turn
/// it into what they promise: an int, a bool or an enumeration, and a text that can be asked for.
class [[nodiscard]] CResult
{
public:
    static CResult Success() { return {}; }
    /// @param strReason  a sentence in English, not empty
    static CResult Failure(std::string strReason) { return CResult(std::move(strReason)); }

    bool IsSuccess() const { return m_strReason.empty(); }
    const std::string& GetReason() const { return m_strReason; } ///< empty for a success

private:
    CResult() = default;
    explicit CResult(std::string strReason) : m_strReason(std::move(strReason)) {}

    std::string m_strReason;
};

} // namespace Vantor
