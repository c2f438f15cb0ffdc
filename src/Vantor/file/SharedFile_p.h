// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QIODevice>

#include <memory>

class QFile;

namespace Vantor
{

/// An open file that several threads read at once, each by readers of its own. It stays what it was when
/// another file takes its name.
class CSharedFile
{
public:
    /// @param pFile  open for reading
    explicit CSharedFile(std::unique_ptr<QFile> pFile);
    ~CSharedFile();
    CSharedFile(const CSharedFile&) = delete;
    CSharedFile& operator=(const CSharedFile&) = delete;

    qint64 GetSize() const { return m_nBytes; } ///< in bytes, when it was opened

private:
    friend class CSharedFileReader;

    const std::unique_ptr<QFile> m_pFile;
    const int m_nHandle;
    const qint64 m_nBytes;
};

/// Reads a shared file from its start. It reads no more when its thread's progress is cancelled.
class CSharedFileReader : public QIODevice
{
public:
    explicit CSharedFileReader(std::shared_ptr<const CSharedFile> pFile);

    qint64 size() const override;
    /// The bytes that can still be read; as many as one likes at the start.
    void SetBytesLeft(qint64 nBytes) { m_nLeft = nBytes; }
    /// Whether more was asked for than those.
    bool IsSpent() const { return m_bSpent; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 maxSize) override;

private:
    const std::shared_ptr<const CSharedFile> m_pFile;
    qint64 m_nLeft = -1; ///< below 0: without end
    bool m_bSpent = false;
};

} // namespace Vantor
