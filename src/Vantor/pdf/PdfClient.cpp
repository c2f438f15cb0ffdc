// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfClient_p.h>

#include <Vantor/pdf/CPDFReader.h>

#include <QByteArray>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Vantor::Utils
{

namespace
{
/// Addresses for libraries, fonts and their tables: with the documents of the tests the program takes 98 MB.
constexpr std::size_t kProgramMemory = std::size_t(256) << 20;
/// A drawing of four bytes a pixel exists twice in the renderer, beside the shared memory of three. The
/// decode limit allows seven.
constexpr std::size_t kDrawings = 2;
/// Shared memory up to this size serves the next page of the same size.
constexpr std::size_t kKeptPixels = std::size_t(64) << 20;
constexpr const char* kChanged = "The document could not be opened again.";
constexpr const char* kNoMemory = "There is not enough memory for the page.";
constexpr const char* kNotDrawn = "The page cannot be drawn.";

std::size_t BytesOf(const SPdfDrawing& drawing)
{
    return static_cast<std::size_t>(drawing.nStride) * static_cast<std::size_t>(drawing.nHeight);
}

CFileDescriptor MakeSharedMemory(const char* pName)
{
    return CFileDescriptor(::memfd_create(pName, MFD_CLOEXEC | MFD_ALLOW_SEALING));
}

/// What it means for the caller of Open.
int ResultOf(const CResult& result, const SPdfAnswer& answer)
{
    if (result.IsSuccess())
        return answer.nResult;
    return result.GetReason() == CPdfProcess::kCancelled ? CPDFReader::EReadResult_CannotOpen
                                                         : CPDFReader::EReadResult_NotAPdf;
}
} // namespace

CPdfClient::CPdfClient(std::string strProgram)
    : m_strProgram(std::move(strProgram)), m_cancel(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void CPdfClient::Close()
{
    m_process.End();
    m_nPages = 0;
    m_document.Close();
    m_pixels.Close();
    ::explicit_bzero(m_password.data(), m_password.size());
    m_password.clear();
    m_strOpenFailure.clear();
}

/// A copy that no process can change.
bool CPdfClient::KeepDocument(const QByteArray& bytes)
{
    constexpr int kSeals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
    m_document = MakeSharedMemory("vantor document");
    qint64 nWritten = 0;
    while (nWritten < bytes.size()) {
        const ssize_t nBytes = ::write(m_document.Get(), bytes.constData() + nWritten,
                                       static_cast<std::size_t>(bytes.size() - nWritten));
        if (nBytes <= 0 && errno != EINTR)
            return false;
        nWritten += nBytes > 0 ? nBytes : 0;
    }
    return ::fcntl(m_document.Get(), F_ADD_SEALS, kSeals) == 0;
}

int CPdfClient::Open(const QByteArray& bytes, std::size_t nMemory, std::string password)
{
    Close();
    m_password = std::move(password);
    m_nMemory = kDrawings * nMemory + kProgramMemory + 2 * static_cast<std::size_t>(bytes.size());
    if (m_password.size() > kMaxPasswordBytes)
        return CPDFReader::EReadResult_PasswordRequired;
    return KeepDocument(bytes) ? OpenKept() : CPDFReader::EReadResult_NoMemory;
}

int CPdfClient::OpenLike(const CPdfClient& other)
{
    Close();
    m_document = CFileDescriptor(::fcntl(other.m_document.Get(), F_DUPFD_CLOEXEC, 0));
    if (!m_document.IsOpen())
        return CPDFReader::EReadResult_NotAPdf;
    m_password = other.m_password;
    m_nMemory = other.m_nMemory;
    m_limit = other.m_limit;
    return OpenKept();
}

/// The document that is kept, with the password that is.
int CPdfClient::OpenKept()
{
    CResult result = Start();
    int nResult = CPDFReader::EReadResult_CannotOpen;
    if (result.IsSuccess()) {
        SPdfAnswer answer;
        result = OpenDocument(answer);
        nResult = ResultOf(result, answer);
        m_nPages = result.IsSuccess() ? answer.nPages : 0;
    }
    if (nResult != CPDFReader::EReadResult_OK)
        Close();
    m_strOpenFailure = result.GetReason();
    return nResult;
}

CResult CPdfClient::Start()
{
    return m_process.Start(m_strProgram, m_nMemory);
}

CResult CPdfClient::OpenDocument(SPdfAnswer& answer)
{
    SPdfRequest request;
    request.nPasswordBytes = static_cast<std::uint32_t>(m_password.size());
    if (!Send(request, m_password, m_document.Get()))
        return CResult::Failure(CPdfProcess::kEnded);
    return Receive(request, answer);
}

/// A process that has opened the document.
CResult CPdfClient::MakeReady()
{
    if (m_process.IsReady())
        return CResult::Success();
    SPdfAnswer answer;
    CResult result = Start();
    if (result.IsSuccess())
        result = OpenDocument(answer);
    if (!result.IsSuccess())
        return result;
    const bool bSame = answer.nResult == CPDFReader::EReadResult_OK && answer.nPages == m_nPages;
    return bSame ? CResult::Success() : CResult::Failure(kChanged);
}

/// A process that went while nobody asked it anything costs nothing but the start of another one.
CResult CPdfClient::Ask(SPdfRequest& request, int nFile, SPdfAnswer& answer)
{
    bool bSent = false;
    for (int nTry = 0; nTry < 2 && !bSent; ++nTry) {
        CResult result = MakeReady();
        if (!result.IsSuccess())
            return result;
        bSent = Send(request, std::string(), nFile);
    }
    return bSent ? Receive(request, answer) : CResult::Failure(CPdfProcess::kEnded);
}

bool CPdfClient::Send(SPdfRequest& request, const std::string& password, int nFile)
{
    request.nNumber = ++m_nNumber;
    return m_process.Send(request, password, nFile);
}

CResult CPdfClient::Receive(const SPdfRequest& request, SPdfAnswer& answer)
{
    CResult result = m_process.Receive(request, m_limit, m_cancel.Get(), answer);
    if (!result.IsSuccess())
        m_process.End();
    return result;
}

CResult CPdfClient::GetPageSize(int page, double& width, double& height)
{
    SPdfRequest request;
    request.eKind = EPdfRequest::PageSize;
    request.nPage = page;
    SPdfAnswer answer;
    CResult result = Ask(request, -1, answer);
    width = result.IsSuccess() ? answer.dWidth : 0.0;
    height = result.IsSuccess() ? answer.dHeight : 0.0;
    return result;
}

/// Shared memory of this size, which the other process can neither shorten nor extend.
bool CPdfClient::FitPixels(std::size_t nBytes)
{
    if (nBytes == m_nPixelBytes && m_pixels.IsOpen())
        return true;
    CFileDescriptor pixels = MakeSharedMemory("vantor page");
    const bool bMade = ::ftruncate(pixels.Get(), static_cast<off_t>(nBytes)) == 0 &&
                       ::fcntl(pixels.Get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0;
    m_pixels = bMade ? std::move(pixels) : CFileDescriptor();
    m_nPixelBytes = nBytes;
    return bMade;
}

CResult CPdfClient::Render(int page, const SPdfDrawing& drawing)
{
    if (!FitPixels(BytesOf(drawing)))
        return CResult::Failure(kNoMemory);
    SPdfRequest request;
    request.eKind = EPdfRequest::Render;
    request.nPage = page;
    request.nWidth = drawing.nWidth;
    request.nHeight = drawing.nHeight;
    request.nStride = drawing.nStride;
    request.dDpiX = drawing.dDpiX;
    request.dDpiY = drawing.dDpiY;
    SPdfAnswer answer;
    CResult result = Ask(request, m_pixels.Get(), answer);
    if (!result.IsSuccess())
        m_pixels.Close(); // a process that goes wrong may have kept it, and draw for another moment
    else if (answer.nResult != 0)
        result = CResult::Failure(kNotDrawn);
    return result;
}

CResult CPdfClient::TakeDrawing(unsigned char* pPixels)
{
    std::size_t nTaken = 0;
    while (nTaken < m_nPixelBytes) {
        const ssize_t nRead =
            ::pread(m_pixels.Get(), pPixels + nTaken, m_nPixelBytes - nTaken, static_cast<off_t>(nTaken));
        if (nRead == 0 || (nRead < 0 && errno != EINTR))
            return CResult::Failure(kNotDrawn);
        nTaken += nRead > 0 ? static_cast<std::size_t>(nRead) : 0;
    }
    if (m_nPixelBytes > kKeptPixels)
        m_pixels.Close();
    return CResult::Success();
}

void CPdfClient::Cancel()
{
    ::eventfd_write(m_cancel.Get(), 1);
}

} // namespace Vantor::Utils
