// SPDX-License-Identifier: MIT
#include "rmon/rpc/rmonrpc_transport.h"

#include "rmon/rpc/rmonrpc_waiting.h"
#include "rmon/rpc/rmonrpc_xdr.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <rpc/rpc_msg.h>
#include <rpc/xdr.h>

namespace {

/**
 * Bytes of a sent fragment with its mark, and of one read, at most. A link may
 * keep all of a read and stays below 64 KB.
 */
constexpr uint32_t buffer_size = 60 * 1024;

constexpr uint32_t mark_size = 4;
constexpr uint32_t last_fragment = 0x80000000;

/**
 * Bytes of a result at most, far beyond what a script could use: an endless reply must not
 * fill the machine's memory.
 */
constexpr int64_t max_result = 256 << 20;

/**
 * How long a receive waits by itself, in milliseconds: that saves the call of
 * poll() in front of it. Near the end of a call poll() goes by the deadline.
 */
constexpr int64_t receive_patience = 250;

constexpr int64_t no_limit = std::numeric_limits<int64_t>::max();

/** Where the bytes of the call that is under way come and go. A process makes one call at a time. */
constinit uint8_t outgoing_bytes[buffer_size]{};
constinit uint8_t incoming_bytes[buffer_size]{};

/**
 * The records that arrive (RFC 5531, 11). A call may give up anywhere, between
 * the bytes of a mark too, and the next one goes on from there: the library's
 * own stream loses its place then, and takes the next reply for the rest of
 * the one before.
 */
struct incoming {
    uint32_t at, end;    // of incoming_bytes, what has been read and not been taken
    uint8_t *kept;       // that, between calls; null when there is nothing
    uint32_t mark;       // as far as it was taken
    uint32_t mark_bytes; // how far that is
    uint32_t left;       // bytes of the fragment that were not taken
    bool last;           // the fragment is the record's last
    bool begun;          // the record's first mark was taken
};

/** A handle and its state, of which the RPC library sees the handle. */
struct link_client {
    CLIENT handle;
    link_client *next, *previous; // among all of this process
    int socket;                   // -1 in a process that did not connect it
    bool waits;                   // a receive waits, for receive_patience at most
    uint32_t program;
    uint32_t version;
    uint32_t xid;     // of the last call
    int64_t deadline; // of the call that is under way, in milliseconds of the monotonic clock
    int64_t readable; // bytes that the call may still read
    rpc_err error;
    uint32_t filled; // of outgoing_bytes, a fragment's mark included
    incoming arrived;
};

constinit link_client *all_links = nullptr;

link_client *state_of(CLIENT *client)
{
    return static_cast<link_client *>(client->cl_private);
}

/** Notes what the call fails with; false. */
bool fail(link_client *link, clnt_stat status, int code)
{
    link->error.re_status = status;
    link->error.re_errno = code;
    return false;
}

/* ---- time and waits --------------------------------------------------------------- */

int64_t milliseconds_of(timeval time)
{
    return int64_t{time.tv_sec} * 1000 + (time.tv_usec + 999) / 1000;
}

/**
 * How long a wait may last by the environment, in milliseconds. Asked at each wait: a script whose own time
 * runs out lowers it from call to call. What is no positive number says nothing.
 */
int64_t patience()
{
    const char *text = getenv("RMONRPC_TIMEOUT");
    int64_t limit = 0;
    if (text)
        std::from_chars(text, text + std::strlen(text), limit);
    return limit > 0 ? limit : no_limit;
}

} // namespace

int64_t milliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

int64_t deadline_in(timeval timeout)
{
    return milliseconds() + 1 + std::min(milliseconds_of(timeout), patience());
}

int wait_until(int64_t deadline, int socket, short events)
{
    for (;;) {
        const int64_t left = deadline - milliseconds();
        pollfd waiting{socket, events, 0};
        const int ready = left > 0 ? poll(&waiting, 1, static_cast<int>(left)) : 0;
        if (ready >= 0 || errno != EINTR)
            return ready;
    }
}

