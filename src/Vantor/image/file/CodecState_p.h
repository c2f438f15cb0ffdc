// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

#include <csetjmp>

namespace Vantor::Algorithms
{

/// Keeps the messages of a codec in C while it works on one file, and the target of its jump when it fails:
/// such codecs are left by a jump.
class CCodecState
{
public:
    /// @param pCodec  the name of the library, such as "libpng"
    explicit CCodecState(const char* pCodec) : m_pCodec(pCodec) {}

    /// Runs one step of the codec; false when it failed. All calls of the codec that may fail belong in here.
    /// The jump skips the rest of the step, which therefore must not hold objects with a destructor.
    template <class TStep> bool Run(const TStep& step)
    {
        if (setjmp(m_jump) != 0)
            return false;
        step();
        return true;
    }

    /// Reports and keeps the codec's first message; drops the rest, because a damaged file can cause
    /// thousands.
    void Note(const char* pText);
    /// Records why the codec failed and leaves the step of Run.
    [[noreturn]] void Fail(const char* pText);

    /// The codec's first message; empty when there was none.
    std::string GetFirst() const { return m_szFirst; }
    /// The sentence for the image's notes; empty when the codec gave no message.
    std::string GetFlaw() const;

private:
    const char* m_pCodec;
    char m_szFirst[256] = "";
    std::jmp_buf m_jump = {};
};

} // namespace Vantor::Algorithms
