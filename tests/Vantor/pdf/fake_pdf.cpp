// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Stands in for vantor-pdf and goes wrong as its document says, for tst_PdfClient. A document is
// "PAGE HOW": at this page (-1: when the document is opened) it does what HOW names. It has five pages; a
// page is filled with its number, and is as wide as this process has open files.
#include <Vantor/pdf/PdfProtocol_p.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Vantor::Utils;

namespace
{
constexpr int kPages = 5;

int CountOpenFiles()
{
    int nFiles = 0;
    DIR* pFolder = ::opendir("/proc/self/fd");
    while (const dirent* pEntry = ::readdir(pFolder))
        nFiles += pEntry->d_name[0] != '.' ? 1 : 0;
    ::closedir(pFolder);
    return nFiles - 1; // without the folder's
}

bool Receive(SPdfRequest& request, int& nFile)
{
    char packet[sizeof request + kMaxPasswordBytes];
    iovec part{packet, sizeof packet};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof nFile)] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t nBytes = ::recvmsg(kPdfSocket, &message, 0);
    const cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
    nFile = -1;
    if (pHeader)
        std::memcpy(&nFile, CMSG_DATA(pHeader), sizeof nFile);
    return nBytes > 0 && ReadPdfRequest(packet, static_cast<std::size_t>(nBytes), request);
}

void Send(const void* pPacket, std::size_t nBytes)
{
    if (::send(kPdfSocket, pPacket, nBytes, MSG_NOSIGNAL) < 0)
        std::perror("fake_pdf");
}

/// With a file of this process that nobody has asked for.
void SendWithFile(SPdfAnswer answer)
{
    const int nFile = STDIN_FILENO;
    iovec part{&answer, sizeof answer};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof nFile)] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
    pHeader->cmsg_level = SOL_SOCKET;
    pHeader->cmsg_type = SCM_RIGHTS;
    pHeader->cmsg_len = CMSG_LEN(sizeof nFile);
    std::memcpy(CMSG_DATA(pHeader), &nFile, sizeof nFile);
    ::sendmsg(kPdfSocket, &message, MSG_NOSIGNAL);
}

/// Ways to go wrong with the process itself.
void Misbehave(const std::string& strHow)
{
    if (strHow == "killed")
        ::raise(SIGKILL);
    if (strHow == "ended")
        ::_exit(0);
    if (strHow == "closed")
        ::close(kPdfSocket);
    while (strHow == "closed" || strHow == "silent")
        ::pause();
    for (volatile unsigned n = 0; strHow == "busy";)
        n = n + 1;
}

/// Ways to go wrong with one answer, which itself would be right.
void SendWrong(SPdfAnswer answer, const std::string& strHow)
{
    std::vector<char> vctPacket(sizeof answer);
    if (strHow == "number")
        --answer.nNumber;
    if (strHow == "version")
        ++answer.nProtocol;
    if (strHow == "result")
        answer.nResult = 5;
    if (strHow == "negative")
        answer.nResult = -1;
    if (strHow == "pages")
        answer.nPages = kMaxPdfPages + 1;
    if (strHow == "nopages")
        answer.nPages = 0;
    if (strHow == "nan")
        answer.dWidth = std::numeric_limits<double>::quiet_NaN();
    if (strHow == "shortened")
        vctPacket.resize(sizeof answer - 1);
    if (strHow == "longer")
        vctPacket.resize(sizeof answer + 1);
    if (strHow == "huge")
        vctPacket.resize(100000);
    std::memcpy(vctPacket.data(), &answer, std::min(vctPacket.size(), sizeof answer));
    Send(vctPacket.data(), vctPacket.size());
    if (strHow == "twice")
        Send(vctPacket.data(), vctPacket.size());
}
} // namespace

int main()
{
    int nWhere = kPages;
    char how[32] = "";
    int nFile = -1;
    for (SPdfRequest request; Receive(request, nFile); ::close(nFile)) {
        SPdfAnswer answer;
        answer.nNumber = request.nNumber;
        const bool bOpen = request.eKind == EPdfRequest::Open;
        if (bOpen) {
            char text[64] = "";
            if (::pread(nFile, text, sizeof text - 1, 0) < 0 ||
                std::sscanf(text, "%d %31s", &nWhere, how) != 2)
                return 1;
            answer.nPages = kPages;
        }
        if (request.eKind == EPdfRequest::PageSize)
            answer.dWidth = answer.dHeight = CountOpenFiles();
        if (request.eKind == EPdfRequest::Render) {
            const auto nBytes =
                static_cast<std::size_t>(request.nStride) * static_cast<std::size_t>(request.nHeight);
            void* pPixels = ::mmap(nullptr, nBytes, PROT_READ | PROT_WRITE, MAP_SHARED, nFile, 0);
            std::memset(pPixels, request.nPage, nBytes);
            ::munmap(pPixels, nBytes);
        }
        const std::string strHow = nWhere == (bOpen ? -1 : request.nPage) ? how : "";
        Misbehave(strHow);
        if (strHow == "file")
            SendWithFile(answer);
        else
            SendWrong(answer, strHow);
    }
    return 0;
}
