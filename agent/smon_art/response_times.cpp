// SPDX-License-Identifier: MIT
#include "agent/smon_art/response_times.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t tcp = 6, udp = 17;

constexpr uint8_t fin = 1, syn = 2, rst = 4, ack = 16;

constexpr uint16_t domain_port = 53;

/** Of a DNS message: its number and its first flags. */
constexpr uint32_t domain_opening = 3;
constexpr uint8_t domain_response = 0x80;

uint8_t other(uint8_t end)
{
    return end ^ 1;
}

/** The key of a frame's connection; sender says which of its ends sent the frame. */
flow_key key_of(const frame &seen, uint8_t &sender)
{
    const auto length = std::min<std::size_t>(seen.from.length, sizeof seen.from.bytes);
    const int order = std::memcmp(seen.from.bytes, seen.to.bytes, length);
    sender = order > 0 || (order == 0 && seen.from_port > seen.to_port);
    flow_key key;
    std::memcpy(key.address[sender].data(), seen.from.bytes, length);
    std::memcpy(key.address[other(sender)].data(), seen.to.bytes, length);
    key.port[sender] = seen.from_port;
    key.port[other(sender)] = seen.to_port;
    key.address_length = static_cast<uint8_t>(length);
    key.ip_protocol = static_cast<uint8_t>(seen.ip_protocol);
    return key;
}

exchange_key exchange_of(const flow_key &key, const flow &connection)
{
    exchange_key exchange;
    std::ranges::copy(key.address[other(connection.client)], exchange.server);
    std::ranges::copy(key.address[connection.client], exchange.client);
    exchange.server_length = exchange.client_length = key.address_length;
    exchange.protocol = connection.protocol;
    return exchange;
}

void ask(flow &connection, int64_t now)
{
    connection.awaited = true;
    connection.asked = now;
}

/** The answer to an awaited request, or, too late, its timeout. */
void answer(const response_meter &meter, flow &connection, exchange_counters &counters, int64_t now)
{
    connection.awaited = false;
    const int64_t time = std::max<int64_t>(now - connection.asked, 0);
    if (time > meter.timeout) {
        counters.timeouts++;
        return;
    }
    counters.min_time = counters.responses ? std::min(counters.min_time, time) : time;
    counters.max_time = std::max(counters.max_time, time);
    counters.responses++;
    counters.sum += static_cast<uint64_t>(time);
    const auto range = std::ranges::lower_bound(meter.limits, time) - meter.limits.begin();
    counters.in_range[static_cast<std::size_t>(range)]++;
}

/** An awaited request whose time is over. */
void give_up_late(const response_meter &meter, flow &connection, exchange_counters &counters, int64_t now)
{
    if (!connection.awaited || now - connection.asked <= meter.timeout)
        return;
    connection.awaited = false;
    counters.timeouts++;
}

void count_octets(const flow &connection, exchange_counters &counters, uint8_t sender, uint32_t octets)
{
    (sender == connection.client ? counters.client_octets : counters.server_octets) += octets;
}

/* ---- TCP -------------------------------------------------------------------------------- */

/** Which end is the client of a connection whose first frame this is. */
uint8_t client_of(const frame &seen, uint8_t sender)
{
    if (seen.tcp_flags & syn)
        return seen.tcp_flags & ack ? other(sender) : sender;
    return seen.from_port >= seen.to_port ? sender : other(sender);
}

/** The connection is opened, perhaps again with the same ports. */
void open_connection(flow &connection, const frame &seen, uint8_t sender, int32_t protocol)
{
    connection = {};
    connection.protocol = protocol;
    connection.client = client_of(seen, sender);
}

/** The segment has data: a request begins or goes on, is sent again, or is answered. */
void take_data(
    response_meter &meter,
    flow &connection,
    exchange_counters &counters,
    bool asks,
    bool advances,
    int64_t time)
{
    connection.data_seen = true;
    if (asks && advances)
        ask(connection, time);
    else if (asks && connection.awaited)
        counters.retries++;
    else if (advances && connection.awaited)
        answer(meter, connection, counters, time);
}

