// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>

#include <memory>

/// Before the function of a module that gives its engine.
#define VANTOR_ENGINE_FUNCTION extern "C" __attribute__((visibility("default")))

namespace Vantor
{

/// An engine that is loaded with its libraries when it is used for the first time: a module in the folder
/// "vantor" beside libVantor, with one function.
/// @tparam Engine  the engine's interface
template <class Engine> struct SEngineModule {
    /// Gives an engine; its interface says who owns it. Null when the module could not be loaded.
    Engine* (*pFunction)() = nullptr;
    /// Why not, as the system has it.
    CResult result = CResult::Success();
};

/// Whether the process ends and has begun to take down what the modules keep for themselves.
bool ModulesHaveEnded();

/// Deletes an engine; but one that lives as long as the process stays as it is, for what it needs has gone
/// before it: a module, which is loaded late, ends early.
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
