// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfProcess_p.h>

#include <Vantor/CProgress.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Vantor::Utils
{

namespace
{
using Clock = std::chrono::steady_clock;

/// How often a thread that waits looks whether it is to end.
constexpr int kPatienceMs = 50;

std::string WhyNotStarted(int nError)
{
    return "The program vantor-pdf, which reads documents, cannot be started: " +
           std::generic_category().message(nError) + ". It is in the package vantor-pdf.";
}

/// How a process is started: fit for a program of several threads, without a copy of its memory, and without
/// anything of it but the environment.
class CSpawnPlan
{
public:
    explicit CSpawnPlan(int nSocket)
    {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawn_file_actions_adddup2(&m_actions, nSocket, kPdfSocket);
        for (const int nStandard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&m_actions, nStandard, "/dev/null", O_RDWR, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&m_actions, kPdfSocket + 1);
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~CSpawnPlan()
    {
        ::posix_spawn_file_actions_destroy(&m_actions);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    CSpawnPlan(const CSpawnPlan&) = delete;
    CSpawnPlan& operator=(const CSpawnPlan&) = delete;

    /// @return 0 or the system's error
    int Start(const std::string& strProgram, pid_t& nProcess)
    {
        // The program ends with this process, whose number it is told.
        std::string strName = "vantor-pdf";
        std::string strHost = std::to_string(::getpid());
        const std::array<char*, 3> arguments{strName.data(), strHost.data(), nullptr};
        return ::posix_spawn(&nProcess, strProgram.c_str(), &m_actions, &m_attributes, arguments.data(),
                             ::environ);
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kBoundsMemory = false; // their shadows take terabytes of addresses
#else
constexpr bool kBoundsMemory = true;
#endif

/// Milliseconds until then, rounded up, at least 0.
int Until(Clock::time_point then)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(then - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

/// Waits until one of the two can be read, or the progress of the thread is cancelled.
/// @return poll's
int WaitFor(pollfd (&files)[2], Clock::time_point deadline)
{
    int nReady = -1;
    do {
        nReady = ::poll(files, 2, std::min(Until(deadline), kPatienceMs));
    } while ((nReady < 0 && errno == EINTR) ||
             (nReady == 0 && Until(deadline) > 0 && !CProgress::IsThreadCancelled()));
    return nReady;
}
} // namespace

CResult CPdfProcess::Start(const std::string& strProgram, std::size_t nMemory)
{
    End();
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return CResult::Failure(WhyNotStarted(errno));
    CFileDescriptor own(ends[0]);
    const CFileDescriptor other(ends[1]);
    if (const int nError = CSpawnPlan(other.Get()).Start(strProgram, m_nProcess)) {
        m_nProcess = -1;
        return CResult::Failure(WhyNotStarted(nError));
    }
    m_socket = std::move(own);
    if (kBoundsMemory) {
        const rlimit memory{nMemory, nMemory};
        ::prlimit(m_nProcess, RLIMIT_AS, &memory, nullptr);
    }
    return CResult::Success();
}

bool CPdfProcess::IsReady() const
{
    pollfd file{m_socket.Get(), POLLIN, 0};
    return m_nProcess > 0 && ::poll(&file, 1, 0) == 0;
}

bool CPdfProcess::Send(const SPdfRequest& request, std::string_view password, int nFile) const
{
    iovec parts[2] = {{const_cast<SPdfRequest*>(&request), sizeof request},
                      {const_cast<char*>(password.data()), password.size()}};
    msghdr message = {};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof nFile)] = {};
    if (nFile >= 0) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
        pHeader->cmsg_level = SOL_SOCKET;
        pHeader->cmsg_type = SCM_RIGHTS;
        pHeader->cmsg_len = CMSG_LEN(sizeof nFile);
        std::memcpy(CMSG_DATA(pHeader), &nFile, sizeof nFile);
    }
    return ::sendmsg(m_socket.Get(), &message, MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

CResult CPdfProcess::Receive(const SPdfRequest& request, std::chrono::milliseconds limit, int nCancel,
                             SPdfAnswer& answer) const
{
    LimitProcessorTime(limit);
    pollfd files[2] = {{m_socket.Get(), POLLIN, 0}, {nCancel, POLLIN, 0}};
    const int nReady = WaitFor(files, Clock::now() + limit);
    if (nReady == 0 && CProgress::IsThreadCancelled())
        return CResult::Failure(kCancelled);
    if (nReady <= 0)
        return CResult::Failure(nReady == 0 ? kTooSlow : kEnded);
    if (files[1].revents != 0) {
        eventfd_t nCalls = 0;
        ::eventfd_read(nCancel, &nCalls);
        return CResult::Failure(kCancelled);
    }
    // One byte more than an answer has, so that a longer packet is seen for what it is. A file that comes
    // along uninvited is closed by the system.
    char packet[sizeof answer + 1];
    const ssize_t nBytes = ::recv(m_socket.Get(), packet, sizeof packet, MSG_DONTWAIT);
    if (nBytes <= 0)
        return CResult::Failure(kEnded);
    const bool bValid = ReadPdfAnswer(packet, static_cast<std::size_t>(nBytes), request, answer);
    return bValid ? CResult::Success() : CResult::Failure(kBroken);
}

/// Takes effect when this process cannot look after the other one, for instance because it was stopped.
void CPdfProcess::LimitProcessorTime(std::chrono::milliseconds limit) const
{
    clockid_t clock = 0;
    timespec used = {};
    if (::clock_getcpuclockid(m_nProcess, &clock) != 0 || ::clock_gettime(clock, &used) != 0)
        return;
    const auto nSeconds = static_cast<rlim_t>(used.tv_sec + limit.count() / 1000 + 2);
    const rlimit seconds{nSeconds, RLIM_INFINITY};
    ::prlimit(m_nProcess, RLIMIT_CPU, &seconds, nullptr);
}

void CPdfProcess::End()
{
    if (m_nProcess < 0)
        return;
    ::kill(m_nProcess, SIGKILL);
    while (::waitpid(m_nProcess, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_nProcess = -1;
    m_socket.Close();
}

} // namespace Vantor::Utils
