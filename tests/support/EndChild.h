// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstdlib>
#include <sys/resource.h>
#include <unistd.h>

/// Ends a forked child without the clean-up of the parent's objects. What it has covered would be lost so:
/// where that is measured it ends in good order, and may write files again.
[[noreturn]] inline void EndChild(int nStatus)
{
#ifdef VANTOR_COVERAGE
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::exit(nStatus);
#else
    ::_exit(nStatus);
#endif
}
