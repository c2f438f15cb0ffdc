// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

#include <csetjmp>

namespace Vantor::Algorithms
{

/// What a codec in C says while it works on one file, and where it goes when it fails: these codecs want to
/// be left by a jump.
class CCodecState
{
public:
    /// @param pCodec  the name of the library, such as "libpng"
    explicit CCodecState(const char* pCodec) : m_pCodec(pCodec) {}

    /// Runs one step of the codec; false when it failed. All calls of the codec that may fail belong in here.
    /// The jump passes over the step, which therefore must not have objects with a destructor.
    template <class TStep> bool Run(const TStep& step)
    {
        if (setjmp(m_jump) != 0)
            return false;
        step();
        return true;
    }

    /// Tells the first message of the codec, and keeps it; the rest is dropped, for a damaged file can cause
    /// thousands.
    void Note(const char* pText);
    /// Notes why the codec failed, and leaves the step of Run.
    [[noreturn]] void Fail(const char* pText);

    /// The first message of the codec, empty when it had nothing to say.
    std::string GetFirst() const { return m_szFirst; }
    /// The sentence for the image's notes, empty when the codec had nothing to say.
    std::string GetFlaw() const;

private:
    const char* m_pCodec;
    char m_szFirst[256] = "";
    std::jmp_buf m_jump = {};
};

} // namespace Vantor::Algorithms
