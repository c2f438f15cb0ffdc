// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CVObject.h>

#include <memory>
#include <string>

namespace Vantor::Geometry
{
class CGeometry;
}

namespace Vantor::Algorithms
{

class CImage;

/// Reads the text of an image with the OCR engine Tesseract 5.
///
/// The engine is made by the first Decode and kept; a change of language or folder makes the next Decode
/// build another one. The first Decode of the process loads the engine's libraries (the module
/// vantor/vantor-ocr.so beside libVantor), which then stay loaded. If that fails, Decode fails and the reason
/// says why. The int results are 0 on success and non-zero on failure, and a failure changes neither the
/// settings nor the text. One object is used by one thread at a time; only GetFailureReason may be called by
/// any thread at any time.
class VANTOR_EXPORT CVOCR : public CVObject
{
public:
    /// No language is selected, so that Decode fails until SetLanguageData has succeeded.
    CVOCR();
    ~CVOCR() override;
    CVOCR(const CVOCR&) = delete;
    CVOCR& operator=(const CVOCR&) = delete;

    /// Selects the language.
    /// @param language  the code of one language, or several joined by '+', such as "eng+vie"; UTF-8
    /// @param folder    where eng.traineddata and its like lie for each of them; UTF-8
    /// @return 0, or non-zero for a null pointer, a code that is empty or holds "..", or a missing file,
    ///         which the failure's reason names
    int SetLanguageData(const char* language, const char* folder);

    /// The resolution that the engine assumes, 1 to 2400 dots per inch; 144 at the start.
    /// @param dpi  any other value fails
    int SetUserDefinedDpi(int dpi);

    /// Recognises the text inside a region. It reads the surroundings and transparent pixels as white, and
    /// also pages that lie on a side or upside down.
    /// @param image   1 to 4 channels of 8 or 16 bits; only read
    /// @param region  null means the whole image; outside the image there is no text
    /// @return 0, also when there is no text: GetText() is empty then. Non-zero without an image or a
    ///         language, for a region with a side beyond 32,767 pixels, for data that the engine refuses, and
    ///         for lack of memory.
    int Decode(const CImage* image, const Geometry::CGeometry* region);

    /// The text of the last successful Decode, UTF-8 with '\n' between the lines and none at the end. Never
    /// null; valid until the next Decode.
    const char* GetText() const;

    /// Why the last call on this object failed, as a sentence in English; empty after a success. Any thread.
    std::string GetFailureReason() const;

private:
    struct SEngine;
    std::unique_ptr<SEngine> m_pEngine;
};

} // namespace Vantor::Algorithms
