// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QList>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// What a test runs in a process of its own, off the screen, until it kills it.
namespace KilledChild
{
/// In the child: tells the test of something finished. @return false when the test is gone
inline bool Tell(int nDone)
{
    return ::write(STDOUT_FILENO, &nDone, sizeof nDone) == sizeof nDone;
}

/// In the test: runs this program with the arguments, waits for its first word, then so long, and kills it.
/// @return what it told last
inline int Run(QList<QByteArray> lstArguments, int nMicroseconds)
{
    int pipeEnds[2];
    if (::pipe(pipeEnds) != 0)
        return 0;
    lstArguments.prepend("killed");
    lstArguments << "-platform"
                 << "offscreen";
    std::vector<char*> vctArguments;
    for (QByteArray& argument : lstArguments)
        vctArguments.push_back(argument.data());
    vctArguments.push_back(nullptr);
    const pid_t nChild = ::fork();
    if (nChild == 0) {
        ::dup2(pipeEnds[1], STDOUT_FILENO);
        ::close(pipeEnds[0]);
        ::close(pipeEnds[1]);
        ::execv("/proc/self/exe", vctArguments.data());
        ::_exit(1);
    }
    ::close(pipeEnds[1]);
    int nDone = 0, nTold = 0;
    // Its clock begins with its first word.
    if (::read(pipeEnds[0], &nTold, sizeof nTold) == sizeof nTold)
        nDone = nTold;
    ::usleep(static_cast<useconds_t>(nMicroseconds));
    ::kill(nChild, SIGKILL);
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    while (::read(pipeEnds[0], &nTold, sizeof nTold) == sizeof nTold)
        nDone = nTold;
    ::close(pipeEnds[0]);
    return nDone;
}
} // namespace KilledChild
