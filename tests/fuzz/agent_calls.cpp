// SPDX-License-Identifier: MIT
/*
 * The bundled agent with all groups at work: calls, frames and NetFlow packets,
 * and clients that say whatever they like.
 *
 * An input is a sequence of steps, each of them:
 *
 *   what is done   one byte, see step()
 *   a number       one byte: which procedure or which client
 *   a size         two bytes
 *   bytes          so many, or what is left of the input
 */
#include "agent/nde/netflow.h"
#include "agent/rpc/dispatch.h"
#include "tests/fuzz/agent.h"
#include "tests/fuzz/common.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr int max_clients = 4;
constexpr int max_turns = 1000;

/** Of what a row of any table holds, so that tables fill up. */
constexpr int32_t rows = 4;

using bytes = std::vector<uint8_t>;

struct session {
    started_agent started;
    int clients[max_clients] = {-1, -1, -1, -1};
    sockaddr_in port{};
    sockaddr_in netflow{};
    int datagrams = -1;
    int64_t time = 0;
};

void unit(bytes &to, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        to.push_back(static_cast<uint8_t>(value >> shift));
}

bytes call_of(uint32_t procedure, std::span<const uint8_t> arguments)
{
    bytes call;
    for (const uint32_t value :
         {7u, 0u, 2u, uint32_t{RMONRPC_PROGRAM}, uint32_t{RMONRPC_VERSION}, procedure, 0u, 0u, 0u, 0u})
        unit(call, value);
    call.insert(call.end(), arguments.begin(), arguments.end());
    return call;
}

uint32_t unit_at(const bytes &from, std::size_t index)
{
    uint32_t value;
    std::memcpy(&value, from.data() + index * 4, 4);
    return ntohl(value);
}

/** A reply: its mark tells its length, and it is accepted. What was not understood is not answered with
 * success. */
void check_reply(const bytes &reply, const served_procedure &procedure, std::span<const uint8_t> arguments)
{
    if (reply.size() < 28 || reply.size() % 4 != 0 || unit_at(reply, 0) != (0x80000000u | (reply.size() - 4)))
        broken("a reply is one record of whole units");
    if (unit_at(reply, 1) != 7 || unit_at(reply, 2) != 1 || unit_at(reply, 3) != 0)
        broken("a call is accepted");
    any_record argument(*procedure.argument);
    const bool understood = decode(arguments, argument) >= 0;
    if (unit_at(reply, 6) != (understood ? 0u : 4u))
        broken("arguments are garbage or understood");
    if (!understood)
        return;
    any_record result(*procedure.result);
    if (decode({reply.data() + 28, reply.size() - 28}, result) != static_cast<long>(reply.size() - 28))
        broken("a result is a whole record");
}

void turn_until_quiet(session &now)
{
    for (int i = 0; turn_loop(now.started.agent.loop, 0) > 0; i++)
        if (i == max_turns)
            broken("nothing keeps the loop turning");
}

/** Reads what a client was sent; at most so much, when it is slow. */
void read_replies(int client, std::size_t max_size)
{
    std::array<char, 16384> taken;
    while (max_size > 0) {
        const ssize_t size = recv(client, taken.data(), std::min(max_size, taken.size()), MSG_DONTWAIT);
        if (size <= 0)
            return;
        max_size -= static_cast<std::size_t>(size);
    }
}

