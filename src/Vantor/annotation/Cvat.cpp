// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/annotation/XmlFile_p.h>

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point ";
constexpr double kRadians = 3.14159265358979323846 / 180.0;

QString Text(double dNumber)
{
    return QString::fromLatin1(NumberText(dNumber));
}

QString PointsText(const std::vector<double>& numbers)
{
    QStringList points;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        points += Text(numbers[i]) + QLatin1Char(',') + Text(numbers[i + 1]);
    return points.join(QLatin1Char(';'));
}

/// The ellipse of that centre and these half axes.
std::vector<double> EllipseNumbers(double dX, double dY, double dRadiusX, double dRadiusY)
{
    return NumbersOf(SBounds{dX - dRadiusX, dY - dRadiusY, dX + dRadiusX, dY + dRadiusY});
}

/// Writes the element and its places.
/// @return the annotation as it will be read
SObject WriteShape(QXmlStreamWriter& xml, const SObject& object)
{
    SObject read = Normalised(object);
    const auto element = [&](const char* pName) { xml.writeStartElement(QString::fromLatin1(pName)); };
    const auto place = [&](const char* pName, double dPlace) {
        xml.writeAttribute(QString::fromLatin1(pName), Text(dPlace));
    };
    const SBounds box = BoundsOf(object);
    if (object.kind == "rectangle") {
        element("box");
        place("xtl", box.left);
        place("ytl", box.top);
        place("xbr", box.right);
        place("ybr", box.bottom);
    } else if (IsEllipse(object)) {
        const double dX = object.kind == "circle" ? object.numbers[0] : box.left + box.Width() / 2.0;
        const double dY = object.kind == "circle" ? object.numbers[1] : box.top + box.Height() / 2.0;
        const double dRadiusX = object.kind == "circle" ? object.numbers[2] : box.Width() / 2.0;
        const double dRadiusY = object.kind == "circle" ? object.numbers[2] : box.Height() / 2.0;
        element("ellipse");
        place("cx", dX);
        place("cy", dY);
        place("rx", dRadiusX);
        place("ry", dRadiusY);
        read.kind = "ellipse";
        read.numbers = EllipseNumbers(dX, dY, dRadiusX, dRadiusY);
    } else {
        const bool bLine = IsTwoPoints(object);
        element(bLine ? "polyline" : object.kind == "point" ? "points" : "polygon");
        xml.writeAttribute(QStringLiteral("points"), PointsText(object.numbers));
        read.kind = bLine ? "line" : object.kind;
    }
    return read;
}

void WriteObject(QXmlStreamWriter& xml, const SObject& object, std::size_t nOrder, Remarks& remarks)
{
    const SObject read = WriteShape(xml, object);
    xml.writeAttribute(QStringLiteral("label"), XmlText(object.name));
    xml.writeAttribute(QStringLiteral("source"), QStringLiteral("manual"));
    xml.writeAttribute(QStringLiteral("occluded"), QStringLiteral("0"));
    xml.writeAttribute(QStringLiteral("z_order"), QString::number(nOrder));
    xml.writeEndElement();
    TellKind(object, read.kind, remarks);
    TellRounding(object, read, remarks);
    TellXmlName(object, remarks);
    TellLosses(object, Keeps_Nothing, remarks);
}

/// Importers want to know all labels beforehand.
void WriteMeta(QXmlStreamWriter& xml, const SDocument& document)
{
    QStringList labels;
    QHash<QString, bool> known;
    for (const SPage& page : document.pages) {
        for (const SObject& object : page.objects) {
            const QString label = XmlText(object.name);
            if (!object.raw.empty() || known.contains(label))
                continue;
            known.insert(label, true);
            labels += label;
        }
    }
    xml.writeStartElement(QStringLiteral("meta"));
    xml.writeStartElement(QStringLiteral("task"));
    xml.writeTextElement(QStringLiteral("name"), XmlText(document.source.name));
    xml.writeTextElement(QStringLiteral("size"), QString::number(document.pages.size()));
    xml.writeTextElement(QStringLiteral("mode"), QStringLiteral("annotation"));
    xml.writeStartElement(QStringLiteral("labels"));
    for (const QString& label : labels) {
        xml.writeStartElement(QStringLiteral("label"));
        xml.writeTextElement(QStringLiteral("name"), label);
        xml.writeEmptyElement(QStringLiteral("attributes"));
        xml.writeEndElement();
    }
    for (int i = 0; i < 3; ++i)
        xml.writeEndElement();
}

/// How many numbers of points that element has.
bool HasItsPoints(const QString& element, std::size_t nNumbers)
{
    if (element == QLatin1String("polyline"))
        return nNumbers == 4;
    return nNumbers % 2 == 0 && nNumbers >= (element == QLatin1String("polygon") ? 6U : 2U);
}

SObject Turned(const SObject& object, double dDegrees)
{
    SObject turned = object;
    turned.kind = "polygon";
    turned.numbers = OutlineOf(object);
    const SBounds box = BoundsOf(object);
    const double dX = (box.left + box.right) / 2.0;
    const double dY = (box.top + box.bottom) / 2.0;
    const double dSine = std::sin(dDegrees * kRadians);
    const double dCosine = std::cos(dDegrees * kRadians);
    for (std::size_t i = 0; i + 1 < turned.numbers.size(); i += 2) {
        const double dRight = turned.numbers[i] - dX;
        const double dDown = turned.numbers[i + 1] - dY;
        turned.numbers[i] = dX + dRight * dCosine - dDown * dSine;
        turned.numbers[i + 1] = dY + dRight * dSine + dDown * dCosine;
    }
    return turned;
}

