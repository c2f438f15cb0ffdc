// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

class QByteArray;

namespace Vantor::Utils
{

/// Whether the document claims more objects than a file of its length can honestly hold. The renderer
/// allocates 40 bytes for each object that a table of objects (/Size of a trailer or of a stream, /Index, a
/// part of an xref table) or an object's own number claims, before it has read any.
bool ClaimsTooManyObjects(const QByteArray& pdf);

} // namespace Vantor::Utils