void measure_segment(response_meter &meter, const frame &seen, int32_t protocol)
{
    uint8_t sender;
    const flow_key key = key_of(seen, sender);
    const bool opens = (seen.tcp_flags & (syn | ack)) == syn;
    const bool is_new = find_learned(meter.flows, key) == no_entry;
    // Without data or an opening, nothing shows who asks and who answers.
    if (is_new && seen.payload_on_wire == 0 && !(seen.tcp_flags & syn))
        return;
    flow *connection = learn(meter.flows, key);
    if (!connection)
        return;

    const uint32_t behind_data = seen.tcp_sequence + (seen.tcp_flags & syn ? 1 : 0) + seen.payload_on_wire;
    const bool opens_again = opens && !is_new && sender == connection->client && !connection->data_seen
                             && connection->known[sender] && connection->next[sender] == behind_data;
    if (is_new || (opens && !opens_again))
        open_connection(*connection, seen, sender, protocol);

    exchange_counters *counters = learn(meter.exchanges, exchange_of(key, *connection));
    if (!counters)
        return;
    count_octets(*connection, *counters, sender, seen.length);
    give_up_late(meter, *connection, *counters, seen.time);
    if (opens_again)
        counters->retries++;

    const bool advances =
        !connection->known[sender] || static_cast<int32_t>(behind_data - connection->next[sender]) > 0;
    if (seen.payload_on_wire > 0)
        take_data(meter, *connection, *counters, sender == connection->client, advances, seen.time);
    if (advances) {
        connection->known[sender] = true;
        connection->next[sender] = behind_data;
    }
    // A server that closes without a word does not answer any more.
    if (seen.tcp_flags & rst || (seen.tcp_flags & fin && sender != connection->client))
        connection->awaited = false;
}

/* ---- DNS -------------------------------------------------------------------------------- */

void measure_message(response_meter &meter, const frame &seen, int32_t protocol)
{
    if (seen.payload_length < domain_opening)
        return;
    uint8_t sender;
    flow_key key = key_of(seen, sender);
    key.query = static_cast<uint16_t>(seen.payload[0] << 8 | seen.payload[1]);
    const bool response = seen.payload[2] & domain_response;
    const bool is_new = find_learned(meter.flows, key) == no_entry;
    if (is_new && response)
        return;
    flow *query = learn(meter.flows, key);
    if (!query)
        return;
    // A number that was answered may be used for another query, by either end.
    if (is_new || (!response && !query->awaited)) {
        *query = {};
        query->protocol = protocol;
        query->client = sender;
    }

    exchange_counters *counters = learn(meter.exchanges, exchange_of(key, *query));
    if (!counters)
        return;
    count_octets(*query, *counters, sender, seen.length);
    give_up_late(meter, *query, *counters, seen.time);
    if (response && sender != query->client && query->awaited)
        answer(meter, *query, *counters, seen.time);
    else if (!response && sender == query->client && query->awaited)
        counters->retries++;
    else if (!response && sender == query->client)
        ask(*query, seen.time);
}

} // namespace

void measure_frame(response_meter &meter, const frame &seen, int32_t protocol)
{
    if (seen.from.length == 0 || seen.from.length != seen.to.length || seen.later_fragment)
        return;
    if (seen.ip_protocol == tcp && seen.has_tcp_header && seen.from_port && seen.to_port)
        measure_segment(meter, seen, protocol);
    else if (seen.ip_protocol == udp && (seen.from_port == domain_port || seen.to_port == domain_port))
        measure_message(meter, seen, protocol);
}

void expire_requests(response_meter &meter, int64_t now)
{
    for (auto &entry : meter.flows.entries) {
        if (!entry.row.awaited || now - entry.row.asked <= meter.timeout)
            continue;
        const exchange_key exchange = exchange_of(entry.key, entry.row);
        // Silent connections must not take the place of active ones.
        if (!has_room(meter.exchanges) && find_learned(meter.exchanges, exchange) == no_entry)
            entry.row.awaited = false;
        else if (exchange_counters *counters = learn(meter.exchanges, exchange))
            give_up_late(meter, entry.row, *counters, now);
    }
}