void hang_up(int &client)
{
    // Without a word of farewell, so that the port is free at once.
    const linger at_once{1, 0};
    setsockopt(client, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    close(client);
    client = -1;
}

int &connected(session &now, uint8_t which)
{
    int &client = now.clients[which % max_clients];
    if (client < 0) {
        client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const int little = 4096;
        setsockopt(client, SOL_SOCKET, SO_RCVBUF, &little, sizeof little);
        if (connect(client, reinterpret_cast<sockaddr *>(&now.port), sizeof now.port) != 0)
            broken("the agent listens");
    }
    return client;
}

void say(session &now, uint8_t which, const bytes &what)
{
    (void)!send(connected(now, which), what.data(), what.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    turn_until_quiet(now);
}

bytes as_record(std::span<const uint8_t> message, std::size_t size)
{
    bytes record;
    do {
        const auto piece = message.first(std::min(size, message.size()));
        message = message.subspan(piece.size());
        unit(record, static_cast<uint32_t>(piece.size()) | (message.empty() ? 0x80000000u : 0));
        record.insert(record.end(), piece.begin(), piece.end());
    } while (!message.empty());
    return record;
}

/** One step: long as there are many kinds, a case for each. */
void step(session &now, uint8_t what, uint8_t number, std::span<const uint8_t> given)
{
    probe &agent = now.started.agent;
    const auto served = served_procedures();
    const served_procedure &procedure = served[number % served.size()];
    bytes reply;
    switch (what % 12) {
    case 0:
    case 1: {
        const bytes message = call_of(procedure.number, given);
        if (!answer_call(agent, served, message.data(), message.size(), reply))
            broken("a call is answered");
        check_reply(reply, procedure, given);
        break;
    }
    case 2:
        answer_call(agent, served, given.data(), given.size(), reply);
        break;
    case 3:
    case 4: { // a frame; of some only the beginning was captured
        const auto source = agent.sources.rows.find(1);
        const bytes frame(given.begin(), given.end()); // reads behind it are noticed
        const auto captured = static_cast<uint32_t>(frame.size());
        now.time += number * 1000;
        if (source != agent.sources.rows.end())
            take_frame(
                source->second, frame.data(), captured, captured + (what >= 128 ? number * 8u : 0), now.time);
        break;
    }
    case 5:
        (void)!sendto(
            now.datagrams, given.data(), given.size(), MSG_DONTWAIT,
            reinterpret_cast<sockaddr *>(&now.netflow), sizeof now.netflow);
        turn_until_quiet(now);
        break;
    case 6:
        say(now, number, bytes(given.begin(), given.end()));
        break;
    case 7:
        say(now, number, as_record(call_of(procedure.number, given), 1u + what));
        break;
    case 8: // many calls at once, of a client that does not read
        for (int i = 0; i < what; i++)
            say(now, 0, as_record(call_of(procedure.number, given), 1 << 20));
        break;
    case 9:
        read_replies(connected(now, number), what < 128 ? SIZE_MAX : what);
        turn_until_quiet(now);
        break;
    case 10:
        if (what < 128)
            hang_up(connected(now, number));
        else
            shutdown(connected(now, number), SHUT_WR);
        turn_until_quiet(now);
        break;
    default:
        tick_loop(agent.loop);
        make_due_calls(agent.loop, INT64_MAX);
        break;
    }
}

/** Whatever was done to it, the agent answers who calls next. */
void check_answer(session &now)
{
    if (now.clients[0] >= 0)
        hang_up(now.clients[0]);
    turn_until_quiet(now);
    say(now, 0, as_record(call_of(0, {}), 1 << 20));
    bytes reply(32);
    if (recv(now.clients[0], reply.data(), reply.size(), MSG_DONTWAIT) != 32 || unit_at(reply, 6) != 0)
        broken("the agent goes on to answer");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static memory_file *capture = [] {
        auto *made = new memory_file;
        fill(*made, empty_capture());
        return made;
    }();
    go_on_after_alarms();
    session now;
    if (!start_agent(now.started, capture->path).empty())
        broken("the agent starts");
    start_groups(now.started.agent, rows);
    now.port.sin_family = now.netflow.sin_family = AF_INET;
    socklen_t length = sizeof now.port;
    getsockname(now.started.server.listener, reinterpret_cast<sockaddr *>(&now.port), &length);
    length = sizeof now.netflow;
    getsockname(
        storage<netflow_learning>(now.started.agent).socket, reinterpret_cast<sockaddr *>(&now.netflow),
        &length);
    now.datagrams = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);

    std::span left{data, size};
    while (left.size() >= 4) {
        const uint8_t what = left[0], number = left[1];
        const std::size_t given = std::min<std::size_t>(left[2] << 8 | left[3], left.size() - 4);
        step(now, what, number, left.subspan(4, given));
        left = left.subspan(4 + given);
    }
    check_answer(now);
    for (int &client : now.clients)
        if (client >= 0)
            hang_up(client);
    close(now.datagrams);
    stop_agent(now.started);
    return 0;
}
