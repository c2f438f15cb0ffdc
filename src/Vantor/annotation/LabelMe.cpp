// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ForeignJson_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

#include <climits>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point text ";
constexpr const char* kNotItsPoints = "It is left out: its points are not those of its kind.";

/// The name of the kind of shape that stands for ours.
std::string TypeOf(const SObject& object)
{
    if (object.kind == "ellipse")
        return "polygon";
    if (IsTwoPoints(object))
        return "line";
    return object.kind == "text" ? "point" : object.kind;
}

/// Its points: of a rectangle two opposite corners, of a circle the centre and a point of the rim.
std::vector<double> PointsOf(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    if (object.kind == "circle")
        return {n[0], n[1], n[0] + n[2], n[1]};
    if (object.kind != "rectangle")
        return OutlineOf(object);
    const SBounds box = BoundsOf(object);
    return {box.left, box.top, box.right, box.bottom};
}

/// What the points of a kind of shape mean; not well formed when they mean nothing.
SObject FromPoints(const std::string& type, const std::vector<double>& points)
{
    SObject object;
    object.kind = type;
    object.numbers = points;
    if (type == "rectangle" && points.size() == 4)
        object.numbers = NumbersOf(BoundsOfPoints(points));
    else if (type == "rectangle")
        return FromOutline(points);
    else if (type == "circle" && points.size() == 4)
        object.numbers = {points[0], points[1], std::hypot(points[2] - points[0], points[3] - points[1])};
    else if (type == "linestrip" && points.size() == 4)
        object.kind = "line";
    else if (type == "oriented_rectangle" || type == "rotation" || type == "quadrilateral")
        object.kind = "polygon";
    return object;
}

/// The kinds of shapes that FromPoints knows, and sets of points.
bool IsKnown(const std::string& type)
{
    constexpr std::string_view kTypes =
        " rectangle circle polygon line point points linestrip oriented_rectangle "
        "rotation quadrilateral ";
    return kTypes.find(' ' + type + ' ') != std::string_view::npos;
}

void WriteLabelMeShape(JsonWriter& json, const SObject& object, Remarks& remarks)
{
    const std::string type = TypeOf(object);
    const std::vector<double> points = PointsOf(object);
    json.NewLine();
    json.Open('{');
    json.Name("label").String(LabelOf(object, remarks));
    json.Name("points").Open('[');
    for (std::size_t i = 0; i < points.size(); i += 2)
        json.Point(points[i], points[i + 1]);
    json.Close(']');
    json.Name("group_id").Raw("null");
    json.Name("description").String(object.text);
    json.Name("shape_type").String(type);
    json.Name("flags").Raw("{}");
    if (!IsSameShape(FromPoints(type, points), Normalised(object)))
        WriteShape(json, Normalised(object));
    json.Close('}');
    TellKind(object, type, remarks);
    TellLosses(object, Keeps_Nothing, remarks);
}

void WriteSize(JsonWriter& json, const char* pName, int nSize)
{
    json.Name(pName);
    if (nSize > 0)
        json.Whole(static_cast<std::int64_t>(nSize));
    else
        json.Raw("null");
}

void TakeShapeOf(JsonView view, CForeignReading& reading, Remarks& remarks)
{
    SObject object;
    object.name = view["label"].String().value_or(std::string());
    const std::string type =
        view["shape_type"].IsNull() ? "polygon" : view["shape_type"].String().value_or("");
    const std::optional<std::vector<double>> points = ReadPoints(view["points"]);
    if (!IsKnown(type))
        return reading.Skip(object.name, "It is left out: a shape of this kind is not known: " + type + '.');
    if (!points)
        return reading.Skip(object.name, kNotItsPoints);
    const std::string without =
        WithoutOthers(view, {"label", "points", "shape_type", kShapeKey, "description"});
    if (!without.empty())
        remarks.push_back({object.name, without});
    const std::optional<SObject> exact = ReadShape(view[kShapeKey]);
    const bool bExact = exact && TypeOf(*exact) == type && PointsOf(*exact) == *points;
    TakeShape(bExact ? *exact : FromPoints(type, *points), object);
    if (view["description"].String().value_or("") != object.text)
        remarks.push_back({object.name, "It is read without: description."});
    if (type != "points")
        return reading.Take(object);
    for (std::size_t i = 0; i < points->size() && !reading.IsFull(); i += 2) {
        object.kind = "point";
        object.numbers = {(*points)[i], (*points)[i + 1]};
        reading.Take(object);
    }
}

/// The size as the file tells it, else as the context does.
int SizeOf(JsonView view, int nOther)
{
    const std::optional<std::uint64_t> size = view.Whole();
    return size && *size > 0 && *size <= INT_MAX ? static_cast<int>(*size) : nOther;
}
} // namespace

bool IsLabelMe(const std::string& bytes, const std::string& /*fileName*/)
{
    return JsonView(TrimJson(bytes))["shapes"].IsArray();
}

CResult ReadLabelMe(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    JsonView root;
    CResult result = OpenJson(bytes, root);
    if (!result.IsSuccess())
        return result;
    if (!root["shapes"].IsArray())
        return CResult::Failure("It is no LabelMe file: it has no shapes.");
    // Other systems write their own separators.
    const std::string path = root["imagePath"].String().value_or(context.imageName);
    document.source.name = path.substr(path.find_last_of("/\\") + 1, kMaxText);
    const std::string without =
        WithoutOthers(root, {"version", "shapes", "imagePath", "imageData", "imageWidth", "imageHeight"});
    if (!without.empty())
        remarks.push_back({"", without});
    SPage page;
    page.width = SizeOf(root["imageWidth"], context.width);
    page.height = SizeOf(root["imageHeight"], context.height);
    CForeignReading reading(document, remarks);
    reading.BeginPage(std::move(page));
    for (JsonItems shapes(root["shapes"]); shapes.Next() && !reading.IsFull();)
        TakeShapeOf(shapes.Value(), reading, remarks);
    return reading.Finish();
}

CResult WriteLabelMe(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    JsonWriter json(bytes);
    json.Open('{');
    json.Name("version").String("5.5.0");
    json.Name("flags").Raw("{}");
    json.Name("shapes").Open('[');
    for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
        if (CanBeWritten(*object, kKinds, remarks))
            WriteLabelMeShape(json, *object, remarks);
    }
    json.Close(']');
    json.NewLine();
    json.Name("imagePath").String(ImageNameOf(document, page, context));
    json.Name("imageData").Raw("null");
    WriteSize(json, "imageHeight", HeightOf(page, context));
    WriteSize(json, "imageWidth", WidthOf(page, context));
    json.Close('}');
    bytes += '\n';
    return CResult::Success();
}

} // namespace Vantor::Annotations
