// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// In place of EngineModule.cpp: the PDF engine is linked in, where the fuzzer sees what it reaches.
#include <Vantor/EngineModule_p.h>
#include <Vantor/pdf/PdfEngine_p.h>

#include <cstring>

extern "C" Vantor::Utils::IPdfEngine* VantorMakePdfEngine();

void* Vantor::FindInModule(const char* file, const char*, std::string& fault)
{
    if (std::strcmp(file, Utils::kPdfModule) == 0)
        return reinterpret_cast<void*>(&VantorMakePdfEngine);
    fault = "not linked";
    return nullptr;
}

bool Vantor::ModulesHaveEnded()
{
    return false;
}
