// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QIODevice>

#include <array>

namespace Vantor::Algorithms
{

/// Reads a device byte by byte, from where it stands.
class CByteReader
{
public:
    /// @param device  must outlive this object, which reads ahead in it
    explicit CByteReader(QIODevice& device) : m_device(device), m_nStart(device.pos()) {}

    /// The next byte, -1 at the end.
    int Next()
    {
        if (m_nNext == m_nThere && !Fill())
            return -1;
        return static_cast<unsigned char>(m_bytes[static_cast<std::size_t>(m_nNext++)]);
    }
    /// Where the next byte is in the device.
    qint64 Place() const { return m_nStart + m_nNext; }

private:
    bool Fill()
    {
        m_nStart += m_nThere;
        m_nThere = m_device.read(m_bytes.data(), static_cast<qint64>(m_bytes.size()));
        m_nNext = 0;
        if (m_nThere <= 0)
            m_nThere = 0;
        return m_nThere > 0;
    }

    QIODevice& m_device;
    qint64 m_nStart; ///< of the bytes that are there
    std::array<char, 4096> m_bytes{};
    qint64 m_nNext = 0;
    qint64 m_nThere = 0;
};

} // namespace Vantor::Algorithms
