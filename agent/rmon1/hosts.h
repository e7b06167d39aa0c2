// SPDX-License-Identifier: MIT
/* The hosts of a data source (RFC 2819, hostControlTable, hostTable, hostTimeTable), by MAC address. */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/core/learned_table.h"
#include "agent/capture/mac_key.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

struct probe;

struct host_counts {
    uint64_t serial; // hosts of its control row are numbered from 1 on, in the order in which they were found
    uint64_t in_pkts;
    uint64_t out_pkts;
    uint64_t in_octets;
    uint64_t out_octets;
    uint64_t out_errors;
    uint64_t out_broadcast_pkts;
    uint64_t out_multicast_pkts;
};

struct host_work {
    learned_table<mac_key, host_counts> learned;
    uint64_t last_serial = 0;
    uint32_t last_delete = 0; // sysUpTime at which a host gave way, 0: never
    ordered_view by_address;
    ordered_view by_creation;
    std::vector<int32_t> creation_orders; // hostCreationOrder by entry, as of by_creation
};

using host_control = counting_row<host_work>;
using host_table = std::map<int32_t, host_control>; // by hostControlIndex

/** The rates by which hosts are ranked (hostTopNRateBase), in the MIB's numbers from 1 on. */
inline constexpr uint64_t host_counts::*const host_rate_bases[] = {
    &host_counts::in_pkts,
    &host_counts::out_pkts,
    &host_counts::in_octets,
    &host_counts::out_octets,
    &host_counts::out_errors,
    &host_counts::out_broadcast_pkts,
    &host_counts::out_multicast_pkts,
};

/** What a working control row learned up to this moment, or null. */
host_work *find_hosts(probe &agent, int32_t control);
