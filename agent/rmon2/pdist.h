// SPDX-License-Identifier: MIT
/*
 * How the traffic of a data source is spread over the protocols (RFC 2021,
 * protocolDist).
 *
 * A frame is counted once, as the highest protocol that is known of it; what a
 * read shows of a protocol is the sum of it and all that stand above it.
 */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/core/memory.h"

#include "rmon/rpc/rmonrpc_rmon2.h"

#include <cstdint>
#include <map>
#include <set>
#include <vector>

struct probe;
struct protocol;

struct protocol_counter {
    uint64_t pkts;
    uint64_t octets;
};

struct distribution {
    probe *agent = nullptr;
    /** By local index; at 0 the frames of which not even the base layer is known. */
    std::vector<protocol_counter> counted;
    std::set<int32_t> persistent; // shown even without traffic
    memory_share memory;
    uint32_t dropped_frames = 0; // of protocols for which there was no memory
};

using distribution_row = counting_row<distribution>;
using distribution_table = std::map<int32_t, distribution_row>; // by protocolDistControlIndex
