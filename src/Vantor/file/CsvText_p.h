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

/// A field of any text for a CSV file. An apostrophe before a formula makes it a text to spreadsheets.
inline std::string CsvField(const std::string& text)
{
    std::string field = IsFormula(text) ? "'" : "";
    for (const char c : text)
        field += c == '"' ? std::string("\"\"") : std::string(1, c);
    return field.find_first_of("\",;\r\n'") == std::string::npos ? field : '"' + field + '"';
}

/// A field of any text for values separated by tabs, which have no quotes: spaces in place of what separates.
inline std::string TsvField(const std::string& text)
{
    std::string field = IsFormula(text) ? "'" : "";
    for (const char c : text)
        field += c == '\t' || c == '\r' || c == '\n' ? ' ' : c;
    return field;
}

} // namespace Vantor
