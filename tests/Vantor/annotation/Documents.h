// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>

#include <QString>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

/// Documents of annotations for tests: made by chance, and compared to the bit.
namespace Documents
{
using namespace Vantor::Annotations;
using Numbers = std::vector<double>;

inline SObject Make(const std::string& kind, Numbers numbers, const std::string& name = "cell")
{
    SObject object;
    object.kind = kind;
    object.name = name;
    object.named = !name.empty();
    object.numbers = std::move(numbers);
    return object;
}

inline SDocument MakeDocument(std::vector<SObject> objects)
{
    SDocument document;
    document.pages.resize(1);
    document.pages[0].width = 400;
    document.pages[0].height = 300;
    document.pages[0].objects = std::move(objects);
    return document;
}

inline bool SameBits(const Numbers& a, const Numbers& b)
{
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0);
}

/// The names of the members of which two annotations differ.
inline std::vector<std::string> Differences(const SObject& a, const SObject& b)
{
    std::vector<std::string> names;
    const auto compare = [&names](bool bSame, const char* pName) {
        if (!bSame)
            names.emplace_back(pName);
    };
    compare(a.id == b.id, "id");
    compare(a.kind == b.kind, "kind");
    compare(a.name == b.name, "name");
    compare(a.named == b.named, "named");
    compare(a.showName == b.showName, "showName");
    compare(a.locked == b.locked, "locked");
    compare(a.visible == b.visible, "visible");
    compare(SameBits(a.numbers, b.numbers), "numbers");
    compare(a.text == b.text, "text");
    compare(a.style.penColor == b.style.penColor, "penColor");
    compare(a.style.penWidth == b.style.penWidth, "penWidth");
    compare(a.style.fillColor == b.style.fillColor, "fillColor");
    compare(a.extra == b.extra, "extra");
    compare(a.unknown == b.unknown, "unknown");
    compare(a.raw == b.raw, "raw");
    return names;
}

/// Where two pages first differ; empty when they are equal to the bit.
inline QString Difference(const SPage& a, const SPage& b)
{
    if (a.page != b.page || a.image != b.image || a.width != b.width || a.height != b.height ||
        a.dpi != b.dpi || a.unknown != b.unknown)
        return QStringLiteral("page");
    if (a.calibration.has_value() != b.calibration.has_value())
        return QStringLiteral("calibration");
    if (a.calibration &&
        (a.calibration->unit != b.calibration->unit || a.calibration->x != b.calibration->x ||
         a.calibration->y != b.calibration->y || a.calibration->originX != b.calibration->originX ||
         a.calibration->originY != b.calibration->originY))
        return QStringLiteral("calibration");
    if (a.objects.size() != b.objects.size())
        return QStringLiteral("count of objects");
    for (std::size_t i = 0; i < a.objects.size(); ++i) {
        const std::vector<std::string> names = Differences(a.objects[i], b.objects[i]);
        if (!names.empty())
            return QStringLiteral("object %1: %2").arg(i).arg(QString::fromStdString(names.front()));
    }
    return QString();
}

/// The same of documents.
inline QString Difference(const SDocument& a, const SDocument& b)
{
    if (a.version != b.version || a.readableBy != b.readableBy || a.generator != b.generator ||
        a.saved != b.saved || a.unknown != b.unknown)
        return QStringLiteral("document");
    if (a.source.name != b.source.name || a.source.bytes != b.source.bytes ||
        a.source.sha256 != b.source.sha256)
        return QStringLiteral("source");
    if (a.pages.size() != b.pages.size())
        return QStringLiteral("count of pages");
    for (std::size_t i = 0; i < a.pages.size(); ++i) {
        const QString strDifference = Difference(a.pages[i], b.pages[i]);
        if (!strDifference.isEmpty())
            return QStringLiteral("page %1, %2").arg(i).arg(strDifference);
    }
    return QString();
}

