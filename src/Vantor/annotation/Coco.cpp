// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ForeignJson_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

#include <climits>
#include <unordered_map>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kKinds = " rectangle ellipse circle polygon ";
constexpr const char* kPageKey = "vantor_page"; ///< SPage::page of an image that is a page of a document
constexpr const char* kNoShape = "It is left out: it has neither corners nor a box.";

/// Writes the annotations of all pages; collects the categories, which follow them.
class CocoWriter
{
public:
    CocoWriter(std::string& bytes, Remarks& remarks) : m_json(bytes), m_remarks(remarks) {}

    void Write(const SDocument& document, const SContext& context);

private:
    void Image(const SPage& page, const std::string& name, const SContext& context);
    void Annotation(const SObject& object);
    std::uint64_t CategoryOf(const std::string& label);

    JsonWriter m_json;
    Remarks& m_remarks;
    std::uint64_t m_nImages = 0;
    std::uint64_t m_nAnnotations = 0;
    std::vector<std::string> m_categories;
    std::unordered_map<std::string, std::uint64_t> m_ids; ///< of categories
};

void CocoWriter::Image(const SPage& page, const std::string& name, const SContext& context)
{
    m_json.NewLine();
    m_json.Open('{');
    m_json.Name("id").Whole(++m_nImages);
    m_json.Name("width").Whole(static_cast<std::int64_t>(WidthOf(page, context)));
    m_json.Name("height").Whole(static_cast<std::int64_t>(HeightOf(page, context)));
    m_json.Name("file_name").String(name);
    if (page.page > 0)
        m_json.Name(kPageKey).Whole(static_cast<std::int64_t>(page.page));
    m_json.Close('}');
}

std::uint64_t CocoWriter::CategoryOf(const std::string& label)
{
    const auto [found, bNew] = m_ids.emplace(label, m_ids.size() + 1);
    if (bNew)
        m_categories.push_back(label);
    return found->second;
}

void CocoWriter::Annotation(const SObject& object)
{
    const SBounds box = BoundsOf(object);
    if (!(box.Width() > 0.0 && box.Height() > 0.0))
        return m_remarks.push_back({object.name, "It is left out: it has no width or no height."});
    const std::vector<double> outline = OutlineOf(object);
    m_json.NewLine();
    m_json.Open('{');
    m_json.Name("id").Whole(++m_nAnnotations);
    m_json.Name("image_id").Whole(m_nImages);
    m_json.Name("category_id").Whole(CategoryOf(LabelOf(object, m_remarks)));
    m_json.Name("iscrowd").Whole(std::uint64_t{0});
    m_json.Name("area").Number(AreaOf(object));
    m_json.Name("bbox").Open('[');
    for (const double dNumber : {box.left, box.top, box.Width(), box.Height()})
        m_json.Number(dNumber);
    m_json.Close(']');
    m_json.Name("segmentation").Open('[');
    m_json.Open('[');
    for (const double dNumber : outline)
        m_json.Number(dNumber);
    m_json.Close(']');
    m_json.Close(']');
    if (!IsSameShape(FromOutline(outline), Normalised(object)))
        WriteShape(m_json, Normalised(object));
    m_json.Close('}');
    TellKind(object, object.kind == "rectangle" ? "rectangle" : "polygon", m_remarks);
    TellLosses(object, Keeps_Nothing, m_remarks);
}

void CocoWriter::Write(const SDocument& document, const SContext& context)
{
    m_json.Open('{');
    m_json.Name("images").Open('[');
    for (const SPage& page : document.pages)
        Image(page, ImageNameOf(document, page, context), context);
    m_json.Close(']');
    m_json.NewLine();
    m_json.Name("annotations").Open('[');
    m_nImages = 0;
    for (const SPage& page : document.pages) {
        ++m_nImages;
        TellPageLosses(document, page, m_remarks);
        for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
            if (CanBeWritten(*object, kKinds, m_remarks))
                Annotation(*object);
        }
    }
    m_json.Close(']');
    m_json.NewLine();
    m_json.Name("categories").Open('[');
    for (std::size_t i = 0; i < m_categories.size(); ++i) {
        m_json.Open('{');
        m_json.Name("id").Whole(std::uint64_t{i + 1});
        m_json.Name("name").String(m_categories[i]);
        m_json.Name("supercategory").String("");
        m_json.Close('}');
    }
    m_json.Close(']');
    m_json.Close('}');
}

class CocoReader
{
public:
    CocoReader(SDocument& document, Remarks& remarks)
        : m_document(document), m_remarks(remarks), m_reading(document, remarks)
    {
    }
    CResult Read(JsonView root, const SContext& context);

private:
    CResult ReadImages(JsonView images, const SContext& context);
    void ReadCategories(JsonView categories);
    void SortByImage(JsonView annotations);
    void TakeAnnotation(JsonView view);
    void TakeRings(JsonView view, SObject object);
    void NameImages();

    SDocument& m_document;
    Remarks& m_remarks;
    CForeignReading m_reading;
    std::vector<SPage> m_pages;
    std::vector<std::vector<JsonView>> m_annotations; ///< of each page
    std::unordered_map<std::uint64_t, std::size_t> m_pageOf;
    std::unordered_map<std::uint64_t, std::string> m_categories;
};

