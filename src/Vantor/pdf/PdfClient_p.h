// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/file/FileDescriptor_p.h>
#include <Vantor/pdf/PdfProcess_p.h>
#include <Vantor/pdf/PdfProtocol_p.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

class QByteArray;

namespace Vantor::Utils
{

/// How a page is drawn: on white, three bytes a pixel.
struct SPdfDrawing {
    double dDpiX = 0.0;
    double dDpiY = 0.0;
    int nWidth = 0;  ///< in pixels
    int nHeight = 0; ///< rows
    int nStride = 0; ///< bytes from row to row, at least 3 nWidth
};

/// A document in a process of its own. What the process does wrong costs the request in work: the process is
/// killed, and the next request starts another one. One thread at a time uses a client; Cancel is for all.
class CPdfClient
{
public:
    static constexpr std::chrono::milliseconds kTimeLimit{10000};

    /// @param strProgram  the path of the program that reads documents
    explicit CPdfClient(std::string strProgram);
    ~CPdfClient() { Close(); }
    CPdfClient(const CPdfClient&) = delete;
    CPdfClient& operator=(const CPdfClient&) = delete;

    /// The longest time of a request on the wall: for the document as a whole, then for each page.
    void SetTimeLimit(std::chrono::milliseconds limit) { m_limit = limit; }

    /// Opens a document, and closes the one before.
    /// @param bytes     the document, which is copied
    /// @param nMemory   the largest drawing and image together, in bytes
    /// @param password  in UTF-8; kept as long as the document, then wiped
    /// @return an EReadResult: EReadResult_NotAPdf also when the process did not cope with the document,
    ///         EReadResult_CannotOpen when there is no process or it was cancelled
    int Open(const QByteArray& bytes, std::size_t nMemory, std::string password);

    /// The same for the document, the password and the limits of another client, which may be in use by
    /// another thread but keeps its document meanwhile. This client is not in use.
    int OpenLike(const CPdfClient& other);

    /// Ends the process and wipes the password.
    void Close();

    /// 0 without an open document.
    int GetPageNumber() const { return m_nPages; }

    /// The size of a page in points (1/72 inch), 0 for a page that cannot be read.
    CResult GetPageSize(int page, double& width, double& height);

    /// Draws a page and keeps the drawing until it is taken.
    CResult Render(int page, const SPdfDrawing& drawing);
    /// Copies the drawing of the last Render, which succeeded.
    /// @param pPixels  nStride nHeight bytes
    CResult TakeDrawing(unsigned char* pPixels);

    /// Why the last Open failed: a sentence, or empty where its result says it all.
    const std::string& GetOpenFailure() const { return m_strOpenFailure; }

    /// Ends the request in work, or the next one if there is none. Any thread.
    void Cancel();

private:
    CResult Ask(SPdfRequest& request, int nFile, SPdfAnswer& answer);
    CResult MakeReady();
    CResult Start();
    int OpenKept();
    CResult OpenDocument(SPdfAnswer& answer);
    bool Send(SPdfRequest& request, const std::string& password, int nFile);
    CResult Receive(const SPdfRequest& request, SPdfAnswer& answer);
    bool FitPixels(std::size_t nBytes);
    bool KeepDocument(const QByteArray& bytes);

    const std::string m_strProgram;
    const CFileDescriptor m_cancel; ///< readable after Cancel, until a request has ended so
    std::chrono::milliseconds m_limit = kTimeLimit;
    std::size_t m_nMemory = 0;
    CPdfProcess m_process;
    std::uint32_t m_nNumber = 0; ///< of the last request
    CFileDescriptor m_document;
    std::string m_password;
    int m_nPages = 0;
    CFileDescriptor m_pixels; ///< memory shared with the process
    std::size_t m_nPixelBytes = 0;
    std::string m_strOpenFailure;
};

} // namespace Vantor::Utils
