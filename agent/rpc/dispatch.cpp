// SPDX-License-Identifier: MIT
#include "agent/rpc/dispatch.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <algorithm>
#include <cstring>

#include <rpc/types.h>
#include <rpc/xdr.h>
#include <rpc/auth.h>
#include <rpc/rpc_msg.h>

namespace {

/* ---- the header of a call, in the pieces in which it is judged -------------- */

struct call_opening {
    uint32_t xid;
    int32_t direction;
    uint32_t rpc_version;
};

struct call_target {
    uint32_t program;
    uint32_t version;
    uint32_t procedure;
};

/** Credentials or verifier: this many bytes follow, filled up to whole units. */
struct auth_opening {
    int32_t flavor;
    uint32_t length;
};

bool skip_auth(XDR *xdrs, const auth_opening &auth)
{
    char body[MAX_AUTH_BYTES];
    return auth.length == 0 || XDR_GETBYTES(xdrs, body, RNDUP(auth.length));
}

/* ---- replies ----------------------------------------------------------------- */

/* Bytes to encode a reply in: at first, kept from one reply to the next, and at most. */
constexpr std::size_t first_room = 4 * 1024;
constexpr std::size_t usual_room = 256 * 1024;
constexpr std::size_t max_room = 64 * 1024 * 1024;

/** A result and the way it travels, as the RPC library's encoder takes them. */
struct planned {
    void *record;
    const wire::layout *layout;
};

bool_t xdr_planned(XDR *xdrs, planned *what)
{
    return wire::xdr_layout(xdrs, what->record, *what->layout);
}

rpc_msg accepted(uint32_t xid, accept_stat status)
{
    rpc_msg reply{};
    reply.rm_xid = xid;
    reply.rm_direction = REPLY;
    reply.rm_reply.rp_stat = MSG_ACCEPTED;
    reply.acpted_rply.ar_verf.oa_flavor = AUTH_NONE;
    reply.acpted_rply.ar_stat = status;
    return reply;
}

rpc_msg program_mismatch(uint32_t xid)
{
    rpc_msg reply = accepted(xid, PROG_MISMATCH);
    reply.acpted_rply.ar_vers.low = RMONRPC_VERSION;
    reply.acpted_rply.ar_vers.high = RMONRPC_VERSION;
    return reply;
}

rpc_msg rpc_mismatch(uint32_t xid)
{
    rpc_msg reply{};
    reply.rm_xid = xid;
    reply.rm_direction = REPLY;
    reply.rm_reply.rp_stat = MSG_DENIED;
    reply.rjcted_rply.rj_stat = RPC_MISMATCH;
    reply.rjcted_rply.rj_vers.low = RPC_MSG_VERSION;
    reply.rjcted_rply.rj_vers.high = RPC_MSG_VERSION;
    return reply;
}

rpc_msg auth_refused(uint32_t xid, auth_stat why)
{
    rpc_msg reply{};
    reply.rm_xid = xid;
    reply.rm_direction = REPLY;
    reply.rm_reply.rp_stat = MSG_DENIED;
    reply.rjcted_rply.rj_stat = AUTH_ERROR;
    reply.rjcted_rply.rj_why = why;
    return reply;
}

/**
 * Appends a reply in one fragment. False, with output as it was, when it cannot
 * be encoded. It is encoded elsewhere first: what waits for a client takes no
 * more room than it has bytes.
 */
bool append_reply(rpc_msg &reply, std::vector<uint8_t> &output)
{
    static std::vector<uint8_t> room(first_room);
    for (;;) {
        XDR xdrs;
        xdrmem_create(
            &xdrs, reinterpret_cast<char *>(room.data()), static_cast<u_int>(room.size()), XDR_ENCODE);
        const bool encoded = xdr_replymsg(&xdrs, &reply);
        if (encoded) {
            const uint32_t size = XDR_GETPOS(&xdrs);
            const uint32_t mark = size | 0x80000000;
            for (int shift = 24; shift >= 0; shift -= 8)
                output.push_back(static_cast<uint8_t>(mark >> shift));
            output.insert(output.end(), room.begin(), room.begin() + size);
        }
        const bool larger = !encoded && room.size() < max_room;
        if (larger)
            room = std::vector<uint8_t>(room.size() * 4);
        else if (room.size() > usual_room)
            room = std::vector<uint8_t>(first_room);
        if (!larger)
            return encoded;
    }
}

void append_result(uint32_t xid, planned result, std::vector<uint8_t> &output)
{
    rpc_msg reply = accepted(xid, SUCCESS);
    reply.acpted_rply.ar_results.where = reinterpret_cast<char *>(&result);
    reply.acpted_rply.ar_results.proc =
        reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_planned));
    if (append_reply(reply, output))
        return;
    rpc_msg failed = accepted(xid, SYSTEM_ERR);
    append_reply(failed, output);
}

