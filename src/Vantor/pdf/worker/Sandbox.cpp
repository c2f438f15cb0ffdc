// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/worker/Sandbox_p.h>

#include <Vantor/file/FileDescriptor_p.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string>
#include <vector>

#include <fcntl.h>
#include <fontconfig/fontconfig.h>
#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Vantor::Utils
{

namespace
{
void AddPaths(FcStrList* pList, std::vector<std::string>& vctPaths)
{
    if (!pList)
        return;
    while (const FcChar8* pPath = FcStrListNext(pList))
        vctPaths.emplace_back(reinterpret_cast<const char*>(pPath));
    FcStrListDone(pList);
}

/// What stays readable: the system's libraries, fonts and tables, and where this user has fonts.
std::vector<std::string> ReadablePaths()
{
    std::vector<std::string> vctPaths{"/usr", "/lib", "/lib64", "/etc", "/dev/urandom"};
    FcInit();
    AddPaths(FcConfigGetFontDirs(nullptr), vctPaths);
    AddPaths(FcConfigGetConfigFiles(nullptr), vctPaths);
    return vctPaths;
}

/// A rule with the rights that are meant for files holds for folders and what is below them.
void Allow(int nRules, const std::string& strPath)
{
    const CFileDescriptor path(::open(strPath.c_str(), O_PATH | O_CLOEXEC));
    struct stat status = {};
    if (!path.IsOpen() || ::fstat(path.Get(), &status) != 0)
        return;
    landlock_path_beneath_attr rule = {};
    rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
    if (S_ISDIR(status.st_mode))
        rule.allowed_access |= LANDLOCK_ACCESS_FS_READ_DIR;
    rule.parent_fd = path.Get();
    ::syscall(SYS_landlock_add_rule, nRules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

/// No file but these, and none of them for writing or as a program.
void LimitFiles()
{
    landlock_ruleset_attr attributes = {};
    attributes.handled_access_fs = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1; // all that the first version knows
    const CFileDescriptor rules(static_cast<int>(
        ::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0)));
    if (!rules.IsOpen())
        return;
    for (const std::string& strPath : ReadablePaths())
        Allow(rules.Get(), strPath);
    ::syscall(SYS_landlock_restrict_self, rules.Get(), 0);
}

/// What reading, computing and answering need. An unknown name is skipped: not every machine has every call.
constexpr const char* kCalls[] = {
#ifdef __SANITIZE_ADDRESS__
    "pipe", "pipe2", // by which the sanitizers ask whether memory can be read
#endif
    // memory, threads, time, the end
    "brk", "mmap", "mmap2", "munmap", "mremap", "mprotect", "madvise", "futex", "futex_time64",
    "set_robust_list", "rseq", "sched_yield", "sched_getaffinity", "getrandom", "gettimeofday", "time",
    "clock_gettime", "clock_gettime64", "clock_getres", "clock_nanosleep", "nanosleep", "restart_syscall",
    "getpid", "gettid", "getuid", "geteuid", "getgid", "getegid", "getrusage", "sysinfo", "uname",
    "rt_sigaction", "rt_sigprocmask", "rt_sigreturn", "sigreturn", "sigaltstack", "tgkill", "exit",
    "exit_group",
    // open files and the socket
    "read", "readv", "pread64", "write", "lseek", "_llseek", "close", "dup", "fcntl", "fcntl64", "fstat",
    "fstat64", "fstatfs", "fstatfs64", "fadvise64", "recvmsg", "sendmsg", "sendto", "poll", "ppoll",
    "ppoll_time64",
    // looking for fonts and tables
    "stat", "stat64", "lstat", "lstat64", "newfstatat", "fstatat64", "statx", "statfs", "statfs64", "access",
    "faccessat", "faccessat2", "readlink", "readlinkat", "getdents64", "getcwd"};

void AllowCalls(scmp_filter_ctx pFilter)
{
    for (const char* pName : kCalls) {
        const int nCall = ::seccomp_syscall_resolve_name(pName);
        if (nCall != __NR_SCMP_ERROR)
            ::seccomp_rule_add(pFilter, SCMP_ACT_ALLOW, nCall, 0);
    }
    // Reading only: no other access, nothing is made or cut.
    constexpr std::uint64_t kWrites = O_ACCMODE | O_CREAT | O_TRUNC;
    ::seccomp_rule_add(pFilter, SCMP_ACT_ALLOW, SCMP_SYS(open), 1,
                       SCMP_A1_64(SCMP_CMP_MASKED_EQ, kWrites, 0));
    ::seccomp_rule_add(pFilter, SCMP_ACT_ALLOW, SCMP_SYS(openat), 1,
                       SCMP_A2_64(SCMP_CMP_MASKED_EQ, kWrites, 0));
    // Threads, no processes.
    ::seccomp_rule_add(pFilter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1,
                       SCMP_A0_64(SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD));
}

/// Calls that nothing here needs fail as if the kernel did not know them, which libraries are prepared for.
void LimitCalls()
{
    const scmp_filter_ctx pFilter = ::seccomp_init(SCMP_ACT_ERRNO(ENOSYS));
    if (!pFilter)
        return;
    AllowCalls(pFilter);
    ::seccomp_load(pFilter);
    ::seccomp_release(pFilter);
}
} // namespace

void EnterSandbox()
{
    const rlimit nothing{0, 0};
    ::setrlimit(RLIMIT_CORE, &nothing);
    ::setrlimit(RLIMIT_FSIZE, &nothing); // what is mapped can be written all the same
    ::signal(SIGXFSZ, SIG_IGN);          // writing fails, and ends nothing
    ::prctl(PR_SET_DUMPABLE, 0);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    LimitFiles();
    LimitCalls();
}

} // namespace Vantor::Utils
