// SPDX-License-Identifier: MIT
#include "agent/voice/launcher.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <linux/close_range.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char *decoder_name = "tshark";

/** Where the launcher has its end of the socket. */
constexpr int launcher_socket = 3;

/** What nobody owns, as a user and as a group. */
constexpr uid_t nobody = 65534;

/** Octets of the decoder's memory, stack and code included; it lives in a tenth of it. */
constexpr rlim_t max_memory = rlim_t{2} << 30;

/** Frames after which the decoder forgets conversations, so that it does not grow. */
constexpr const char *frames_until_reset = "100000";

/* The decoder's output is the whole tree of these protocols. Of others a word. */
constexpr const char *const decoder_words[] = {
    decoder_name,
    "-r",
    "-", // not -i -, which keeps all that it reads in a file
    "-n",
    "-l",
    "-M",
    frames_until_reset,
    "-T",
    "json",
    "--no-duplicate-keys",
    "-J",
    "skinny mgcp sdp q931 h225 h245",
    nullptr,
};

/* Its user's own settings would change what it prints. */
constexpr const char *const decoder_environment[] = {
    "PATH=/usr/bin:/bin",           "HOME=/nonexistent", "WIRESHARK_CONFIG_DIR=/nonexistent",
    "XDG_CONFIG_HOME=/nonexistent", "LC_ALL=C.UTF-8",    nullptr,
};

/* ---- in the launcher's process: nothing here may use what the agent's threads or libraries hold ------- */

[[noreturn]] void exec_decoder(const std::string &decoder, int input, int output)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    close_range(launcher_socket, ~0U, 0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    const rlimit memory{max_memory, max_memory};
    setrlimit(RLIMIT_AS, &memory);
    const rlimit no_files{0, 0};
    setrlimit(RLIMIT_FSIZE, &no_files);
    setrlimit(RLIMIT_CORE, &no_files);
    execve(
        decoder.c_str(), const_cast<char *const *>(decoder_words),
        const_cast<char *const *>(decoder_environment));
    _exit(127);
}

void close_all(const int (&descriptors)[2])
{
    close(descriptors[0]);
    close(descriptors[1]);
}

/** The answer: an octet with the two descriptors, or without when there are none. */
bool send_pipes(const int *descriptors)
{
    char octet = descriptors != nullptr;
    iovec part{&octet, 1};
    alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))]{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (descriptors) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr *header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(2 * sizeof(int));
        std::memcpy(CMSG_DATA(header), descriptors, 2 * sizeof(int));
    }
    return sendmsg(launcher_socket, &message, MSG_NOSIGNAL) == 1;
}

/** Starts a decoder and hands over its pipes. Its process, or -1. */
pid_t start_decoder(const std::string &decoder)
{
    int to[2];
    int from[2];
    if (pipe2(to, O_CLOEXEC) != 0) {
        send_pipes(nullptr);
        return -1;
    }
    if (pipe2(from, O_CLOEXEC) != 0) {
        close_all(to);
        send_pipes(nullptr);
        return -1;
    }
    const pid_t process = fork();
    if (process == 0)
        exec_decoder(decoder, to[0], from[1]);
    const int ends[2] = {to[1], from[0]};
    send_pipes(process > 0 ? ends : nullptr);
    close_all(to);
    close_all(from);
    return process;
}

void end_decoder(pid_t &process)
{
    if (process <= 0)
        return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    process = -1;
}

