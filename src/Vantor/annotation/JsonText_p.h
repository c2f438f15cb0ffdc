// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// JSON as text: what is read stays where it is, and what is not understood can be written back letter for
/// letter. Every number keeps its bits, the sign of zero and integers beyond 2^53 included.
namespace Vantor::Annotations
{

/// One value in a text that outlives it. The text has passed CheckJson, or is the beginning of one that
/// might: then a value may be cut short. Of other text the functions read nothing sensible, but nothing
/// outside it.
class JsonView
{
public:
    JsonView() = default;                     ///< null
    explicit JsonView(std::string_view text); ///< without blanks around it; empty: null

    std::string_view Raw() const { return m_text; }
    bool IsNull() const { return m_text.front() == 'n'; }
    bool IsObject() const { return m_text.front() == '{'; }
    bool IsArray() const { return m_text.front() == '['; }
    bool IsString() const { return m_text.front() == '"'; }

    /// @{
    /// The value if it is of that type and range; numbers are finite, strings have no halves of a pair alone.
    std::optional<bool> Bool() const;
    std::optional<double> Number() const;
    std::optional<std::uint64_t> Whole() const; ///< an integer without a sign, point and exponent
    std::optional<std::string> String() const;
    /// @}

    /// The first member of that name; null when there is none or this is no object.
    JsonView operator[](std::string_view name) const;

private:
    std::string_view m_text = "null";
};

/// Walks over the elements of an array or the members of an object; over nothing for other values.
class JsonItems
{
public:
    explicit JsonItems(JsonView container);
    bool Next();
    JsonView Value() const { return m_value; }
    /// The member's name, decoded; empty for elements.
    std::string Name() const;
    /// The member as it stands in the text: name, colon, value.
    std::string_view Raw() const { return m_raw; }

private:
    bool Skip(char c);

    std::string_view m_text;
    std::size_t m_nPos = 0;
    bool m_bObject = false;
    std::string_view m_name;
    std::string_view m_raw;
    JsonView m_value;
};

/// Appends the numbers of an array of so many numbers; false for anything else.
bool AppendNumbers(JsonView array, std::size_t nCount, std::vector<double>& numbers);
/// The numbers of an array of points, each of two; nothing for anything else.
std::optional<std::vector<double>> ReadPoints(JsonView array);

/// Whether the text is one JSON value of at most so many levels (a number has none), in UTF-8.
/// @return a failure names the place: "It is damaged at byte 17."
CResult CheckJson(std::string_view text, int nMaxDepth);
/// The text without the blanks and the byte order mark around it.
std::string_view TrimJson(std::string_view text);

/// Writes JSON into a text; sets the commas.
class JsonWriter
{
public:
    explicit JsonWriter(std::string& text) : m_text(text) {}

    void Open(char cBracket);
    void Close(char cBracket);
    void NewLine(); ///< before the next value or name
    JsonWriter& Name(std::string_view name);
    void Number(double dNumber); ///< finite; the shortest text that gives the same bits back
    void Whole(std::int64_t nNumber);
    void Whole(std::uint64_t nNumber);
    void Bool(bool bValue) { Raw(bValue ? "true" : "false"); }
    void String(std::string_view text); ///< what is not UTF-8 becomes U+FFFD
    void Raw(std::string_view json);    ///< a value, or members without the braces around them
    /// [x,y] of a point
    void Point(double dX, double dY);

private:
    void Separate();

    std::string& m_text;
    bool m_bComma = false;
    bool m_bNewLine = false;
};

} // namespace Vantor::Annotations
