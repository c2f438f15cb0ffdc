// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// The menu texts and the names of the library's kinds of annotations. lupdate reads this file, nothing
// compiles it.
#include <QtGlobal>

[[maybe_unused]] static const char* const kShapeTexts[] = {
    QT_TRANSLATE_NOOP("ShapeKinds", "&Rectangle"), QT_TRANSLATE_NOOP("ShapeKinds", "&Circle"),
    QT_TRANSLATE_NOOP("ShapeKinds", "&Ellipse"),   QT_TRANSLATE_NOOP("ShapeKinds", "&Polygon"),
    QT_TRANSLATE_NOOP("ShapeKinds", "&Arrow"),     QT_TRANSLATE_NOOP("ShapeKinds", "&Text"),
    QT_TRANSLATE_NOOP("ShapeKinds", "Rectangle"),  QT_TRANSLATE_NOOP("ShapeKinds", "Circle"),
    QT_TRANSLATE_NOOP("ShapeKinds", "Ellipse"),    QT_TRANSLATE_NOOP("ShapeKinds", "Polygon"),
    QT_TRANSLATE_NOOP("ShapeKinds", "Arrow"),      QT_TRANSLATE_NOOP("ShapeKinds", "Text"),
    QT_TRANSLATE_NOOP("ShapeKinds", "Ruler"),      QT_TRANSLATE_NOOP("ShapeKinds", "Line"),
    QT_TRANSLATE_NOOP("ShapeKinds", "Point"),      QT_TRANSLATE_NOOP("ShapeKinds", "GeometryArray"),
    QT_TRANSLATE_NOOP("ShapeKinds", "&Scale Bar"), QT_TRANSLATE_NOOP("ShapeKinds", "ScaleBar"),
};
