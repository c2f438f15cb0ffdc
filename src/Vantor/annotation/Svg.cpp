// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/JsonText_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/annotation/XmlFile_p.h>
#include <Vantor/geometry/CArrow.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point text ";
constexpr std::uint32_t kColor = 0xFF00FF00U; // of what has no colour of its own
constexpr std::uint32_t kFill = 0x3200FF00U;  // the same of regions
constexpr double kPointRadius = 2.0;
constexpr double kLabelSize = 12.0;
// Of the height of a line of a common sans-serif font.
constexpr double kFontSize = 0.895;
constexpr double kBaseline = 0.81;

/// The element that shows an annotation, and the attributes that place it.
struct SElement {
    QString name;
    std::vector<std::pair<QString, QString>> places;
};

QString Text(double dNumber)
{
    return QString::fromLatin1(NumberText(dNumber));
}

QString Texts(const std::vector<double>& numbers)
{
    QStringList texts;
    for (const double dNumber : numbers)
        texts += Text(dNumber);
    return texts.join(QLatin1Char(' '));
}

SElement ElementOf(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    const SBounds box = BoundsOf(object);
    const auto element = [](const char* pName, std::vector<std::pair<const char*, double>> places) {
        SElement made{QString::fromLatin1(pName), {}};
        for (const auto& place : places)
            made.places.emplace_back(QString::fromLatin1(place.first), Text(place.second));
        return made;
    };
    if (object.kind == "rectangle")
        return element("rect",
                       {{"x", box.left}, {"y", box.top}, {"width", box.Width()}, {"height", box.Height()}});
    if (object.kind == "ellipse")
        return element("ellipse", {{"cx", box.left + box.Width() / 2.0},
                                   {"cy", box.top + box.Height() / 2.0},
                                   {"rx", box.Width() / 2.0},
                                   {"ry", box.Height() / 2.0}});
    if (object.kind == "circle")
        return element("circle", {{"cx", n[0]}, {"cy", n[1]}, {"r", n[2]}});
    if (object.kind == "point")
        return element("circle", {{"cx", n[0]}, {"cy", n[1]}, {"r", kPointRadius}});
    if (object.kind == "text")
        return element("text",
                       {{"x", n[0]}, {"y", n[1] + kBaseline * n[2]}, {"font-size", kFontSize * n[2]}});
    if (object.kind == "polygon")
        return {QStringLiteral("polygon"), {{QStringLiteral("points"), Texts(n)}}};
    return element("line", {{"x1", n[0]}, {"y1", n[1]}, {"x2", n[2]}, {"y2", n[3]}});
}

/// The numbers of an annotation of that kind at places that ElementOf might have given.
std::vector<double> NumbersAt(const std::string& kind, const std::vector<double>& p)
{
    if (kind == "ellipse" && p.size() == 4)
        return {p[0] - p[2], p[1] - p[3], 2.0 * p[2], 2.0 * p[3]};
    if (kind == "point" && p.size() == 3)
        return {p[0], p[1]};
    if (kind == "text" && p.size() == 3)
        return {p[0], p[1] - kBaseline * (p[2] / kFontSize), p[2] / kFontSize};
    return p;
}

void WriteColor(QXmlStreamWriter& xml, const QString& what, const std::optional<std::uint32_t>& color)
{
    if (!color) {
        xml.writeAttribute(what, QStringLiteral("none"));
        return;
    }
    xml.writeAttribute(what, QStringLiteral("#%1").arg(*color & 0xFFFFFFU, 6, 16, QLatin1Char('0')));
    if ((*color >> 24) != 0xFF)
        xml.writeAttribute(what + QStringLiteral("-opacity"), Text((*color >> 24) / 255.0));
}

