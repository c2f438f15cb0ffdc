// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <utility>

#include <unistd.h>

namespace Vantor
{

/// Owns an open file of the system and closes it.
class CFileDescriptor
{
public:
    CFileDescriptor() = default;
    /// @param nFile  below 0 for none
    explicit CFileDescriptor(int nFile) : m_nFile(nFile) {}
    ~CFileDescriptor() { Close(); }
    CFileDescriptor(CFileDescriptor&& other) noexcept : m_nFile(std::exchange(other.m_nFile, -1)) {}
    CFileDescriptor& operator=(CFileDescriptor&& other) noexcept
    {
        std::swap(m_nFile, other.m_nFile);
        return *this;
    }

    int Get() const { return m_nFile; }
    bool IsOpen() const { return m_nFile >= 0; }
    void Close()
    {
        if (IsOpen())
            ::close(std::exchange(m_nFile, -1));
    }

private:
    int m_nFile = -1;
};

} // namespace Vantor
