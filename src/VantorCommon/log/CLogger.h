// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

/// The level of a log message. Deliberate: the numbers are not sorted by severity, DEBUG comes second.
enum ELogLevel : int {
    NORMAL = 0,  ///< what was done
    DEBUG = 1,   ///< what a developer looks for
    WARNING = 2, ///< what may be wrong
    ERROR = 3,   ///< what has failed
};

/// The one logging call of the library. It holds no state: the messages go to CLogModel, which writes them to
/// the file of the day and shows them to the log views.
class VANTORCOMMON_EXPORT CLogger
{
public:
    /// Queues one message, formatted at once as printf does it; from any thread. The text is read as UTF-8,
    /// and cut to its first 1023 bytes without a report. A text that cannot be formatted is replaced by the
    /// format itself. After the log model's end, late in the exit of the process, the call does nothing.
    static void Write(ELogLevel level, const char* format, ...) __attribute__((format(printf, 2, 3)));
};
