// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ForeignObjects_p.h>

#include <Vantor/annotation/ObjectOutline_p.h>

#include <QLocale>
#include <QUuid>

#include <algorithm>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
bool IsUseful(const SObject& object)
{
    return IsBuiltIn(object) && IsWellFormed(object) && object.name.size() <= kMaxText &&
           object.text.size() <= kMaxText && object.extra.size() <= kMaxText;
}

QString CountOf(const SPage& page)
{
    return QString::number(page.objects.size());
}
} // namespace

CForeignReading::CForeignReading(SDocument& document, Remarks& remarks)
    : m_document(document), m_remarks(remarks)
{
}

void CForeignReading::BeginPage(SPage page)
{
    m_document.pages.push_back(std::move(page));
    m_nPage = m_document.pages.size() - 1;
}

void CForeignReading::GoToPage(int nPage, const SContext& context)
{
    const std::vector<SPage>& pages = m_document.pages;
    if (m_nPage < pages.size() && pages[m_nPage].page == nPage)
        return;
    const auto found =
        std::find_if(pages.begin(), pages.end(), [nPage](const SPage& page) { return page.page == nPage; });
    if (found != pages.end()) {
        m_nPage = static_cast<std::size_t>(found - pages.begin());
        return;
    }
    SPage page;
    page.page = nPage;
    page.width = context.width;
    page.height = context.height;
    BeginPage(std::move(page));
    m_document.source.name = context.imageName;
}

void CForeignReading::Take(SObject object)
{
    ++m_nFound;
    m_bFull = m_bFull || m_nFound > kMaxObjects || m_nNumbers + object.numbers.size() > kMaxNumbers;
    if (m_bFull)
        return;
    if (!IsUseful(object)) {
        m_remarks.push_back({NameOr(object.name.size() <= kMaxText ? object.name : std::string()),
                             "It is left out: its numbers or texts are not those of its kind."});
        return;
    }
    m_nNumbers += object.numbers.size();
    QUuid id = QUuid::fromString(QString::fromStdString(object.id));
    if (id.isNull() || !m_ids.insert(id.toString(QUuid::WithoutBraces).toStdString()).second)
        id = QUuid::createUuid();
    object.id = id.toString(QUuid::WithoutBraces).toStdString();
    object.named = object.named || !object.name.empty();
    m_document.pages[m_nPage].objects.push_back(std::move(object));
}

void CForeignReading::Skip(const std::string& name, const std::string& why)
{
    ++m_nFound;
    m_bFull = m_bFull || m_nFound > kMaxObjects;
    m_remarks.push_back({NameOr(name), why});
}

CResult CForeignReading::Finish()
{
    for (SPage& page : m_document.pages)
        std::reverse(page.objects.begin(), page.objects.end());
    return m_bFull ? CResult::Failure("The file holds more than a million annotations or ten million points.")
                   : CResult::Success();
}

std::string CForeignReading::NameOr(const std::string& name) const
{
    return name.empty() ? "annotation " + std::to_string(m_nFound) : name;
}

bool CanBeWritten(const SObject& object, const std::string& kinds, Remarks& remarks)
{
    if (!object.raw.empty()) {
        remarks.push_back({object.name, "An annotation of a later version is left out."});
        return false;
    }
    if (IsBuiltIn(object) && kinds.find(' ' + object.kind + ' ') != std::string::npos)
        return true;
    remarks.push_back({object.name, "It is left out: the format has no " + object.kind + "."});
    return false;
}

void TellKind(const SObject& object, const std::string& kind, Remarks& remarks)
{
    if (object.kind != kind)
        remarks.push_back(
            {object.name, "It becomes " + std::string(kind == "ellipse" ? "an " : "a ") + kind + "."});
}

void TellLosses(const SObject& object, unsigned keeps, Remarks& remarks)
{
    const struct {
        EKeeps keeps;
        bool bIsThere;
        const char* pText;
    } losses[] = {
        {Keeps_ShowName, !object.showName, "that its name is hidden"},
        {Keeps_Lock, object.locked, "its lock"},
        {Keeps_Visible, !object.visible, "that it is hidden"},
        {Keeps_PenColor, object.style.penColor.has_value(), "the colour of its outline"},
        {Keeps_PenWidth, object.style.penWidth != 0.0, "the width of its outline"},
        {Keeps_FillColor, object.style.fillColor.has_value(), "the colour that fills it"},
        {Keeps_Extra, !object.extra.empty(), "what the program stored with it"},
        {Keeps_Unknown, !object.unknown.empty(), "what a later version stored with it"},
    };
    std::string text;
    for (const auto& loss : losses) {
        if (loss.bIsThere && !(keeps & loss.keeps))
            text += (text.empty() ? "The file does not keep " : ", ") + std::string(loss.pText);
    }
    if (!text.empty())
        remarks.push_back({object.name, text + "."});
}

