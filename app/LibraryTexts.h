// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

/// Translates the libraries' English messages into the user's language.
namespace LibraryTexts
{
/// Translates a message of a viewer: the failure, then the reason. Unknown parts stay unchanged.
QString Failure(const QString& strMessage);
/// Translates a reason, or a note on an image; an unknown one stays unchanged.
QString Sentence(const QString& strSentence);
} // namespace LibraryTexts
