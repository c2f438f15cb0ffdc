// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

namespace Vantor
{

/// Takes one message: English, without a line end, valid during the call. Must not throw.
using MessageSink = void (*)(const char* text);

/// Sets where messages of the libraries that read and write files go, such as warnings about damaged ones.
/// The sink receives the first message about each file, on the thread that reads or writes. Any thread.
/// @param sink  null drops them, which is the default
VANTOR_EXPORT void SetMessageSink(MessageSink sink);

} // namespace Vantor
