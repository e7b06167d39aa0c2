// SPDX-License-Identifier: MIT
/*
 * Calls on one connection whose other end sends what the input says.
 *
 * An input is a sequence of steps, each of them:
 *
 *   which procedure      two bytes
 *   how it is answered   one byte, see step()
 *   the result's size    two bytes
 *   the result           so many bytes, or what is left of the input
 *
 * Everything that the agent says before a call is written before the call is
 * made: the transaction ids are known. A call that finds nothing more waits for
 * a moment, and what it waited for may be said before the next one: a late
 * reply.
 */
#include "rmon/rpc/rmonrpc_transport.h"
#include "tests/fuzz/common.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr uint32_t first_xid = 0x01000000;
constexpr timeval patience{0, 1000};
/** For a reply that is there already. */
constexpr timeval confidence{60, 0};
constexpr int max_calls = 12;
/** What the connection's buffers take while nobody reads. */
constexpr size_t max_said = 64 << 10;

struct bytes : std::vector<uint8_t> {
    bytes &unit(uint32_t value)
    {
        for (int shift = 24; shift >= 0; shift -= 8)
            push_back(static_cast<uint8_t>(value >> shift));
        return *this;
    }
    bytes &add(std::span<const uint8_t> more)
    {
        insert(end(), more.begin(), more.end());
        return *this;
    }
};

/** A record of so many bytes at most in each fragment; the last mark may lie. */
bytes as_record(std::span<const uint8_t> message, size_t size, int32_t lie = 0)
{
    bytes out;
    do {
        const auto piece = message.first(std::min(size, message.size()));
        message = message.subspan(piece.size());
        const bool last = message.empty();
        const auto length = static_cast<uint32_t>(piece.size());
        out.unit(last ? ((length + static_cast<uint32_t>(lie)) | 0x80000000u) : length).add(piece);
    } while (!message.empty());
    return out;
}

bytes accepted(uint32_t xid, std::span<const uint8_t> result, uint32_t status = 0)
{
    return bytes{}.unit(xid).unit(1).unit(0).unit(0).unit(0).unit(status).add(result);
}

/** A session's state. */
struct session {
    CLIENT *client;
    int agent; // the agent's end, -1 once it is closed
    uint32_t xid = first_xid;
    bool rule_abiding = true; // all that was said so far are whole replies
    size_t said = 0;
};

void say(session &now, const bytes &what)
{
    now.said += what.size();
    if (now.agent >= 0 && now.said <= max_said && !what.empty()
        && send(now.agent, what.data(), what.size(), MSG_NOSIGNAL | MSG_DONTWAIT)
               != static_cast<ssize_t>(what.size()))
        now.rule_abiding = false;
}

void hang_up(session &now)
{
    if (now.agent >= 0)
        close(now.agent);
    now.agent = -1;
}

/** Whether the reply is what the result says. */
void expect(
    const any_procedure &procedure, reply_buffer &buffer, bool success, std::span<const uint8_t> result)
{
    any_record expected(*procedure.result);
    if ((decode(result, expected) >= 0) != success)
        broken("a call succeeds when it was answered by what can be decoded");
    if (!success)
        return;
    any_record copy(*procedure.result);
    std::swap(copy.bytes, buffer.reply);
    const bool same = encode(copy) == encode(expected);
    std::swap(copy.bytes, buffer.reply);
    if (!same)
        broken("a call gets the reply to it");
}

/**
 * One call; what the agent says to it, and whether before it or too late. Long
 * as there are many ways to answer, a case for each.
 */
