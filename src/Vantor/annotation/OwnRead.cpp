// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/JsonText_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>
#include <Vantor/annotation/OwnFormat_p.h>

#include <QSet>
#include <QUuid>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr std::size_t kMaxUnknown = 1000; // members of one object
constexpr std::size_t kMaxMembers = 1100; // with the known ones
/// The names of all members that this version writes anywhere.
constexpr std::string_view kKnown = " format version readable_by generator saved source bytes sha256 pages "
                                    "page image width height dpi "
                                    "calibration unit x y origin objects id kind name named show_name locked "
                                    "visible box corner centre radius points "
                                    "numbers text style pen pen_width fill extra ";

/// The members of a JSON object while they are read: each once, each of its type. Absent ones leave their
/// variables alone.
class Members
{
public:
    explicit Members(JsonView object);

    /// The member, which is known from now on; nothing when there is none.
    std::optional<JsonView> Take(std::string_view name);
    template <class T, class F> void Read(std::string_view name, T& value, F read)
    {
        const std::optional<JsonView> view = Take(name);
        if (!view)
            return;
        if (const auto found = read(*view))
            value = *found;
        else
            Refuse(name);
    }
    void Read(std::string_view name, bool& bValue);
    void Read(std::string_view name, double& dValue, double dMin, double dMax);
    void Read(std::string_view name, int& nValue, int nMin, int nMax);
    void Read(std::string_view name, std::string& text); ///< at most kMaxText bytes
    void Refuse(std::string_view name);
    /// Members of a member that nobody knows.
    void AddUnknown(std::string_view name, const std::string& json);

    /// The first member that is there twice or of a wrong type; empty when all is well.
    const std::string& Bad() const { return m_strBad; }
    /// What has not been taken, as a JSON object; empty when there is nothing.
    std::string Unknown() const;

private:
    struct SMember {
        std::string name;
        std::string_view raw;
        JsonView value;
        bool bKnown = false;
    };
    std::vector<SMember> m_members;
    std::string m_strUnknown; ///< of members
    std::string m_strBad;
};

Members::Members(JsonView object)
{
    if (!object.IsObject())
        m_strBad = "{}";
    constexpr std::size_t kUsual = 12;
    m_members.reserve(kUsual);
    std::size_t nUnknown = 0;
    for (JsonItems items(object); items.Next() && m_strBad.empty();) {
        m_members.push_back({items.Name(), items.Raw(), items.Value()});
        nUnknown += kKnown.find(' ' + m_members.back().name + ' ') == std::string_view::npos;
        if (nUnknown > kMaxUnknown || m_members.size() > kMaxMembers)
            Refuse(m_members.back().name);
    }
    std::vector<std::string_view> names;
    names.reserve(m_members.size());
    for (const SMember& member : m_members)
        names.push_back(member.name);
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end())
        Refuse(*twice);
}

std::optional<JsonView> Members::Take(std::string_view name)
{
    for (SMember& member : m_members) {
        if (member.name == name) {
            member.bKnown = true;
            return member.value;
        }
    }
    return std::nullopt;
}

void Members::Read(std::string_view name, bool& bValue)
{
    Read(name, bValue, [](JsonView view) { return view.Bool(); });
}

void Members::Read(std::string_view name, double& dValue, double dMin, double dMax)
{
    Read(name, dValue, [=](JsonView view) {
        const std::optional<double> number = view.Number();
        return number && *number >= dMin && *number <= dMax ? number : std::nullopt;
    });
}

void Members::Read(std::string_view name, int& nValue, int nMin, int nMax)
{
    Read(name, nValue, [=](JsonView view) -> std::optional<int> {
        const std::optional<std::uint64_t> number = view.Whole();
        if (!number || *number < static_cast<unsigned>(nMin) || *number > static_cast<unsigned>(nMax))
            return std::nullopt;
        return static_cast<int>(*number);
    });
}

void Members::Read(std::string_view name, std::string& text)
{
    Read(name, text, [](JsonView view) {
        std::optional<std::string> found = view.String();
        return found && found->size() <= kMaxText ? found : std::nullopt;
    });
}

void Members::Refuse(std::string_view name)
{
    if (m_strBad.empty())
        m_strBad = name.empty() ? "\"\"" : std::string(name);
}

void Members::AddUnknown(std::string_view name, const std::string& json)
{
    if (json.empty())
        return;
    m_strUnknown += m_strUnknown.empty() ? "\"" : ",\"";
    m_strUnknown.append(name).append("\":").append(json);
}

std::string Members::Unknown() const
{
    std::string unknown = m_strUnknown;
    for (const SMember& member : m_members) {
        if (!member.bKnown)
            unknown.append(unknown.empty() ? "" : ",").append(member.raw);
    }
    return unknown.empty() ? unknown : '{' + unknown + '}';
}

std::optional<std::vector<double>> ReadNumbers(JsonView array)
{
    std::vector<double> numbers;
    for (JsonItems items(array); items.Next();) {
        const std::optional<double> number = items.Value().Number();
        if (!number)
            return std::nullopt;
        numbers.push_back(*number);
    }
    return array.IsArray() ? std::optional(std::move(numbers)) : std::nullopt;
}

