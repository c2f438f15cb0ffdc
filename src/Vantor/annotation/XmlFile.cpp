// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/XmlFile_p.h>

#include <Vantor/annotation/ForeignObjects_p.h>

#include <algorithm>
#include <string_view>

namespace Vantor::Annotations
{

namespace
{
constexpr int kMaxLevels = 64;
/// The reader compares each with each.
constexpr int kMaxAttributes = 64;

struct SPassage {
    std::string_view begin;
    std::string_view end;
};
/// What is neither tag nor text.
constexpr SPassage kPassages[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

/// Where the first tag at or behind nAt begins; npos for none.
std::size_t NextTag(std::string_view text, std::size_t nAt)
{
    nAt = text.find('<', nAt);
    while (nAt < text.size()) {
        const auto* const pPassage =
            std::find_if(std::begin(kPassages), std::end(kPassages), [&](const SPassage& passage) {
                return text.substr(nAt, passage.begin.size()) == passage.begin;
            });
        if (pPassage == std::end(kPassages))
            return nAt;
        nAt = text.find(pPassage->end, nAt + pPassage->begin.size());
        nAt = text.find('<', std::min(nAt, text.size()));
    }
    return std::string_view::npos;
}

/// The end of a tag that begins at nAt; counts its attributes.
std::size_t TagEnd(std::string_view text, std::size_t nAt, int& nAttributes)
{
    char cQuote = 0;
    for (; nAt < text.size(); ++nAt) {
        const char c = text[nAt];
        if (cQuote) {
            cQuote = c == cQuote ? '\0' : cQuote;
        } else if (c == '"' || c == '\'') {
            cQuote = c;
        } else if (c == '>') {
            break;
        } else {
            nAttributes += c == '=';
        }
    }
    return nAt;
}

/// Why the reader should not see the text; empty when it may.
std::string WhyNot(std::string_view text)
{
    for (std::size_t nAt = NextTag(text, 0); nAt < text.size(); nAt = NextTag(text, nAt)) {
        if (text.substr(nAt, 2) == "<!")
            return "It has a document type.";
        int nAttributes = 0;
        nAt = TagEnd(text, nAt, nAttributes);
        if (nAttributes > kMaxAttributes)
            return "An element has more than 64 attributes.";
    }
    return {};
}
} // namespace

std::string RootOf(const std::string& bytes)
{
    const std::size_t nAt = NextTag(bytes, 0);
    if (nAt == std::string::npos)
        return {};
    return bytes.substr(nAt + 1, bytes.find_first_of(" \t\r\n/>", nAt) - nAt - 1);
}

CXmlFile::CXmlFile(const std::string& bytes, const char* pRoot)
{
    const std::string why = WhyNot(bytes);
    if (why.empty()) // as text it is UTF-8, whatever it says
        m_reader.addData(QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size())));
    else
        Fail(why);
    if (!NextChild() || !Is(pRoot))
        Fail(std::string("It has no element \"") + pRoot + "\".");
}

bool CXmlFile::NextChild()
{
    return m_reader.readNextStartElement();
}

void CXmlFile::Skip()
{
    Text();
}

QString CXmlFile::Text()
{
    QString text;
    for (int nDepth = 1; nDepth > 0 && !m_reader.atEnd();) {
        const auto token = m_reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++nDepth > kMaxLevels)
            Fail("It is nested too deeply.");
        else if (token == QXmlStreamReader::EndElement)
            --nDepth;
        else if (token == QXmlStreamReader::Characters)
            text += m_reader.text();
    }
    return text;
}

bool CXmlFile::Has(const char* pAttribute) const
{
    return m_reader.attributes().hasAttribute(QLatin1String(pAttribute));
}

QString CXmlFile::Attribute(const char* pName) const
{
    return m_reader.attributes().value(QLatin1String(pName)).toString();
}

double CXmlFile::Number(const char* pName, double dOtherwise) const
{
    double dNumber = 0.0;
    return ReadNumber(Attribute(pName), dNumber) ? dNumber : dOtherwise;
}

int CXmlFile::Size(const char* pName, int nOtherwise) const
{
    return static_cast<int>(std::max(0.0, Number(pName, nOtherwise))); // numbers are at most 1e9
}

void CXmlFile::Fail(const std::string& reason)
{
    if (!m_reader.hasError())
        m_reader.raiseError(QString::fromStdString(reason));
}

CResult CXmlFile::Result() const
{
    return m_reader.hasError()
               ? CResult::Failure("The file cannot be read. " + m_reader.errorString().toStdString())
               : CResult::Success();
}

} // namespace Vantor::Annotations
