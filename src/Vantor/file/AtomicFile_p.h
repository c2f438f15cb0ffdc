// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CProgress.h>
#include <Vantor/Result_p.h>

#include <QFile>

#include <string>

namespace Vantor
{

/// A file that remembers that a write came out short, which not every encoder notices. When the work of the
/// thread has been cancelled, it writes nothing more.
class CheckedFile : public QFile
{
public:
    bool HasFailed() const { return m_bFailed; }

protected:
    qint64 writeData(const char* data, qint64 len) override
    {
        const qint64 nWritten = CProgress::IsThreadCancelled() ? -1 : QFile::writeData(data, len);
        m_bFailed |= nWritten != len;
        return nWritten;
    }

private:
    bool m_bFailed = false;
};

/// A file that replaces another one in a single step: written beside it under a name of its own, flushed to
/// the disk, renamed. Until Commit has succeeded the old file is whole; without Commit nothing is left.
class AtomicFile
{
public:
    /// @{
    /// The reasons of a failure.
    static constexpr const char* kNotWritable = "The file or its folder cannot be written.";
    static constexpr const char* kNotWhole = "The file could not be written whole.";
    /// @}

    AtomicFile() = default;
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Begins the replacement. A symbolic link is followed, its target is replaced; the permissions of an old
    /// file are kept. Fails for a target that is no regular file or may not be written.
    CResult Open(const std::string& path);
    /// Where to write; random access, readable as well.
    QFile& Device() { return m_file; }
    /// Whether something could not be written into the device.
    bool HasFailed() const { return m_file.HasFailed(); }
    /// Puts the new file in place. Fails when anything of it could not be written, or when the work of the
    /// thread has been cancelled; afterwards it cannot be cancelled any more.
    CResult Commit();

private:
    std::string m_strTarget;
    std::string m_strTemporary; ///< empty when there is none to remove
    CheckedFile m_file;
};

} // namespace Vantor
