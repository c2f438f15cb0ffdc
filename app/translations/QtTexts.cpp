// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// Qt's texts that the host shows. Qt's own translations, if installed, take precedence; these serve the
// languages that Qt lacks. lupdate reads this file, nothing compiles it.
#include <QtGlobal>

[[maybe_unused]] static const char* const kQtTexts[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Usage: %1"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "[options]"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Options:"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Arguments:"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Missing value after '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unexpected value after '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown option '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown options: %1."),
    QT_TRANSLATE_NOOP("QDockWidget", "Close"),
    QT_TRANSLATE_NOOP("QDockWidget", "Closes the dock widget"),
    QT_TRANSLATE_NOOP("QDockWidget", "Float"),
    QT_TRANSLATE_NOOP("QDockWidget", "Undocks and re-attaches the dock widget"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
};
