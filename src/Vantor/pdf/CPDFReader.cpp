// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFReader.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/pdf/PdfClaims_p.h>
#include <Vantor/pdf/PdfEngine_p.h>

#include <QByteArray>
#include <QFile>
#include <QSizeF>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <exception>
#include <new>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::kMaxSide;
using Vantor::Algorithms::kRowAlignment;

namespace Vantor::Utils
{

namespace
{
constexpr double kPointsPerInch = 72.0;
/// A tolerance: a page box of 200.00000000000003 points, the result of a subtraction, gets no extra column.
constexpr double kRoundingSlack = 1e-6;
constexpr std::size_t kRenderedBytesPerPixel = 4;
constexpr int kChannels = 3;
constexpr int kFailed = 1;

struct SPixelSize {
    int nWidth = 0;
    int nHeight = 0;
};

/// Reads a regular file into memory.
/// @return an EReadResult
int ReadFile(const std::wstring& path, QByteArray& bytes)
{
    QFile file;
    if (!OpenRegularFile(path, file))
        return CPDFReader::EReadResult_CannotOpen;
    const std::size_t nMax = std::min<std::size_t>(CImage::GetDecodeLimit(), INT_MAX / 2);
    if (static_cast<std::size_t>(file.size()) > nMax)
        return CPDFReader::EReadResult_NoMemory;
    bytes = file.read(file.size());
    return file.error() == QFileDevice::NoError ? CPDFReader::EReadResult_OK
                                                : CPDFReader::EReadResult_CannotOpen;
}

/// One side of a page in pixels, 0 when it cannot be drawn (or is NaN).
int PixelsOf(double points, double dpi)
{
    const double pixels = std::ceil(points * dpi / kPointsPerInch - kRoundingSlack);
    return pixels >= 1.0 && pixels <= static_cast<double>(kMaxSide) ? static_cast<int>(pixels) : 0;
}

/// Whether the rendered page and the image made of it fit the limit together.
bool FitsDecodeLimit(const SPixelSize& size)
{
    const std::size_t nPixels =
        static_cast<std::size_t>(size.nWidth) * static_cast<std::size_t>(size.nHeight);
    return nPixels <= CImage::GetDecodeLimit() / (kRenderedBytesPerPixel + kChannels);
}

const SEngineModule<IPdfEngine>& PdfModule()
{
    static const auto module = LoadEngineModule<IPdfEngine>(kPdfModule, kPdfFunction);
    return module;
}
} // namespace

struct CPDFReader::SDocument {
    EnginePtr<IPdfEngine> pPdf; ///< null, or with a readable document of at least one page
    double dResolutionX = kPointsPerInch;
    double dResolutionY = 0.0; ///< 0: as along x
};

CPDFReader::CPDFReader() : m_pDocument(std::make_unique<SDocument>())
{
}

CPDFReader::~CPDFReader() = default;

void CPDFReader::SetResolutionX(double dpi)
{
    if (std::isfinite(dpi) && dpi > 0.0)
        m_pDocument->dResolutionX = dpi;
}

void CPDFReader::SetResolutionY(double dpi)
{
    if (std::isfinite(dpi) && dpi > 0.0)
        m_pDocument->dResolutionY = dpi;
}

int CPDFReader::Read(const std::wstring& path, const std::wstring& password)
try {
    m_pDocument->pPdf.reset();
    QByteArray bytes;
    int nResult = ReadFile(path, bytes);
    if (nResult != EReadResult_OK)
        return nResult;
    if (ClaimsTooManyObjects(bytes))
        return EReadResult_NotAPdf;
    if (!PdfModule().pFunction)
        return EReadResult_CannotOpen;
    EnginePtr<IPdfEngine> pPdf(PdfModule().pFunction());
    nResult = pPdf->Read(bytes, password);
    if (nResult == EReadResult_OK)
        m_pDocument->pPdf = std::move(pPdf);
    return nResult;
} catch (const std::bad_alloc&) {
    return EReadResult_NoMemory;
} catch (const std::exception&) {
    return EReadResult_NotAPdf;
}

int CPDFReader::GetPageNumber() const
{
    return m_pDocument->pPdf ? m_pDocument->pPdf->GetPageNumber() : 0;
}

int CPDFReader::RenderPage(int page, CImage* image)
try {
    if (!image || page < 0 || page >= GetPageNumber())
        return kFailed;
    const double dResolutionX = m_pDocument->dResolutionX;
    const double dResolutionY = m_pDocument->dResolutionY > 0.0 ? m_pDocument->dResolutionY : dResolutionX;
    const QSizeF points = m_pDocument->pPdf->GetPageSize(page);
    const SPixelSize size{PixelsOf(points.width(), dResolutionX), PixelsOf(points.height(), dResolutionY)};
    if (size.nWidth == 0 || size.nHeight == 0 || !FitsDecodeLimit(size))
        return kFailed;
    if (!m_pDocument->pPdf->Render(page, dResolutionX, dResolutionY, size.nWidth, size.nHeight) ||
        image->Create(size.nWidth, size.nHeight, kChannels, 8, EImageType::Interleaved, kRowAlignment) != 0)
        return kFailed;
    m_pDocument->pPdf->TakeDrawing(image->GetRows());
    image->SetPageResolution(dResolutionX);
    return 0;
} catch (const std::exception&) {
    return kFailed;
}

} // namespace Vantor::Utils
