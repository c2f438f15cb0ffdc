// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/JsonText_p.h>

namespace Vantor::Annotations
{

namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Reads a text by the grammar, letter by letter.
class Checker
{
public:
    Checker(std::string_view text, int nMaxDepth) : m_text(text), m_nMaxDepth(nMaxDepth) {}

    bool All() { return Value(0) && (Blanks(), m_nPos == m_text.size()); }
    std::size_t Position() const { return m_nPos; }
    bool IsTooDeep() const { return m_bTooDeep; }

private:
    char Peek(std::size_t nAhead = 0) const
    {
        return m_nPos + nAhead < m_text.size() ? m_text[m_nPos + nAhead] : '\0';
    }
    bool Take(char c) { return Peek() == c && m_nPos < m_text.size() && (++m_nPos, true); }
    void Blanks()
    {
        while (Take(' ') || Take('\n') || Take('\r') || Take('\t')) {
        }
    }
    bool Word(std::string_view word)
    {
        return m_text.substr(m_nPos, word.size()) == word && (m_nPos += word.size(), true);
    }
    bool Digits()
    {
        const std::size_t nBegin = m_nPos;
        while (IsDigit(Peek()))
            ++m_nPos;
        return m_nPos > nBegin;
    }

    bool Number();
    bool Escape();
    bool Character();
    bool String();
    bool Container(char cEnd, int nDepth);
    bool Value(int nDepth);

    std::string_view m_text;
    std::size_t m_nPos = 0;
    int m_nMaxDepth;
    bool m_bTooDeep = false;
};

bool Checker::Number()
{
    Take('-');
    if (!Take('0') && !Digits())
        return false;
    if (Take('.') && !Digits())
        return false;
    if (!Take('e') && !Take('E'))
        return true;
    if (!Take('+'))
        Take('-');
    return Digits();
}

bool Checker::Escape()
{
    if (!Take('u'))
        return Peek() != '\0' && std::string_view("\"\\/bfnrt").find(Peek()) != std::string_view::npos &&
               Take(Peek());
    for (int i = 0; i < 4; ++i) {
        if (!IsHexDigit(Peek()))
            return false;
        ++m_nPos;
    }
    return true;
}

/// A character beyond ASCII, in its shortest form, no half of a pair, within Unicode.
bool Checker::Character()
{
    const auto nLead = static_cast<unsigned char>(Peek());
    const int nTail = nLead >= 0xc2 && nLead < 0xe0   ? 1
                      : nLead >= 0xe0 && nLead < 0xf0 ? 2
                      : nLead >= 0xf0                 ? 3
                                                      : 0;
    if (nTail == 0 || nLead > 0xf4)
        return false;
    const auto nSecond = static_cast<unsigned char>(Peek(1));
    if ((nLead == 0xe0 && nSecond < 0xa0) || (nLead == 0xed && nSecond > 0x9f) ||
        (nLead == 0xf0 && nSecond < 0x90) || (nLead == 0xf4 && nSecond > 0x8f))
        return false;
    for (int i = 1; i <= nTail; ++i) {
        if ((static_cast<unsigned char>(Peek(static_cast<std::size_t>(i))) & 0xc0U) != 0x80U)
            return false;
    }
    m_nPos += static_cast<std::size_t>(nTail) + 1;
    return true;
}

bool Checker::String()
{
    if (!Take('"'))
        return false;
    while (!Take('"')) {
        const auto nByte = static_cast<unsigned char>(Peek());
        if (nByte < 0x20) // the end of the text as well
            return false;
        if (nByte >= 0x80 ? !Character() : Take('\\') ? !Escape() : (++m_nPos, false))
            return false;
    }
    return true;
}

bool Checker::Container(char cEnd, int nDepth)
{
    if (nDepth == m_nMaxDepth) {
        m_bTooDeep = true;
        return false;
    }
    ++m_nPos;
    Blanks();
    if (Take(cEnd))
        return true;
    do {
        Blanks();
        if (cEnd == '}' && !(String() && (Blanks(), Take(':'))))
            return false;
        if (!Value(nDepth + 1))
            return false;
        Blanks();
    } while (Take(','));
    return Take(cEnd);
}

bool Checker::Value(int nDepth)
{
    Blanks();
    switch (Peek()) {
    case '{':
        return Container('}', nDepth);
    case '[':
        return Container(']', nDepth);
    case '"':
        return String();
    case 't':
        return Word("true");
    case 'f':
        return Word("false");
    case 'n':
        return Word("null");
    default:
        return Number();
    }
}
} // namespace

CResult CheckJson(std::string_view text, int nMaxDepth)
{
    Checker checker(text, nMaxDepth);
    if (checker.All())
        return CResult::Success();
    if (checker.IsTooDeep())
        return CResult::Failure("It is nested too deeply.");
    return CResult::Failure("It is damaged at byte " + std::to_string(checker.Position()) + '.');
}

} // namespace Vantor::Annotations
