/*
 * How the traffic of a data source is spread over the protocols (RFC 2021,
 * protocolDist).
 *
 * A frame is counted once, as the highest protocol that is known of it; what a
 * read shows of a protocol is the sum of it and all that stand above it.
 */
#pragma once

#include "agent/capture/counting_row.h"

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
};

using distribution_row = counting_row<distribution>;
using distribution_table = std::map<int32_t, distribution_row>; // by protocolDistControlIndex

/** Removes the rows of an interface that went away. */
void pdist_interface_gone(probe &agent, int32_t index);

/** What was counted as a protocol that leaves the directory stays part of the one below. */
void pdist_protocol_gone(probe &agent, const protocol &which);

/** What a set gives, with the row's state. */
void pdist_describe(rmonrpc_pdist_ctl_t &record, int32_t index, const distribution_row &row);

rmonrpc_pdist_ctl_t pdist_ctl_get(probe &agent, const rmonrpc_row_key2_t &key);

/** By the row-status rules; the data source is fixed while a row is valid. A request_status. */
int32_t pdist_ctl_set(probe &agent, const rmonrpc_pdist_ctl_t &request);

/** The protocols of which there was traffic. */
rmonrpc_pdist_stats_arr_t pdist_stats_get(probe &agent, const rmonrpc_row_key4_t &key);

/** Frames of which no protocol above the base layer is known. */
rmonrpc_others_counters_t pdist_get_others(probe &agent, const rmonrpc_row_key1_t &key);

/** Shows a protocol's row from now on even while there is no traffic of it. A request_status. */
int32_t pdist_make_persistent(probe &agent, const rmonrpc_row_key4_t &key);
int32_t pdist_make_nonpersistent(probe &agent, const rmonrpc_row_key4_t &key);
