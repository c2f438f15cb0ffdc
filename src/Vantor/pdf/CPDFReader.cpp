// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFReader.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/OpenFile_p.h>
#include <Vantor/image/file/QtImage_p.h>
#include <Vantor/pdf/PdfClaims_p.h>

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <exception>
#include <new>

#include <poppler-qt5.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ConvertToCore;
using Vantor::Algorithms::kMaxSide;
using Vantor::Algorithms::OpenRegularFile;

namespace Vantor::Utils
{

namespace
{
constexpr double kPointsPerInch = 72.0;
/// A page box of 200.00000000000003 points, made by a subtraction, is not worth one more column.
constexpr double kRoundingSlack = 1e-6;
constexpr std::size_t kRenderedBytesPerPixel = 4;
constexpr int kChannels = 3;
constexpr int kFailed = 1;

using DocumentPtr = std::unique_ptr<Poppler::Document>;
using PagePtr = std::unique_ptr<Poppler::Page>;

struct SPixelSize {
    int nWidth = 0;
    int nHeight = 0;
};

/// The renderer's complaints about damaged documents go nowhere instead of to standard error. The setting
/// belongs to the whole process.
void SilenceRenderer()
{
    static const bool bDone = [] {
        Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
        return true;
    }();
    Q_UNUSED(bDone)
}

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

/// Old documents hold the password as Latin-1, new ones as UTF-8; it may be the user's or the owner's.
bool Unlock(Poppler::Document& document, const std::wstring& password)
{
    const QString strPassword = QString::fromStdWString(password);
    const QByteArray utf8 = strPassword.toUtf8();
    if (!document.unlock(utf8, utf8)) // it says whether the document is still locked
        return true;
    const QByteArray latin1 = strPassword.toLatin1();
    const bool bExact = QString::fromLatin1(latin1) == strPassword; // else it holds question marks
    return bExact && latin1 != utf8 && !document.unlock(latin1, latin1);
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
} // namespace

struct CPDFReader::SDocument {
    DocumentPtr pDocument; ///< null, or a readable document with at least one page
    double dResolutionX = kPointsPerInch;
    double dResolutionY = 0.0; ///< 0: as along x
};

CPDFReader::CPDFReader() : m_pDocument(std::make_unique<SDocument>())
{
    SilenceRenderer();
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
    m_pDocument->pDocument.reset();
    QByteArray bytes;
    const int nResult = ReadFile(path, bytes);
    if (nResult != EReadResult_OK)
        return nResult;
    if (ClaimsTooManyObjects(bytes))
        return EReadResult_NotAPdf;
    DocumentPtr pDocument(Poppler::Document::loadFromData(bytes));
    if (!pDocument)
        return EReadResult_NotAPdf;
    if (pDocument->isLocked() && !Unlock(*pDocument, password))
        return EReadResult_PasswordRequired;
    if (pDocument->numPages() < 1)
        return EReadResult_NotAPdf;
    pDocument->setRenderHint(Poppler::Document::Antialiasing);
    pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
    m_pDocument->pDocument = std::move(pDocument);
    return EReadResult_OK;
} catch (const std::bad_alloc&) {
    return EReadResult_NoMemory;
} catch (const std::exception&) {
    return EReadResult_NotAPdf;
}

int CPDFReader::GetPageNumber() const
{
    return m_pDocument->pDocument ? m_pDocument->pDocument->numPages() : 0;
}

int CPDFReader::RenderPage(int page, CImage* image)
try {
    if (!image || page < 0 || page >= GetPageNumber())
        return kFailed;
    const PagePtr pPage(m_pDocument->pDocument->page(page));
    if (!pPage)
        return kFailed;
    const double dResolutionX = m_pDocument->dResolutionX;
    const double dResolutionY = m_pDocument->dResolutionY > 0.0 ? m_pDocument->dResolutionY : dResolutionX;
    const QSizeF points = pPage->pageSizeF();
    const SPixelSize size{PixelsOf(points.width(), dResolutionX), PixelsOf(points.height(), dResolutionY)};
    if (size.nWidth == 0 || size.nHeight == 0 || !FitsDecodeLimit(size))
        return kFailed;
    const QImage rendered = pPage->renderToImage(dResolutionX, dResolutionY, 0, 0, size.nWidth, size.nHeight);
    if (rendered.width() != size.nWidth || rendered.height() != size.nHeight)
        return kFailed;
    return ConvertToCore(rendered, kChannels, *image) ? 0 : kFailed;
} catch (const std::exception&) {
    return kFailed;
}

} // namespace Vantor::Utils
