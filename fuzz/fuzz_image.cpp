// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// Feeds one image reader; VANTOR_FUZZ_LOADER names it.
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QBuffer>
#include <QLoggingCategory>

#include <cstdint>
#include <new>

using Vantor::Algorithms::CImage;

namespace
{
/// Small, because instrumented code is slow; the bounds are tested elsewhere.
constexpr std::size_t kDecodeLimit = 4U << 20;
volatile unsigned g_nSink = 0;

/// Touches every byte of the result, so that one that was never allocated is noticed.
void ReadAll(const CImage& image)
{
    unsigned nSum = 0;
    const int nRow = image.GetWidth() * image.GetChannel();
    for (int y = 0; y < image.GetHeight(); ++y) {
        const unsigned char* pRow = image.GetRows()[y];
        for (int i = 0; i < nRow; ++i)
            nSum += pRow[i];
    }
    g_nSink = nSum;
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    CImage::SetDecodeLimit(kDecodeLimit);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    QByteArray content =
        QByteArray::fromRawData(reinterpret_cast<const char*>(pData), static_cast<int>(nBytes));
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    try {
        CImage image;
        Vantor::Algorithms::Notes notes;
        if (Vantor::Algorithms::VANTOR_FUZZ_LOADER(buffer, image, notes).IsSuccess())
            ReadAll(image);
    } catch (const std::bad_alloc&) { // what the loaders may throw; CImage::Load catches it
    }
    return 0;
}