/// Deliberate: one colour of its own counts as the whole look, as on the screen.
void WriteLook(QXmlStreamWriter& xml, const SObject& object)
{
    const SStyle& style = object.style;
    const bool bOwn = style.penColor || style.fillColor;
    const std::optional<std::uint32_t> common = IsRegion(object) ? std::optional(kFill) : std::nullopt;
    const std::optional<std::uint32_t> pen = bOwn ? style.penColor : std::optional(kColor);
    if (object.kind == "text") {
        WriteColor(xml, QStringLiteral("fill"), pen);
    } else {
        WriteColor(xml, QStringLiteral("stroke"), pen);
        WriteColor(xml, QStringLiteral("fill"), bOwn ? style.fillColor : common);
    }
    if (style.penWidth > 0.0)
        xml.writeAttribute(QStringLiteral("stroke-width"), Text(style.penWidth));
    if (!object.visible)
        xml.writeAttribute(QStringLiteral("visibility"), QStringLiteral("hidden"));
}

/// What the picture itself does not say.
void WriteData(QXmlStreamWriter& xml, const SObject& object)
{
    const auto data = [&xml](const char* pName, const QString& value, bool bWanted = true) {
        if (bWanted)
            xml.writeAttribute(QStringLiteral("data-") + QString::fromLatin1(pName), value);
    };
    const auto color = [](const std::optional<std::uint32_t>& value) {
        return QString::number(value.value_or(0), 16);
    };
    const QString no = QStringLiteral("0");
    data("kind", XmlText(object.kind));
    data("numbers", Texts(object.numbers));
    data("id", XmlText(object.id), !object.id.empty());
    data("name", XmlText(object.name));
    data("named", no, !object.named);
    data("show-name", no, !object.showName);
    data("locked", QStringLiteral("1"), object.locked);
    data("visible", no, !object.visible);
    data("text", XmlText(object.text), !object.text.empty());
    data("pen", color(object.style.penColor), object.style.penColor.has_value());
    data("pen-width", Text(object.style.penWidth), object.style.penWidth != 0.0);
    data("fill", color(object.style.fillColor), object.style.fillColor.has_value());
    data("extra", XmlText(object.extra), !object.extra.empty());
}

void WriteLines(QXmlStreamWriter& xml, const SObject& object)
{
    double dY = object.numbers[1] + kBaseline * object.numbers[2];
    for (const QString& line : XmlText(object.text).split(QLatin1Char('\n'))) {
        xml.writeStartElement(QStringLiteral("tspan"));
        xml.writeAttribute(QStringLiteral("x"), Text(object.numbers[0]));
        xml.writeAttribute(QStringLiteral("y"), Text(dY));
        xml.writeCharacters(line);
        xml.writeEndElement();
        dY += object.numbers[2];
    }
}

void WriteElement(QXmlStreamWriter& xml, const SObject& object)
{
    const SElement element = ElementOf(object);
    xml.writeStartElement(element.name);
    for (const auto& place : element.places)
        xml.writeAttribute(place.first, place.second);
    xml.writeAttribute(QStringLiteral("vector-effect"), QStringLiteral("non-scaling-stroke"));
    if (object.kind == "polygon")
        xml.writeAttribute(QStringLiteral("fill-rule"), QStringLiteral("evenodd"));
    if (object.kind == "text") {
        xml.writeAttribute(QStringLiteral("stroke"), QStringLiteral("none"));
        WriteLines(xml, object);
    }
    xml.writeEndElement();
}

/// What belongs to the picture of an annotation beside its own element.
void WriteOrnaments(QXmlStreamWriter& xml, const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    if (object.kind == "ruler") {
        xml.writeStartElement(QStringLiteral("text"));
        xml.writeAttribute(QStringLiteral("x"), Text((n[0] + n[2]) / 2.0));
        xml.writeAttribute(QStringLiteral("y"), Text((n[1] + n[3]) / 2.0));
        xml.writeAttribute(QStringLiteral("font-size"), Text(kLabelSize));
        xml.writeAttribute(QStringLiteral("stroke"), QStringLiteral("none"));
        WriteColor(xml, QStringLiteral("fill"), object.style.penColor.value_or(kColor));
        xml.writeCharacters(QString::asprintf("%.03f pixel", std::hypot(n[2] - n[0], n[3] - n[1])));
        xml.writeEndElement();
    } else if (object.kind == "arrow") {
        const auto barbs = Geometry::CArrow({n[0], n[1]}, {n[2], n[3]}).GetBarbs();
        xml.writeEmptyElement(QStringLiteral("polyline"));
        xml.writeAttribute(QStringLiteral("points"),
                           Texts({barbs[0].x(), barbs[0].y(), n[2], n[3], barbs[1].x(), barbs[1].y()}));
        xml.writeAttribute(QStringLiteral("vector-effect"), QStringLiteral("non-scaling-stroke"));
    }
}

