// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/annotation/XmlFile_p.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ";

/// A box in whole pixels within the image: from the first edge to behind the last pixel.
struct SPixelBox {
    SBounds box;
    bool bClipped;
};

SPixelBox PixelBox(const SObject& object, int nWidth, int nHeight)
{
    const SBounds box = BoundsOf(object);
    const SBounds whole{std::floor(box.left), std::floor(box.top), std::ceil(box.right),
                        std::ceil(box.bottom)};
    const SBounds inside{std::max(whole.left, 0.0), std::max(whole.top, 0.0),
                         std::min<double>(whole.right, nWidth), std::min<double>(whole.bottom, nHeight)};
    return {inside, !(inside == whole)};
}

/// @param box  not empty
void WriteObject(QXmlStreamWriter& xml, const SObject& object, const SPixelBox& box, int nFirst)
{
    const auto element = [&xml](const char* pName, const QString& text) {
        xml.writeTextElement(QString::fromLatin1(pName), text);
    };
    const auto number = [](double dNumber) { return QString::number(static_cast<qint64>(dNumber)); };
    xml.writeStartElement(QStringLiteral("object"));
    element("name", XmlText(object.name));
    element("pose", QStringLiteral("Unspecified"));
    element("truncated", QString::number(box.bClipped ? 1 : 0));
    element("difficult", QStringLiteral("0"));
    xml.writeStartElement(QStringLiteral("bndbox"));
    element("xmin", number(box.box.left + nFirst));
    element("ymin", number(box.box.top + nFirst));
    element("xmax", number(box.box.right));
    element("ymax", number(box.box.bottom));
    xml.writeEndElement();
    xml.writeEndElement();
}

/// Remarks what the box does not say; false when there is none to write.
bool TellBox(const SObject& object, const SPixelBox& box, Remarks& remarks)
{
    if (!CanBeWritten(object, kKinds, remarks))
        return false;
    if (box.box.Width() <= 0.0 || box.box.Height() <= 0.0) {
        remarks.push_back({object.name, "It is left out: it covers nothing of the image."});
        return false;
    }
    TellKind(object, "rectangle", remarks);
    if (box.bClipped)
        remarks.push_back({object.name, "It is clipped to the image."});
    else if (!(box.box == BoundsOf(object)))
        remarks.push_back({object.name, "Its box is enlarged to whole pixels."});
    const QString name = XmlText(object.name);
    if (name.trimmed() != name)
        remarks.push_back({object.name, "The file does not keep the blanks around its name."});
    TellXmlName(object, remarks);
    TellLosses(object, Keeps_Nothing, remarks);
    return true;
}

void ReadSize(CXmlFile& xml, SPage& page)
{
    const auto size = [&xml] {
        double dSize = 0.0;
        return ReadNumber(xml.Text(), dSize) ? std::max(0, static_cast<int>(dSize)) : 0;
    };
    while (xml.NextChild()) {
        if (xml.Is("width"))
            page.width = size();
        else if (xml.Is("height"))
            page.height = size();
        else
            xml.Skip();
    }
}

/// The numbers of the box; empty when it is none.
std::vector<double> ReadBox(CXmlFile& xml, int nFirst)
{
    const char* const names[] = {"xmin", "ymin", "xmax", "ymax"};
    double edges[4] = {};
    int nFound = 0;
    while (xml.NextChild()) {
        const auto* const pName =
            std::find_if(std::begin(names), std::end(names), [&](const char* p) { return xml.Is(p); });
        if (pName == std::end(names))
            xml.Skip();
        else if (ReadNumber(xml.Text(), edges[pName - names]))
            ++nFound;
    }
    const SBounds box{edges[0] - nFirst, edges[1] - nFirst, edges[2], edges[3]};
    const bool bGood = nFound == 4 && box.Width() >= 0.0 && box.Height() >= 0.0;
    return bGood ? NumbersOf(box) : std::vector<double>();
}

void ReadObject(CXmlFile& xml, int nFirst, CForeignReading& reading, Remarks& remarks)
{
    SObject object;
    object.kind = "rectangle";
    QStringList skipped;
    while (xml.NextChild()) {
        if (xml.Is("name")) {
            object.name = xml.Text().trimmed().toStdString();
        } else if (xml.Is("bndbox")) {
            object.numbers = ReadBox(xml, nFirst);
        } else {
            if (!xml.Is("pose") && !xml.Is("truncated") && !xml.Is("difficult") && !xml.Is("occluded"))
                skipped += xml.Name();
            xml.Skip();
        }
    }
    if (object.numbers.empty()) {
        reading.Skip(object.name, "It is left out: it has no box.");
        return;
    }
    if (!skipped.isEmpty())
        remarks.push_back(
            {object.name, "Left out: its " + skipped.join(QStringLiteral(", its ")).toStdString() + "."});
    reading.Take(std::move(object));
}
} // namespace

bool IsVoc(const std::string& bytes, const std::string&)
{
    return RootOf(bytes) == "annotation";
}

CResult ReadVoc(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    CXmlFile xml(bytes, "annotation");
    CForeignReading reading(document, remarks);
    reading.GoToPage(0, context);
    while (!reading.IsFull() && xml.NextChild()) {
        if (xml.Is("filename"))
            document.source.name = xml.Text().trimmed().toStdString();
        else if (xml.Is("size"))
            ReadSize(xml, document.pages.front());
        else if (xml.Is("object"))
            ReadObject(xml, context.firstPixel, reading, remarks);
        else
            xml.Skip();
    }
    const CResult end = reading.Finish();
    return end.IsSuccess() ? xml.Result() : end;
}

CResult WriteVoc(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    const int nWidth = WidthOf(page, context);
    const int nHeight = HeightOf(page, context);
    if (nWidth <= 0 || nHeight <= 0)
        return CResult::Failure("The size of the image is not known.");
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartElement(QStringLiteral("annotation"));
    xml.writeTextElement(QStringLiteral("folder"), QString());
    xml.writeTextElement(QStringLiteral("filename"), XmlText(ImageNameOf(document, page, context)));
    xml.writeStartElement(QStringLiteral("size"));
    xml.writeTextElement(QStringLiteral("width"), QString::number(nWidth));
    xml.writeTextElement(QStringLiteral("height"), QString::number(nHeight));
    xml.writeTextElement(QStringLiteral("depth"), QStringLiteral("3"));
    xml.writeEndElement();
    xml.writeTextElement(QStringLiteral("segmented"), QStringLiteral("0"));
    for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
        const SPixelBox box = PixelBox(*object, nWidth, nHeight);
        if (TellBox(*object, box, remarks))
            WriteObject(xml, *object, box, context.firstPixel);
    }
    xml.writeEndDocument();
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    bytes = text.toStdString();
    return CResult::Success();
}

} // namespace Vantor::Annotations
