// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/file/SharedFile_p.h>

#include <Vantor/CProgress.h>

#include <QFile>

#include <unistd.h>
#include <utility>

namespace Vantor
{

CSharedFile::CSharedFile(std::unique_ptr<QFile> pFile)
    : m_pFile(std::move(pFile)), m_nHandle(m_pFile->handle()), m_nBytes(m_pFile->size())
{
}

CSharedFile::~CSharedFile() = default;

CSharedFileReader::CSharedFileReader(std::shared_ptr<const CSharedFile> pFile) : m_pFile(std::move(pFile))
{
    // Unbuffered: pos() is then where the next byte is read.
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 CSharedFileReader::size() const
{
    return m_pFile->GetSize();
}

qint64 CSharedFileReader::readData(char* data, qint64 maxSize)
{
    m_bSpent = m_bSpent || (m_nLeft >= 0 && maxSize > m_nLeft);
    if (m_bSpent || CProgress::IsThreadCancelled())
        return -1;
    const qint64 nRead = ::pread(m_pFile->m_nHandle, data, static_cast<std::size_t>(maxSize), pos());
    if (m_nLeft >= 0 && nRead > 0)
        m_nLeft -= nRead;
    return nRead;
}

qint64 CSharedFileReader::writeData(const char*, qint64)
{
    return -1;
}

} // namespace Vantor