void WriteObject(QXmlStreamWriter& xml, const SObject& object)
{
    xml.writeStartElement(QStringLiteral("g"));
    WriteData(xml, object);
    WriteLook(xml, object);
    xml.writeTextElement(QStringLiteral("title"), XmlText(object.name));
    WriteElement(xml, object);
    WriteOrnaments(xml, object);
    xml.writeEndElement();
}

/// Every program knows the older name of the reference; the newer one would double an embedded picture.
void WritePicture(QXmlStreamWriter& xml, const SContext& context, const QString& width, const QString& height,
                  const std::string& imageName)
{
    if (context.picture.empty() && imageName.empty())
        return;
    xml.writeEmptyElement(QStringLiteral("image"));
    xml.writeAttribute(QStringLiteral("x"), QStringLiteral("0"));
    xml.writeAttribute(QStringLiteral("y"), QStringLiteral("0"));
    xml.writeAttribute(QStringLiteral("width"), width);
    xml.writeAttribute(QStringLiteral("height"), height);
    xml.writeAttribute(QStringLiteral("preserveAspectRatio"), QStringLiteral("none"));
    xml.writeAttribute(QStringLiteral("style"), QStringLiteral("image-rendering:pixelated"));
    QString reference;
    if (context.picture.empty()) {
        reference = QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdString(imageName)));
        xml.writeAttribute(QStringLiteral("href"), reference);
    } else {
        const QByteArray picture =
            QByteArray::fromRawData(context.picture.data(), static_cast<int>(context.picture.size()));
        reference = QStringLiteral("data:") + XmlText(context.pictureType) + QStringLiteral(";base64,") +
                    QString::fromLatin1(picture.toBase64());
    }
    xml.writeAttribute(QStringLiteral("xlink:href"), reference);
}

void TellText(const SObject& object, Remarks& remarks)
{
    if (XmlText(object.text) != QString::fromStdString(object.text))
        remarks.push_back({object.name, "The file does not keep the control characters of its text."});
}

std::optional<std::uint32_t> ColorOf(const CXmlFile& xml, const char* pName)
{
    bool bOk = false;
    const std::uint32_t nColor = xml.Attribute(pName).toUInt(&bOk, 16);
    return bOk ? std::optional(nColor) : std::nullopt;
}

SObject ObjectOf(const CXmlFile& xml)
{
    const auto text = [&xml](const char* pName) { return xml.Attribute(pName).toStdString(); };
    SObject object;
    object.kind = text("data-kind");
    object.numbers = ReadNumbers(xml.Attribute("data-numbers"));
    object.id = text("data-id");
    object.name = text("data-name");
    object.named = text("data-named") != "0";
    object.showName = text("data-show-name") != "0";
    object.locked = text("data-locked") == "1";
    object.visible = text("data-visible") != "0";
    object.text = text("data-text");
    object.style.penColor = ColorOf(xml, "data-pen");
    object.style.penWidth = std::max(0.0, xml.Number("data-pen-width", 0.0));
    object.style.fillColor = ColorOf(xml, "data-fill");
    object.extra = text("data-extra");
    if (!CheckJson(object.extra, kMaxDepth).IsSuccess()) // or our own files would be damaged by it
        object.extra.clear();
    return object;
}

std::vector<double> PlacesOf(const CXmlFile& xml, const SElement& element)
{
    std::vector<double> places;
    for (const auto& place : element.places) {
        const std::vector<double> numbers = ReadNumbers(xml.Attribute(place.first.toLatin1().constData()));
        places.insert(places.end(), numbers.begin(), numbers.end());
    }
    return places;
}

/// Where the shape has been moved by another program, the shape counts.
void TakePlaces(const CXmlFile& xml, SObject& object)
{
    const SElement element = ElementOf(object);
    std::vector<double> written;
    for (const auto& place : element.places) {
        const std::vector<double> numbers = ReadNumbers(place.second);
        written.insert(written.end(), numbers.begin(), numbers.end());
    }
    const std::vector<double> places = PlacesOf(xml, element);
    if (places != written)
        object.numbers = NumbersAt(object.kind, places);
}

