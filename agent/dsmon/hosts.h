// SPDX-License-Identifier: MIT
/*
 * Traffic of a data source by aggregation group and host address (RFC 3287,
 * dsmonHostTable). "In" is what was sent to the host, "out" what it sent.
 */
#pragma once

#include "agent/dsmon/address.h"
#include "agent/dsmon/rows.h"

#include <cstdint>
#include <map>

struct dsmon_host_key {
    uint8_t address[max_address] = {};
    uint8_t length = 0;
    uint8_t group = 0;
    uint8_t unused[2] = {};
    int32_t protocol = 0; // protocolDirLocalIndex of the network layer
};

struct dsmon_host_counters {
    uint64_t in_pkts;
    uint64_t in_octets;
    uint64_t out_pkts;
    uint64_t out_octets;
    uint32_t changed; // sysUpTime
};

struct dsmon_host_counts {
    dsmon_work work;
    int32_t ipv4_prefix = whole_ipv4; // bits of an address that tell hosts apart
    int32_t ipv6_prefix = whole_ipv6;
    learned_table<dsmon_host_key, dsmon_host_counters> learned;
    ordered_view order;
};

using dsmon_host_table = std::map<int32_t, dsmon_row<dsmon_host_counts>>; // by dsmonHostCtlIndex
