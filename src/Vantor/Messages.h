// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

namespace Vantor
{

/// Takes one message: English, without a line end, valid during the call. Must not throw.
using MessageSink = void (*)(const char* text);

/// Says where the messages of the libraries that read and write files go, such as warnings about damaged
/// files; of each file the first one is told. Any thread; the sink is called on the thread that reads or
/// writes.
/// @param sink  null, as at the start, drops them
VANTOR_EXPORT void SetMessageSink(MessageSink sink);

} // namespace Vantor
