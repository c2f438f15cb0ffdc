// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/Messages.h>

#include <Vantor/Messages_p.h>

#include <atomic>
#include <cstdio>

namespace Vantor
{

namespace
{
constexpr std::size_t kMostBytes = 512;

std::atomic<MessageSink> g_pSink{nullptr};
thread_local bool t_bSilent = false;
} // namespace

CNoMessages::CNoMessages()
{
    t_bSilent = true;
}

CNoMessages::~CNoMessages()
{
    t_bSilent = false;
}

void SetMessageSink(MessageSink sink)
{
    g_pSink = sink;
}

void TellMessage(const char* pSource, const char* pText)
{
    const MessageSink pSink = g_pSink;
    if (!pSink || t_bSilent)
        return;
    char message[kMostBytes];
    std::snprintf(message, sizeof(message), "%s: %s", pSource, pText);
    pSink(message);
}

} // namespace Vantor
