// SPDX-License-Identifier: MIT
#include "agent/capture/netlink.h"

#include <cerrno>

#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

/** The kernel fits the messages of a dump to the reader's room, up to this size. */
constexpr std::size_t room = 32 * 1024;

/** Bytes of the next datagram, in buffer; -1 with errno. What others than the kernel sent has size 0. */
ssize_t receive(int socket, void *buffer, int flags)
{
    sockaddr_nl sender{};
    iovec part{buffer, room};
    msghdr header{};
    header.msg_name = &sender;
    header.msg_namelen = sizeof sender;
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    ssize_t size;
    do
        size = recvmsg(socket, &header, flags);
    while (size < 0 && errno == EINTR);
    return size > 0 && sender.nl_pid != 0 ? 0 : size;
}

} // namespace

int open_netlink(uint32_t groups)
{
    const int socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
    if (socket < 0)
        return -1;
    // The kernel answers at once; should it ever not, the agent must go on.
    const timeval limit{2, 0};
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    if (bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return socket;
    const int error = errno;
    close(socket);
    errno = error;
    return -1;
}

int ask_netlink(int socket, nlmsghdr *question, on_netlink message, void *context)
{
    static uint32_t last_sequence;
    alignas(nlmsghdr) static uint8_t buffer[room];

    question->nlmsg_flags |= NLM_F_REQUEST;
    question->nlmsg_seq = ++last_sequence;
    const bool dump = (question->nlmsg_flags & NLM_F_DUMP) == NLM_F_DUMP;
    if (send(socket, question, question->nlmsg_len, 0) < 0)
        return errno;

    for (;;) {
        const ssize_t received = receive(socket, buffer, 0);
        if (received < 0)
            return errno;
        auto size = static_cast<unsigned>(received);
        for (auto *next = reinterpret_cast<nlmsghdr *>(buffer); NLMSG_OK(next, size);
             next = NLMSG_NEXT(next, size)) {
            if (next->nlmsg_seq != last_sequence)
                continue; // of an earlier question that was given up
            if (next->nlmsg_type == NLMSG_DONE)
                return 0;
            if (next->nlmsg_type == NLMSG_ERROR)
                return -static_cast<const nlmsgerr *>(NLMSG_DATA(next))->error;
            message(context, next);
            if (!dump)
                return 0;
        }
    }
}

int hear_netlink(int socket, on_netlink message, void *context)
{
    alignas(nlmsghdr) static uint8_t buffer[room];
    for (;;) {
        const ssize_t received = receive(socket, buffer, MSG_DONTWAIT);
        if (received < 0)
            return errno == EAGAIN || errno == EWOULDBLOCK ? 0 : errno;
        auto size = static_cast<unsigned>(received);
        for (auto *next = reinterpret_cast<nlmsghdr *>(buffer); NLMSG_OK(next, size);
             next = NLMSG_NEXT(next, size))
            message(context, next);
    }
}