/// Appends what a member holds; one that is absent, where it is needed, or ill-typed is refused.
void AppendMember(Members& members, const char* pName, std::size_t nCount, SObject& object)
{
    const std::optional<JsonView> view = members.Take(pName);
    if (!view || !AppendNumbers(*view, nCount, object.numbers))
        members.Refuse(pName);
}

void AppendMember(Members& members, const char* pName, SObject& object)
{
    const std::optional<JsonView> view = members.Take(pName);
    const std::optional<double> number = view ? view->Number() : std::nullopt;
    if (number)
        object.numbers.push_back(*number);
    else
        members.Refuse(pName);
}

/// The numbers in the form of the kind.
void ReadShape(Members& members, SObject& object)
{
    if (IsBox(object)) {
        AppendMember(members, "box", 4, object);
        if (const std::optional<JsonView> corner = members.Take("corner")) {
            if (!AppendNumbers(*corner, 2, object.numbers))
                members.Refuse("corner");
        }
    } else if (object.kind == "circle") {
        AppendMember(members, "centre", 2, object);
        AppendMember(members, "radius", object);
    } else if (IsBuiltIn(object)) {
        members.Read("points", object.numbers, ReadPoints);
        if (object.kind == "text")
            AppendMember(members, "height", object);
    } else if (const std::optional<JsonView> numbers = members.Take("numbers")) {
        members.Read("numbers", object.numbers, ReadNumbers);
    } else {
        members.Refuse("numbers");
    }
}

void ReadOrigin(Members& members, SCalibration& calibration)
{
    std::vector<double> numbers{calibration.originX, calibration.originY};
    members.Read("origin", numbers, ReadNumbers);
    if (numbers.size() != 2 || !(std::abs(numbers[0]) <= kMaxCoordinate) ||
        !(std::abs(numbers[1]) <= kMaxCoordinate))
        return members.Refuse("origin");
    calibration.originX = numbers[0];
    calibration.originY = numbers[1];
}

/// "#aarrggbb".
std::optional<std::uint32_t> ReadColor(JsonView view)
{
    const std::optional<std::string> text = view.String();
    if (!text || text->size() != 9 || text->front() != '#')
        return std::nullopt;
    std::uint32_t nColor = 0;
    const char* pEnd = text->data() + text->size();
    const auto result = std::from_chars(text->data() + 1, pEnd, nColor, 16);
    return result.ec == std::errc() && result.ptr == pEnd ? std::optional(nColor) : std::nullopt;
}

void ReadStyle(Members& object, SStyle& style)
{
    const std::optional<JsonView> view = object.Take("style");
    if (!view)
        return;
    Members members(*view);
    members.Read("pen", style.penColor, ReadColor);
    members.Read("pen_width", style.penWidth, 0.0, kMaxCoordinate);
    members.Read("fill", style.fillColor, ReadColor);
    if (!members.Bad().empty())
        object.Refuse("style");
    object.AddUnknown("style", members.Unknown());
}

class OwnReader
{
public:
    OwnReader(SDocument& document, Remarks& remarks) : m_document(document), m_remarks(remarks) {}

    CResult Read(JsonView root);

private:
    CResult Damaged(const Members& members, const std::string& place) const;
    CResult ReadSource(Members& document);
    CResult ReadPage(JsonView view);
    CResult ReadObjects(JsonView array, std::vector<SObject>& objects);
    bool ReadObject(JsonView view, SObject& object) const;
    void Identify(SObject& object);
    void TellCounts();

    SDocument& m_document;
    Remarks& m_remarks;
    QSet<QUuid> m_ids;
    std::size_t m_nObjects = 0;
    std::size_t m_nNumbers = 0;
    std::size_t m_nRaw = 0;
    std::size_t m_nRenewed = 0;
};

CResult OwnReader::Damaged(const Members& members, const std::string& place) const
{
    if (members.Bad().empty())
        return CResult::Success();
    return CResult::Failure(m_document.IsReadOnly()
                                ? "It is of a later version, which this one cannot read."
                                : "It is damaged: \"" + members.Bad() + "\" of " + place + " is wrong.");
}

CResult OwnReader::Read(JsonView root)
{
    Members members(root);
    std::string strFormat;
    members.Read("format", strFormat);
    if (strFormat != kOwnMark)
        return CResult::Failure("It is not a file of annotations of this format.");
    members.Read("version", m_document.version, 1, INT_MAX);
    m_document.readableBy = m_document.version;
    members.Read("readable_by", m_document.readableBy, 1, INT_MAX);
    members.Read("generator", m_document.generator);
    members.Read("saved", m_document.saved);
    CResult result = ReadSource(members);
    const std::optional<JsonView> pages = members.Take("pages");
    if (!pages || !pages->IsArray())
        members.Refuse("pages");
    if (result.IsSuccess())
        result = Damaged(members, "the file");
    if (!result.IsSuccess())
        return result;
    for (JsonItems items(*pages); items.Next() && result.IsSuccess();)
        result = ReadPage(items.Value());
    m_document.unknown = members.Unknown();
    TellCounts();
    return result;
}

