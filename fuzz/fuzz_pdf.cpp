// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFReader.h>
#include <Vantor/pdf/PdfClaims_p.h>
#include <Vantor/pdf/PdfProtocol_p.h>
#include <Vantor/pdf/worker/PdfDocument_p.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace
{
constexpr double kDpi = 72.0;
constexpr double kMaxPixels = 4.0 * 1024.0 * 1024.0;
constexpr int kMaxPages = 3;

void RenderPage(const Vantor::Utils::CPdfDocument& document, int page)
{
    const QSizeF size = document.GetPageSize(page);
    if (!(size.width() >= 0.0 && size.height() >= 0.0 && std::isfinite(size.width() * size.height())))
        std::abort();
    if (size.isEmpty() || size.width() * size.height() > kMaxPixels || size.width() > kMaxPixels ||
        size.height() > kMaxPixels)
        return;
    Vantor::Utils::SPdfRequest request;
    request.nPage = page;
    request.nWidth = static_cast<int>(std::ceil(size.width()));
    request.nHeight = static_cast<int>(std::ceil(size.height()));
    request.nStride = 3 * request.nWidth;
    request.dDpiX = request.dDpiY = kDpi;
    std::vector<unsigned char> vctPixels(static_cast<std::size_t>(request.nStride) *
                                         static_cast<std::size_t>(request.nHeight));
    document.Render(request, vctPixels.data());
}
} // namespace

/// fontconfig keeps offsets instead of pointers, so its remaining memory looks leaked at the end.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

/// What happens to a document in the program that reads documents, and before it: with a password that opens
/// some of the seeds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    if (Vantor::Utils::ClaimsTooManyObjects(bytes))
        return 0;
    Vantor::Utils::CPdfDocument document;
    const int nResult = document.Read(bytes, "view");
    if ((nResult == Vantor::Utils::CPDFReader::EReadResult_OK) != (document.GetPageNumber() > 0))
        std::abort();
    const int nPages = std::min(document.GetPageNumber(), kMaxPages);
    for (int i = 0; i < nPages; ++i)
        RenderPage(document, i);
    return 0;
}
