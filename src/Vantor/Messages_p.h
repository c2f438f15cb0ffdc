// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

namespace Vantor
{

/// Hands a message to the sink of SetMessageSink. Any thread.
/// @param pSource  the library that reports it, such as "libpng"
void TellMessage(const char* pSource, const char* pText);

/// While it lives, messages of its thread go nowhere. At most one at a time in a thread.
class CNoMessages
{
public:
    CNoMessages();
    ~CNoMessages();
    CNoMessages(const CNoMessages&) = delete;
    CNoMessages& operator=(const CNoMessages&) = delete;
};

} // namespace Vantor
