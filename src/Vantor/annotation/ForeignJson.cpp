// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ForeignJson_p.h>

#include <Vantor/annotation/ObjectOutline_p.h>

#include <algorithm>

namespace Vantor::Annotations
{

namespace
{
constexpr std::size_t kMostNamed = 10; // members in one remark
constexpr std::size_t kLongestNamed = 40;

bool IsUpright(const std::vector<double>& n)
{
    return n.size() == 8 && ((n[1] == n[3] && n[2] == n[4] && n[5] == n[7] && n[6] == n[0]) ||
                             (n[0] == n[2] && n[3] == n[5] && n[4] == n[6] && n[7] == n[1]));
}

bool IsEmpty(JsonView view)
{
    return view.IsNull() || view.Raw() == "\"\"" || view.Raw() == "false" ||
           ((view.IsObject() || view.IsArray()) && !JsonItems(view).Next());
}
} // namespace

CResult OpenJson(const std::string& bytes, JsonView& root)
{
    const std::string_view text = TrimJson(bytes);
    root = JsonView(text);
    return CheckJson(text, kMaxDepth);
}

void WriteShape(JsonWriter& json, const SObject& object)
{
    json.Name(kShapeKey).Open('{');
    json.Name("kind").String(object.kind);
    json.Name("numbers").Open('[');
    for (const double dNumber : object.numbers)
        json.Number(dNumber);
    json.Close(']');
    if (!object.text.empty())
        json.Name("text").String(object.text);
    json.Close('}');
}

std::optional<SObject> ReadShape(JsonView json)
{
    SObject object;
    object.kind = json["kind"].String().value_or(std::string());
    object.text = json["text"].String().value_or(std::string());
    for (JsonItems items(json["numbers"]); items.Next();)
        object.numbers.push_back(items.Value().Number().value_or(2.0 * kMaxCoordinate));
    const bool bOurs = IsBuiltIn(object) && IsWellFormed(object) && object.text.size() <= kMaxText;
    return bOurs ? std::optional(std::move(object)) : std::nullopt;
}

void TakeShape(const SObject& from, SObject& object)
{
    object.kind = from.kind;
    object.numbers = from.numbers;
    object.text = from.text;
}

bool IsSameShape(const SObject& a, const SObject& b)
{
    return a.kind == b.kind && a.numbers == b.numbers && a.text == b.text;
}

SObject FromOutline(std::vector<double> outline)
{
    SObject object;
    object.kind = IsUpright(outline) ? "rectangle" : "polygon";
    object.numbers = IsUpright(outline) ? NumbersOf(BoundsOfPoints(outline)) : std::move(outline);
    return object;
}

std::string LabelOf(const SObject& object, Remarks& remarks)
{
    if (!object.name.empty())
        return object.name;
    remarks.push_back({"", "An annotation without a name is called by its kind: " + object.kind + "."});
    return object.kind;
}

std::string WithoutOthers(JsonView object, std::initializer_list<std::string_view> known)
{
    std::string text;
    std::size_t nNamed = 0;
    for (JsonItems items(object); items.Next() && nNamed < kMostNamed;) {
        const std::string name = items.Name();
        if (std::find(known.begin(), known.end(), name) != known.end() || IsEmpty(items.Value()))
            continue;
        text += (nNamed++ == 0 ? "It is read without: " : ", ") + name.substr(0, kLongestNamed);
    }
    return text.empty() ? text : text + '.';
}

} // namespace Vantor::Annotations
