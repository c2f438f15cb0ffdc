// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/file/CsvText_p.h>

#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point text ";
constexpr const char* kHead = "image,page,name,kind,left,top,width,height,area,length,numbers,text\r\n";

std::string Field(const std::string& text)
{
    return CsvField(text);
}

std::string Field(double dNumber)
{
    return NumberText(dNumber).toStdString();
}

std::string Row(const std::string& image, const SPage& page, const SObject& object)
{
    const SBounds box = BoundsOf(object);
    const std::vector<double>& n = object.numbers;
    std::string row =
        Field(image) + ',' + std::to_string(page.page + 1) + ',' + Field(object.name) + ',' + object.kind;
    for (const double dNumber : {box.left, box.top, box.Width(), box.Height()})
        row += ',' + Field(dNumber);
    row += ',' + (IsRegion(object) ? Field(AreaOf(object)) : std::string());
    row += ',' + (IsTwoPoints(object) ? Field(std::hypot(n[2] - n[0], n[3] - n[1])) : std::string());
    std::string numbers;
    for (const double dNumber : n)
        numbers += (numbers.empty() ? "" : " ") + Field(dNumber);
    return row + ',' + numbers + ',' + Field(object.text) + "\r\n";
}

void TellFormulas(const SObject& object, Remarks& remarks)
{
    if (IsFormula(object.name))
        remarks.push_back(
            {object.name, "Its name begins with an apostrophe, so that no program computes it."});
    if (IsFormula(object.text))
        remarks.push_back(
            {object.name, "Its text begins with an apostrophe, so that no program computes it."});
}
} // namespace

CResult WriteCsv(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    std::string text = kHead;
    for (const SPage& page : document.pages) {
        const std::string image = ImageNameOf(document, page, context);
        for (const SObject& object : page.objects) {
            if (!CanBeWritten(object, kKinds, remarks))
                continue;
            text += Row(image, page, object);
            TellFormulas(object, remarks);
            TellLosses(object, Keeps_Nothing, remarks);
        }
        TellPageLosses(document, page, remarks);
    }
    bytes = std::move(text);
    return CResult::Success();
}

} // namespace Vantor::Annotations