/// The annotations that an element says; none when it says nothing that is understood.
std::vector<SObject> ShapesOf(const CXmlFile& xml)
{
    const QString element = xml.Name();
    const auto at = [&xml](const char* pName) { return xml.Number(pName, std::nan("")); };
    SObject object;
    object.name = xml.Attribute("label").toStdString();
    if (element == QLatin1String("box")) {
        object.kind = "rectangle";
        object.numbers = NumbersOf(SBounds{at("xtl"), at("ytl"), at("xbr"), at("ybr")});
    } else if (element == QLatin1String("ellipse")) {
        object.kind = "ellipse";
        object.numbers = EllipseNumbers(at("cx"), at("cy"), at("rx"), at("ry"));
    }
    if (!object.kind.empty()) {
        object = Normalised(object);
        const double dTurn = xml.Number("rotation", 0.0);
        return {dTurn == 0.0 || !IsWellFormed(object) ? object : Turned(object, dTurn)};
    }
    const std::vector<double> points =
        ReadNumbers(xml.Attribute("points").replace(QLatin1Char(';'), QLatin1Char(' ')));
    if (!HasItsPoints(element, points.size()))
        return {};
    object.kind = element == QLatin1String("polyline") ? "line" : "polygon";
    object.numbers = points;
    if (element != QLatin1String("points"))
        return {object};
    std::vector<SObject> objects(points.size() / 2, object);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        objects[i].kind = "point";
        objects[i].numbers = {points[2 * i], points[2 * i + 1]};
    }
    return objects;
}

bool IsShape(const CXmlFile& xml)
{
    return xml.Is("box") || xml.Is("ellipse") || xml.Is("polygon") || xml.Is("polyline") || xml.Is("points");
}

void ReadImage(CXmlFile& xml, CForeignReading& reading, Remarks& remarks)
{
    struct SFound {
        double dOrder;
        std::vector<SObject> objects;
    };
    std::vector<SFound> found;
    while (xml.NextChild()) {
        const std::string label = xml.Attribute("label").toStdString();
        const bool bShape = IsShape(xml);
        SFound shape{xml.Number("z_order", 0.0), bShape ? ShapesOf(xml) : std::vector<SObject>()};
        if (shape.objects.empty())
            reading.Skip(label, "It is left out: a " + xml.Name().toStdString() +
                                    (bShape ? " of that many corners" : "") + " is not read.");
        else
            found.push_back(std::move(shape));
        bool bAttributes = false;
        while (xml.NextChild()) {
            bAttributes = true;
            xml.Skip();
        }
        if (bAttributes)
            remarks.push_back({label, "Its attributes are left out."});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const SFound& a, const SFound& b) { return a.dOrder < b.dOrder; });
    for (SFound& shape : found) {
        for (SObject& object : shape.objects)
            reading.Take(std::move(object));
    }
}
} // namespace

bool IsCvat(const std::string& bytes, const std::string&)
{
    return RootOf(bytes) == "annotations";
}

CResult ReadCvat(const std::string& bytes, const SContext&, SDocument& document, Remarks& remarks)
{
    CXmlFile xml(bytes, "annotations");
    CForeignReading reading(document, remarks);
    QHash<QString, int> pages; // how many there are of each file
    while (!reading.IsFull() && xml.NextChild()) {
        if (xml.Is("image")) {
            const QString name = xml.Attribute("name");
            if (pages.isEmpty())
                document.source.name = name.toStdString();
            SPage page;
            page.page = pages[name]++;
            page.image = name.toStdString() == document.source.name ? std::string() : name.toStdString();
            page.width = xml.Size("width", 0);
            page.height = xml.Size("height", 0);
            reading.BeginPage(std::move(page));
            ReadImage(xml, reading, remarks);
            continue;
        }
        if (xml.Is("track"))
            reading.Skip(xml.Attribute("label").toStdString(), "It is left out: tracks are not read.");
        xml.Skip();
    }
    const CResult end = reading.Finish();
    return end.IsSuccess() ? xml.Result() : end;
}

CResult WriteCvat(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("annotations"));
    xml.writeTextElement(QStringLiteral("version"), QStringLiteral("1.1"));
    WriteMeta(xml, document);
    QHash<QString, int> pages;
    int nImage = 0;
    for (const SPage& page : document.pages) {
        const QString name = XmlText(ImageNameOf(document, page, context));
        xml.writeStartElement(QStringLiteral("image"));
        xml.writeAttribute(QStringLiteral("id"), QString::number(nImage++));
        xml.writeAttribute(QStringLiteral("name"), name);
        xml.writeAttribute(QStringLiteral("width"), QString::number(WidthOf(page, context)));
        xml.writeAttribute(QStringLiteral("height"), QString::number(HeightOf(page, context)));
        for (std::size_t i = page.objects.size(); i-- > 0;) {
            if (CanBeWritten(page.objects[i], kKinds, remarks))
                WriteObject(xml, page.objects[i], page.objects.size() - 1 - i, remarks);
        }
        xml.writeEndElement();
        if (pages[name]++ != page.page)
            remarks.push_back({"", "The file does not keep the numbers of the pages."});
        TellPageLosses(document, page, remarks);
    }
    xml.writeEndDocument();
    bytes = text.toStdString();
    return CResult::Success();
}

} // namespace Vantor::Annotations
