// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFReader.h>

#include <Vantor/image/CImage.h>

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstddef>
#include <exception>
#include <new>

#include <fcntl.h>
#include <poppler-qt5.h>
#include <sys/stat.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace Vantor::Utils
{

namespace
{
constexpr double kPointsPerInch = 72.0;
/// A page box of 200.00000000000003 points, made by a subtraction, is not worth one more column.
constexpr double kRoundingSlack = 1e-6;
/// Larger pages are refused whatever the decode limit: the renderer counts the bytes of a row in an int.
constexpr double kMaxSide = INT_MAX / 8;
constexpr std::size_t kRenderedBytesPerPixel = 4;
constexpr std::size_t kImageBytesPerPixel = 3;
constexpr int kRowAlignment = 4;
constexpr int kFailed = 1;

using DocumentPtr = std::unique_ptr<Poppler::Document>;
using PagePtr = std::unique_ptr<Poppler::Page>;

struct SPixelSize {
    int nWidth = 0;
    int nHeight = 0;
};

/// A descriptor that is closed at the end of its scope.
class CDescriptor
{
public:
    explicit CDescriptor(int fd) : m_fd(fd) {}
    ~CDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    int Get() const { return m_fd; }

private:
    int m_fd;
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

/// Fills the array from the descriptor; a file that ends early shortens it.
bool ReadAll(int fd, QByteArray& bytes)
{
    int nDone = 0;
    while (nDone < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + nDone, static_cast<std::size_t>(bytes.size() - nDone));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        if (n == 0)
            break;
        nDone += static_cast<int>(n);
    }
    bytes.truncate(nDone);
    return true;
}

/// Reads a regular file into memory. The path is UTF-8 on disk whatever the locale says.
/// @return an EReadResult
int ReadFile(const std::wstring& path, QByteArray& bytes)
{
    const QByteArray strPath = QString::fromStdWString(path).toUtf8();
    if (strPath.isEmpty() || strPath.contains('\0'))
        return CPDFReader::EReadResult_CannotOpen;
    // Without O_NONBLOCK a FIFO without a writer would hold the caller for ever.
    const CDescriptor file(::open(strPath.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status = {};
    if (file.Get() < 0 || ::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return CPDFReader::EReadResult_CannotOpen;
    const std::size_t nMax = std::min<std::size_t>(CImage::GetDecodeLimit(), INT_MAX / 2);
    if (static_cast<std::size_t>(status.st_size) > nMax)
        return CPDFReader::EReadResult_NoMemory;
    bytes.resize(static_cast<int>(status.st_size));
    return ReadAll(file.Get(), bytes) ? CPDFReader::EReadResult_OK : CPDFReader::EReadResult_CannotOpen;
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

/// One side of a page in pixels, 0 when it cannot be drawn.
int PixelsOf(double points, double dpi)
{
    const double pixels = std::ceil(points * dpi / kPointsPerInch - kRoundingSlack);
    return pixels >= 1.0 && pixels <= kMaxSide ? static_cast<int>(pixels) : 0; // NaN fails both
}

/// Whether the rendered page and the image made of it fit the limit together.
bool FitsDecodeLimit(const SPixelSize& size)
{
    const std::size_t nPixels =
        static_cast<std::size_t>(size.nWidth) * static_cast<std::size_t>(size.nHeight);
    return nPixels <= CImage::GetDecodeLimit() / (kRenderedBytesPerPixel + kImageBytesPerPixel);
}

/// Copies a 32-bit rendering of the given size into the image.
bool CopyPixels(const QImage& rendered, const SPixelSize& size, CImage& image)
{
    if (rendered.width() != size.nWidth || rendered.height() != size.nHeight || rendered.depth() != 32)
        return false;
    if (image.Create(size.nWidth, size.nHeight, 3, 8, EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    for (int y = 0; y < size.nHeight; ++y) {
        const QRgb* pFrom = reinterpret_cast<const QRgb*>(rendered.constScanLine(y));
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < size.nWidth; ++x, pTo += 3) {
            pTo[0] = static_cast<unsigned char>(qRed(pFrom[x]));
            pTo[1] = static_cast<unsigned char>(qGreen(pFrom[x]));
            pTo[2] = static_cast<unsigned char>(qBlue(pFrom[x]));
        }
    }
    return true;
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
    return CopyPixels(rendered, size, *image) ? 0 : kFailed;
} catch (const std::exception&) {
    return kFailed;
}

} // namespace Vantor::Utils
