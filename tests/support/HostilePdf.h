// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/TestPdf.h"

#include <algorithm>

/// The object of a stream.
inline QByteArray Stream(const QByteArray& bytes, const QByteArray& entries = QByteArray())
{
    return "<< /Length " + QByteArray::number(bytes.size()) + " " + entries + " >>\nstream\n" + bytes +
           "\nendstream";
}

/// 10 x 10 points; object 2 has both pages, of which the second one is empty.
inline QByteArray TwoPages(const QByteArray& contents, const QByteArray& pageEntries,
                           const QList<QByteArray>& others, const QByteArray& catalogEntries = QByteArray())
{
    return MakePdf(
        QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R " + catalogEntries + " >>",
                          "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 10 10] >>",
                          "<< /Type /Page /Parent 2 0 R /Contents " + contents + pageEntries + " >>",
                          "<< /Type /Page /Parent 2 0 R >>"} +
        others);
}

/// A form that draws two forms that draw two forms, and so on: the first of two pages takes for ever.
inline QByteArray DoublingForms()
{
    constexpr int kDepth = 40;
    QList<QByteArray> lstForms;
    for (int i = 0; i < kDepth; ++i) {
        const QByteArray next = QByteArray::number(6 + std::min(i + 1, kDepth - 1));
        const QByteArray drawing = i + 1 < kDepth ? "/F Do /F Do" : "0 0 5 5 re f";
        lstForms << Stream(drawing,
                           "/Type /XObject /Subtype /Form /BBox [0 0 10 10] /Resources << /XObject << /F " +
                               next + " 0 R >> >>");
    }
    return TwoPages("5 0 R", "/Resources << /XObject << /F 6 0 R >> >>",
                    QList<QByteArray>{Stream("/F Do")} + lstForms);
}
