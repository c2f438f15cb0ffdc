// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

/// The keys of the viewer's own settings among the library's.
namespace HostSettings
{
const auto kGeometry = QStringLiteral("HOST_GEOMETRY"); ///< of the window, base64
const auto kState = QStringLiteral("HOST_STATE");       ///< of its docks and tool bar, base64
const auto kLayout = QStringLiteral("HOST_LAYOUT");     ///< "1x1", "2x1" or "2x2"
const auto kRecentFiles = QStringLiteral("HOST_RECENT_FILES");
const auto kScheme = QStringLiteral("HOST_SCHEME");                ///< a CTheme::EScheme
const auto kDesktopScheme = QStringLiteral("HOST_DESKTOP_SCHEME"); ///< the desktop's last preference
const auto kLastStart = QStringLiteral("HOST_LAST_START");         ///< ISO date and time
const auto kAutoSave = QStringLiteral("HOST_AUTO_SAVE");           ///< of annotations, 1: on
const auto kMiniMap = QStringLiteral("HOST_MINIMAP");              ///< 1: shown
const auto kWheelPages = QStringLiteral("HOST_WHEEL_PAGES");       ///< 1: the wheel scrolls and turns pages
const auto kLogLevels = QStringLiteral("HOST_LOG_LEVELS");         ///< a row of CLogPanel's choice
const auto kBackground = QStringLiteral("HOST_BACKGROUND");        ///< 1: long work is jobs
const auto kCheckerboard = QStringLiteral("HOST_CHECKERBOARD");    ///< 1: below transparent images
const auto kOcrLanguage = QStringLiteral("HOST_OCR_LANGUAGE");     ///< such as "eng" or "eng+kor"
const auto kJpegQuality = QStringLiteral("HOST_JPEG_QUALITY");     ///< 1 to 100
const auto kAskUnsaved = QStringLiteral("HOST_ASK_UNSAVED");       ///< 1: before unsaved work is lost
const auto kReadAheadMemory = QStringLiteral("HOST_READ_AHEAD_MB");
const auto kPageMemory = QStringLiteral("HOST_PAGES_MB");
const auto kShortcuts = QStringLiteral("HOST_SHORTCUTS"); ///< see CActionKeys
const auto kReopen = QStringLiteral("HOST_REOPEN");       ///< open the last files again at the start; 1: on
const auto kSession = QStringLiteral("HOST_SESSION");     ///< the open files, see Session
} // namespace HostSettings
