// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "Documents.h"

#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

/// What the tests of other programs' formats share: random documents, and whether a report is complete.
namespace ForeignTests
{
using namespace Vantor::Annotations;

using Documents::Make;

inline SDocument DocumentOf(std::vector<SObject> objects)
{
    SDocument document = Documents::MakeDocument(std::move(objects));
    document.source.name = "photo.jpg";
    return document;
}

inline SContext Context()
{
    SContext context;
    context.imageName = "photo.jpg";
    context.width = 400;
    context.height = 300;
    return context;
}

/// Random numbers of the fixed seed that it is made with.
class CDice
{
public:
    explicit CDice(unsigned nSeed) : m_engine(nSeed) {}
    int Below(int n) { return static_cast<int>(m_engine() % static_cast<unsigned>(n)); }
    bool Rarely() { return Below(5) == 0; }
    /// Whole, a quarter or of all digits, within -50 and 450.
    double Number()
    {
        const double dNumber = std::uniform_real_distribution<double>(-50.0, 450.0)(m_engine);
        return Below(3) == 0 ? dNumber : Below(2) ? std::floor(dNumber) : std::floor(dNumber * 4.0) / 4.0;
    }

private:
    std::mt19937 m_engine;
};

inline std::vector<double> RandomNumbers(CDice& dice, const std::string& kind)
{
    std::size_t nNumbers = 4;
    if (kind == "polygon")
        nNumbers = 6 + 2 * static_cast<std::size_t>(dice.Below(8));
    else if (kind == "circle" || kind == "text")
        nNumbers = 3;
    else if (kind == "point")
        nNumbers = 2;
    std::vector<double> numbers;
    for (std::size_t i = 0; i < nNumbers; ++i)
        numbers.push_back(dice.Number());
    if (nNumbers == 3)
        numbers[2] = std::abs(numbers[2]);
    const bool bBox = kind == "rectangle" || kind == "ellipse";
    if (bBox && dice.Rarely()) { // drawn between two corners
        numbers.insert(numbers.end(), {dice.Number(), dice.Number()});
        numbers[2] = numbers[4] - numbers[0];
        numbers[3] = numbers[5] - numbers[1];
    } else if (bBox) { // all signs of size
        numbers[2] -= 200.0;
        numbers[3] -= 200.0;
    }
    return numbers;
}

/// An annotation of any kind with everything that an annotation may have.
inline SObject RandomObject(CDice& dice, int nNumber)
{
    static const char* const kinds[] = {"rectangle", "ellipse", "circle", "polygon", "ruler",
                                        "line",      "arrow",   "point",  "text",    "host"};
    static const char* const names[] = {"cell",    "<&\"'>",           "=1+1",   "\xC3\xA9t\xC3\xA9, \"two\"",
                                        "a\nb\tc", "\xF0\x9F\x94\xAC", "../x/y", "a;b"};
    SObject object;
    object.kind = kinds[dice.Below(10)];
    object.numbers = RandomNumbers(dice, object.kind);
    object.name = names[dice.Below(8)] + std::to_string(nNumber); // each name once
    object.named = !dice.Rarely();
    object.showName = !dice.Rarely();
    object.locked = dice.Rarely();
    object.visible = !dice.Rarely();
    if (object.kind == "text")
        object.text = "two\nlines & <more>";
    if (dice.Rarely())
        object.style.penColor = 0xFF102030U + static_cast<unsigned>(nNumber);
    if (dice.Rarely())
        object.style.penWidth = 2.5;
    if (dice.Rarely())
        object.style.fillColor = 0x40FF8000U;
    if (dice.Rarely())
        object.extra = "{\"host\":[1,2]}";
    if (dice.Rarely())
        object.unknown = "{\"later\":true}";
    if (dice.Below(20) == 0) {
        object = SObject();
        object.raw = "{\"kind\":\"later\"}";
    }
    return object;
}

inline SDocument RandomDocument(unsigned nSeed)
{
    CDice dice(nSeed);
    std::vector<SObject> objects;
    const int nObjects = dice.Below(12);
    for (int i = 0; i < nObjects; ++i)
        objects.push_back(RandomObject(dice, i));
    SDocument document = DocumentOf(std::move(objects));
    if (dice.Rarely())
        document.pages[0].calibration = SCalibration{"mm", 0.5, 0.25};
    if (dice.Rarely())
        document.pages[0].dpi = 144.0;
    if (dice.Rarely())
        document.pages[0].turned = 3;
    return document;
}

using Words = std::vector<std::string>;

/// Whether a remark about the annotation holds one of the words.
inline bool IsTold(const Remarks& remarks, const std::string& object, const Words& words)
{
    return std::any_of(remarks.begin(), remarks.end(), [&](const SRemark& remark) {
        return remark.object == object &&
               std::any_of(words.begin(), words.end(), [&](const std::string& word) {
                   return remark.text.find(word) != std::string::npos;
               });
    });
}

/// The words of which a remark has one when a member of an annotation is lost. What is not here is no loss.
inline const std::map<std::string, Words>& WordsOfLosses()
{
    static const std::map<std::string, Words> words{{"kind", {"becomes"}},
                                                    {"numbers", {"rounded", "clipped", "whole pixels"}},
                                                    {"name", {"name"}},
                                                    {"text", {"text"}},
                                                    {"showName", {"its name is hidden"}},
                                                    {"locked", {"its lock"}},
                                                    {"visible", {"it is hidden"}},
                                                    {"penColor", {"colour of its outline"}},
                                                    {"penWidth", {"width of its outline"}},
                                                    {"fillColor", {"colour that fills it"}},
                                                    {"extra", {"the program stored"}},
                                                    {"unknown", {"a later version stored"}}};
    return words;
}

/// What changed of an annotation without a remark. Which corner a box was drawn from is no loss.
inline std::string Untold(const SObject& before, const SObject& after, const Remarks& remarks)
{
    const bool bSamePlace = before.kind == after.kind
                                ? Normalised(before).numbers == Normalised(after).numbers
                                : BoundsOf(before) == BoundsOf(after);
    std::vector<std::string> members = Documents::Differences(before, after);
    members.erase(std::remove(members.begin(), members.end(), "numbers"), members.end());
    if (!bSamePlace)
        members.emplace_back("numbers");
    std::string untold;
    for (const std::string& member : members) {
        const auto it = WordsOfLosses().find(member);
        if (it != WordsOfLosses().end() && !IsTold(remarks, before.name, it->second))
            untold += before.name + ": " + member + "; ";
    }
    return untold;
}

/// The same of a page and all its annotations, in their order.
inline QString Untold(const SPage& before, const SPage& after, const Remarks& remarks)
{
    std::vector<const SObject*> left;
    for (const SObject& object : before.objects) {
        if (!IsTold(remarks, object.name, {"left out"}))
            left.push_back(&object);
    }
    if (left.size() != after.objects.size())
        return QStringLiteral("%1 annotations instead of %2").arg(after.objects.size()).arg(left.size());
    std::string untold;
    for (std::size_t i = 0; i < left.size(); ++i)
        untold += Untold(*left[i], after.objects[i], remarks);
    const auto lost = [&](bool bChanged, const char* pWord) {
        return bChanged && !IsTold(remarks, "", {pWord}) ? pWord : "";
    };
    untold += lost(before.calibration.has_value() != after.calibration.has_value(), "size of a pixel");
    untold += lost(before.dpi != after.dpi, "resolution");
    untold += lost(before.turned != after.turned, "turned");
    return QString::fromStdString(untold);
}

using Reader = decltype(&ReadRoi);
using Writer = decltype(&WriteRoi);

/// Writes and reads random documents; what changed without a remark, or failed. Empty: all is well.
inline QString UntoldOfRandomDocuments(Writer write, Reader read, unsigned nDocuments)
{
    for (unsigned nSeed = 1; nSeed <= nDocuments; ++nSeed) {
        const SDocument before = RandomDocument(nSeed);
        SContext context = Context();
        std::string bytes;
        Remarks losses;
        Remarks skipped;
        SDocument after;
        if (!write(before, context, bytes, losses).IsSuccess())
            return QStringLiteral("document %1 is not written").arg(nSeed);
        const auto result = read(bytes, context, after, skipped);
        if (!result.IsSuccess() || !skipped.empty() || after.pages.size() != 1)
            return QStringLiteral("document %1 is not read: %2 %3")
                .arg(nSeed)
                .arg(QString::fromStdString(result.GetReason()))
                .arg(skipped.empty() ? QString() : QString::fromStdString(skipped[0].text));
        const QString untold = Untold(before.pages[0], after.pages[0], losses);
        if (!untold.isEmpty())
            return QStringLiteral("document %1: %2").arg(nSeed).arg(untold);
    }
    return {};
}

/// Reads every beginning of a file and the file with each byte changed; what comes of it holds to the
/// bounds. Returns how many were read.
inline int ReadDamaged(Reader read, const std::string& bytes)
{
    int nRead = 0;
    const auto tryIt = [&](const std::string& damaged) {
        SDocument document;
        Remarks remarks;
        if (!read(damaged, Context(), document, remarks).IsSuccess())
            return;
        ++nRead;
        for (const SPage& page : document.pages) {
            for (const SObject& object : page.objects) {
                if (!IsWellFormed(object) || !IsBuiltIn(object))
                    qFatal("an annotation that is not well formed was read");
            }
        }
    };
    for (std::size_t n = 0; n < bytes.size(); ++n)
        tryIt(bytes.substr(0, n));
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        for (const int nValue : {0, 1, 0x7F, 0x80, 0xFF, int('<'), int('9')}) {
            std::string damaged = bytes;
            damaged[n] = static_cast<char>(nValue);
            tryIt(damaged);
        }
    }
    return nRead;
}

} // namespace ForeignTests
