// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/CodecState_p.h>

#include <Vantor/Messages_p.h>

#include <cstdio>

namespace Vantor::Algorithms
{

void CCodecState::Note(const char* pText)
{
    if (m_szFirst[0] != '\0')
        return;
    std::snprintf(m_szFirst, sizeof(m_szFirst), "%s", pText);
    TellMessage(m_pCodec, m_szFirst);
}

void CCodecState::Fail(const char* pText)
{
    Note(pText);
    std::longjmp(m_jump, 1);
}

std::string CCodecState::GetFlaw() const
{
    return m_szFirst[0] == '\0' ? std::string() : std::string("The file has a flaw: ") + m_szFirst + '.';
}

} // namespace Vantor::Algorithms
