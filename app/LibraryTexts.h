// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

/// What the libraries say, which they do in English, in the user's language.
namespace LibraryTexts
{
/// A message of a viewer: what failed, and the reason behind it. Parts that are not known stay as they are.
QString Failure(const QString& strMessage);
/// A reason, or a note on an image; as it is when it is not known.
QString Sentence(const QString& strSentence);
} // namespace LibraryTexts
