// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>

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
    /// Notes how an operation ended; a success empties the text.
    /// @return what the outer functions return: 0 for success, 1 for a failure
    int Note(const CResult& result)
    {
        return result.IsSuccess() ? Succeed() : Fail(result.GetReason().c_str());
    }
    int Succeed()
    {
        Set({});
        return 0;
    }
    /// @param reason  a sentence in English. It is available even when there is no memory left to store it.
    int Fail(const char* reason)
    {
        try {
            Set(reason);
        } catch (const std::bad_alloc&) {
            Set("Out of memory."); // short enough to be stored without an allocation
        }
        return 1;
    }
    std::string GetText() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_strReason;
    }

private:
    void Set(std::string reason)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_strReason = std::move(reason);
    }

    mutable std::mutex m_mutex;
    std::string m_strReason;
};

} // namespace Vantor
