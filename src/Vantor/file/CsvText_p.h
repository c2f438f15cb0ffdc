// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

namespace Vantor
{

/// Whether spreadsheets would take the text for a formula.
inline bool IsFormula(const std::string& text)
{
    return !text.empty() && std::string("=+-@\t\r").find(text.front()) != std::string::npos;
}

/// The text as spreadsheets leave it alone: an apostrophe before a formula makes it a text to them.
inline std::string WithoutFormula(const std::string& text)
{
    return IsFormula(text) ? '\'' + text : text;
}

/// A field of any text for a CSV file, see WithoutFormula.
inline std::string CsvField(const std::string& text)
{
    std::string field;
    for (const char c : WithoutFormula(text))
        field += c == '"' ? std::string("\"\"") : std::string(1, c);
    return field.find_first_of("\",;\r\n'") == std::string::npos ? field : '"' + field + '"';
}

/// The same for values separated by tabs, which have no quotes: spaces in place of what separates.
inline std::string TsvField(const std::string& text)
{
    std::string field = WithoutFormula(text);
    for (char& c : field)
        c = c == '\t' || c == '\r' || c == '\n' ? ' ' : c;
    return field;
}

} // namespace Vantor