int IntOf(JsonView view, int nOther)
{
    const std::optional<std::uint64_t> number = view.Whole();
    return number && *number <= INT_MAX ? static_cast<int>(*number) : nOther;
}

CResult CocoReader::ReadImages(JsonView images, const SContext& context)
{
    std::size_t nNoNumber = 0;
    for (JsonItems items(images); items.Next();) {
        const std::optional<std::uint64_t> id = items.Value()["id"].Whole();
        if (!id || !m_pageOf.emplace(*id, m_pages.size()).second) {
            ++nNoNumber;
            continue;
        }
        if (m_pages.size() == kMaxPages)
            return CResult::Failure("It has too many images.");
        SPage page;
        page.image = items.Value()["file_name"].String().value_or(std::string()).substr(0, kMaxText);
        page.page = IntOf(items.Value()[kPageKey], 0);
        page.width = IntOf(items.Value()["width"], context.width);
        page.height = IntOf(items.Value()["height"], context.height);
        m_pages.push_back(std::move(page));
    }
    if (nNoNumber > 0)
        m_remarks.push_back({"", "Images without a number of their own: " + std::to_string(nNoNumber) +
                                     ". They are left out."});
    m_annotations.resize(m_pages.size());
    return CResult::Success();
}

void CocoReader::ReadCategories(JsonView categories)
{
    for (JsonItems items(categories); items.Next() && m_categories.size() < kMaxPages;) {
        if (const std::optional<std::uint64_t> id = items.Value()["id"].Whole())
            m_categories.emplace(*id, items.Value()["name"].String().value_or(std::string()));
    }
}

void CocoReader::SortByImage(JsonView annotations)
{
    for (JsonItems items(annotations); items.Next() && !m_reading.IsFull();) {
        const std::optional<std::uint64_t> image = items.Value()["image_id"].Whole();
        const auto found = image ? m_pageOf.find(*image) : m_pageOf.end();
        if (found == m_pageOf.end())
            m_reading.Skip(std::string(), "It is left out: its image is not in the file.");
        else
            m_annotations[found->second].push_back(items.Value());
    }
}

void CocoReader::TakeAnnotation(JsonView view)
{
    SObject object;
    const auto category = m_categories.find(view["category_id"].Whole().value_or(0));
    if (category != m_categories.end())
        object.name = category->second;
    const std::string without = WithoutOthers(
        view, {"id", "image_id", "category_id", "iscrowd", "bbox", "area", "segmentation", kShapeKey});
    if (!without.empty())
        m_remarks.push_back({object.name, without});
    const JsonView rings = view["segmentation"];
    if (rings.IsObject())
        return m_reading.Skip(object.name, "It is left out: it is a mask.");
    if (rings.IsArray() && JsonItems(rings).Next())
        return TakeRings(view, std::move(object));
    std::vector<double> box;
    if (!AppendNumbers(view["bbox"], 4, box) || box[2] < 0.0 || box[3] < 0.0)
        return m_reading.Skip(object.name, kNoShape);
    object.kind = "rectangle";
    object.numbers = std::move(box);
    m_reading.Take(std::move(object));
}

/// Each ring is a polygon; a single one may be an exact shape.
void CocoReader::TakeRings(JsonView view, SObject object)
{
    const std::optional<SObject> exact = ReadShape(view[kShapeKey]);
    for (JsonItems rings(view["segmentation"]); rings.Next() && !m_reading.IsFull();) {
        std::vector<double> outline;
        for (JsonItems numbers(rings.Value()); numbers.Next();)
            outline.push_back(numbers.Value().Number().value_or(2.0 * kMaxCoordinate));
        if (exact && OutlineOf(*exact) == outline)
            TakeShape(*exact, object);
        else
            TakeShape(FromOutline(std::move(outline)), object);
        m_reading.Take(object);
    }
}

/// A file about pages of one image names it once.
void CocoReader::NameImages()
{
    for (const SPage& page : m_pages) {
        if (page.image != m_pages.front().image)
            return;
    }
    m_document.source.name = m_pages.empty() ? std::string() : m_pages.front().image;
    for (SPage& page : m_pages)
        page.image.clear();
}

CResult CocoReader::Read(JsonView root, const SContext& context)
{
    CResult result = ReadImages(root["images"], context);
    if (!result.IsSuccess())
        return result;
    ReadCategories(root["categories"]);
    SortByImage(root["annotations"]);
    NameImages();
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        m_reading.BeginPage(std::move(m_pages[i]));
        for (const JsonView view : m_annotations[i]) {
            if (!m_reading.IsFull())
                TakeAnnotation(view);
        }
    }
    return m_reading.Finish();
}
} // namespace

bool IsCoco(const std::string& bytes, const std::string& /*fileName*/)
{
    const JsonView root{TrimJson(bytes)};
    return root["images"].IsArray() && root["annotations"].IsArray();
}

CResult ReadCoco(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    JsonView root;
    CResult result = OpenJson(bytes, root);
    if (!result.IsSuccess())
        return result;
    if (!root["images"].IsArray() || !root["annotations"].IsArray())
        return CResult::Failure("It is no COCO file: it has no images or no annotations.");
    return CocoReader(document, remarks).Read(root, context);
}

CResult WriteCoco(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks)
{
    CocoWriter(bytes, remarks).Write(document, context);
    bytes += '\n';
    return CResult::Success();
}

} // namespace Vantor::Annotations
