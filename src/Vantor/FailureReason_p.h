// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <mutex>
#include <string>

namespace Vantor
{

/// Why the last operation of an object failed, as text. Any thread may read it while another one writes.
class CFailureReason
{
public:
    /// Notes how an operation ended.
    /// @param reason  a literal in English, null for success, which empties the text
    /// @return the operation's result: 0 for success, 1 for a failure
    int Note(const char* reason)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pReason = reason;
        return reason ? 1 : 0;
    }
    std::string GetText() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_pReason ? m_pReason : "";
    }

private:
    mutable std::mutex m_mutex;
    const char* m_pReason = nullptr;
};

} // namespace Vantor
