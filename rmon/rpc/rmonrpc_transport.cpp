#include "rmon/rpc/rmonrpc_transport.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <rpc/rpc_msg.h>
#include <rpc/xdr.h>

namespace {

/** Bytes of a message's one fragment, and of one read, at most. */
constexpr u_int buffer_size = 65536;

/** A handle and its state, of which the RPC library sees the handle. */
struct link_client {
    CLIENT handle;
    CLIENT *connection;
    int socket;
    uint32_t program;
    uint32_t version;
    uint32_t xid;     // of the last call
    int64_t deadline; // of the call that is under way, in milliseconds of the monotonic clock
    rpc_err error;
    XDR stream;
};

link_client *state_of(CLIENT *client)
{
    return static_cast<link_client *>(client->cl_private);
}

int64_t milliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

/** Notes what the call fails with; false. */
bool fail(link_client *link, clnt_stat status, int code)
{
    link->error.re_status = status;
    link->error.re_errno = code;
    return false;
}

/* ---- the stream's ends ------------------------------------------------------- */

/** Waits until something can be read or written; the status is what a failure to wait means. */
bool wait(link_client *link, short events, clnt_stat status)
{
    for (;;) {
        const int64_t left = link->deadline - milliseconds();
        pollfd socket{link->socket, events, 0};
        const int ready = left > 0 ? poll(&socket, 1, static_cast<int>(left)) : 0;
        if (ready > 0)
            return true;
        if (ready == 0)
            return fail(link, RPC_TIMEDOUT, 0);
        if (errno != EINTR)
            return fail(link, status, errno);
    }
}

int read_some(void *handle, void *to, int size)
{
    auto *link = static_cast<link_client *>(handle);
    if (!wait(link, POLLIN, RPC_CANTRECV))
        return -1;
    const ssize_t got = read(link->socket, to, static_cast<size_t>(size));
    if (got > 0)
        return static_cast<int>(got);
    fail(link, RPC_CANTRECV, got == 0 ? ECONNRESET : errno);
    return -1;
}

/** Sends what the connection takes at once; -1 on failure. No signal: it would be the end of some hosts. */
ssize_t send_some(link_client *link, const char *from, size_t size)
{
    const ssize_t sent = send(link->socket, from, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent == -1 && errno == EAGAIN ? 0 : sent;
}

int write_all(void *handle, void *from, int size)
{
    auto *link = static_cast<link_client *>(handle);
    for (int sent = 0; sent < size;) {
        const ssize_t put =
            send_some(link, static_cast<char *>(from) + sent, static_cast<size_t>(size - sent));
        if (put == -1) {
            fail(link, RPC_CANTSEND, errno);
            return -1;
        }
        sent += static_cast<int>(put);
        if (put == 0 && !wait(link, POLLOUT, RPC_CANTSEND)) {
            // The agent got a part of a call: nothing that follows would make sense to it.
            shutdown(link->socket, SHUT_RDWR);
            return -1;
        }
    }
    return size;
}

/* ---- a call --------------------------------------------------------------------- */

bool send_call(link_client *link, uint32_t procedure, xdrproc_t encode, void *argument)
{
    XDR *stream = &link->stream;
    stream->x_op = XDR_ENCODE;
    // Transaction id, call, RPC version 2, what is called, credentials and a verifier of no length.
    uint32_t header[10] = {link->xid, CALL, RPC_MSG_VERSION, link->program, link->version, procedure};
    for (uint32_t &unit : header)
        unit = htonl(unit);
    const bool encoded =
        XDR_PUTBYTES(stream, reinterpret_cast<char *>(header), sizeof header) && encode(stream, argument);
    if (!encoded && link->error.re_status == RPC_SUCCESS)
        link->error.re_status = RPC_CANTENCODEARGS;
    // What was encoded of a call that can't be goes out all the same: the stream can't take it back.
    const bool sent = xdrrec_endofrecord(stream, TRUE);
    if (encoded && !sent && link->error.re_status == RPC_SUCCESS)
        link->error.re_status = RPC_CANTSEND;
    return encoded && sent;
}

/** Reads up to the result of the reply to this call; replies to others and what is none are skipped. */
bool receive_header(link_client *link)
{
    XDR *stream = &link->stream;
    stream->x_op = XDR_DECODE;
    while (xdrrec_skiprecord(stream)) {
        char verifier[MAX_AUTH_BYTES];
        rpc_msg reply{};
        reply.acpted_rply.ar_verf.oa_base = verifier;
        reply.acpted_rply.ar_results.proc =
            reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_void));
        if (!xdr_replymsg(stream, &reply)) {
            if (link->error.re_status != RPC_SUCCESS)
                return false;
        } else if (reply.rm_xid == link->xid) {
            _seterr_reply(&reply, &link->error);
            return link->error.re_status == RPC_SUCCESS;
        }
    }
    return false;
}

clnt_stat make_call(
    CLIENT *client,
    rpcproc_t procedure,
    xdrproc_t encode,
    void *argument,
    xdrproc_t decode,
    void *result,
    timeval timeout)
{
    link_client *link = state_of(client);
    link->xid--;
    link->error = {};
    link->deadline = milliseconds() + int64_t{timeout.tv_sec} * 1000 + (timeout.tv_usec + 999) / 1000;
    if (send_call(link, procedure, encode, argument) && receive_header(link) && !decode(&link->stream, result)
        && link->error.re_status == RPC_SUCCESS)
        link->error.re_status = RPC_CANTDECODERES;
    return link->error.re_status;
}

/* ---- the other operations ---------------------------------------------------------- */

void abort_call(CLIENT *) {}

void get_error(CLIENT *client, rpc_err *error)
{
    *error = state_of(client)->error;
}

bool_t free_result(CLIENT *client, xdrproc_t routine, void *result)
{
    XDR *stream = &state_of(client)->stream;
    stream->x_op = XDR_FREE;
    return routine(stream, result);
}

bool_t control(CLIENT *client, u_int request, void *detail)
{
    CLIENT *connection = state_of(client)->connection;
    return connection->cl_ops->cl_control(connection, request, detail);
}

void destroy(CLIENT *client)
{
    link_client *link = state_of(client);
    xdr_destroy(&link->stream);
    clnt_destroy(link->connection);
    std::free(link);
}

CLIENT::clnt_ops operations{make_call, abort_call, get_error, free_result, destroy, control};

} // namespace

CLIENT *client_over(CLIENT *connection, uint32_t program, uint32_t version)
{
    auto *link = static_cast<link_client *>(std::calloc(1, sizeof(link_client)));
    if (!link) {
        clnt_destroy(connection);
        return nullptr;
    }
    link->handle.cl_auth = connection->cl_auth;
    link->handle.cl_ops = &operations;
    link->handle.cl_private = link;
    link->connection = connection;
    link->program = program;
    link->version = version;
    clnt_control(connection, CLGET_FD, reinterpret_cast<char *>(&link->socket));
    clnt_control(connection, CLGET_XID, reinterpret_cast<char *>(&link->xid));
    xdrrec_create(&link->stream, buffer_size, buffer_size, link, read_some, write_all);
    return &link->handle;
}