/* ---- the call ------------------------------------------------------------------ */

/** Memory for one record of any procedure. */
uint8_t *record_memory(std::vector<uint64_t> &memory, const wire::layout &layout)
{
    memory.assign(layout.size / sizeof(uint64_t) + 1, 0);
    return reinterpret_cast<uint8_t *>(memory.data());
}

void handle_call(
    probe &agent, const served_procedure &procedure, uint32_t xid, XDR *xdrs, std::vector<uint8_t> &output)
{
    static std::vector<uint64_t> argument_memory;
    static std::vector<uint64_t> result_memory;
    void *argument = record_memory(argument_memory, *procedure.argument);
    void *result = record_memory(result_memory, *procedure.result);

    if (wire::xdr_layout(xdrs, argument, *procedure.argument)) {
        procedure.handle(agent, argument, result);
        append_result(xid, {result, procedure.result}, output);
        wire::release_layout(result, *procedure.result);
    } else {
        rpc_msg reply = accepted(xid, GARBAGE_ARGS);
        append_reply(reply, output);
    }
    wire::release_layout(argument, *procedure.argument);
}

const served_procedure *find_procedure(std::span<const served_procedure> procedures, uint32_t number)
{
    const auto found = std::lower_bound(
        procedures.begin(), procedures.end(), number,
        [](const auto &procedure, uint32_t wanted) { return procedure.number < wanted; });
    return found != procedures.end() && found->number == number ? &*found : nullptr;
}

/** Handles a call whose sender was heard, or says why not. False when no reply could be made. */
bool carry_out(
    probe &agent,
    std::span<const served_procedure> procedures,
    uint32_t xid,
    const call_target &target,
    XDR *xdrs,
    std::vector<uint8_t> &output)
{
    rpc_msg refusal{};
    if (target.program != RMONRPC_PROGRAM) {
        refusal = accepted(xid, PROG_UNAVAIL);
    } else if (target.version != RMONRPC_VERSION) {
        refusal = program_mismatch(xid);
    } else if (const served_procedure *procedure = find_procedure(procedures, target.procedure)) {
        handle_call(agent, *procedure, xid, xdrs, output);
        return true;
    } else {
        refusal = accepted(xid, PROC_UNAVAIL);
    }
    return append_reply(refusal, output);
}

} // namespace

bool answer_call(
    probe &agent,
    std::span<const served_procedure> procedures,
    const uint8_t *message,
    std::size_t size,
    std::vector<uint8_t> &output)
{
    XDR xdrs;
    auto *bytes = const_cast<char *>(reinterpret_cast<const char *>(message));
    xdrmem_create(&xdrs, bytes, static_cast<u_int>(size), XDR_DECODE);

    call_opening opening{};
    if (!xdr_record(&xdrs, &opening) || opening.direction != CALL)
        return false;
    if (opening.rpc_version != RPC_MSG_VERSION) {
        rpc_msg reply = rpc_mismatch(opening.xid);
        return append_reply(reply, output);
    }

    call_target target{};
    auth_opening credentials{};
    auth_opening verifier{};
    if (!xdr_record(&xdrs, &target) || !xdr_record(&xdrs, &credentials))
        return false;
    // Callers need no credentials; those that some clients send by default are skipped.
    const bool known_flavor = credentials.flavor == AUTH_NONE || credentials.flavor == AUTH_SYS;
    if (credentials.length > MAX_AUTH_BYTES || !known_flavor) {
        rpc_msg reply = auth_refused(opening.xid, known_flavor ? AUTH_BADCRED : AUTH_REJECTEDCRED);
        return append_reply(reply, output);
    }
    if (!skip_auth(&xdrs, credentials) || !xdr_record(&xdrs, &verifier))
        return false;
    if (verifier.length > MAX_AUTH_BYTES) {
        rpc_msg reply = auth_refused(opening.xid, AUTH_BADVERF);
        return append_reply(reply, output);
    }
    return skip_auth(&xdrs, verifier) && carry_out(agent, procedures, opening.xid, target, &xdrs, output);
}
