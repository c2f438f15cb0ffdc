// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/JsonText_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/annotation/OwnFormat_p.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Vantor::Annotations
{

namespace
{
// How deep in a file the braces of these stand; what is kept raw must leave room for that.
constexpr int kPageLevel = 2;
constexpr int kObjectLevel = 4;

bool IsJson(const std::string& json, int nLevel)
{
    return json.empty() || CheckJson(json, kMaxDepth - nLevel).IsSuccess();
}

bool IsJsonObject(const std::string& json, int nLevel)
{
    return json.empty() || (json.front() == '{' && IsJson(json, nLevel));
}

/// Why the reader would not take the object as it is; null when it will.
const char* WhyNot(const SObject& object)
{
    if (!IsJson(object.raw, kObjectLevel) || !IsJson(object.extra, kObjectLevel + 1) ||
        !IsJsonObject(object.unknown, kObjectLevel))
        return "what is stored with it is no JSON or nested too deeply";
    for (const std::string* pText : {&object.id, &object.kind, &object.name, &object.text}) {
        if (pText->size() > kMaxText)
            return "a text is longer than 64 KiB";
    }
    const double dWidth = object.style.penWidth;
    return dWidth >= 0.0 && dWidth <= kMaxCoordinate ? nullptr : "the width of its pen is no width";
}

bool IsGood(const SPage& page)
{
    const auto isSize = [](double dSize) { return dSize >= kMinPixelSize && dSize <= kMaxCoordinate; };
    const auto isPlace = [](double dPlace) { return std::abs(dPlace) <= kMaxCoordinate; };
    const bool bCalibration =
        !page.calibration ||
        (isSize(page.calibration->x) && isSize(page.calibration->y) && isPlace(page.calibration->originX) &&
         isPlace(page.calibration->originY) && page.calibration->unit.size() <= kMaxText);
    return bCalibration && page.page >= 0 && page.width >= 0 && page.height >= 0 && page.dpi >= 0.0 &&
           page.dpi <= kMaxCoordinate && page.image.size() <= kMaxText &&
           IsJsonObject(page.unknown, kPageLevel);
}

CResult CheckPage(const SPage& page)
{
    if (!IsGood(page))
        return CResult::Failure("What is known of page " + std::to_string(page.page + 1) +
                                " cannot be saved.");
    for (const SObject& object : page.objects) {
        if (const char* pReason = WhyNot(object))
            return CResult::Failure('"' + object.name + "\" cannot be saved: " + pReason + '.');
    }
    return CResult::Success();
}

/// Whether the reader will take what is going to be written.
CResult Check(const SDocument& document)
{
    const SSource& source = document.source;
    const bool bTexts =
        std::max({document.generator.size(), document.saved.size(), source.name.size()}) <= kMaxText;
    if (!bTexts || !IsDigest(source.sha256) || !IsJsonObject(document.unknown, 0))
        return CResult::Failure("What is known of the annotated file cannot be saved.");
    if (document.pages.size() > kMaxPages)
        return CResult::Failure("There are too many pages.");
    std::size_t nObjects = 0;
    std::size_t nNumbers = 0;
    for (const SPage& page : document.pages) {
        nObjects += page.objects.size();
        for (const SObject& object : page.objects)
            nNumbers += object.numbers.size();
        CResult result = CheckPage(page);
        if (!result.IsSuccess())
            return result;
    }
    if (nObjects > kMaxObjects || nNumbers > kMaxNumbers)
        return CResult::Failure("There are too many annotations or points.");
    return CResult::Success();
}

class OwnWriter
{
public:
    explicit OwnWriter(std::string& text) : m_text(text), m_json(text) {}

    void Document(const SDocument& document);

private:
    /// An object: what the function writes, then the unknown members of other names.
    /// @param pWithout  an unknown member that goes with a known one that is not there
    template <class F> void Object(JsonView unknown, F writeKnown, const char* pWithout = "")
    {
        m_json.Open('{');
        const std::size_t nBegin = m_text.size() - 1;
        writeKnown();
        std::vector<std::string> known{pWithout};
        if (unknown.IsObject()) {
            for (JsonItems items(JsonView(std::string_view(m_text).substr(nBegin))); items.Next();)
                known.push_back(items.Name());
        }
        for (JsonItems items(unknown); items.Next();) {
            if (std::find(known.begin(), known.end(), items.Name()) == known.end())
                m_json.Raw(items.Raw());
        }
        m_json.Close('}');
    }
    void Source(const SSource& source, JsonView unknown);
    void Page(const SPage& page);
    void Calibration(const SCalibration& calibration, JsonView unknown);
    void Annotation(const SObject& object);
    void Shape(const SObject& object);
    void Points(const std::vector<double>& numbers, std::size_t nCount);
    void Style(const SStyle& style, JsonView unknown);
    void Color(const char* pName, const std::optional<std::uint32_t>& color);

    std::string& m_text;
    JsonWriter m_json;
};

void OwnWriter::Document(const SDocument& document)
{
    const JsonView unknown(document.unknown);
    Object(unknown, [&] {
        m_json.Name("format").String(kOwnMark);
        m_json.Name("version").Whole(
            static_cast<std::int64_t>(std::max(document.version, SDocument::kVersion)));
        m_json.Name("readable_by").Whole(static_cast<std::int64_t>(document.readableBy));
        m_json.Name("generator").String(document.generator);
        m_json.Name("saved").String(document.saved);
        m_json.NewLine();
        Source(document.source, unknown["source"]);
        m_json.NewLine();
        m_json.Name("pages").Open('[');
        for (const SPage& page : document.pages)
            Page(page);
        m_json.Close(']');
    });
    m_text += '\n';
}

void OwnWriter::Source(const SSource& source, JsonView unknown)
{
    m_json.Name("source");
    Object(unknown, [&] {
        m_json.Name("name").String(source.name);
        if (source.bytes != 0)
            m_json.Name("bytes").Whole(source.bytes);
        if (!source.sha256.empty())
            m_json.Name("sha256").String(source.sha256);
    });
}

void OwnWriter::Page(const SPage& page)
{
    m_json.NewLine();
    const JsonView unknown(page.unknown);
    Object(
        unknown,
        [&] {
            m_json.Name("page").Whole(static_cast<std::int64_t>(page.page));
            if (!page.image.empty())
                m_json.Name("image").String(page.image);
            m_json.Name("width").Whole(static_cast<std::int64_t>(page.width));
            m_json.Name("height").Whole(static_cast<std::int64_t>(page.height));
            if (page.dpi != 0.0)
                m_json.Name("dpi").Number(page.dpi);
            if (page.calibration)
                Calibration(*page.calibration, unknown["calibration"]);
            m_json.Name("objects").Open('[');
            for (const SObject& object : page.objects)
                Annotation(object);
            m_json.Close(']');
        },
        "calibration");
}

void OwnWriter::Calibration(const SCalibration& calibration, JsonView unknown)
{
    m_json.Name("calibration");
    Object(unknown, [&] {
        m_json.Name("unit").String(calibration.unit);
        m_json.Name("x").Number(calibration.x);
        m_json.Name("y").Number(calibration.y);
        if (calibration.originX != 0.0 || calibration.originY != 0.0)
            m_json.Name("origin").Point(calibration.originX, calibration.originY);
    });
}

void OwnWriter::Annotation(const SObject& object)
{
    m_json.NewLine();
    if (!object.raw.empty())
        return m_json.Raw(object.raw);
    const JsonView unknown(object.unknown);
    Object(unknown, [&] {
        if (!object.id.empty())
            m_json.Name("id").String(object.id);
        m_json.Name("kind").String(object.kind);
        m_json.Name("name").String(object.name);
        m_json.Name("named").Bool(object.named);
        m_json.Name("show_name").Bool(object.showName);
        if (object.locked)
            m_json.Name("locked").Bool(true);
        if (!object.visible)
            m_json.Name("visible").Bool(false);
        Shape(object);
        if (!object.text.empty())
            m_json.Name("text").String(object.text);
        const SStyle& style = object.style;
        if (style.penColor || style.penWidth != 0.0 || style.fillColor)
            Style(style, unknown["style"]);
        if (!object.extra.empty())
            m_json.Name("extra").Raw(object.extra);
    });
}

void OwnWriter::Shape(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    if (IsBox(object)) {
        m_json.Name("box").Open('[');
        for (int i = 0; i < 4; ++i)
            m_json.Number(n[static_cast<std::size_t>(i)]);
        m_json.Close(']');
        if (n.size() == 6)
            m_json.Name("corner").Point(n[4], n[5]);
    } else if (object.kind == "circle") {
        m_json.Name("centre").Point(n[0], n[1]);
        m_json.Name("radius").Number(n[2]);
    } else if (object.kind == "text") {
        Points(n, 2);
        m_json.Name("height").Number(n[2]);
    } else if (IsBuiltIn(object)) {
        Points(n, n.size());
    } else {
        m_json.Name("numbers").Open('[');
        for (const double dNumber : n)
            m_json.Number(dNumber);
        m_json.Close(']');
    }
}

void OwnWriter::Points(const std::vector<double>& numbers, std::size_t nCount)
{
    m_json.Name("points").Open('[');
    for (std::size_t i = 0; i < nCount; i += 2)
        m_json.Point(numbers[i], numbers[i + 1]);
    m_json.Close(']');
}

void OwnWriter::Style(const SStyle& style, JsonView unknown)
{
    m_json.Name("style");
    Object(unknown, [&] {
        Color("pen", style.penColor);
        if (style.penWidth != 0.0)
            m_json.Name("pen_width").Number(style.penWidth);
        Color("fill", style.fillColor);
    });
}

void OwnWriter::Color(const char* pName, const std::optional<std::uint32_t>& color)
{
    if (!color)
        return;
    char text[10];
    std::snprintf(text, sizeof(text), "#%08x", static_cast<unsigned>(*color));
    m_json.Name(pName).String(text);
}
} // namespace

CResult WriteOwn(const SDocument& document, SContext& /*context*/, std::string& bytes, Remarks& /*remarks*/)
{
    if (document.IsReadOnly())
        return CResult::Failure("The annotations are of a later version, which this one cannot save.");
    CResult result = Check(document);
    if (!result.IsSuccess())
        return result;
    OwnWriter(bytes).Document(document);
    if (bytes.size() > kMaxBytes)
        return CResult::Failure("The annotations take more than 64 MiB.");
    return CResult::Success();
}

} // namespace Vantor::Annotations
