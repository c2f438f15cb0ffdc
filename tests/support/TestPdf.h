// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QList>

/// A PDF document of these objects, without their "obj" and "endobj", of which the first is the catalogue.
inline QByteArray MakePdf(const QList<QByteArray>& objects)
{
    const QByteArray entries = QByteArray::number(objects.size() + 1);
    QByteArray pdf = "%PDF-1.4\n";
    QByteArray table = "xref\n0 " + entries + "\n0000000000 65535 f \n";
    for (int i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + table + "trailer\n<< /Size " + entries + " /Root 1 0 R >>\nstartxref\n" + start +
           "\n%%EOF\n";
}

/// A PDF document of one page.
/// @param pageEntries  entries of the page's dictionary, for instance "/MediaBox [0 0 100 60]"; it may
///                     refer to the objects in `others` as "5 0 R", "6 0 R" ...
/// @param drawing      the page's drawing operators
/// @param others       further objects, without "obj" and "endobj"
inline QByteArray MakeOnePagePdf(const QByteArray& pageEntries, const QByteArray& drawing = QByteArray(),
                                 const QList<QByteArray>& others = {})
{
    return MakePdf(QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R >>",
                                     "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                     "<< /Type /Page /Parent 2 0 R /Contents 4 0 R " + pageEntries + " >>",
                                     "<< /Length " + QByteArray::number(drawing.size()) + " >>\nstream\n" +
                                         drawing + "\nendstream"} +
                   others);
}
