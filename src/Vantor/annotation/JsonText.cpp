// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/JsonText_p.h>

#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr std::string_view kBlanks = " \t\r\n";
constexpr char32_t kFirstHigh = 0xd800;
constexpr char32_t kFirstLow = 0xdc00;
constexpr char32_t kBehindLow = 0xe000;
constexpr char32_t kFirstPair = 0x10000;

std::size_t SkipBlanks(std::string_view text, std::size_t nPos)
{
    return std::min(text.find_first_not_of(kBlanks, nPos), text.size());
}

/// Behind the string that begins here, or the end of the text.
std::size_t SkipString(std::string_view text, std::size_t nPos)
{
    for (;;) {
        nPos = text.find('"', nPos + 1);
        if (nPos == std::string_view::npos)
            return text.size();
        const std::size_t nPlain = text.find_last_not_of('\\', nPos - 1);
        if ((nPos - nPlain) % 2 == 1) // behind an even number of backslashes
            return nPos + 1;
    }
}

/// Behind the value that begins here, or the end of the text.
std::size_t SkipValue(std::string_view text, std::size_t nPos)
{
    std::size_t nDepth = 0;
    while (nPos < text.size()) {
        const char c = text[nPos];
        if (c == '"') {
            nPos = SkipString(text, nPos);
        } else if (c == '[' || c == '{') {
            ++nDepth;
            ++nPos;
        } else if (c == ']' || c == '}') {
            nDepth -= nDepth > 0;
            ++nPos;
        } else if (nDepth > 0) {
            ++nPos;
            continue;
        } else {
            return std::min(text.find_first_of(",]} \t\r\n", nPos), text.size());
        }
        if (nDepth == 0)
            return nPos;
    }
    return text.size();
}

void AppendUtf8(std::string& text, char32_t code)
{
    const auto tail = [code](unsigned nShift) {
        return static_cast<char>(0x80U | ((code >> nShift) & 0x3fU));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xc0U | (code >> 6U));
        text += tail(0);
    } else if (code < kFirstPair) {
        text += static_cast<char>(0xe0U | (code >> 12U));
        text += tail(6);
        text += tail(0);
    } else {
        text += static_cast<char>(0xf0U | (code >> 18U));
        text += tail(12);
        text += tail(6);
        text += tail(0);
    }
}

/// The unit that the four digits here stand for.
std::optional<char32_t> HexUnit(std::string_view text, std::size_t nPos)
{
    unsigned nUnit = 0;
    if (nPos + 4 > text.size())
        return std::nullopt;
    const char* pEnd = text.data() + nPos + 4;
    const auto result = std::from_chars(text.data() + nPos, pEnd, nUnit, 16);
    return result.ec == std::errc() && result.ptr == pEnd ? std::optional<char32_t>(nUnit) : std::nullopt;
}

/// Appends what a backslash and the letters behind it stand for; moves behind them.
bool AppendEscape(std::string& text, std::string_view from, std::size_t& nPos)
{
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const char cLetter = nPos + 1 < from.size() ? from[nPos + 1] : '\0';
    const std::size_t nLetter = kLetters.find(cLetter);
    if (nLetter != std::string_view::npos) {
        text += kMeanings[nLetter];
        nPos += 2;
        return true;
    }
    const auto unit = cLetter == 'u' ? HexUnit(from, nPos + 2) : std::nullopt;
    if (!unit || (*unit >= kFirstLow && *unit < kBehindLow))
        return false;
    nPos += 6;
    if (*unit < kFirstHigh || *unit >= kBehindLow) {
        AppendUtf8(text, *unit);
        return true;
    }
    const auto low =
        from.substr(std::min(nPos, from.size()), 2) == "\\u" ? HexUnit(from, nPos + 2) : std::nullopt;
    if (!low || *low < kFirstLow || *low >= kBehindLow)
        return false;
    AppendUtf8(text, kFirstPair + ((*unit - kFirstHigh) << 10U) + (*low - kFirstLow));
    nPos += 6;
    return true;
}

std::optional<std::string> Decode(std::string_view quoted)
{
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"')
        return std::nullopt;
    const std::string_view from = quoted.substr(1, quoted.size() - 2);
    std::string text;
    for (std::size_t nPos = 0; nPos < from.size();) {
        const std::size_t nPlain = std::min(from.find('\\', nPos), from.size());
        text.append(from, nPos, nPlain - nPos);
        nPos = nPlain;
        if (nPos < from.size() && !AppendEscape(text, from, nPos))
            return std::nullopt;
    }
    return text;
}

/// Whether it stands for itself between quotes.
bool IsPlain(char c)
{
    return c >= ' ' && c < '\x7f' && c != '"' && c != '\\';
}

/// The number if the whole text is one.
template <class T> std::optional<T> Parse(std::string_view text)
{
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}
} // namespace

JsonView::JsonView(std::string_view text)
{
    if (!text.empty())
        m_text = text;
}

std::optional<bool> JsonView::Bool() const
{
    return m_text == "true" || m_text == "false" ? std::optional<bool>(m_text == "true") : std::nullopt;
}

