// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Documents that promise more objects than they can hold, and honest ones that look like it.
#include "tests/support/TestMain.h"
#include "tests/support/TestPdf.h"

#include <Vantor/pdf/CPDFReader.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <string>

using Vantor::Utils::CPDFReader;

namespace
{
constexpr int kAttached = 1000000; // bytes
const QByteArray kPage = "/MediaBox [0 0 10 10]";

/// A document of one page whose table of objects is a stream with these entries besides those that it needs.
QByteArray MakePdfWithTableStream(const QByteArray& entries)
{
    const QList<QByteArray> objects = {"<< /Type /Catalog /Pages 2 0 R >>",
                                       "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                       "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 10 10] >>"};
    QByteArray pdf = "%PDF-1.5\n";
    QByteArray table(4, '\0');
    const auto addEntry = [&table](int nOffset) {
        table += QByteArray("\1", 1) + static_cast<char>(nOffset >> 8) + static_cast<char>(nOffset) +
                 QByteArray(1, '\0');
    };
    for (int i = 0; i < objects.size(); ++i) {
        addEntry(pdf.size());
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    addEntry(pdf.size());
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "4 0 obj\n<< /W [1 2 1] /Index [0 5] /Root 1 0 R /Length " +
           QByteArray::number(table.size()) + ' ' + entries + " >>\nstream\n" + table +
           "\nendstream\nendobj\nstartxref\n" + start + "\n%%EOF\n";
}

/// A document with a file of 1 MB in it.
/// @param file    entries of the file's stream
/// @param others  further objects, 7 and on
QByteArray MakePdfWithAttachment(const QByteArray& file, const QList<QByteArray>& others = {})
{
    return MakeOnePagePdf(kPage, QByteArray(),
                          QList<QByteArray>{"<< /Type /Filespec /F (trailer.avi) /EF << /F 6 0 R >> >>",
                                            "<< /Type /EmbeddedFile " + file + " /Length " +
                                                QByteArray::number(kAttached) + " >>\nstream\n" +
                                                QByteArray(kAttached, 'x') + "\nendstream"} +
                              others);
}
} // namespace

class tst_PdfClaims : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClaimOfMoreObjectsThanTheFileCanHoldIsRefused_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("size") << QByteArray("/Size 5") << QByteArray("/Size 13000371");
        QTest::newRow("escaped size") << QByteArray("/Size 5") << QByteArray("/Si#7ae 13000371");
        QTest::newRow("part of the table") << QByteArray("xref\n0 5") << QByteArray("xref\n13000000 5");
        QTest::newRow("later part") << QByteArray("trailer") << QByteArray("5 13000000\ntrailer");
        QTest::newRow("number") << QByteArray("4 0 obj") << QByteArray("13000000 0 obj");
        QTest::newRow("index") << QByteArray("/Root") << QByteArray("/Index [0 5 13000000 1] /Root");
        QTest::newRow("beyond every integer")
            << QByteArray("/Size 5") << QByteArray("/Size 99999999999999999");
    }

    void aClaimOfMoreObjectsThanTheFileCanHoldIsRefused()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QByteArray pdf = MakeOnePagePdf(kPage);
        QVERIFY(pdf.contains(before));
        QCOMPARE(Read(pdf), int(CPDFReader::EReadResult_OK));
        QCOMPARE(Read(pdf.replace(before, after)), int(CPDFReader::EReadResult_NotAPdf));
    }

    void highObjectNumbersInASmallFileAreRead()
    {
        QByteArray pdf = MakeOnePagePdf(kPage);
        QCOMPARE(Read(pdf.replace("/Size 5", "/Size 400000")), int(CPDFReader::EReadResult_OK));
    }

    void theSizeOfAnAttachedFileIsNoClaim_data()
    {
        QTest::addColumn<QByteArray>("pdf");
        QTest::newRow("parameters") << MakePdfWithAttachment("/Params << /Size 1000000 >>");
        QTest::newRow("more parameters") << MakePdfWithAttachment(
            "/Subtype /video#2favi /Params << /ModDate (D:2026\\)>>) /Size 1000000 /CheckSum <00 ff> "
            "/CreationDate "
            "(x(y)z\\\\) /Mac << /Subtype 0 /Creator -1.5 >> /A [1 2 0 R true [null]] /B 9 0 R>>");
        QTest::newRow("parameters of their own")
            << MakePdfWithAttachment("/Params 7 0 R", {"<< /Size 1000000 /CheckSum (>>) >>"});
        QTest::newRow("a table as a stream")
            << MakePdfWithTableStream("/Size 5 /Type /XRef /Note << /Size 1000000 >>");
    }

    void theSizeOfAnAttachedFileIsNoClaim()
    {
        QFETCH(QByteArray, pdf);
        QCOMPARE(Read(pdf), int(CPDFReader::EReadResult_OK));
    }

    void aClaimThatPretendsToBeAnAttachedFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("pdf");
        QTest::addColumn<bool>("opens"); // when it claims no more than it has
        const auto table = [](const char* pName, const QByteArray& entries, bool bOpens = true) {
            QTest::newRow(pName) << MakePdfWithTableStream(entries) << bOpens;
        };
        table("a plain table", "/Type /XRef /Size 8388600");
        table("no type", "/Size 8388600");
        table("an end in a string", "/Size 8388600 /X (>> endobj)");
        table("an end as a value", "/Size 8388600 /X >> endobj");
        table("an end in a list", "/Size 8388600 /X [ >> /Y ]");
        table("an end in a comment", "/Size 8388600 % >> endobj\n");
        table("a comment at the end", "/Size 8388600 >> % endobj\n<<", false);
        table("an end within hexadecimal digits", "/Size 8388600 /X < >> endobj >");
        table("a stray bracket", "/Size 8388600 /X )", false);
        table("nested too deeply", "/Size 8388600 /X " + QByteArray(40, '[') + QByteArray(40, ']'));
        table("nested without an end", "/Size 8388600 /X " + QByteArray(100000, '['), false);
        const auto trailer = [](const char* pName, const QByteArray& entries) {
            const QByteArray pdf = MakeOnePagePdf(kPage);
            QTest::newRow(pName) << QByteArray(pdf).replace("trailer\n<< /Size 5", "trailer\n" + entries)
                                 << true;
        };
        trailer("a trailer", "<< /Size 8388600");
        trailer("a trailer of two sizes", "<< /Size 5 /Size 8388600");
        trailer("a trailer with an end as a value", "<< /X >> /Size 8388600");
        trailer("a trailer behind another word", "<< /X (trailer startxref) /Size 8388600");
        trailer("a trailer behind a comment", "%\n<< /Size 8388600");
        trailer("a trailer before another key", "<< /Size 8388600 /Root 1 0 R >> /X <<");
    }

    void aClaimThatPretendsToBeAnAttachedFileIsRefused()
    {
        QFETCH(QByteArray, pdf);
        QFETCH(bool, opens);
        QCOMPARE(Read(pdf), int(CPDFReader::EReadResult_NotAPdf));
        QVERIFY(pdf.contains("8388600"));
        if (opens)
            QCOMPARE(Read(pdf.replace("8388600", "      5")), int(CPDFReader::EReadResult_OK));
    }

    void manyClaimsAreLookedAtInTimeThatGrowsWithTheFile()
    {
        QByteArray sizes;
        for (int i = 0; i < 200000; ++i)
            sizes += "/Size 99999999 ";
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(Read(MakeOnePagePdf(kPage, QByteArray(), {"<< /A << " + sizes + " >> >>"})),
                 int(CPDFReader::EReadResult_NotAPdf));
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    int Read(const QByteArray& pdf)
    {
        CPDFReader reader;
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size())
            return -1;
        file.close();
        return reader.Read(m_path.toStdWString(), std::wstring());
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("claims.pdf"));
};

VANTOR_CORE_TEST_MAIN(tst_PdfClaims)
#include "tst_PdfClaims.moc"
