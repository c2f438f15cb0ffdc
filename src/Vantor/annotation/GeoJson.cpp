// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ForeignJson_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ruler line arrow point text ";
constexpr std::uint32_t kOpaque = 0xff000000U;
constexpr const char* kNotItsCoordinates = "It is left out: its coordinates are not those of its kind.";

/// The kind that comes back without the exact shape.
std::string KindOf(const SObject& object)
{
    if (object.kind == "circle")
        return "ellipse";
    if (IsTwoPoints(object))
        return "line";
    return object.kind == "text" ? "point" : object.kind;
}

/// What an outline means; not well formed when it means nothing.
SObject FromCoordinates(const std::string& type, bool bEllipse, std::vector<double> outline)
{
    SObject object;
    if (type == "Polygon" && !bEllipse)
        return FromOutline(std::move(outline));
    object.kind = bEllipse ? "ellipse" : type == "LineString" ? "line" : "point";
    object.numbers = bEllipse ? NumbersOf(BoundsOfPoints(outline)) : std::move(outline);
    return object;
}

const char* TypeOf(const SObject& object)
{
    return IsRegion(object) ? "Polygon" : IsTwoPoints(object) ? "LineString" : "Point";
}

void WriteGeometry(JsonWriter& json, const SObject& object)
{
    const std::vector<double> outline = OutlineOf(object);
    json.Name("geometry").Open('{');
    json.Name("type").String(TypeOf(object));
    json.Name("coordinates");
    if (outline.size() == 2) {
        json.Point(outline[0], outline[1]);
    } else {
        if (IsRegion(object))
            json.Open('[');
        json.Open('[');
        for (std::size_t i = 0; i < outline.size(); i += 2)
            json.Point(outline[i], outline[i + 1]);
        if (IsRegion(object)) {
            json.Point(outline[0], outline[1]); // rings are closed
            json.Close(']');
        }
        json.Close(']');
    }
    if (IsEllipse(object))
        json.Name("isEllipse").Bool(true);
    json.Close('}');
}

void WriteProperties(JsonWriter& json, const SObject& object)
{
    json.Name("properties").Open('{');
    json.Name("objectType").String("annotation");
    if (!object.name.empty())
        json.Name("name").String(object.name);
    if (object.style.penColor) {
        const std::uint64_t nColor = *object.style.penColor;
        json.Name("color").Open('[');
        for (const unsigned nShift : {16U, 8U, 0U})
            json.Whole((nColor >> nShift) & 0xffU);
        json.Close(']');
    }
    if (object.locked)
        json.Name("isLocked").Bool(true);
    const SObject back = FromCoordinates(TypeOf(object), IsEllipse(object), OutlineOf(object));
    if (!IsSameShape(back, Normalised(object)))
        WriteShape(json, Normalised(object));
    json.Close('}');
}

void WriteFeature(JsonWriter& json, const SObject& object, Remarks& remarks)
{
    json.NewLine();
    json.Open('{');
    json.Name("type").String("Feature");
    if (!object.id.empty())
        json.Name("id").String(object.id);
    WriteGeometry(json, object);
    WriteProperties(json, object);
    json.Close('}');
    TellKind(object, KindOf(object), remarks);
    TellLosses(object, Keeps_Lock | Keeps_PenColor, remarks);
    if (object.style.penColor && (*object.style.penColor & kOpaque) != kOpaque)
        remarks.push_back({object.name, "The file does not keep how opaque the colour of its outline is."});
}

std::optional<std::uint32_t> ReadColor(JsonView view)
{
    std::vector<double> parts;
    if (!AppendNumbers(view, 3, parts))
        return std::nullopt;
    std::uint32_t nColor = kOpaque;
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(parts[i] >= 0.0 && parts[i] <= 255.0))
            return std::nullopt;
        nColor |= static_cast<std::uint32_t>(parts[i]) << (16U - 8U * i);
    }
    return nColor;
}

/// Without the last corner, which repeats the first.
std::optional<std::vector<double>> ReadRing(JsonView ring)
{
    std::optional<std::vector<double>> points = ReadPoints(ring);
    if (points && points->size() > 2 && (*points)[0] == points->end()[-2] &&
        (*points)[1] == points->end()[-1])
        points->resize(points->size() - 2);
    return points;
}

class GeoJsonReader
{
public:
    GeoJsonReader(SDocument& document, Remarks& remarks) : m_remarks(remarks), m_reading(document, remarks) {}

    CResult Read(JsonView features, const SContext& context);

private:
    void TakeFeature(JsonView feature);
    void TakeGeometry(JsonView geometry, const std::string& type, const SObject& object);
    void TakePolygon(JsonView rings, bool bEllipse, const SObject& object);
    void TakePoints(const std::optional<std::vector<double>>& points, const std::string& type, bool bEllipse,
                    SObject object);

    Remarks& m_remarks;
    CForeignReading m_reading;
    std::optional<SObject> m_exact; ///< of the present feature
};

