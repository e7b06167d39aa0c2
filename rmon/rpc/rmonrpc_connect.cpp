// SPDX-License-Identifier: MIT
#include "rmon/rpc/rmonrpc_transport.h"

#include "rmon/rpc/rmonrpc_waiting.h"

#include <algorithm>
#include <cerrno>

#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <rpc/pmap_prot.h>
#include <rpc/xdr.h>

namespace {

/** Notes why there is no client, for clnt_spcreateerror. */
void fail_to_connect(clnt_stat status, clnt_stat call_status, int code)
{
    rpc_createerr.cf_stat = status;
    rpc_createerr.cf_error.re_status = call_status;
    rpc_createerr.cf_error.re_errno = code;
}

/** Connects socket: 0, or the number of the error. */
int connect_until(int64_t deadline, int socket, const sockaddr_in &address)
{
    if (connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return 0;
    if (errno != EINPROGRESS && errno != EINTR)
        return errno;
    const int ready = wait_until(deadline, socket, POLLOUT);
    if (ready <= 0)
        return ready == 0 ? ETIMEDOUT : errno;
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

/** A connected socket; -1 with its reason noted. No port is bound to it: the kernel takes any. */
int connected_socket(int64_t deadline, const sockaddr_in &address)
{
    // Commands that the web server or the module starts are not to inherit the link.
    const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int error = made < 0 ? errno : connect_until(deadline, made, address);
    if (error == 0) {
        // The last fragment of a long call is not to wait until the agent acknowledges the one before.
        const int yes = 1;
        setsockopt(made, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        return made;
    }
    if (made >= 0)
        close(made);
    fail_to_connect(RPC_SYSTEMERROR, RPC_SYSTEMERROR, error);
    return -1;
}

timeval time_until(int64_t deadline)
{
    const int64_t left = std::max<int64_t>(deadline - milliseconds(), 0);
    return {static_cast<time_t>(left / 1000), static_cast<suseconds_t>(left % 1000 * 1000)};
}

/** The program's port in network order, as the port mapper of the host tells it; 0 with its reason noted. */
in_port_t mapped_port(int64_t deadline, sockaddr_in address, uint32_t program, uint32_t version)
{
    address.sin_port = htons(PMAPPORT);
    CLIENT *mapper = connect_client(address, PMAPPROG, PMAPVERS, time_until(deadline));
    if (!mapper)
        return 0;
    pmap wanted{program, version, IPPROTO_TCP, 0};
    u_short port = 0;
    const clnt_stat status = clnt_call(
        mapper, PMAPPROC_GETPORT, reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_pmap)),
        &wanted, reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_u_short)), &port,
        time_until(deadline));
    if (status != RPC_SUCCESS)
        fail_to_connect(RPC_PMAPFAILURE, status, 0);
    else if (port == 0)
        fail_to_connect(RPC_PROGNOTREGISTERED, RPC_SUCCESS, 0);
    clnt_destroy(mapper);
    return htons(port);
}

} // namespace

CLIENT *connect_client(sockaddr_in address, uint32_t program, uint32_t version, timeval timeout)
{
    const int64_t deadline = deadline_in(timeout);
    if (address.sin_port == 0 && (address.sin_port = mapped_port(deadline, address, program, version)) == 0)
        return nullptr;
    const int socket = connected_socket(deadline, address);
    if (socket < 0)
        return nullptr;
    CLIENT *client = client_over(socket, program, version);
    if (!client)
        fail_to_connect(RPC_SYSTEMERROR, RPC_SYSTEMERROR, ENOMEM);
    return client;
}
