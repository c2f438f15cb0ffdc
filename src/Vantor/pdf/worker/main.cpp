// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// vantor-pdf HOST: reads one document for the process of that number, which has started it with a socket as
// file 3. Not for users.
#include <Vantor/pdf/PdfProtocol_p.h>
#include <Vantor/pdf/worker/PdfServer_p.h>
#include <Vantor/pdf/worker/Sandbox_p.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
using Vantor::Utils::kPdfSocket;

/// Waits for the end of the host or of its socket, and ends this process with it, whatever else that is
/// doing. The socket alone would not do: a copy of it may live on in a child of the host's.
[[noreturn]] void EndWithHost(int nHostFile)
{
    pollfd files[2] = {{kPdfSocket, POLLRDHUP, 0}, {nHostFile, POLLIN, 0}};
    while (::poll(files, 2, -1) < 1) {
    }
    ::_exit(0);
}
} // namespace

int main(int argc, char* argv[])
{
    int nType = 0;
    socklen_t nLength = sizeof nType;
    if (argc != 2 || ::getsockopt(kPdfSocket, SOL_SOCKET, SO_TYPE, &nType, &nLength) != 0) {
        std::fputs("vantor-pdf is started by programs that show documents.\n", stderr);
        return 2;
    }
    const pid_t nHost = static_cast<pid_t>(std::strtol(argv[1], nullptr, 10));
    const int nHostFile = static_cast<int>(::syscall(SYS_pidfd_open, nHost, 0)); // -1 on an old kernel
    if (::getppid() != nHost)                                                    // it has ended already
        return 0;
    Vantor::Utils::EnterSandbox();
    std::thread(EndWithHost, nHostFile).detach();
    Vantor::Utils::ServePdf(kPdfSocket);
    ::_exit(0);
}