void TellPageLosses(const SDocument& document, const SPage& page, Remarks& remarks)
{
    const struct {
        bool bIsThere;
        const char* pText;
    } losses[] = {
        {page.calibration.has_value(), "The file does not keep the size of a pixel."},
        {page.dpi != 0.0, "The file does not keep the resolution of the page."},
        {!page.unknown.empty() || !document.unknown.empty(),
         "The file does not keep what a later version stored in the document."},
    };
    for (const auto& loss : losses) {
        if (loss.bIsThere)
            remarks.push_back({"", loss.pText});
    }
}

void TellOtherPages(const SDocument& document, const SPage& written, Remarks& remarks)
{
    for (const SPage& page : document.pages) {
        if (&page != &written)
            remarks.push_back({"", QStringLiteral("Page %1 with its %2 annotations is left out.")
                                       .arg(page.page + 1)
                                       .arg(CountOf(page))
                                       .toStdString()});
    }
}

void TellRounding(const SObject& object, const SObject& read, Remarks& remarks)
{
    const bool bSame = object.kind == read.kind ? Normalised(object).numbers == Normalised(read).numbers
                                                : BoundsOf(object) == BoundsOf(read);
    if (!bSame)
        remarks.push_back({object.name, "Its coordinates are rounded."});
}

const SPage& PageToWrite(const SDocument& document, const SContext& context)
{
    static const SPage none;
    const auto nPage = static_cast<std::size_t>(std::max(context.page, 0));
    return nPage < document.pages.size() ? document.pages[nPage] : none;
}

int WidthOf(const SPage& page, const SContext& context)
{
    return page.width > 0 ? page.width : context.width;
}

int HeightOf(const SPage& page, const SContext& context)
{
    return page.height > 0 ? page.height : context.height;
}

std::string ImageNameOf(const SDocument& document, const SPage& page, const SContext& context)
{
    if (!page.image.empty())
        return page.image;
    return document.source.name.empty() ? context.imageName : document.source.name;
}

QByteArray NumberText(double dNumber)
{
    return QByteArray::number(dNumber, 'g', QLocale::FloatingPointShortest);
}

bool ReadNumber(const QString& text, double& dNumber)
{
    bool bOk = false;
    dNumber = text.trimmed().toDouble(&bOk);
    return bOk && std::abs(dNumber) <= kMaxCoordinate; // false for NaN
}

std::vector<double> ReadNumbers(const QString& text)
{
    std::vector<double> numbers;
    QString separated = text;
    for (const QString& part :
         separated.replace(QLatin1Char(','), QLatin1Char(' ')).split(QLatin1Char(' '))) {
        double dNumber = 0.0;
        if (part.isEmpty())
            continue;
        if (!ReadNumber(part, dNumber))
            return {};
        numbers.push_back(dNumber);
    }
    return numbers;
}

QString XmlText(const std::string& text)
{
    const QString from = QString::fromStdString(text);
    QString to;
    to.reserve(from.size());
    for (int i = 0; i < from.size(); ++i) {
        const QChar letter = from[i];
        if (letter.isHighSurrogate() && i + 1 < from.size() && from[i + 1].isLowSurrogate()) {
            to += letter;
            to += from[++i];
            continue;
        }
        const ushort nCode = letter.unicode();
        const bool bEndsOrTab = nCode == '\t' || nCode == '\n' || nCode == '\r';
        if ((nCode >= ' ' || bEndsOrTab) && !letter.isSurrogate() && nCode < 0xFFFE)
            to += letter;
    }
    return to;
}

void TellXmlName(const SObject& object, Remarks& remarks)
{
    if (XmlText(object.name) != QString::fromStdString(object.name))
        remarks.push_back({object.name, "The file does not keep the control characters of its name."});
}

} // namespace Vantor::Annotations
