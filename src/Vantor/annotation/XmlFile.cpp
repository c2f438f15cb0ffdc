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
constexpr int kMaxDepth = 64;
/// The reader compares each with each.
constexpr int kMaxAttributes = 64;

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
    const struct {
        std::string_view begin;
        std::string_view end;
    } passages[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (std::size_t nAt = text.find('<'); nAt < text.size(); nAt = text.find('<', nAt)) {
        bool bPassed = false;
        for (const auto& passage : passages) {
            if (text.substr(nAt, passage.begin.size()) != passage.begin)
                continue;
            nAt = text.find(passage.end, nAt + passage.begin.size());
            bPassed = true;
            break;
        }
        if (bPassed)
            continue;
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
        if (token == QXmlStreamReader::StartElement && ++nDepth > kMaxDepth)
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
