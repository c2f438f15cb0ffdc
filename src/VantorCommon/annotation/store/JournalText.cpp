// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationJournal_p.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <unordered_map>

using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;
using Vantor::Annotations::SObject;
using Vantor::Annotations::SPage;

namespace
{
constexpr int kVersion = 1;
// Between quotes no quote stands without a backslash, so these are found where they were put.
const std::string kDocument = ",\"document\":";
const std::string kCrc = ",\"crc\":\"";
constexpr std::size_t kTail = 8 + 8 + 2; // kCrc, eight digits, quote and brace

std::uint32_t Crc32(const char* pData, std::size_t nSize)
{
    static const auto table = [] {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t n = i;
            for (int k = 0; k < 8; ++k)
                n = (n & 1U) != 0 ? 0xEDB88320U ^ (n >> 1) : n >> 1;
            entries[i] = n;
        }
        return entries;
    }();
    std::uint32_t crc = 0xFFFFFFFFU;
    for (std::size_t i = 0; i < nSize; ++i)
        crc = table[(crc ^ static_cast<unsigned char>(pData[i])) & 0xFFU] ^ (crc >> 8);
    return ~crc;
}

std::string Digits(std::uint32_t crc)
{
    char szDigits[9];
    std::snprintf(szDigits, sizeof szDigits, "%08x", crc);
    return szDigits;
}

/// Empty when the document cannot be written.
std::string LineOf(const QJsonObject& head, const SDocument* pDocument)
{
    std::string line = QJsonDocument(head).toJson(QJsonDocument::Compact).toStdString();
    line.pop_back();
    if (pDocument) {
        std::string text;
        SContext context;
        if (!Vantor::Annotations::Write(*pDocument, Vantor::Annotations::kOwnFormat, context, text)
                 .failure.empty())
            return {};
        // Line feeds stand between the members of a JSON text only.
        std::replace(text.begin(), text.end(), '\n', ' ');
        line += kDocument + text;
    }
    return line + kCrc + Digits(Crc32(line.data(), line.size())) + "\"}\n";
}

QJsonArray IdsOf(const std::vector<std::string>& vctIds)
{
    QJsonArray ids;
    for (const std::string& id : vctIds)
        ids.append(QString::fromStdString(id));
    return ids;
}

std::vector<std::string> IdsFrom(const QJsonValue& ids)
{
    std::vector<std::string> vctIds;
    for (const auto& id : ids.toArray())
        vctIds.push_back(id.toString().toStdString());
    return vctIds;
}

/// A line that was taken apart.
struct SLine {
    QJsonObject head;
    std::optional<SDocument> document;
};

/// Nothing when it is not as it was written.
std::optional<SLine> ParseLine(const std::string& line)
{
    if (line.size() < kTail + 2)
        return std::nullopt;
    const std::size_t nBody = line.size() - kTail;
    if (line.substr(nBody) != kCrc + Digits(Crc32(line.data(), nBody)) + "\"}")
        return std::nullopt;
    const std::size_t nDocument = std::min(line.find(kDocument), nBody);
    SLine parsed;
    parsed.head =
        QJsonDocument::fromJson(QByteArray::fromStdString(line.substr(0, nDocument)) + '}').object();
    if (nDocument < nBody) {
        const std::size_t nBegin = nDocument + kDocument.size();
        parsed.document.emplace();
        if (!Vantor::Annotations::Read(line.substr(nBegin, nBody - nBegin), Vantor::Annotations::kOwnFormat,
                                       {}, *parsed.document)
                 .failure.empty())
            return std::nullopt;
    }
    return parsed;
}

/// @param image  empty when the document is about one file
SPage& PageOf(SDocument& document, int nPage, const std::string& image)
{
    const auto it = std::find_if(document.pages.begin(), document.pages.end(), [&](const SPage& page) {
        return page.page == nPage && (image.empty() || page.image == image);
    });
    if (it != document.pages.end())
        return *it;
    document.pages.emplace_back();
    document.pages.back().page = nPage;
    document.pages.back().image = image;
    return document.pages.back();
}

auto FindId(std::vector<SObject>& vctObjects, const std::string& id)
{
    return std::find_if(vctObjects.begin(), vctObjects.end(),
                        [&id](const SObject& object) { return object.raw.empty() && object.id == id; });
}

void Set(std::vector<SObject>& vctObjects, const SObject& object, const QJsonValue& above)
{
    const auto itOld = FindId(vctObjects, object.id);
    if (itOld != vctObjects.end() && !above.isString()) {
        *itOld = object;
        return;
    }
    if (itOld != vctObjects.end())
        vctObjects.erase(itOld);
    const std::string idAbove = above.toString().toStdString();
    vctObjects.insert(idAbove.empty() ? vctObjects.end() : FindId(vctObjects, idAbove), object);
}

