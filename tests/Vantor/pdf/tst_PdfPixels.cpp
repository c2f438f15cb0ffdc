// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The pixels of every document of the tests are those that the renderer draws in this process.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QDir>
#include <QImage>

#include <cmath>
#include <cstring>
#include <memory>

#include <poppler-qt5.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
using DocumentPtr = std::unique_ptr<Poppler::Document>;

const QStringList kPasswords{QString(), QStringLiteral("view"), QStringLiteral("user"),
                             QString::fromUtf8("h\xc3\xb4tel")};

/// A password that opens it in this process, or a null string.
QString OpenHere(const QString& strPath, DocumentPtr& pDocument)
{
    for (const QString& strPassword : kPasswords) {
        for (const QByteArray& password : {strPassword.toUtf8(), strPassword.toLatin1()}) {
            pDocument.reset(Poppler::Document::load(strPath, password, password));
            if (pDocument && !pDocument->isLocked() && pDocument->numPages() > 0) {
                pDocument->setRenderHint(Poppler::Document::Antialiasing);
                pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
                return strPassword.isNull() ? QStringLiteral("") : strPassword;
            }
        }
    }
    return QString();
}

QImage DrawHere(Poppler::Document& document, int page, double dpi)
{
    const std::unique_ptr<Poppler::Page> pPage(document.page(page));
    const QSizeF points = pPage ? pPage->pageSizeF() : QSizeF();
    const auto pixels = [dpi](double length) {
        return static_cast<int>(std::ceil(length * dpi / 72.0 - 1e-6));
    };
    if (pixels(points.width()) < 1 || pixels(points.height()) < 1)
        return QImage();
    return pPage->renderToImage(dpi, dpi, 0, 0, pixels(points.width()), pixels(points.height()))
        .convertToFormat(QImage::Format_RGB888);
}

bool AreEqual(const CImage& image, const QImage& expected)
{
    if (image.GetWidth() != expected.width() || image.GetHeight() != expected.height())
        return false;
    for (int y = 0; y < expected.height(); ++y)
        if (std::memcmp(image.GetRows()[y], expected.constScanLine(y),
                        static_cast<std::size_t>(3 * expected.width())) != 0)
            return false;
    return true;
}
} // namespace

class tst_PdfPixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
    }

    void everyPageIsDrawnAsInThisProcess_data()
    {
        QTest::addColumn<QString>("path");
        for (const char* folder : {"pdf", "broken"}) {
            const QDir dir(TestDataPath(QString::fromLatin1(folder)));
            for (const QString& file : dir.entryList({QStringLiteral("*.pdf")}, QDir::Files))
                QTest::newRow(qPrintable(file)) << dir.filePath(file);
        }
    }

    void everyPageIsDrawnAsInThisProcess()
    {
        QFETCH(QString, path);
        DocumentPtr pDocument;
        const QString strPassword = OpenHere(path, pDocument);
        CPDFReader reader;
        const bool bOpen = reader.Read(path.toStdWString(), strPassword.toStdWString()) == 0;
        QCOMPARE(bOpen, !strPassword.isNull());
        QVERIFY(bOpen || path.contains(QStringLiteral("/broken/")));
        if (!bOpen)
            return;
        QCOMPARE(reader.GetPageNumber(), pDocument->numPages());
        for (const double dpi : {144.0, 50.5}) {
            reader.SetResolutionX(dpi);
            for (int page = 0; page < pDocument->numPages(); ++page) {
                CImage image;
                const QImage expected = DrawHere(*pDocument, page, dpi);
                QCOMPARE(reader.RenderPage(page, &image) == 0, !expected.isNull());
                QVERIFY2(AreEqual(image, expected), qPrintable(QString::number(page)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_PdfPixels)
#include "tst_PdfPixels.moc"
