// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/EngineModule_p.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <dlfcn.h>

namespace Vantor
{

namespace
{
constexpr const char* kFolder = "vantor";
std::atomic<bool> g_bEnded{false};

/// The folder of this library.
std::filesystem::path OwnFolder()
{
    Dl_info info = {};
    if (::dladdr(reinterpret_cast<const void*>(&OwnFolder), &info) == 0 || !info.dli_fname)
        return {};
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
    return (error ? std::filesystem::path(info.dli_fname) : file).parent_path();
}
} // namespace

CResult FindInModule(const char* file, const char* function, void*& found)
{
    const std::filesystem::path path = OwnFolder() / kFolder / file;
    void* pModule = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    found = pModule ? ::dlsym(pModule, function) : nullptr;
    const char* szReason = found ? nullptr : ::dlerror();
    // Runs before the static objects that dlopen created for the module are destroyed.
    std::atexit([] { g_bEnded = true; });
    if (found)
        return CResult::Success();
    return CResult::Failure(szReason ? szReason : "unknown reason");
}

bool ModulesHaveEnded()
{
    return g_bEnded;
}

} // namespace Vantor