/// What the order does not name stays behind the object that it stood behind.
void Sort(std::vector<SObject>& vctObjects, const std::vector<std::string>& vctOrder)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < vctOrder.size(); ++i)
        places.emplace(vctOrder[i], i + 1);
    std::vector<std::pair<std::size_t, SObject>> vctSorted;
    std::size_t nPlace = 0;
    for (SObject& object : vctObjects) {
        const auto it = object.raw.empty() ? places.find(object.id) : places.end();
        nPlace = it != places.end() ? it->second : nPlace;
        vctSorted.emplace_back(nPlace, std::move(object));
    }
    std::stable_sort(vctSorted.begin(), vctSorted.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    vctObjects.clear();
    for (auto& [nAt, object] : vctSorted)
        vctObjects.push_back(std::move(object));
}

void ApplyStep(SDocument& document, const SLine& line)
{
    if (line.head[QLatin1String("all")].toBool() && line.document) {
        document = *line.document;
        return;
    }
    SPage& page = PageOf(document, line.head[QLatin1String("page")].toInt(),
                         line.head[QLatin1String("image")].toString().toStdString());
    auto& vctObjects = page.objects;
    for (const std::string& id : IdsFrom(line.head[QLatin1String("delete")])) {
        const auto it = FindId(vctObjects, id);
        if (it != vctObjects.end())
            vctObjects.erase(it);
    }
    const QJsonArray above = line.head[QLatin1String("above")].toArray();
    if (line.document && !line.document->pages.empty()) {
        const SPage& changes = line.document->pages[0];
        page.width = changes.width;
        page.height = changes.height;
        for (int i = 0; i < static_cast<int>(changes.objects.size()); ++i)
            Set(vctObjects, changes.objects[static_cast<std::size_t>(i)], above.at(i));
    }
    const auto vctOrder = IdsFrom(line.head[QLatin1String("order")]);
    if (!vctOrder.empty())
        Sort(vctObjects, vctOrder);
}
} // namespace

std::string JournalText::HeaderLine(const QString& strImage, const SDocument& document, int nSteps,
                                    const std::vector<std::string>& vctUnsaved)
{
    return LineOf({{QStringLiteral("format"), QStringLiteral("vantor-journal")},
                   {QStringLiteral("version"), kVersion},
                   {QStringLiteral("image"), strImage},
                   {QStringLiteral("steps"), nSteps},
                   {QStringLiteral("unsaved"), IdsOf(vctUnsaved)}},
                  &document);
}

std::string JournalText::StepLine(int nNumber, const SJournalStep& step)
{
    QJsonObject head{{QStringLiteral("n"), nNumber}, {QStringLiteral("page"), step.nPage}};
    const auto flag = [&head](const char* szKey, bool bSet) {
        if (bSet)
            head[QLatin1String(szKey)] = true;
    };
    const auto list = [&head](const char* szKey, const QJsonArray& values) {
        if (!values.isEmpty())
            head[QLatin1String(szKey)] = values;
    };
    QJsonArray above;
    for (const auto& id : step.vctAbove)
        above.append(id ? QJsonValue(QString::fromStdString(*id)) : QJsonValue());
    if (!step.strImage.empty())
        head[QLatin1String("image")] = QString::fromStdString(step.strImage);
    list("unsaved", IdsOf(step.vctUnsaved));
    flag("saved", step.bSaved);
    flag("all", step.bAll);
    list("delete", IdsOf(step.vctDeleted));
    list("above", above);
    list("order", IdsOf(step.vctOrder));
    return LineOf(head, step.document ? &*step.document : nullptr);
}

JournalText::SContent JournalText::Replay(const std::string& bytes)
{
    SContent content;
    std::size_t nAt = 0;
    while (nAt < bytes.size()) {
        const std::size_t nEnd = bytes.find('\n', nAt);
        if (nEnd == std::string::npos) // a step that was never finished
            return content;
        const auto line = ParseLine(bytes.substr(nAt, nEnd - nAt));
        const bool bHeader = nAt == 0;
        const bool bGood =
            line && (bHeader ? line->document && line->head[QLatin1String("version")].toInt() == kVersion
                             : line->head[QLatin1String("n")].toInt() > 0);
        if (!bGood) {
            content.bTruncated = true;
            return content;
        }
        if (bHeader) {
            content.bValid = true;
            content.document = *line->document;
            content.strImage = line->head[QLatin1String("image")].toString();
            content.nSteps = line->head[QLatin1String("steps")].toInt();
            content.bSaved = content.nSteps == 0;
            content.vctUnsaved = IdsFrom(line->head[QLatin1String("unsaved")]);
        } else {
            ApplyStep(content.document, *line);
            ++content.nSteps;
            content.bSaved = line->head[QLatin1String("saved")].toBool();
            content.vctUnsaved = IdsFrom(line->head[QLatin1String("unsaved")]);
        }
        nAt = nEnd + 1;
    }
    return content;
}
