// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <memory>
#include <vector>

/// Between the objects of a geometry model and the annotations of a file. GUI thread only.
namespace AnnotationDocument
{
using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
using ObjectList = std::vector<ObjectPtr>;

/// What a file keeps of an object. Its kind is empty when files leave that kind out.
Vantor::Annotations::SObject WriteObject(const CImageView2DDrawableObject& object);
/// The object, unselected; null when this program cannot paint its kind or its numbers.
ObjectPtr ReadObject(const Vantor::Annotations::SObject& object);

/// The shape of an object as numbers and text.
SShapeData ShapeOf(const CImageView2DDrawableObject& object);
/// Gives an object another shape of its own kind. @return false, and nothing changed, when there is none with
///         these numbers
bool ChangeShape(CImageView2DDrawableObject& object, const SShapeData& data);

/// Reads the objects of a page. What cannot be painted stays in the page as it is; of every other object only
/// its id and its unknown members stay, to mark its place.
ObjectList Unpack(Vantor::Annotations::SPage& page);
/// How many annotations Unpack has left in the page because they cannot be painted.
int CountKept(const Vantor::Annotations::SPage& page);
/// The page with the objects, and with what Unpack has left in it: behind the object that stood above it.
Vantor::Annotations::SPage Pack(const Vantor::Annotations::SPage& page, const ObjectList& vctObjects);
} // namespace AnnotationDocument
