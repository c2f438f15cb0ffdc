// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Enters the sandbox of vantor-pdf and says what is still possible, for tst_PdfSandbox: sandbox_probe FOLDER
#include <Vantor/pdf/worker/Sandbox_p.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// @param nResult  below 0 when it was refused
void Tell(const char* pWhat, long nResult)
{
    std::printf("%s %s\n", pWhat, nResult >= 0 ? "yes" : "no");
    std::fflush(stdout);
}

long Open(const std::string& strPath, int nFlags)
{
    const int nFile = ::open(strPath.c_str(), nFlags, 0600);
    if (nFile >= 0)
        ::close(nFile);
    return nFile;
}
} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2)
        return 2;
    const std::string strFolder = argv[1];
    const int nOpen = ::open((strFolder + "/open").c_str(), O_RDWR | O_CREAT, 0600);
    const auto tellAll = [&] {
        Tell("read-private", Open(strFolder + "/private", O_RDONLY));
        Tell("read-host", Open("/proc/" + std::to_string(::getppid()) + "/environ", O_RDONLY));
        Tell("read-system", Open("/usr/include/stdio.h", O_RDONLY));
        Tell("read-fonts", Open("/etc/fonts/fonts.conf", O_RDONLY));
        Tell("write-open-file", ::write(nOpen, "x", 1) == 1 ? 0 : -1);
        Tell("write-file", Open(strFolder + "/private", O_WRONLY));
        Tell("make-file", Open(strFolder + "/new", O_WRONLY | O_CREAT));
        Tell("make-folder", ::mkdir((strFolder + "/folder").c_str(), 0700));
        Tell("remove-file", ::unlink((strFolder + "/victim").c_str()));
        Tell("rename-file", ::rename((strFolder + "/other").c_str(), (strFolder + "/renamed").c_str()));
        Tell("shorten-file", ::truncate((strFolder + "/private").c_str(), 1));
        Tell("socket", ::socket(AF_INET, SOCK_STREAM, 0));
        Tell("local-socket", ::socket(AF_UNIX, SOCK_STREAM, 0));
        Tell("kill-host", ::kill(::getppid(), 0));
        const pid_t nChild = ::fork();
        if (nChild == 0)
            ::_exit(0);
        Tell("fork", nChild);
        rlimit core{};
        Tell("core", ::getrlimit(RLIMIT_CORE, &core) == 0 && core.rlim_cur > 0 ? 0 : -1);
        bool bRan = false;
        std::thread([&bRan] { bRan = true; }).join();
        Tell("thread", bRan ? 0 : -1);
    };
    if (std::getenv("VANTOR_PROBE_FREE"))
        tellAll();
    Vantor::Utils::EnterSandbox();
    tellAll();
    // Nothing comes after it where it succeeds.
    ::execl("/bin/echo", "echo", "exec yes", nullptr);
    Tell("exec", -1);
    return 0;
}
