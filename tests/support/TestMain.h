// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QLoggingCategory>
#include <QtTest/QtTest>

#ifdef __SANITIZE_ADDRESS__
/// The leak checker names no frame of a library that has been unloaded; so nothing is unloaded.
extern "C" int dlclose(void*) noexcept
{
    return 0;
}
/// fontconfig keeps offsets instead of pointers: what it still holds at the end looks lost.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}
#endif

/// main() of a test of the core library: no display, no widgets.
#define VANTOR_CORE_TEST_MAIN(TestClass) QTEST_GUILESS_MAIN(TestClass)

/// main() of a test of the components: a QApplication with a fixed font. When a popup closes, Qt asks for a
/// frame that the window manager may just have removed: an X error that is nobody's fault and is not shown.
#define VANTOR_TEST_MAIN(TestClass)                                                                          \
    int main(int argc, char* argv[])                                                                         \
    {                                                                                                        \
        QApplication app(argc, argv);                                                                        \
        QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb.warning=false"));                        \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                             \
        app.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));                                                \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
