// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// A PDF page at 144 dpi: CPDFReader::RenderPage against poppler's own rendering of the same page.
#include "bench/BenchSupport.h"
#include "tests/support/TestPdf.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>

#include <poppler-qt5.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr double kDpi = 144.0;
constexpr int kScanWidth = 2480; // A4 at 300 dpi
constexpr int kScanHeight = 3508;
const char kA4[] = "/MediaBox [0 0 595 842] ";

/// A page full of text: 56 lines of 90 characters.
QByteArray TextPage()
{
    QByteArray drawing = "BT /F1 10 Tf 14 TL 40 800 Td\n";
    for (int nLine = 0; nLine < 56; ++nLine) {
        QByteArray text;
        for (int i = 0; i < 90; ++i)
            text += i % 7 == 6 ? ' ' : static_cast<char>('a' + (nLine * 31 + i * 17) % 26);
        drawing += "(" + text + ") Tj T*\n";
    }
    return MakeOnePagePdf(QByteArray(kA4) + "/Resources << /Font << /F1 5 0 R >> >>", drawing + "ET",
                          {"<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman >>"});
}

/// A scanned page: one JPEG image over the whole page.
QByteArray ScanPage()
{
    QImage scan(kScanWidth, kScanHeight, QImage::Format_RGB888);
    for (int y = 0; y < kScanHeight; ++y)
        for (int x = 0; x < kScanWidth; ++x)
            scan.setPixel(x, y, qRgb(200 + (x / 16 + y / 16) % 50, 255 - (x * y / 997) % 60, 210 + x % 40));
    QBuffer jpeg;
    jpeg.open(QIODevice::WriteOnly);
    if (!scan.save(&jpeg, "JPEG", 85))
        std::abort();
    const QByteArray object = "<< /Type /XObject /Subtype /Image /Width " + QByteArray::number(kScanWidth) +
                              " /Height " + QByteArray::number(kScanHeight) +
                              " /ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /DCTDecode /Length " +
                              QByteArray::number(jpeg.data().size()) + " >>\nstream\n" + jpeg.data() +
                              "\nendstream";
    return MakeOnePagePdf(QByteArray(kA4) + "/Resources << /XObject << /I 5 0 R >> >>",
                          "595 0 0 842 0 0 cm /I Do", {object});
}

void RenderPage(benchmark::State& state, const QByteArray& pdf)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("page.pdf")));
    CPDFReader reader;
    if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size() || !file.flush() ||
        reader.Read(file.fileName().toStdWString(), std::wstring()) != 0)
        return state.SkipWithError("no document");
    reader.SetResolutionX(kDpi);
    const std::unique_ptr<Poppler::Document> pDocument(Poppler::Document::loadFromData(pdf));
    pDocument->setRenderHint(Poppler::Document::Antialiasing);
    pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
    const auto peer = [&pDocument] {
        const std::unique_ptr<Poppler::Page> pPage(pDocument->page(0));
        return pPage->renderToImage(kDpi, kDpi);
    };
    CImage image;
    const QImage expected = peer().convertToFormat(QImage::Format_RGB888);
    if (reader.RenderPage(0, &image) != 0 || QImage(image.GetData(), image.GetWidth(), image.GetHeight(),
                                                    image.GetStride(), QImage::Format_RGB888) != expected)
        return state.SkipWithError("the pixels differ");
    VantorBench::Compare(
        state, [&] { reader.RenderPage(0, &image); }, [&] { benchmark::DoNotOptimize(peer().constBits()); });
}

void TextAt144Dpi(benchmark::State& state)
{
    RenderPage(state, TextPage());
}
void ScanAt144Dpi(benchmark::State& state)
{
    RenderPage(state, ScanPage());
}

/// From nothing to a document that is open: the start of the program that reads it.
void OpenDocument(benchmark::State& state)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("page.pdf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(TextPage()) < 0 || !file.flush())
        return state.SkipWithError("no document");
    for (auto _ : state) {
        CPDFReader reader;
        if (reader.Read(file.fileName().toStdWString(), std::wstring()) != 0)
            return state.SkipWithError("it cannot be opened");
    }
}
} // namespace

BENCHMARK(OpenDocument)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(TextAt144Dpi)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ScanAt144Dpi)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_MAIN();
