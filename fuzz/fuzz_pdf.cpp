// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr std::size_t kDecodeLimit = std::size_t(32) << 20;
constexpr int kMaxPages = 3;
} // namespace

/// fontconfig keeps offsets instead of pointers, so its remaining memory looks leaked at the end.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

/// Reads the input as a document, with a password that opens some of the seeds, and renders its first pages.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CImage::SetDecodeLimit(kDecodeLimit);
    const int fd = ::memfd_create("input.pdf", MFD_CLOEXEC);
    if (fd < 0 || ::write(fd, data, size) != static_cast<ssize_t>(size))
        std::abort();
    CPDFReader reader;
    const int nResult = reader.Read(L"/proc/self/fd/" + std::to_wstring(fd), L"view");
    ::close(fd);
    if ((nResult == 0) != (reader.GetPageNumber() > 0))
        std::abort();
    const int nPages = std::min(reader.GetPageNumber(), kMaxPages);
    for (int i = 0; i < nPages; ++i) {
        CImage image;
        const bool bRendered = reader.RenderPage(i, &image) == 0;
        if (bRendered != (image.GetWidth() > 0))
            std::abort();
    }
    return 0;
}
