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
    uint8_t address[longest_address] = {};
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

/** Fills in what a set gives to a control row. */
void describe_dsmon_host_row(
    rmonrpc_dsmon_hostctl_t &record, int32_t index, const dsmon_row<dsmon_host_counts> &row);

void dsmon_host_lock_changed(probe &agent, bool locked);
void dsmon_host_interface_gone(probe &agent, int32_t index);

rmonrpc_dsmon_hostctl_t dsmon_hostctl_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t dsmon_hostctl_set(probe &agent, const rmonrpc_dsmon_hostctl_t &request);
rmonrpc_dsmon_hoststats_t dsmon_hoststats_get(probe &agent, const rmonrpc_dsmon_host_key_t &key);

/** The row of this key never gives way to another one, or does again. A request_status. */
int32_t dshost_make_persistent(probe &agent, const rmonrpc_dsmon_host_key_t &key);
int32_t dshost_make_nonpersistent(probe &agent, const rmonrpc_dsmon_host_key_t &key);