std::optional<double> JsonView::Number() const
{
    if (m_text.front() != '-' && (m_text.front() < '0' || m_text.front() > '9'))
        return std::nullopt; // such as "infinity"
    const auto number = Parse<double>(m_text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<std::uint64_t> JsonView::Whole() const
{
    return Parse<std::uint64_t>(m_text);
}

std::optional<std::string> JsonView::String() const
{
    return Decode(m_text);
}

JsonView JsonView::operator[](std::string_view name) const
{
    if (IsObject()) {
        for (JsonItems members(*this); members.Next();) {
            if (members.Name() == name)
                return members.Value();
        }
    }
    return JsonView();
}

JsonItems::JsonItems(JsonView container)
    : m_text(container.IsObject() || container.IsArray() ? container.Raw().substr(1) : std::string_view()),
      m_bObject(container.IsObject())
{
}

bool JsonItems::Skip(char c)
{
    m_nPos = SkipBlanks(m_text, m_nPos);
    if (m_nPos >= m_text.size() || m_text[m_nPos] != c)
        return false;
    ++m_nPos;
    return true;
}

bool JsonItems::Next()
{
    Skip(',');
    m_nPos = SkipBlanks(m_text, m_nPos);
    const std::size_t nBegin = m_nPos;
    if (m_bObject) {
        if (m_nPos >= m_text.size() || m_text[m_nPos] != '"')
            return false;
        m_nPos = SkipString(m_text, m_nPos);
        m_name = m_text.substr(nBegin, m_nPos - nBegin);
        if (!Skip(':'))
            return false;
        m_nPos = SkipBlanks(m_text, m_nPos);
    }
    const std::size_t nValue = m_nPos;
    if (nValue >= m_text.size() || m_text[nValue] == ']' || m_text[nValue] == '}')
        return false;
    m_nPos = SkipValue(m_text, nValue);
    m_value = JsonView(m_text.substr(nValue, m_nPos - nValue));
    m_raw = m_text.substr(nBegin, m_nPos - nBegin);
    return m_nPos > nValue;
}

std::string JsonItems::Name() const
{
    return Decode(m_name).value_or(std::string());
}

bool AppendNumbers(JsonView array, std::size_t nCount, std::vector<double>& numbers)
{
    std::size_t nFound = 0;
    for (JsonItems items(array); items.Next(); ++nFound) {
        const std::optional<double> number = items.Value().Number();
        if (!number || nFound == nCount)
            return false;
        numbers.push_back(*number);
    }
    return array.IsArray() && nFound == nCount;
}

std::optional<std::vector<double>> ReadPoints(JsonView array)
{
    std::vector<double> numbers;
    for (JsonItems items(array); items.Next();) {
        if (!AppendNumbers(items.Value(), 2, numbers))
            return std::nullopt;
    }
    return array.IsArray() ? std::optional(std::move(numbers)) : std::nullopt;
}

std::string_view TrimJson(std::string_view text)
{
    constexpr std::string_view kMark = "\xef\xbb\xbf";
    if (text.substr(0, kMark.size()) == kMark)
        text.remove_prefix(kMark.size());
    text.remove_prefix(SkipBlanks(text, 0));
    const std::size_t nLast = text.find_last_not_of(kBlanks);
    return text.substr(0, nLast == std::string_view::npos ? 0 : nLast + 1);
}

void JsonWriter::Separate()
{
    if (m_bComma)
        m_text += ',';
    if (m_bNewLine)
        m_text += '\n';
    m_bComma = false;
    m_bNewLine = false;
}

void JsonWriter::Open(char cBracket)
{
    Separate();
    m_text += cBracket;
}

void JsonWriter::Close(char cBracket)
{
    m_bComma = false;
    Separate();
    m_text += cBracket;
    m_bComma = true;
}

void JsonWriter::NewLine()
{
    m_bNewLine = true;
}

JsonWriter& JsonWriter::Name(std::string_view name)
{
    String(name);
    m_text += ':';
    m_bComma = false;
    return *this;
}

void JsonWriter::Number(double dNumber)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), dNumber).ptr;
    Raw(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void JsonWriter::Whole(std::int64_t nNumber)
{
    Raw(std::to_string(nNumber));
}

void JsonWriter::Whole(std::uint64_t nNumber)
{
    Raw(std::to_string(nNumber));
}

void JsonWriter::String(std::string_view text)
{
    constexpr std::string_view kHex = "0123456789abcdef";
    Separate();
    if (std::all_of(text.begin(), text.end(), IsPlain)) {
        m_text.append(1, '"').append(text).append(1, '"');
        m_bComma = true;
        return;
    }
    // The way through QString makes UTF-8 of whatever it is.
    const QByteArray clean = QString::fromUtf8(text.data(), static_cast<int>(text.size())).toUtf8();
    m_text += '"';
    for (const char c : clean) {
        if (c == '"' || c == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            m_text += "\\u00";
            m_text += kHex[static_cast<unsigned char>(c) >> 4U];
            m_text += kHex[static_cast<unsigned char>(c) & 0xfU];
        } else {
            m_text += c;
        }
    }
    m_text += '"';
    m_bComma = true;
}

void JsonWriter::Raw(std::string_view json)
{
    Separate();
    m_text += json;
    m_bComma = true;
}

void JsonWriter::Point(double dX, double dY)
{
    Open('[');
    Number(dX);
    Number(dY);
    Close(']');
}

} // namespace Vantor::Annotations
