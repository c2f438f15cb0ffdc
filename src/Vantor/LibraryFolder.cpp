// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/LibraryFolder_p.h>

#include <system_error>

#include <dlfcn.h>

namespace Vantor
{

std::filesystem::path LibraryFolder()
{
    Dl_info info = {};
    if (::dladdr(reinterpret_cast<const void*>(&LibraryFolder), &info) == 0 || !info.dli_fname)
        return {};
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
    return (error ? std::filesystem::path(info.dli_fname) : file).parent_path();
}

} // namespace Vantor
