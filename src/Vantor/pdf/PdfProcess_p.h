// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/file/FileDescriptor_p.h>
#include <Vantor/pdf/PdfProtocol_p.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace Vantor::Utils
{

/// The program that reads documents, as a process with a socket to it. It is ended and reaped by End, and
/// by End only: nothing waits for a process to go by itself.
class CPdfProcess
{
public:
    /// @{
    /// The reasons of a failure.
    static constexpr const char* kTooSlow = "It took longer than the time limit.";
    static constexpr const char* kEnded = "The program that reads documents ended unexpectedly.";
    static constexpr const char* kBroken = "The program that reads documents gave no valid answer.";
    static constexpr const char* kCancelled = "It was cancelled.";
    /// @}

    CPdfProcess() = default;
    ~CPdfProcess() { End(); }
    CPdfProcess(const CPdfProcess&) = delete;
    CPdfProcess& operator=(const CPdfProcess&) = delete;

    /// Starts the program; it inherits no open file but its end of the socket.
    /// @param strProgram  its path
    /// @param nMemory     the largest address space in bytes
    CResult Start(const std::string& strProgram, std::size_t nMemory);

    /// Whether it runs, as far as can be seen, and has said nothing that it was not asked.
    bool IsReady() const;

    /// Asks; at most one request is on its way.
    /// @param nFile  an open file that goes along, below 0 for none
    /// @return false when the process is gone, and the request has not been seen by anybody
    bool Send(const SPdfRequest& request, std::string_view password, int nFile) const;

    /// Waits for the answer, unless the progress of the thread is cancelled. After a failure the process is
    /// no good any more.
    /// @param limit    on the wall; processor time is bounded by it, too
    /// @param nCancel  an event's file, which ends the waiting and is then read
    CResult Receive(const SPdfRequest& request, std::chrono::milliseconds limit, int nCancel,
                    SPdfAnswer& answer) const;

    /// Kills and reaps the process, if there is one.
    void End();

private:
    void LimitProcessorTime(std::chrono::milliseconds limit) const;

    pid_t m_nProcess = -1;
    CFileDescriptor m_socket;
};

} // namespace Vantor::Utils
