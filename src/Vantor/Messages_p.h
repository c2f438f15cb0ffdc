// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

namespace Vantor
{

/// Hands a message to the sink of SetMessageSink. Any thread.
/// @param pSource  the library that reports it, such as "libpng"
void TellMessage(const char* pSource, const char* pText);

} // namespace Vantor
