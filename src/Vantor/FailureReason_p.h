// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <mutex>
#include <new>
#include <string>
#include <utility>

namespace Vantor
{

/// Why the last operation of an object failed, as text. Any thread may read it while another one writes.
class CFailureReason
{
public:
    /// Notes how an operation ended.
    /// @param reason  a sentence in English; null or empty for success, which empties the text
    /// @return the operation's result: 0 for success, 1 for a failure
    int Note(const char* reason)
    {
        try {
            return Note(std::string(reason ? reason : ""));
        } catch (const std::bad_alloc&) {
            return Note(std::string("Out of memory.")); // short enough to need none of its own
        }
    }
    int Note(std::string reason)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strReason = std::move(reason);
        return m_strReason.empty() ? 0 : 1;
    }
    std::string GetText() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_strReason;
    }

private:
    mutable std::mutex m_mutex;
    std::string m_strReason;
};

} // namespace Vantor
