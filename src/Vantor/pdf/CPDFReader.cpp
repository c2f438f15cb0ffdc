// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFReader.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/LibraryFolder_p.h>
#include <Vantor/Result_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/pdf/PdfClaims_p.h>
#include <Vantor/pdf/PdfClient_p.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

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
constexpr const char* kProgram = "vantor-pdf";
/// A day: more makes no difference, and fits every clock.
constexpr std::chrono::milliseconds kMaxTimeLimit = std::chrono::hours(24);

/// Where the program that reads documents lies: beside the libraries' modules in a build, otherwise in the
/// folder of the installation for programs that users do not call.
std::string PdfProgram()
{
    const std::filesystem::path folder = LibraryFolder();
    const std::filesystem::path built = folder / kModuleFolder / kProgram;
    std::error_code error;
    return (std::filesystem::exists(built, error) ? built : folder / VANTOR_LIBEXEC / kProgram).string();
}

/// What a failure means where nothing more is known.
const char* TextOf(int nResult)
{
    switch (nResult) {
    case CPDFReader::EReadResult_CannotOpen:
        return "The file is missing, no regular file, or must not be read.";
    case CPDFReader::EReadResult_NoMemory:
        return "The document is too large for the memory.";
    case CPDFReader::EReadResult_PasswordRequired:
        return "The document needs a password, or another one.";
    default:
        return "It is not a PDF document with pages, or it is damaged.";
    }
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

/// One side of a page in pixels, 0 when it cannot be drawn (or is NaN).
int PixelsOf(double points, double dpi)
{
    const double pixels = std::ceil(points * dpi / kPointsPerInch - kRoundingSlack);
    return pixels >= 1.0 && pixels <= static_cast<double>(kMaxSide) ? static_cast<int>(pixels) : 0;
}

/// Whether the rendered page and the image made of it fit the limit together.
bool FitsDecodeLimit(const SPdfDrawing& size)
{
    const std::size_t nPixels =
        static_cast<std::size_t>(size.nWidth) * static_cast<std::size_t>(size.nHeight);
    return nPixels <= CImage::GetDecodeLimit() / (kRenderedBytesPerPixel + kChannels);
}

/// The password in UTF-8; no other copy of it stays.
std::string ToPassword(const std::wstring& password)
{
    QString strPassword = QString::fromStdWString(password);
    QByteArray bytes = strPassword.toUtf8();
    std::string strUtf8(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    ::explicit_bzero(strPassword.data(), static_cast<std::size_t>(strPassword.size()) * sizeof(QChar));
    ::explicit_bzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return strUtf8;
}
} // namespace

struct CPDFReader::SDocument {
    int Open(const std::wstring& path, const std::wstring& password);
    CResult Plan(int page, SPdfDrawing& drawing);
    CResult Render(int page, CImage* image);
    int NoteOpened(int nResult);

    CPdfClient client{PdfProgram()}; ///< with a readable document of at least one page, or with none
    double dResolutionX = kPointsPerInch;
    double dResolutionY = 0.0; ///< 0: as along x
    CFailureReason failure;
};

int CPDFReader::SDocument::Open(const std::wstring& path, const std::wstring& password)
try {
    QByteArray bytes;
    const int nResult = ReadFile(path, bytes);
    if (nResult != EReadResult_OK)
        return nResult;
    if (ClaimsTooManyObjects(bytes))
        return EReadResult_NotAPdf;
    return client.Open(bytes, CImage::GetDecodeLimit(), ToPassword(password));
} catch (const std::bad_alloc&) {
    return EReadResult_NoMemory;
}

/// The size of a page, and how it is drawn.
CResult CPDFReader::SDocument::Plan(int page, SPdfDrawing& drawing)
{
    if (page < 0 || page >= client.GetPageNumber())
        return CResult::Failure("There is no such page.");
    double dWidth = 0.0;
    double dHeight = 0.0;
    CResult result = client.GetPageSize(page, dWidth, dHeight);
    if (!result.IsSuccess())
        return result;
    drawing.dDpiX = dResolutionX;
    drawing.dDpiY = dResolutionY > 0.0 ? dResolutionY : drawing.dDpiX;
    drawing.nWidth = PixelsOf(dWidth, drawing.dDpiX);
    drawing.nHeight = PixelsOf(dHeight, drawing.dDpiY);
    if (drawing.nWidth == 0 || drawing.nHeight == 0 || !FitsDecodeLimit(drawing))
        return CResult::Failure("The page is empty or larger than the limit.");
    drawing.nStride = (drawing.nWidth * kChannels + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    return result;
}

CResult CPDFReader::SDocument::Render(int page, CImage* image)
try {
    if (!image)
        return CResult::Failure("There is no such page.");
    SPdfDrawing drawing;
    CResult result = Plan(page, drawing);
    if (result.IsSuccess())
        result = client.Render(page, drawing);
    if (!result.IsSuccess())
        return result;
    if (image->Create(drawing.nWidth, drawing.nHeight, kChannels, 8, EImageType::Interleaved,
                      kRowAlignment) != 0)
        return CResult::Failure("There is not enough memory for the page.");
    result = client.TakeDrawing(image->GetData());
    if (result.IsSuccess())
        image->SetPageResolution(drawing.dDpiX);
    return result;
} catch (const std::bad_alloc&) {
    return CResult::Failure("Out of memory.");
}

int CPDFReader::SDocument::NoteOpened(int nResult)
{
    const std::string& strReason = client.GetOpenFailure();
    if (nResult == EReadResult_OK)
        failure.Succeed();
    else
        failure.Fail(strReason.empty() ? TextOf(nResult) : strReason.c_str());
    return nResult;
}

CPDFReader::CPDFReader() : m_pDocument(std::make_unique<SDocument>())
{
}

CPDFReader::~CPDFReader() = default;

void CPDFReader::SetResolutionX(double dpi)
{
    if (std::isfinite(dpi) && dpi > 0.0)
        m_pDocument->dResolutionX = dpi;
}

double CPDFReader::GetResolutionX() const
{
    return m_pDocument->dResolutionX;
}

void CPDFReader::SetResolutionY(double dpi)
{
    if (std::isfinite(dpi) && dpi > 0.0)
        m_pDocument->dResolutionY = dpi;
}

void CPDFReader::SetTimeLimit(double seconds)
{
    if (!std::isfinite(seconds) || seconds <= 0.0)
        return;
    const double ms = std::min(std::ceil(seconds * 1000.0), static_cast<double>(kMaxTimeLimit.count()));
    m_pDocument->client.SetTimeLimit(std::chrono::milliseconds(static_cast<int>(ms)));
}

int CPDFReader::Read(const std::wstring& path, const std::wstring& password)
{
    m_pDocument->client.Close();
    return m_pDocument->NoteOpened(m_pDocument->Open(path, password));
}

int CPDFReader::ReadLike(const CPDFReader& other)
{
    const SDocument& from = *other.m_pDocument;
    m_pDocument->dResolutionX = from.dResolutionX;
    m_pDocument->dResolutionY = from.dResolutionY;
    return m_pDocument->NoteOpened(m_pDocument->client.OpenLike(from.client));
}

int CPDFReader::GetPageNumber() const
{
    return m_pDocument->client.GetPageNumber();
}

int CPDFReader::GetPageSize(int page, int& width, int& height)
{
    SPdfDrawing drawing;
    const CResult result = m_pDocument->Plan(page, drawing);
    width = result.IsSuccess() ? drawing.nWidth : 0;
    height = result.IsSuccess() ? drawing.nHeight : 0;
    return m_pDocument->failure.Note(result);
}

int CPDFReader::RenderPage(int page, CImage* image)
{
    return m_pDocument->failure.Note(m_pDocument->Render(page, image));
}

std::string CPDFReader::GetFailureReason() const
{
    return m_pDocument->failure.GetText();
}

void CPDFReader::Cancel()
{
    m_pDocument->client.Cancel();
}

} // namespace Vantor::Utils