CResult OwnReader::ReadSource(Members& document)
{
    const std::optional<JsonView> view = document.Take("source");
    if (!view)
        return CResult::Success();
    SSource& source = m_document.source;
    Members members(*view);
    members.Read("name", source.name);
    members.Read("bytes", source.bytes, [](JsonView number) { return number.Whole(); });
    members.Read("sha256", source.sha256);
    if (!IsDigest(source.sha256))
        members.Refuse("sha256");
    document.AddUnknown("source", members.Unknown());
    return Damaged(members, "\"source\"");
}

CResult OwnReader::ReadPage(JsonView view)
{
    const std::string strPlace = "page " + std::to_string(m_document.pages.size() + 1);
    if (m_document.pages.size() == kMaxPages)
        return CResult::Failure("It has too many pages.");
    SPage page;
    Members members(view);
    members.Read("page", page.page, 0, INT_MAX);
    members.Read("image", page.image);
    members.Read("width", page.width, 0, INT_MAX);
    members.Read("height", page.height, 0, INT_MAX);
    members.Read("dpi", page.dpi, 0.0, kMaxCoordinate);
    if (const std::optional<JsonView> calibration = members.Take("calibration")) {
        page.calibration.emplace();
        Members sizes(*calibration);
        sizes.Read("unit", page.calibration->unit);
        sizes.Read("x", page.calibration->x, kMinPixelSize, kMaxCoordinate);
        sizes.Read("y", page.calibration->y, kMinPixelSize, kMaxCoordinate);
        ReadOrigin(sizes, *page.calibration);
        if (!sizes.Bad().empty())
            members.Refuse("calibration");
        members.AddUnknown("calibration", sizes.Unknown());
    }
    const std::optional<JsonView> objects = members.Take("objects");
    if (objects && !objects->IsArray())
        members.Refuse("objects");
    CResult result = Damaged(members, strPlace);
    if (result.IsSuccess() && objects)
        result = ReadObjects(*objects, page.objects);
    page.unknown = members.Unknown();
    m_document.pages.push_back(std::move(page));
    return result;
}

CResult OwnReader::ReadObjects(JsonView array, std::vector<SObject>& objects)
{
    for (JsonItems items(array); items.Next();) {
        if (++m_nObjects > kMaxObjects)
            return CResult::Failure("It has too many annotations.");
        SObject object;
        if (ReadObject(items.Value(), object)) {
            Identify(object);
        } else {
            object = SObject();
            object.raw = items.Value().Raw();
            ++m_nRaw;
        }
        m_nNumbers += object.numbers.size();
        if (m_nNumbers > kMaxNumbers)
            return CResult::Failure("Its annotations have too many points.");
        objects.push_back(std::move(object));
    }
    return CResult::Success();
}

bool OwnReader::ReadObject(JsonView view, SObject& object) const
{
    Members members(view);
    members.Read("kind", object.kind);
    if (object.kind.empty() || !members.Bad().empty())
        return false;
    members.Read("id", object.id);
    members.Read("name", object.name);
    object.named = !object.name.empty();
    members.Read("named", object.named);
    members.Read("show_name", object.showName);
    members.Read("locked", object.locked);
    members.Read("visible", object.visible);
    members.Read("text", object.text);
    ReadShape(members, object);
    ReadStyle(members, object.style);
    if (const std::optional<JsonView> extra = members.Take("extra"))
        object.extra = extra->Raw();
    object.unknown = members.Unknown();
    return members.Bad().empty() && IsWellFormed(object);
}

/// Gives an identity to an annotation that has none of its own.
void OwnReader::Identify(SObject& object)
{
    QUuid id = QUuid::fromString(QLatin1String(object.id.data(), static_cast<int>(object.id.size())));
    if (id.isNull() || m_ids.contains(id)) {
        m_nRenewed += !object.id.empty();
        id = QUuid::createUuid();
    }
    object.id = id.toByteArray(QUuid::WithoutBraces).toStdString();
    m_ids.insert(id);
}

void OwnReader::TellCounts()
{
    if (m_document.IsReadOnly())
        m_remarks.push_back({"", "It was saved by a later version; this one only shows it."});
    if (m_nRaw > 0)
        m_remarks.push_back({"", "Annotations that this version does not understand: " +
                                     std::to_string(m_nRaw) + ". They are kept, not shown."});
    if (m_nRenewed > 0)
        m_remarks.push_back({"", "Annotations whose identity was another one's or none: " +
                                     std::to_string(m_nRenewed) + ". They have new ones."});
}
} // namespace

bool IsOwn(const std::string& bytes, const std::string& /*fileName*/)
{
    return JsonView(TrimJson(bytes))["format"].String() == kOwnMark;
}

CResult ReadOwn(const std::string& bytes, const SContext& /*context*/, SDocument& document, Remarks& remarks)
{
    const std::string_view text = TrimJson(bytes);
    const CResult result = CheckJson(text, kMaxDepth);
    return result.IsSuccess() ? OwnReader(document, remarks).Read(JsonView(text)) : result;
}

} // namespace Vantor::Annotations