/// Makes documents by chance, the same for the same seed.
class Chance
{
public:
    explicit Chance(unsigned nSeed) : m_engine(nSeed) {}

    int Below(int nLimit) { return static_cast<int>(m_engine() % static_cast<unsigned>(nLimit)); }
    bool OneIn(int nTimes) { return Below(nTimes) == 0; }

    /// Whole and broken, small and large, zero with either sign.
    double Number()
    {
        switch (Below(6)) {
        case 0:
            return Below(2000) - 1000;
        case 1:
            return (Below(200000) - 100000) / 100.0;
        case 2:
            return OneIn(2) ? 0.0 : -0.0;
        case 3:
            return std::uniform_real_distribution<double>(-1e9, 1e9)(m_engine);
        case 4:
            return std::uniform_real_distribution<double>(-1e-300, 1e-300)(m_engine);
        default:
            return std::uniform_real_distribution<double>(-5000, 5000)(m_engine);
        }
    }
    double Length() { return std::abs(Number()); }
    Numbers Some(int nCount)
    {
        Numbers numbers;
        for (int i = 0; i < nCount; ++i)
            numbers.push_back(Number());
        return numbers;
    }
    std::string Text()
    {
        static const std::vector<std::string> pieces{"cell",
                                                     " ",
                                                     "\"",
                                                     "\\",
                                                     "\n",
                                                     "\t",
                                                     std::string(1, '\0'),
                                                     "\x1f",
                                                     "/",
                                                     "<&>",
                                                     "'",
                                                     "%n%s",
                                                     "{}",
                                                     "\xc3\xa4",
                                                     "\xed\x95\x9c\xea\xb8\x80",
                                                     "\xf0\x9f\x98\x80",
                                                     "\xe2\x80\xae",
                                                     ",",
                                                     ";",
                                                     "\r"};
        std::string text;
        for (int i = Below(6); i > 0; --i)
            text += pieces[static_cast<std::size_t>(Below(static_cast<int>(pieces.size())))];
        return text;
    }
    std::string Id()
    {
        constexpr const char* kDigits = "0123456789abcdef";
        std::string id = "00000000-0000-4000-8000-000000000000";
        for (const std::size_t i :
             {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 9U, 10U, 24U, 25U, 26U, 27U, 30U, 31U, 32U, 33U})
            id[i] = kDigits[Below(16)];
        return id;
    }
    std::uint32_t Color() { return static_cast<std::uint32_t>(m_engine()); }

    SObject Object(const std::vector<std::string>& kinds)
    {
        const std::string& kind = kinds[static_cast<std::size_t>(Below(static_cast<int>(kinds.size())))];
        SObject object = Make(kind, NumbersOfKind(kind), Text());
        object.id = Id();
        object.named = OneIn(2);
        object.showName = !OneIn(4);
        object.locked = OneIn(4);
        object.visible = !OneIn(4);
        object.text = kind == "text" || kind == "stamp" ? Text() : std::string();
        if (OneIn(3))
            object.style.penColor = Color();
        if (OneIn(3))
            object.style.penWidth = 0.25 * (1 + Below(20));
        if (OneIn(3))
            object.style.fillColor = Color();
        return object;
    }

private:
    Numbers NumbersOfKind(const std::string& kind)
    {
        if (kind == "rectangle" || kind == "ellipse")
            return Some(OneIn(3) ? 6 : 4);
        if (kind == "circle" || kind == "text")
            return {Number(), Number(), Length()};
        if (kind == "polygon")
            return Some(6 + 2 * Below(10));
        if (kind == "point")
            return Some(2);
        return Some(kind == "stamp" ? Below(5) : 4);
    }

    std::mt19937 m_engine;
};

inline const std::vector<std::string>& BuiltInKinds()
{
    static const std::vector<std::string> kinds{"rectangle", "ellipse", "circle", "polygon", "ruler",
                                                "line",      "arrow",   "point",  "text"};
    return kinds;
}
} // namespace Documents
