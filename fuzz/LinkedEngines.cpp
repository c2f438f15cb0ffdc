// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Replaces EngineModule.cpp: the PDF engine is linked in, so that the fuzzer sees which code it reaches.
#include <Vantor/EngineModule_p.h>
#include <Vantor/pdf/PdfEngine_p.h>

#include <cstring>

extern "C" Vantor::Utils::IPdfEngine* VantorMakePdfEngine();

Vantor::CResult Vantor::FindInModule(const char* file, const char*, void*& found)
{
    const bool bLinked = std::strcmp(file, Utils::kPdfModule) == 0;
    found = bLinked ? reinterpret_cast<void*>(&VantorMakePdfEngine) : nullptr;
    return bLinked ? CResult::Success() : CResult::Failure("not linked");
}

bool Vantor::ModulesHaveEnded()
{
    return false;
}