namespace {

/* ---- the stream's ends ------------------------------------------------------- */

/** Waits until something can be read or written; the status is what a failure to wait means. */
bool wait(link_client *link, short events, clnt_stat status)
{
    const int ready = wait_until(link->deadline, link->socket, events);
    return ready > 0 || (ready == 0 ? fail(link, RPC_TIMEDOUT, 0) : fail(link, status, errno));
}

/** Receives what there is, after a wait for it: how much, 0 at the connection's end, -1 on failure. */
ssize_t receive(link_client *link, int64_t left)
{
    const bool waits = link->waits && left > 2 * receive_patience;
    if (!waits && !wait(link, POLLIN, RPC_CANTRECV))
        return -1;
    const ssize_t got = recv(link->socket, incoming_bytes, sizeof incoming_bytes, waits ? 0 : MSG_DONTWAIT);
    if (got == 0)
        fail(link, RPC_CANTRECV, ECONNRESET);
    else if (got == -1 && errno != EAGAIN && errno != EINTR)
        fail(link, RPC_CANTRECV, errno);
    return got;
}

/** Reads what there is into the buffer, all of which was taken. */
bool read_some(link_client *link)
{
    if (link->readable <= 0)
        return fail(link, RPC_CANTDECODERES, 0);
    while (link->error.re_status == RPC_SUCCESS) {
        const int64_t left = link->deadline - milliseconds();
        if (left <= 0)
            return fail(link, RPC_TIMEDOUT, 0);
        const ssize_t got = receive(link, left);
        if (got > 0) {
            link->arrived.at = 0;
            link->arrived.end = static_cast<uint32_t>(got);
            link->readable -= got;
            return true;
        }
    }
    return false;
}

/** Sends what the connection takes at once; -1 on failure. No signal: it would be the end of some hosts. */
ssize_t send_some(link_client *link, const uint8_t *from, size_t size)
{
    const ssize_t sent = send(link->socket, from, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent == -1 && errno == EAGAIN ? 0 : sent;
}

/** Sends the fragment that was put together, and begins the next one. */
bool send_fragment(link_client *link, bool last)
{
    const uint32_t mark = htonl((link->filled - mark_size) | (last ? last_fragment : 0));
    std::memcpy(outgoing_bytes, &mark, sizeof mark);
    for (uint32_t sent = 0; sent < link->filled;) {
        const ssize_t put = send_some(link, outgoing_bytes + sent, link->filled - sent);
        if (put == -1)
            fail(link, RPC_CANTSEND, errno);
        if (put == -1 || (put == 0 && !wait(link, POLLOUT, RPC_CANTSEND))) {
            // The agent got a part of a call: it could make nothing of what follows.
            shutdown(link->socket, SHUT_RDWR);
            return false;
        }
        sent += static_cast<uint32_t>(put);
    }
    link->filled = mark_size;
    return true;
}

link_client *link_of(XDR *stream)
{
    return static_cast<link_client *>(static_cast<void *>(stream->x_private));
}

/* ---- the record that is sent -------------------------------------------------------- */

bool_t put_bytes(XDR *stream, const char *from, u_int size)
{
    link_client *link = link_of(stream);
    while (size > 0) {
        if (link->filled == buffer_size && !send_fragment(link, false))
            return FALSE;
        const uint32_t piece = std::min(size, buffer_size - link->filled);
        std::memcpy(outgoing_bytes + link->filled, from, piece);
        link->filled += piece;
        from += piece;
        size -= piece;
    }
    return TRUE;
}

bool_t put_long(XDR *stream, const long *value)
{
    const uint32_t unit = htonl(static_cast<uint32_t>(*value));
    return put_bytes(stream, reinterpret_cast<const char *>(&unit), sizeof unit);
}

/** Room for the bytes, when the fragment has it. */
int32_t *put_inline(XDR *stream, u_int size)
{
    link_client *link = link_of(stream);
    if (size > buffer_size - link->filled)
        return nullptr;
    void *place = outgoing_bytes + link->filled;
    link->filled += size;
    return static_cast<int32_t *>(place);
}

/* ---- the records that arrive ------------------------------------------------------ */

bool next_fragment(link_client *link)
{
    incoming *in = &link->arrived;
    while (in->mark_bytes < mark_size) {
        if (in->at == in->end && !read_some(link))
            return false;
        in->mark = in->mark << 8 | incoming_bytes[in->at++];
        in->mark_bytes++;
    }
    in->mark_bytes = 0;
    in->left = in->mark & ~last_fragment;
    in->last = in->mark & last_fragment;
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
            std::memcpy(to, incoming_bytes + in->at, piece);
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
    if (!take(link_of(stream), reinterpret_cast<char *>(&unit), sizeof unit))
        return FALSE;
    *to = static_cast<int32_t>(ntohl(unit));
    return TRUE;
}

bool_t get_bytes(XDR *stream, char *to, u_int size)
{
    return take(link_of(stream), to, size);
}

/** The bytes in place, when one fragment and one read brought all of them. */
int32_t *get_inline(XDR *stream, u_int size)
{
    incoming *in = &link_of(stream)->arrived;
    if (size > in->left || size > in->end - in->at)
        return nullptr;
    void *place = incoming_bytes + in->at;
    in->at += size;
    in->left -= size;
    return static_cast<int32_t *>(place);
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

bool_t control_sending(XDR *, int, void *)
{
    return FALSE;
}

bool_t control_receiving(XDR *stream, int request, void *answer)
{
    if (request != wire::get_window)
        return FALSE;
    const incoming *in = &link_of(stream)->arrived;
    *static_cast<wire::window *>(answer) = {incoming_bytes + in->at, std::min(in->left, in->end - in->at)};
    return TRUE;
}

constexpr XDR::xdr_ops sending_operations{get_long,     put_long,   get_bytes,  put_bytes,      get_position,
                                          set_position, put_inline, end_stream, control_sending};
constexpr XDR::xdr_ops receiving_operations{get_long,   put_long,     get_bytes,
                                            put_bytes,  get_position, set_position,
                                            get_inline, end_stream,   control_receiving};

XDR stream_of(link_client *link, xdr_op direction)
{
    XDR stream{};
    stream.x_op = direction;
    stream.x_ops = direction == XDR_ENCODE ? &sending_operations : &receiving_operations;
    stream.x_private = link;
    return stream;
}

/* ---- a call --------------------------------------------------------------------- */

bool send_call(link_client *link, uint32_t procedure, xdrproc_t encode, void *argument)
{
    XDR stream = stream_of(link, XDR_ENCODE);
    link->filled = mark_size;
    // Transaction id, call, RPC version 2, what is called, credentials and a verifier of no length.
    uint32_t header[10] = {link->xid, CALL, RPC_MSG_VERSION, link->program, link->version, procedure};
    for (uint32_t &unit : header)
        unit = htonl(unit);
    const bool encoded =
        XDR_PUTBYTES(&stream, reinterpret_cast<char *>(header), sizeof header) && encode(&stream, argument);
    if (!encoded) {
        if (link->error.re_status != RPC_SUCCESS)
            return false; // could not be sent
        link->error.re_status = RPC_CANTENCODEARGS;
    }
    // What was encoded of a call that can't be goes out all the same, as the library's own client has it.
    return send_fragment(link, true) && encoded;
}

/** The number in an enumeration that an agent filled, which may be none of its values. */
template <class Enumeration> int32_t number_in(const Enumeration &field)
{
    static_assert(sizeof field == sizeof(int32_t));
    int32_t number;
    std::memcpy(&number, &field, sizeof number);
    return number;
}

/** Whether an answer to a call is of a kind that the protocol does not have: nothing else will follow. */
bool is_unknown_answer(const rpc_msg &message)
{
    if (number_in(message.rm_direction) != REPLY)
        return false;
    switch (number_in(message.rm_reply.rp_stat)) {
    case MSG_ACCEPTED:
        return false;
    case MSG_DENIED: {
        const int32_t why = number_in(message.rjcted_rply.rj_stat);
        return why != RPC_MISMATCH && why != AUTH_ERROR;
    }
    default:
        return true;
    }
}

/**
 * Takes the header that nearly every reply has: this call's, accepted, with a
 * verifier of no length, successful. Whatever is not that, or is not there as a
 * whole, stays for the library's routine.
 */
bool take_usual_header(link_client *link)
{
    uint32_t usual[6] = {link->xid, REPLY, MSG_ACCEPTED, AUTH_NONE, 0, SUCCESS};
    constexpr uint32_t size = sizeof usual;
    for (uint32_t &unit : usual)
        unit = htonl(unit);
    incoming *in = &link->arrived;
    if (size > in->left || size > in->end - in->at || std::memcmp(incoming_bytes + in->at, usual, size) != 0)
        return false;
    in->at += size;
    in->left -= size;
    return true;
}

/** Reads up to the result of the reply to this call; replies to other calls, and whatever is no reply, are
 * skipped. */
bool receive_header(link_client *link)
{
    XDR stream = stream_of(link, XDR_DECODE);
    while (end_record(link)) {
        if (!next_fragment(link))
            return false;
        if (take_usual_header(link))
            return true;
        char verifier[MAX_AUTH_BYTES];
        rpc_msg reply{};
        reply.acpted_rply.ar_verf.oa_base = verifier;
        reply.acpted_rply.ar_results.proc =
            reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_void));
        const bool understood = xdr_replymsg(&stream, &reply);
        if (link->error.re_status != RPC_SUCCESS)
            return false;
        if (reply.rm_xid == link->xid && (understood || is_unknown_answer(reply))) {
            _seterr_reply(&reply, &link->error);
            return link->error.re_status == RPC_SUCCESS;
        }
    }
    return false;
}

/** Takes up what the last call left in the buffer. */
void take_up_rest(incoming *in)
{
    if (in->kept)
        std::memcpy(incoming_bytes + in->at, in->kept, in->end - in->at);
    std::free(std::exchange(in->kept, nullptr));
}

/** Leaves the buffer to others. */
void keep_rest(link_client *link)
{
    incoming *in = &link->arrived;
    const uint32_t rest = in->end - in->at;
    if (rest == 0)
        return;
    in->kept = static_cast<uint8_t *>(std::malloc(rest));
    if (in->kept) {
        std::memcpy(in->kept, incoming_bytes + in->at, rest);
    } else {
        // The link has lost its place in what arrives.
        shutdown(link->socket, SHUT_RDWR);
        in->at = in->end;
    }
}

/** Makes a call up to its end or to where it fails; the error tells. */
void exchange_messages(
    link_client *link,
    rpcproc_t procedure,
    xdrproc_t encode,
    void *argument,
    xdrproc_t decode,
    void *result,
    timeval timeout)
{
    link->xid--;
    link->readable = no_limit;
    link->deadline = deadline_in(timeout);
    if (!send_call(link, procedure, encode, argument) || !receive_header(link))
        return;
    link->readable = max_result;
    XDR stream = stream_of(link, XDR_DECODE);
    if (!decode(&stream, result) && link->error.re_status == RPC_SUCCESS)
        link->error.re_status = RPC_CANTDECODERES;
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
    link->error = {};
    if (link->socket < 0) {
        fail(link, RPC_CANTSEND, ENOTCONN);
    } else {
        take_up_rest(&link->arrived);
        exchange_messages(link, procedure, encode, argument, decode, result, timeout);
        keep_rest(link);
    }
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
    XDR stream = stream_of(state_of(client), XDR_FREE);
    return routine(&stream, result);
}

/** What the tests ask for: the socket, and the transaction id of the next call. */
bool_t control(CLIENT *client, u_int request, void *detail)
{
    link_client *link = state_of(client);
    switch (request) {
    case CLGET_FD:
        std::memcpy(detail, &link->socket, sizeof link->socket);
        return TRUE;
    case CLSET_XID:
        std::memcpy(&link->xid, detail, sizeof link->xid);
        link->xid++;
        return TRUE;
    default:
        return FALSE;
    }
}

void destroy(CLIENT *client)
{
    link_client *link = state_of(client);
    (link->previous ? link->previous->next : all_links) = link->next;
    if (link->next)
        link->next->previous = link->previous;
    if (link->socket >= 0)
        close(link->socket);
    std::free(link->arrived.kept);
    std::free(link);
}

CLIENT::clnt_ops operations{make_call, abort_call, get_error, free_result, destroy, control};

} // namespace

CLIENT *client_over(int socket, uint32_t program, uint32_t version)
{
    auto *link = static_cast<link_client *>(std::calloc(1, sizeof(link_client)));
    if (!link) {
        close(socket);
        return nullptr;
    }
    link->handle.cl_ops = &operations;
    link->handle.cl_private = link;
    link->socket = socket;
    const timeval patience{0, receive_patience * 1000};
    link->waits = fcntl(socket, F_SETFL, 0) == 0
                  && setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) == 0;
    link->program = program;
    link->version = version;
    // Any would do: ids part the replies on one connection from each other.
    link->xid = static_cast<uint32_t>(milliseconds()) ^ static_cast<uint32_t>(getpid());
    link->next = all_links;
    if (all_links)
        all_links->previous = link;
    all_links = link;
    return &link->handle;
}

bool of_this_process(CLIENT *client)
{
    return state_of(client)->socket >= 0;
}

void leave_links_to_parent()
{
    for (link_client *link = all_links; link; link = link->next) {
        if (link->socket >= 0)
            close(link->socket);
        link->socket = -1;
    }
}
