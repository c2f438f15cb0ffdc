// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/worker/PdfServer_p.h>

#include <Vantor/file/FileDescriptor_p.h>
#include <Vantor/pdf/CPDFReader.h>
#include <Vantor/pdf/PdfProtocol_p.h>
#include <Vantor/pdf/worker/PdfDocument_p.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <utility>

#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>

namespace Vantor::Utils
{

namespace
{
/// The memory of a file, as far as it can be had.
class CMapping
{
public:
    CMapping() = default;
    CMapping(int nFile, int nProtection, int nSharing)
    {
        struct stat status = {};
        if (::fstat(nFile, &status) != 0 || status.st_size <= 0)
            return;
        m_nBytes = static_cast<std::size_t>(status.st_size);
        m_pStart = ::mmap(nullptr, m_nBytes, nProtection, nSharing | MAP_POPULATE, nFile, 0);
    }
    ~CMapping()
    {
        if (IsMapped())
            ::munmap(m_pStart, m_nBytes);
    }
    CMapping(const CMapping&) = delete;
    CMapping& operator=(CMapping&& other) noexcept
    {
        std::swap(m_pStart, other.m_pStart);
        std::swap(m_nBytes, other.m_nBytes);
        return *this;
    }

    bool IsMapped() const { return m_pStart != MAP_FAILED; }
    std::size_t GetSize() const { return IsMapped() ? m_nBytes : 0; }
    unsigned char* GetStart() const { return static_cast<unsigned char*>(m_pStart); }

private:
    void* m_pStart = MAP_FAILED;
    std::size_t m_nBytes = 0;
};

/// A request as it came, with its password and its file.
struct SReceived {
    SPdfRequest request;
    char packet[sizeof(SPdfRequest) + kMaxPasswordBytes + 1];
    CFileDescriptor file;
};

CFileDescriptor FileOf(msghdr& message)
{
    const cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
    int nFile = -1;
    if (pHeader && pHeader->cmsg_level == SOL_SOCKET && pHeader->cmsg_type == SCM_RIGHTS)
        std::memcpy(&nFile, CMSG_DATA(pHeader), sizeof nFile);
    return CFileDescriptor(nFile);
}

bool Receive(int nSocket, SReceived& received)
{
    iovec part{received.packet, sizeof received.packet};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    ssize_t nBytes = -1;
    do {
        nBytes = ::recvmsg(nSocket, &message, MSG_CMSG_CLOEXEC);
    } while (nBytes < 0 && errno == EINTR);
    if (nBytes <= 0)
        return false;
    received.file = FileOf(message);
    return ReadPdfRequest(received.packet, static_cast<std::size_t>(nBytes), received.request);
}

class CServer
{
public:
    SPdfAnswer Answer(SReceived& received);

private:
    int Open(SReceived& received);
    bool Render(const SReceived& received) const;
    bool HasPage(int page) const { return page >= 0 && page < m_document.GetPageNumber(); }

    CMapping m_bytes; ///< outlives the document
    CPdfDocument m_document;
};

int CServer::Open(SReceived& received)
{
    if (m_bytes.IsMapped())
        return CPDFReader::EReadResult_NotAPdf; // one document is enough
    m_bytes = CMapping(received.file.Get(), PROT_READ, MAP_PRIVATE);
    if (m_bytes.GetSize() > INT_MAX)
        return CPDFReader::EReadResult_NoMemory;
    QByteArray password(received.packet + sizeof received.request,
                        static_cast<int>(received.request.nPasswordBytes));
    const int nResult =
        m_document.Read(QByteArray::fromRawData(reinterpret_cast<const char*>(m_bytes.GetStart()),
                                                static_cast<int>(m_bytes.GetSize())),
                        password);
    ::explicit_bzero(password.data(), static_cast<std::size_t>(password.size()));
    ::explicit_bzero(received.packet, sizeof received.packet);
    return nResult;
}

bool CServer::Render(const SReceived& received) const
{
    const SPdfRequest& request = received.request;
    const CMapping pixels(received.file.Get(), PROT_READ | PROT_WRITE, MAP_SHARED);
    const bool bFits = request.nWidth > 0 && request.nHeight > 0 && request.nStride / 3 >= request.nWidth &&
                       pixels.GetSize() / static_cast<std::size_t>(request.nStride) >=
                           static_cast<std::size_t>(request.nHeight);
    return bFits && HasPage(request.nPage) && m_document.Render(request, pixels.GetStart());
}

SPdfAnswer CServer::Answer(SReceived& received)
{
    SPdfAnswer answer;
    answer.nNumber = received.request.nNumber;
    switch (received.request.eKind) {
    case EPdfRequest::Open:
        answer.nResult = Open(received);
        answer.nPages = answer.nResult == CPDFReader::EReadResult_OK ? m_document.GetPageNumber() : 0;
        break;
    case EPdfRequest::PageSize:
        if (HasPage(received.request.nPage)) {
            const QSizeF size = m_document.GetPageSize(received.request.nPage);
            answer.dWidth = size.width();
            answer.dHeight = size.height();
        }
        break;
    case EPdfRequest::Render:
        answer.nResult = Render(received) ? 0 : 1;
        break;
    }
    return answer;
}
} // namespace

void ServePdf(int nSocket)
{
    CServer server;
    SReceived received;
    while (Receive(nSocket, received)) {
        const SPdfAnswer answer = server.Answer(received);
        received.file.Close();
        if (::send(nSocket, &answer, sizeof answer, MSG_NOSIGNAL) != static_cast<ssize_t>(sizeof answer))
            return;
    }
}

} // namespace Vantor::Utils
