// SPDX-License-Identifier: MIT
#include "agent/service/confine.h"

#include "agent/core/log.h"

#include <cerrno>
#include <cstring>
#include <memory>

#include <cap-ng.h>
#include <grp.h>
#include <pwd.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#define SANITIZED
#elif defined __has_feature
#if __has_feature(address_sanitizer)
#define SANITIZED
#endif
#endif

namespace {

std::string failure(const std::string &what, int error)
{
    return "cannot " + what + ": " + std::strerror(error);
}

std::string because(const std::string &why)
{
    return " (" + why + ")";
}

void choose_capabilities(bool may_capture)
{
    capng_clear(CAPNG_SELECT_BOTH);
    constexpr auto sets = CAPNG_EFFECTIVE | CAPNG_PERMITTED | CAPNG_BOUNDING_SET;
    if (may_capture)
        capng_update(CAPNG_ADD, static_cast<capng_type_t>(sets), CAP_NET_RAW);
}

/** Gives up all capabilities, but the one to capture where it is held and wanted. The error, or 0. */
int drop_capabilities(const confinement &wanted)
{
    errno = EPERM; // where the library fails by itself
    if (capng_get_caps_process() != 0)
        return errno;
    // Without CAP_SETPCAP the bounding set stays, which then bounds a set that can't grow any more.
    const bool may_bound = capng_have_capability(CAPNG_EFFECTIVE, CAP_SETPCAP);
    choose_capabilities(wanted.may_capture);
    errno = EPERM;
    return capng_apply(may_bound ? CAPNG_SELECT_BOTH : CAPNG_SELECT_CAPS) == 0 ? 0 : errno;
}

/**
 * Becomes the user and gives up capabilities in the same step: the kernel drops
 * them at a change of user unless it is told to keep them. An empty text, or
 * what went wrong.
 */
std::string become_user(const confinement &wanted)
{
    errno = 0;
    const passwd *user = getpwnam(wanted.user.c_str());
    if (!user)
        return errno == 0 ? "there is no user " + wanted.user
                          : failure("find the user " + wanted.user, errno);
    choose_capabilities(wanted.may_capture);
    errno = EPERM; // where the library fails by itself
    const auto flags = static_cast<capng_flags_t>(CAPNG_INIT_SUPP_GRP | CAPNG_CLEAR_BOUNDING);
    if (capng_change_id(static_cast<int>(user->pw_uid), static_cast<int>(user->pw_gid), flags) != 0)
        return failure("become the user " + wanted.user, errno);
    return {};
}

/**
 * What the agent calls, and what the libraries under it call. Files are opened
 * for the settings, saved packets and captures that begin again; sockets for
 * clients, interfaces and what the kernel tells of them. No program is started:
 * what has to be one, as the decoder of voice signalling, begins before this;
 * no other process looked at, no network set.
 */
constexpr int allowed_calls[] = {
    SCMP_SYS(accept4),
    SCMP_SYS(bind),
    SCMP_SYS(brk),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(close),
    SCMP_SYS(connect), // to the service manager's socket, by some versions of its library
    SCMP_SYS(dup),
    SCMP_SYS(epoll_create1),
    SCMP_SYS(epoll_ctl),
    SCMP_SYS(epoll_pwait),
    SCMP_SYS(epoll_wait),
    SCMP_SYS(eventfd2),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(fcntl),
    SCMP_SYS(fdatasync),
    SCMP_SYS(flock),
    SCMP_SYS(fstat),
    SCMP_SYS(fstatfs),
    SCMP_SYS(fsync),
    SCMP_SYS(ftruncate),
    SCMP_SYS(futex),
    SCMP_SYS(getcwd),
    SCMP_SYS(getdents64),
    SCMP_SYS(getegid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getpeername),
    SCMP_SYS(getpid),
    SCMP_SYS(getrandom),
    SCMP_SYS(getsockname),
    SCMP_SYS(getsockopt),
    SCMP_SYS(gettid),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getuid),
    SCMP_SYS(ioctl),
    SCMP_SYS(linkat),
    SCMP_SYS(lseek),
    SCMP_SYS(madvise),
    SCMP_SYS(mkdirat),
    SCMP_SYS(mmap),
    SCMP_SYS(mprotect),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(nanosleep),
    SCMP_SYS(newfstatat),
    SCMP_SYS(open),
    SCMP_SYS(openat),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(pwrite64),
    SCMP_SYS(read),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(readv),
    SCMP_SYS(recvfrom),
    SCMP_SYS(recvmmsg),
    SCMP_SYS(recvmsg),
    SCMP_SYS(renameat),
    SCMP_SYS(renameat2),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sched_getaffinity), // the C library shares memory out among threads by processors
    SCMP_SYS(sendmsg),
    SCMP_SYS(sendto),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(setsockopt),
    SCMP_SYS(shutdown),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(socket),
    SCMP_SYS(stat),
    SCMP_SYS(statfs),
    SCMP_SYS(statx),
    SCMP_SYS(sysinfo),
    SCMP_SYS(tgkill), // abort() ends by a signal to itself
    SCMP_SYS(timerfd_create),
    SCMP_SYS(timerfd_settime),
    SCMP_SYS(uname),
    SCMP_SYS(unlinkat),
    SCMP_SYS(wait4), // for processes that were started before
    SCMP_SYS(write),
    SCMP_SYS(writev),
    // The same by the names of 32-bit machines; a name that this machine lacks adds nothing.
    SCMP_SYS(_llseek),
    SCMP_SYS(clock_gettime64),
    SCMP_SYS(clock_nanosleep_time64),
    SCMP_SYS(fcntl64),
    SCMP_SYS(fstat64),
    SCMP_SYS(fstatat64),
    SCMP_SYS(fstatfs64),
    SCMP_SYS(ftruncate64),
    SCMP_SYS(futex_time64),
    SCMP_SYS(getegid32),
    SCMP_SYS(geteuid32),
    SCMP_SYS(getgid32),
    SCMP_SYS(getuid32),
    SCMP_SYS(mmap2),
    SCMP_SYS(ppoll_time64),
    SCMP_SYS(recvmmsg_time64),
    SCMP_SYS(sigreturn),
    SCMP_SYS(socketcall),
    SCMP_SYS(stat64),
    SCMP_SYS(statfs64),
    SCMP_SYS(timerfd_settime64),
};

