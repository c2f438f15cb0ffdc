// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CProgress.h>
#include <Vantor/Result_p.h>
#include <Vantor/ocr/Page_p.h>

#include <string>

namespace Vantor::Algorithms
{

/// What one pass over a page has found.
struct SReading {
    std::string strText;  ///< UTF-8, without white space at its end
    int nConfidence = -1; ///< percent; -1 when the engine has failed
};

/// The OCR engine with the language that it has loaded. One thread at a time uses it.
class IOcrEngine
{
public:
    IOcrEngine() = default;
    virtual ~IOcrEngine() = default;
    IOcrEngine(const IOcrEngine&) = delete;
    IOcrEngine& operator=(const IOcrEngine&) = delete;

    /// Loads a language, once.
    /// @param bSingleBlock  whether a page is one block of text; else its blocks are found
    virtual CResult Load(const std::string& strLanguage, const std::string& strFolder, bool bSingleBlock) = 0;

    /// Whether the text of a page seems to be upside down, or to lie on the side from which half a turn makes
    /// it readable: Latin letters have more parts above their bodies than below. False when in doubt.
    virtual bool SeemsTurned(const SPage& page) = 0;

    /// Reads a page of at least one pixel, at most 32767 to a side.
    /// @param pProgress  told and asked between the words; null: nobody watches. Cancelled, the engine fails
    virtual SReading Read(const SPage& page, int nDpi, CProgress* pProgress) = 0;
};

/// The module and its function that makes an engine, which the caller owns.
constexpr const char* kOcrModule = "vantor-ocr.so";
constexpr const char* kOcrFunction = "VantorMakeOcrEngine";

} // namespace Vantor::Algorithms
