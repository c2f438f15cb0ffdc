// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/JsonText_p.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

/// What the other programs' formats that are JSON share.
namespace Vantor::Annotations
{

/// The member in which a file keeps the exact shape beside what the format makes of it. It counts only while
/// that is still what this shape becomes: otherwise another program has changed it.
constexpr const char* kShapeKey = "vantor_shape";

/// The root of a whole file; it lives as long as the bytes.
CResult OpenJson(const std::string& bytes, JsonView& root);

/// Writes kShapeKey.
void WriteShape(JsonWriter& json, const SObject& object);
/// Kind, numbers and text of kShapeKey; nothing when it is none of ours.
std::optional<SObject> ReadShape(JsonView json);
/// Gives an object the kind, the numbers and the text of another one.
void TakeShape(const SObject& from, SObject& object);
/// Whether kind, numbers and text are the same.
bool IsSameShape(const SObject& a, const SObject& b);

/// A rectangle where the corners are those of an upright one, else a polygon. Not well formed for fewer than
/// three corners.
SObject FromOutline(std::vector<double> outline);

/// What the annotation is called in a file that needs a name; remarks that it has none.
std::string LabelOf(const SObject& object, Remarks& remarks);

/// "It is read without: a, b." with the names of all members that are neither known nor empty; empty when
/// there are none.
std::string WithoutOthers(JsonView object, std::initializer_list<std::string_view> known);

} // namespace Vantor::Annotations
