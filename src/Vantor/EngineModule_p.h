// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>

#include <memory>

/// Precedes the function of a module that returns its engine.
#define VANTOR_ENGINE_FUNCTION extern "C" __attribute__((visibility("default")))

namespace Vantor
{

/// An engine that is loaded, with its libraries, at its first use: a module in the folder "vantor" beside
/// libVantor, which exports one function.
/// @tparam Engine  the engine's interface
template <class Engine> struct SEngineModule {
    /// Returns an engine; its interface says who owns it. Null when the module could not be loaded.
    Engine* (*pFunction)() = nullptr;
    /// Why the module could not be loaded, in the system's words.
    CResult result = CResult::Success();
};

/// Whether the process is ending and has begun to destroy the modules' static objects.
bool ModulesHaveEnded();

/// Deletes an engine, unless the process is ending: a module is loaded late and therefore destroyed early, so
/// what the engine needs is already gone.
struct SEngineDeleter {
    template <class Engine> void operator()(Engine* pEngine) const
    {
        if (!ModulesHaveEnded())
            delete pEngine;
    }
};
template <class Engine> using EnginePtr = std::unique_ptr<Engine, SEngineDeleter>;

/// Finds the address of a function of a module; the module stays until the process ends.
/// @param file      its name in the folder of the modules
/// @param function  the function's name
/// @param found     gets the address, null on failure
CResult FindInModule(const char* file, const char* function, void*& found);

template <class Engine> SEngineModule<Engine> LoadEngineModule(const char* file, const char* function)
{
    SEngineModule<Engine> module;
    void* pFound = nullptr;
    module.result = FindInModule(file, function, pFound);
    module.pFunction = reinterpret_cast<Engine* (*)()>(pFound);
    return module;
}

} // namespace Vantor