void step(
    session &now,
    const any_procedure &procedure,
    reply_buffer &buffer,
    uint8_t how,
    std::span<const uint8_t> result)
{
    now.said = 0;
    const uint32_t xid = now.xid--;
    const size_t size = 1 + how / 16u * 97u; // of fragments
    bool answered = false;                   // the first reply with this transaction id is the result
    bytes late;
    switch (how % 16) {
    case 0:
    case 1:
    case 2:
        say(now, as_record(accepted(xid, result), how % 16 == 0 ? 1 << 20 : size));
        answered = true;
        break;
    case 3: // another call's, in front of the right one
        say(now, as_record(accepted(xid + how, result), size).add(as_record(accepted(xid, {}), size)));
        break;
    case 4:
        late = as_record(accepted(xid, result), size);
        break;
    case 5: // the answer and a second one, which the next call finds
        say(now, as_record(accepted(xid, result), size).add(as_record(accepted(xid, {}), size)));
        answered = true;
        break;
    case 6:
        say(now, as_record(accepted(xid, result, how / 16u), size));
        now.rule_abiding = false;
        break;
    case 7: // denied
        say(now, as_record(bytes{}.unit(xid).unit(1).unit(1).add(result), size));
        break;
    case 8: // marks that lie
        say(now, as_record(accepted(xid, result), size, how % 3 ? how / 16 : -(how / 16)));
        now.rule_abiding = false;
        break;
    case 9: { // half a record
        bytes half = as_record(accepted(xid, result), size);
        half.resize(half.size() * how / 256);
        say(now, half);
        hang_up(now);
        break;
    }
    case 10:
        hang_up(now);
        break;
    case 11: // a verifier
        say(now, as_record(bytes{}.unit(xid).unit(1).unit(0).unit(how / 16u).add(result), size));
        now.rule_abiding = false;
        break;
    case 12:
        say(now, bytes{}.add(result));
        now.rule_abiding = false;
        break;
    case 13: // the transaction id and anything
        say(now, as_record(bytes{}.unit(xid).add(result), size));
        now.rule_abiding = false;
        break;
    case 14: // an empty record and an empty fragment first
        say(now, bytes{}.unit(0x80000000).unit(0).add(as_record(accepted(xid, result), size)));
        answered = true;
        break;
    default:
        break;
    }

    answered = answered && now.agent >= 0 && now.rule_abiding;
    any_record argument(*procedure.argument);
    const bool success = call_procedure(
        now.client, procedure.number, argument.bytes, *procedure.argument, buffer,
        answered ? confidence : patience);
    clnt_sperror(now.client, "");
    if (answered)
        expect(procedure, buffer, success, result);
    else if (success && now.rule_abiding)
        broken("a call that wasn't answered fails");
    say(now, late);
    // What the agent took of the calls is none of its business here.
    for (uint8_t taken[4096]; now.agent >= 0 && recv(now.agent, taken, sizeof taken, MSG_DONTWAIT) > 0;)
        ;
}

CLIENT *connect_to(int socket)
{
    CLIENT *client = client_over(socket, RMONRPC_PROGRAM, RMONRPC_VERSION);
    if (!client)
        broken("a connection makes a client");
    uint32_t xid = first_xid;
    clnt_control(client, CLSET_XID, reinterpret_cast<char *>(&xid));
    return client;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        broken("there are sockets");
    session now{connect_to(ends[0]), ends[1]};

    const auto all = procedures();
    static auto *buffers = new std::vector<reply_buffer>;
    if (buffers->empty())
        for (const any_procedure &each : all)
            buffers->push_back({std::calloc(1, each.result->size), each.result, nullptr, false});

    std::span left{data, size};
    for (int calls = 0; calls < max_calls && left.size() >= 5; calls++) {
        const size_t number = (left[0] << 8 | left[1]) % all.size();
        const size_t length = std::min<size_t>(left[3] << 8 | left[4], left.size() - 5);
        step(now, all[number], (*buffers)[number], left[2], left.subspan(5, length));
        // Half of the replies are abandoned, as by a request that was broken off.
        if (calls % 2 == 0)
            wire::release_layout((*buffers)[number].reply, *all[number].result);
        left = left.subspan(5 + length);
    }
    release_abandoned_replies();
    hang_up(now);
    clnt_destroy(now.client);
    return 0;
}
