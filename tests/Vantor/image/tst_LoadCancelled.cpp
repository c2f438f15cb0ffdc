// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>

#include <QTemporaryDir>

#include <cmath>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <jpeglib.h>
#include <tiffio.h>

using namespace ImageFiles;
using Vantor::CProgress;

namespace
{
constexpr int kSide = 6000;
constexpr double kGrace = 0.25; ///< of the whole time, for the clock's ticks

double CpuSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// A grey TIFF file of one strip, which the codec reads at once and then decodes.
void WriteOneStrip(const QString& strPath)
{
    TIFF* pTiff = TIFFOpen(strPath.toUtf8().constData(), "w");
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    std::vector<unsigned char> pixels(std::size_t(kSide) * kSide);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(i / 7 ^ i / kSide);
    TIFFWriteEncodedStrip(pTiff, 0, pixels.data(), static_cast<tmsize_t>(pixels.size()));
    TIFFClose(pTiff);
}

/// A grey JPEG file of so few bytes that the codec reads it in two or three steps.
void WriteFlatJpeg(const QString& strPath, bool bProgressive)
{
    jpeg_compress_struct codec{};
    jpeg_error_mgr errors{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    std::FILE* pFile = std::fopen(strPath.toUtf8().constData(), "wb");
    jpeg_stdio_dest(&codec, pFile);
    codec.image_width = codec.image_height = kSide;
    codec.input_components = 1;
    codec.in_color_space = JCS_GRAYSCALE;
    jpeg_set_defaults(&codec);
    codec.optimize_coding = TRUE;
    if (bProgressive)
        jpeg_simple_progression(&codec);
    jpeg_start_compress(&codec, TRUE);
    std::vector<JSAMPLE> row(kSide, 77);
    JSAMPLE* pRow = row.data();
    while (codec.next_scanline < codec.image_height)
        jpeg_write_scanlines(&codec, &pRow, 1);
    jpeg_finish_compress(&codec);
    jpeg_destroy_compress(&codec);
    std::fclose(pFile);
}

CProgress* g_pProgress = nullptr;

/// Loads, and cancels once that has taken so much processor time.
/// @return the processor time; -1 when the image loaded although it was cancelled, or did not
double LoadUntil(const QString& strPath, double dblCancelAfter)
{
    CProgress progress;
    const CProgress::CScope scope(&progress);
    g_pProgress = &progress;
    std::signal(SIGUSR1, [](int) { g_pProgress->Cancel(); }); // an atomic number
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGUSR1;
    timer_t timer{};
    ::timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &timer);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(dblCancelAfter);
    when.it_value.tv_nsec = static_cast<long>((dblCancelAfter - std::floor(dblCancelAfter)) * 1e9);
    ::timer_settime(timer, 0, &when, nullptr);
    CImage image;
    const double dblStart = CpuSeconds();
    const bool bLoaded = LoadFile(image, strPath) == 0;
    const double dblTaken = CpuSeconds() - dblStart;
    ::timer_delete(timer);
    return progress.IsCancelled() != bLoaded ? dblTaken : -1.0;
}
} // namespace

/// Loading that is cancelled ends within rows, also where the whole file has been read.
class tst_LoadCancelled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRowsThatAreLeftAreNotDecoded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("dblCancelAt");
        QTest::newRow("TIFF of one strip") << "strip.tif" << 0.5;
        QTest::newRow("JPEG") << "flat.jpg" << 0.5;
        QTest::newRow("progressive JPEG, in its scans") << "scans.jpg" << 0.2;
        QTest::newRow("progressive JPEG, in its rows") << "scans.jpg" << 0.6;
    }
    void theRowsThatAreLeftAreNotDecoded()
    {
        QFETCH(QString, name);
        QFETCH(double, dblCancelAt);
        QTemporaryDir folder;
        const QString strPath = folder.filePath(name);
        if (name.endsWith(QLatin1String("tif")))
            WriteOneStrip(strPath);
        else
            WriteFlatJpeg(strPath, name == QLatin1String("scans.jpg"));
        const double dblWhole = LoadUntil(strPath, 1000.0);
        QVERIFY(dblWhole > 0.0);
        const double dblCut = LoadUntil(strPath, dblCancelAt * dblWhole);
        QVERIFY2(dblCut > 0.0 && dblCut < (dblCancelAt + kGrace) * dblWhole,
                 qPrintable(QStringLiteral("%1 of %2 s").arg(dblCut).arg(dblWhole)));
    }
};

VANTOR_CORE_TEST_MAIN(tst_LoadCancelled)
#include "tst_LoadCancelled.moc"
