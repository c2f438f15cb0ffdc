// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// Feeds the reader of one image format; VANTOR_FUZZ_FORMAT is its name in lower case.
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QBuffer>
#include <QLoggingCategory>

#include <cstdint>
#include <cstdlib>
#include <new>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::SImageFormat;

namespace
{
/// Small, because instrumented code is slow; other tests cover the bounds.
constexpr std::size_t kDecodeLimit = 4U << 20;
volatile unsigned g_nSink = 0;
const SImageFormat* g_pFormat = nullptr;

const SImageFormat* FindFormat()
{
    for (const SImageFormat& format : Vantor::Algorithms::ImageFormats()) {
        if (QByteArray(format.pName).toLower() == VANTOR_FUZZ_FORMAT)
            return &format;
    }
    return nullptr;
}

/// Reads every byte of the result, so that the sanitizer notices one that was never allocated.
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
    g_pFormat = FindFormat();
    if (!g_pFormat)
        std::abort();
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
        Vantor::Algorithms::SFound found;
        if (g_pFormat->pLoad(buffer, image, found).IsSuccess())
            ReadAll(image);
    } catch (const std::bad_alloc&) { // the loaders may throw it; CImage::Load catches it
    }
    return 0;
}
