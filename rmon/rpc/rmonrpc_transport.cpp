#include "rmon/rpc/rmonrpc_transport.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <rpc/rpc_msg.h>
#include <rpc/xdr.h>

namespace {

/** Bytes of a sent fragment, and of one read, at most. */
constexpr u_int buffer_size = 65536;

/**
 * Bytes of a result at most. Decoded they take up to twenty times as much, and an array of them more: this is
 * far beyond what a script could use, and keeps an agent that goes on for ever from filling the machine's
 * memory.
 */
constexpr int64_t longest_result = 256 << 20;

constexpr int64_t no_limit = std::numeric_limits<int64_t>::max();

/**
 * The records that arrive (RFC 5531, 11). A call may give up anywhere, between
 * the bytes of a mark too, and the next one goes on from there: the library's
 * own stream loses its place then, and takes the next reply for the rest of
 * the one before.
 */
struct incoming {
    uint32_t at, end;    // of the buffer, what has been read and not been taken
    uint32_t mark;       // as far as it was taken
    uint32_t mark_bytes; // how far that is
    uint32_t left;       // bytes of the fragment that were not taken
    bool last;           // the fragment is the record's last
    bool begun;          // the record's first mark was taken
    uint8_t buffer[buffer_size];
};

/** A handle and its state, of which the RPC library sees the handle. */
struct link_client {
    CLIENT handle;
    CLIENT *connection;
    int socket;
    uint32_t program;
    uint32_t version;
    uint32_t xid;     // of the last call
    int64_t deadline; // of the call that is under way, in milliseconds of the monotonic clock
    int64_t readable; // bytes that the call may still read
    rpc_err error;
    XDR sending;   // the library's record stream
    XDR receiving; // over `arrived`
    incoming arrived;
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

/** Reads what there is into the buffer, all of which was taken. */
bool read_some(link_client *link)
{
    if (link->readable <= 0)
        return fail(link, RPC_CANTDECODERES, 0);
    while (wait(link, POLLIN, RPC_CANTRECV)) {
        incoming *in = &link->arrived;
        const ssize_t got = recv(link->socket, in->buffer, sizeof in->buffer, MSG_DONTWAIT);
        if (got > 0) {
            in->at = 0;
            in->end = static_cast<uint32_t>(got);
            link->readable -= got;
            return true;
        }
        // Another process may have read what there was: a fork of this one.
        if (got == -1 && errno == EAGAIN)
            continue;
        return fail(link, RPC_CANTRECV, got == 0 ? ECONNRESET : errno);
    }
    return false;
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
        if (put == -1)
            fail(link, RPC_CANTSEND, errno);
        if (put == -1 || (put == 0 && !wait(link, POLLOUT, RPC_CANTSEND))) {
            // The agent got a part of a call: nothing that follows would make sense to it.
            shutdown(link->socket, SHUT_RDWR);
            return -1;
        }
        sent += static_cast<int>(put);
    }
    return size;
}

/* ---- the records that arrive ------------------------------------------------------ */

link_client *receiver(XDR *stream)
{
    return static_cast<link_client *>(static_cast<void *>(stream->x_private));
}

bool next_fragment(link_client *link)
{
    incoming *in = &link->arrived;
    while (in->mark_bytes < 4) {
        if (in->at == in->end && !read_some(link))
            return false;
        in->mark = in->mark << 8 | in->buffer[in->at++];
        in->mark_bytes++;
    }
    in->mark_bytes = 0;
    in->left = in->mark & 0x7fffffff;
    in->last = in->mark >> 31;
    in->begun = true;
    return true;
}

/** Takes size bytes of the record; to is null where they go nowhere. False at the record's end. */
bool take(link_client *link, char *to, uint32_t size)
{
    incoming *in = &link->arrived;
    while (size > 0) {
        if (in->left == 0) {
            if ((in->begun && in->last) || !next_fragment(link))
                return false;
            continue;
        }
        if (in->at == in->end && !read_some(link))
            return false;
        const uint32_t piece = std::min({size, in->left, in->end - in->at});
        if (to) {
            std::memcpy(to, in->buffer + in->at, piece);
            to += piece;
        }
        in->at += piece;
        in->left -= piece;
        size -= piece;
    }
    return true;
}

/** Takes what is left of the record that was begun; the next byte is another's. */
bool end_record(link_client *link)
{
    incoming *in = &link->arrived;
    while (in->begun && !(in->last && in->left == 0))
        if (in->left > 0 ? !take(link, nullptr, in->left) : !next_fragment(link))
            return false;
    in->begun = false;
    return true;
}

bool_t get_long(XDR *stream, long *to)
{
    uint32_t unit;
    if (!take(receiver(stream), reinterpret_cast<char *>(&unit), sizeof unit))
        return FALSE;
    *to = static_cast<int32_t>(ntohl(unit));
    return TRUE;
}

bool_t get_bytes(XDR *stream, char *to, u_int size)
{
    return take(receiver(stream), to, size);
}

/** The bytes in place, when one fragment and one read brought all of them. */
int32_t *get_inline(XDR *stream, u_int size)
{
    incoming *in = &receiver(stream)->arrived;
    if (size > in->left || size > in->end - in->at)
        return nullptr;
    void *place = in->buffer + in->at;
    in->at += size;
    in->left -= size;
    return static_cast<int32_t *>(place);
}

bool_t put_long(XDR *, const long *)
{
    return FALSE;
}

bool_t put_bytes(XDR *, const char *, u_int)
{
    return FALSE;
}

u_int get_position(XDR *)
{
    return static_cast<u_int>(-1);
}

bool_t set_position(XDR *, u_int)
{
    return FALSE;
}

void end_stream(XDR *) {}

bool_t control_stream(XDR *, int, void *)
{
    return FALSE;
}

constexpr XDR::xdr_ops receiving_operations{get_long,     put_long,   get_bytes,  put_bytes,     get_position,
                                            set_position, get_inline, end_stream, control_stream};

/** The sending stream is never read from. */
int read_nothing(void *, void *, int)
{
    return -1;
}

/* ---- a call --------------------------------------------------------------------- */

bool send_call(link_client *link, uint32_t procedure, xdrproc_t encode, void *argument)
{
    XDR *stream = &link->sending;
    stream->x_op = XDR_ENCODE;
    // Transaction id, call, RPC version 2, what is called, credentials and a verifier of no length.
    uint32_t header[10] = {link->xid, CALL, RPC_MSG_VERSION, link->program, link->version, procedure};
    for (uint32_t &unit : header)
        unit = htonl(unit);
    const bool encoded =
        XDR_PUTBYTES(stream, reinterpret_cast<char *>(header), sizeof header) && encode(stream, argument);
    if (!encoded) {
        if (link->error.re_status != RPC_SUCCESS)
            return false; // could not be sent
        link->error.re_status = RPC_CANTENCODEARGS;
    }
    // What was encoded of a call that can't be goes out all the same: the stream can't take it back.
    const bool sent = xdrrec_endofrecord(stream, TRUE);
    if (encoded && !sent && link->error.re_status == RPC_SUCCESS)
        link->error.re_status = RPC_CANTSEND;
    return encoded && sent;
}

/** Reads up to the result of the reply to this call; replies to others and what is none are skipped. */
bool receive_header(link_client *link)
{
    XDR *stream = &link->receiving;
    stream->x_op = XDR_DECODE;
    while (end_record(link)) {
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
    link->readable = no_limit;
    link->deadline = milliseconds() + int64_t{timeout.tv_sec} * 1000 + (timeout.tv_usec + 999) / 1000;
    if (!send_call(link, procedure, encode, argument) || !receive_header(link))
        return link->error.re_status;
    link->readable = longest_result;
    if (!decode(&link->receiving, result) && link->error.re_status == RPC_SUCCESS)
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
    XDR *stream = &state_of(client)->receiving;
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
    xdr_destroy(&link->sending);
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
    xdrrec_create(&link->sending, buffer_size, 0, link, read_nothing, write_all);
    if (!link->sending.x_ops) { // no memory; nothing else tells
        clnt_destroy(connection);
        std::free(link);
        return nullptr;
    }
    link->receiving.x_ops = &receiving_operations;
    link->receiving.x_private = link;
    return &link->handle;
}