CResult GeoJsonReader::Read(JsonView features, const SContext& context)
{
    m_reading.GoToPage(0, context);
    if (features.IsObject())
        TakeFeature(features);
    for (JsonItems items(features.IsArray() ? features : JsonView()); items.Next() && !m_reading.IsFull();)
        TakeFeature(items.Value());
    return m_reading.Finish();
}

void GeoJsonReader::TakeFeature(JsonView feature)
{
    const JsonView properties = feature["properties"];
    const JsonView geometry = feature["geometry"];
    SObject object;
    object.id = feature["id"].String().value_or(std::string());
    object.name = properties["name"].String().value_or(std::string());
    const std::string strClass = properties["classification"]["name"].String().value_or(std::string());
    std::string without = WithoutOthers(
        properties, {"objectType", "object_type", "name", "color", "isLocked", "classification", kShapeKey});
    if (!strClass.empty() && !object.name.empty())
        without = "It is read without: its class, " + strClass + '.';
    else if (object.name.empty())
        object.name = strClass;
    if (!without.empty())
        m_remarks.push_back({object.name, without});
    object.locked = properties["isLocked"].Bool().value_or(false);
    object.style.penColor = ReadColor(properties["color"]);
    m_exact = ReadShape(properties[kShapeKey]);
    TakeGeometry(geometry, geometry["type"].String().value_or(std::string()), object);
}

void GeoJsonReader::TakeGeometry(JsonView geometry, const std::string& type, const SObject& object)
{
    const JsonView coordinates = geometry["coordinates"];
    const bool bEllipse = geometry["isEllipse"].Bool().value_or(false);
    if (type == "Polygon")
        return TakePolygon(coordinates, bEllipse, object);
    if (type == "LineString")
        return TakePoints(ReadPoints(coordinates), type, false, object);
    if (type == "Point") {
        std::vector<double> point;
        const bool bPoint = AppendNumbers(coordinates, 2, point);
        return TakePoints(bPoint ? std::optional(point) : std::nullopt, type, false, object);
    }
    if (type != "MultiPolygon" && type != "MultiPoint")
        return m_reading.Skip(object.name,
                              "It is left out: a geometry of this kind is not known: " + type + '.');
    SObject part = object;
    for (JsonItems parts(coordinates); parts.Next() && !m_reading.IsFull(); part.id.clear()) {
        std::vector<double> point;
        if (type == "MultiPolygon")
            TakePolygon(parts.Value(), false, part);
        else if (AppendNumbers(parts.Value(), 2, point))
            TakePoints(point, "Point", false, part);
        else
            m_reading.Skip(object.name, kNotItsCoordinates);
    }
}

void GeoJsonReader::TakePolygon(JsonView rings, bool bEllipse, const SObject& object)
{
    JsonItems items(rings);
    if (!items.Next())
        return m_reading.Skip(object.name, kNotItsCoordinates);
    TakePoints(ReadRing(items.Value()), "Polygon", bEllipse, object);
    if (items.Next())
        m_remarks.push_back({object.name, "It is read without its holes."});
}

void GeoJsonReader::TakePoints(const std::optional<std::vector<double>>& points, const std::string& type,
                               bool bEllipse, SObject object)
{
    if (!points)
        return m_reading.Skip(object.name, kNotItsCoordinates);
    const bool bExact = m_exact && TypeOf(*m_exact) == type && OutlineOf(*m_exact) == *points;
    TakeShape(bExact ? *m_exact : FromCoordinates(type, bEllipse, *points), object);
    m_reading.Take(std::move(object));
}

/// The features of a file: an array, or one alone; null when it is something else.
JsonView FeaturesOf(JsonView root)
{
    if (root["type"].String() == "FeatureCollection")
        return root["features"].IsArray() ? root["features"] : JsonView();
    JsonItems items(root);
    const JsonView first = root.IsArray() && items.Next() ? items.Value() : root;
    return first["type"].String() == "Feature" ? root : JsonView();
}
} // namespace

bool IsGeoJson(const std::string& bytes, const std::string& /*fileName*/)
{
    return !FeaturesOf(JsonView(TrimJson(bytes))).IsNull();
}

CResult ReadGeoJson(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    JsonView root;
    CResult result = OpenJson(bytes, root);
    if (!result.IsSuccess())
        return result;
    const JsonView features = FeaturesOf(root);
    if (features.IsNull())
        return CResult::Failure("It is no GeoJSON file: it has no features.");
    return GeoJsonReader(document, remarks).Read(features, context);
}

CResult WriteGeoJson(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    const SPage& page = PageToWrite(document, context);
    TellPageLosses(document, page, remarks);
    TellOtherPages(document, page, remarks);
    JsonWriter json(bytes);
    json.Open('{');
    json.Name("type").String("FeatureCollection");
    json.Name("features").Open('[');
    for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
        if (CanBeWritten(*object, kKinds, remarks))
            WriteFeature(json, *object, remarks);
    }
    json.Close(']');
    json.Close('}');
    bytes += '\n';
    return CResult::Success();
}

} // namespace Vantor::Annotations