/**
 * A thread may begin, as the one that writes settings does, and no process: the
 * C library asks clone() for a thread where there is no clone3(), whose flags
 * stand where a filter doesn't see them.
 */
int allow_threads(scmp_filter_ctx filter)
{
    const int error = seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0);
#ifdef __s390__
    constexpr unsigned flags = 1; // the stack comes first there
#else
    constexpr unsigned flags = 0;
#endif
    const scmp_arg_cmp thread = SCMP_CMP(flags, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD);
    return error != 0 ? error : seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1, thread);
}

/**
 * Any other system call fails with EPERM, which the agent reports where it happens. An empty text, or why
 * there is no filter.
 */
std::string filter_calls()
{
#ifdef SANITIZED
    return "built with sanitizers, which call more";
#endif
    const std::unique_ptr<void, void (*)(scmp_filter_ctx)> filter(
        seccomp_init(SCMP_ACT_ERRNO(EPERM)), seccomp_release);
    if (!filter)
        return std::strerror(ENOMEM);
    // Nothing here runs foreign code, so no branch predictor needs to be slowed down for it.
    int error = seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_SSB, 1);
    for (const int call : allowed_calls)
        if (error == 0)
            error = seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0);
    if (error == 0)
        error = allow_threads(filter.get());
    if (error == 0)
        error = seccomp_load(filter.get());
    return error == 0 ? "" : std::strerror(-error);
}

std::string text_of_identity()
{
    const passwd *user = getpwuid(getuid());
    return "runs as " + (user ? std::string(user->pw_name) : std::to_string(getuid()));
}

} // namespace

std::string confine(const confinement &wanted)
{
    int error = 0;
    std::string wrong;
    if (wanted.user.empty())
        error = drop_capabilities(wanted);
    else
        wrong = become_user(wanted);
    if (!wrong.empty())
        return wrong;

    // What this machine does not let go is said, and the agent goes on.
    std::string rights = wanted.may_capture ? "with the right to capture alone" : "without any capability";
    if (error != 0)
        rights = "with all its capabilities" + because(std::strerror(error));
    bool whole = error == 0;
    std::string privileges = "no new privileges";
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        privileges = "new privileges" + because(std::strerror(errno));
        whole = false;
    }
    const std::string who = text_of_identity(); // reads a file, maybe by libraries that the filter stops
    std::string calls = "only the system calls that it needs";
    if (const std::string why = filter_calls(); !why.empty()) {
        calls = "all system calls" + because(why);
        whole = false;
    }
    say(whole ? log_level::notice : log_level::warning,
        who + ", " + rights + ", " + privileges + " and " + calls);
    return {};
}
