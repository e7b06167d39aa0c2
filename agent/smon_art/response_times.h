// SPDX-License-Identifier: MIT
/*
 * Response times, measured from frames: how long servers take to answer.
 *
 * A TCP exchange begins with a client's data. The time runs from the last new
 * segment of the request to the first segment of the answer, so it contains the
 * network between the place of capture and the server. A DNS exchange over UDP
 * is a query and the response with its number. What is sent again while the
 * answer is awaited is a retry; a request without an answer in time is a
 * timeout, and what comes later is no answer.
 *
 * The client of a connection is who opened it. Of connections that were open
 * before, the side with the higher port is taken for it.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/learned_table.h"

#include <array>
#include <cstdint>

inline constexpr uint32_t response_ranges = 7;

/** Limits in microseconds; a time belongs to the first range whose limit is not below it. */
using range_limits = std::array<int64_t, response_ranges - 1>;

/** A server, one of its clients, and the protocol that they speak. */
struct exchange_key {
    uint8_t server[16] = {};
    uint8_t client[16] = {};
    uint8_t server_length = 0;
    uint8_t client_length = 0;
    uint8_t unused[2] = {};
    int32_t protocol = 0; // protocolDirLocalIndex
};

struct exchange_counters {
    uint32_t responses;
    uint32_t retries;
    uint32_t timeouts;
    std::array<uint32_t, response_ranges> in_range;
    uint64_t sum; // of the response times, in microseconds like these
    int64_t min_time;
    int64_t max_time;
    uint64_t client_octets;
    uint64_t server_octets;
};

using exchange_table = learned_table<exchange_key, exchange_counters>;

/** Both ends of a connection, the lower address and port first; for DNS one query. */
struct flow_key {
    std::array<std::array<uint8_t, 16>, 2> address{};
    std::array<uint16_t, 2> port{};
    uint8_t address_length = 0;
    uint8_t ip_protocol = 0;
    uint16_t query = 0; // DNS: its number
};

struct flow {
    int32_t protocol;
    uint8_t client;               // 0 or 1: which of the ends
    bool awaited;                 // a request has no answer yet
    bool data_seen;               // since it was opened
    std::array<bool, 2> known;    // of each end: whether next is
    std::array<uint32_t, 2> next; // and the sequence number of its next new octet
    int64_t asked;                // of the request, on the capture's clock
};

struct response_meter {
    range_limits limits{};
    int64_t timeout = 0;
    learned_table<flow_key, flow> flows;
    exchange_table exchanges;
};

/** Takes note of a TCP or DNS frame that counts as this protocol. */
void measure_frame(response_meter &meter, const frame &seen, int32_t protocol);

/** Gives up the requests whose time is over at this time of the capture's clock. */
void expire_requests(response_meter &meter, int64_t now);
