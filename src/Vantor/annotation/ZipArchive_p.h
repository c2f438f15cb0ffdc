// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/AnnotationFormats_p.h>

#include <cstdint>
#include <functional>
#include <string>

namespace Vantor::Annotations
{

/// Makes a zip archive whose entries are stored as they are.
class CZipWriter
{
public:
    static constexpr std::size_t kMaxEntries = 65535;

    /// @param name   of the entry: UTF-8, at most 65535 bytes
    /// @param bytes  its content
    void Add(const std::string& name, const std::string& bytes);
    /// The whole archive; nothing may be added any more.
    std::string Finish();

private:
    std::string m_bytes;
    std::string m_directory;
    std::uint16_t m_nEntries = 0;
};

/// Walks over the entries of a zip archive, stored or deflated. All of them together may claim 64 MiB.
/// @param bytes    the archive; archives beyond 4 GiB or 65535 entries are not read
/// @param visit    receives name and content of one entry after the other; false ends the walk
/// @param remarks  receives the entries that are left out: damaged, encrypted, in another compression
CResult ReadZip(const std::string& bytes,
                const std::function<bool(const std::string& name, const std::string& content)>& visit,
                Remarks& remarks);

} // namespace Vantor::Annotations