void ReadObject(CXmlFile& xml, CForeignReading& reading)
{
    SObject object = ObjectOf(xml);
    bool bMoved = xml.Has("transform");
    bool bShape = false;
    const bool bGood = IsBuiltIn(object) && IsWellFormed(object);
    const QString element = bGood ? ElementOf(object).name : QString();
    while (xml.NextChild()) {
        if (bGood && !bShape && xml.Is(element.toLatin1().constData())) {
            bShape = true;
            bMoved = bMoved || xml.Has("transform");
            TakePlaces(xml, object);
        }
        xml.Skip();
    }
    if (bMoved || (bGood && !bShape))
        reading.Skip(object.name,
                     "It is left out: another program has changed it in a way that is not read.");
    else
        reading.Take(std::move(object));
}
} // namespace

bool IsSvg(const std::string& bytes, const std::string&)
{
    return RootOf(bytes) == "svg" && bytes.find("data-vantor=") != std::string::npos;
}

CResult ReadSvg(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    CXmlFile xml(bytes, "svg");
    if (!xml.HasFailed() && !xml.Has("data-vantor"))
        return CResult::Failure("Only drawings that this program has written are read.");
    CForeignReading reading(document, remarks);
    SContext size = context;
    size.width = xml.Size("width", context.width);
    size.height = xml.Size("height", context.height);
    if (xml.Has("data-image"))
        size.imageName = xml.Attribute("data-image").toStdString();
    reading.GoToPage(0, size);
    while (xml.NextChild()) {
        if (!xml.Is("g") || xml.Attribute("id") != QLatin1String("annotations")) {
            xml.Skip();
            continue;
        }
        if (xml.Has("transform"))
            xml.Fail("Another program has moved the annotations.");
        while (!reading.IsFull() && xml.NextChild()) {
            if (xml.Is("g") && xml.Has("data-kind"))
                ReadObject(xml, reading);
            else
                xml.Skip();
        }
    }
    const CResult end = reading.Finish();
    return end.IsSuccess() ? xml.Result() : end;
}

CResult WriteSvg(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    const int nWidth = WidthOf(page, context);
    const int nHeight = HeightOf(page, context);
    if (nWidth <= 0 || nHeight <= 0)
        return CResult::Failure("The size of the image is not known.");
    const QString width = QString::number(nWidth);
    const QString height = QString::number(nHeight);
    const std::string imageName = ImageNameOf(document, page, context);
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("svg"));
    xml.writeAttribute(QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/2000/svg"));
    xml.writeAttribute(QStringLiteral("xmlns:xlink"), QStringLiteral("http://www.w3.org/1999/xlink"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    xml.writeAttribute(QStringLiteral("width"), width);
    xml.writeAttribute(QStringLiteral("height"), height);
    xml.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("0 0 %1 %2").arg(width, height));
    xml.writeAttribute(QStringLiteral("data-vantor"), QStringLiteral("1"));
    xml.writeAttribute(QStringLiteral("data-image"), XmlText(imageName));
    WritePicture(xml, context, width, height, imageName);
    xml.writeStartElement(QStringLiteral("g"));
    xml.writeAttribute(QStringLiteral("id"), QStringLiteral("annotations"));
    xml.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
    xml.writeAttribute(QStringLiteral("stroke-width"), QStringLiteral("1"));
    // No spikes at sharp corners, as on the screen.
    xml.writeAttribute(QStringLiteral("stroke-linejoin"), QStringLiteral("bevel"));
    xml.writeAttribute(QStringLiteral("font-family"), QStringLiteral("Arial, sans-serif"));
    for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
        if (!CanBeWritten(*object, kKinds, remarks))
            continue;
        TellXmlName(*object, remarks);
        TellText(*object, remarks);
        TellLosses(*object, Keeps_All & ~Keeps_Unknown, remarks);
        WriteObject(xml, *object);
    }
    xml.writeEndDocument();
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    bytes = text.toStdString();
    return CResult::Success();
}

} // namespace Vantor::Annotations
