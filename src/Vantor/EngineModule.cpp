// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/EngineModule_p.h>

#include <Vantor/LibraryFolder_p.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>

namespace Vantor
{

namespace
{
std::atomic<bool> g_bEnded{false};
} // namespace

CResult FindInModule(const char* file, const char* function, void*& found)
{
    const std::filesystem::path path = LibraryFolder() / kModuleFolder / file;
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