/** Starts decoders until the agent is gone. */
[[noreturn]] void serve_agent(const std::string &decoder)
{
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    sigprocmask(SIG_SETMASK, &children, nullptr);
    const int ended = signalfd(-1, &children, SFD_CLOEXEC | SFD_NONBLOCK);
    pid_t process = -1;
    pollfd waits[2] = {{launcher_socket, POLLIN, 0}, {ended, POLLIN, 0}};
    for (;;) {
        if (poll(waits, 2, -1) < 0 && errno != EINTR)
            break;
        if (waits[1].revents & POLLIN) {
            signalfd_siginfo caught;
            (void)!read(ended, &caught, sizeof caught);
            if (process > 0 && waitpid(process, nullptr, WNOHANG) == process)
                process = -1;
        }
        if (waits[0].revents == 0)
            continue;
        char octet;
        if (recv(launcher_socket, &octet, 1, 0) != 1)
            break;
        end_decoder(process);
        process = start_decoder(decoder);
    }
    end_decoder(process);
    _exit(0);
}

/** Without rights, and no way to get one by what is executed. False when some are left. */
bool give_up_rights()
{
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return false;
    if (geteuid() == 0
        && (setgroups(0, nullptr) != 0 || setresgid(nobody, nobody, nobody) != 0
            || setresuid(nobody, nobody, nobody) != 0))
        return false;
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[2]{};
    prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0);
    return syscall(SYS_capset, &header, none) == 0;
}

[[noreturn]] void run_launcher(int socket, const std::string &decoder)
{
    prctl(PR_SET_NAME, "rmon-launcher");
    std::signal(SIGHUP, SIG_IGN); // it ends the agent neither; the decoder has that from here
    // An agent that was started without standard descriptors has the socket where one of these belongs.
    socket = fcntl(socket, F_DUPFD_CLOEXEC, launcher_socket);
    // Whoever waits for the end of what the agent prints does not wait for this process.
    const int nothing = open("/dev/null", O_RDWR);
    if (socket < 0 || nothing < 0)
        _exit(1);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; standard++)
        dup2(nothing, standard);
    if (socket != launcher_socket)
        dup2(socket, launcher_socket);
    close_range(launcher_socket + 1, ~0U, 0);
    if (!give_up_rights())
        _exit(1);
    serve_agent(decoder);
}

} // namespace

std::string find_decoder()
{
    const char *path = std::getenv("PATH");
    std::string_view rest = path ? path : "/usr/bin:/bin";
    while (!rest.empty()) {
        const std::size_t length = rest.find(':');
        const std::string_view folder = rest.substr(0, length);
        rest.remove_prefix(length == std::string_view::npos ? rest.size() : length + 1);
        std::string program = std::string(folder) + "/" + decoder_name;
        if (!folder.empty() && access(program.c_str(), X_OK) == 0)
            return program;
    }
    return {};
}

bool open_launcher(voice_launcher &launcher, const std::string &decoder)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    const pid_t process = fork();
    if (process == 0)
        run_launcher(ends[1], decoder);
    close(ends[1]);
    if (process < 0) {
        close(ends[0]);
        return false;
    }
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    launcher = {ends[0], process};
    return true;
}

bool ask_for_decoder(voice_launcher &launcher)
{
    return launcher.socket >= 0 && send(launcher.socket, "", 1, MSG_NOSIGNAL) == 1;
}

decoder_pipes take_decoder(voice_launcher &launcher, bool &gone)
{
    char octet = 0;
    iovec part{&octet, 1};
    alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))];
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t size = recvmsg(launcher.socket, &message, MSG_CMSG_CLOEXEC);
    gone = size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR);
    if (size != 1)
        return {};
    const cmsghdr *header = CMSG_FIRSTHDR(&message);
    if (!header || header->cmsg_type != SCM_RIGHTS || header->cmsg_len != CMSG_LEN(2 * sizeof(int)))
        return {};
    int ends[2];
    std::memcpy(ends, CMSG_DATA(header), sizeof ends);
    for (const int end : ends)
        fcntl(end, F_SETFL, O_NONBLOCK);
    return {ends[0], ends[1]};
}

void close_launcher(voice_launcher &launcher)
{
    if (launcher.socket < 0)
        return;
    close(launcher.socket);
    waitpid(launcher.process, nullptr, 0);
    launcher = {};
}
