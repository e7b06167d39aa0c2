/* Hosts by network-layer address, and what protocols they speak (RFC 2021, nlHost and alHost). */
#pragma once

#include "agent/rmon2/hl_tables.h"

struct hl_host_key {
    key_address address;
    uint32_t length; // of the address
    int32_t network;
    int32_t application; // 0 in the network layer's table
    uint32_t zero;       // fills up the last word
};

struct hl_host {
    uint64_t in_pkts = 0;
    uint64_t out_pkts = 0;
    uint64_t in_octets = 0;
    uint64_t out_octets = 0;
    uint64_t out_mac_nonunicast_pkts = 0;
    uint32_t create_time = 0; // sysUpTime, both
    uint32_t changed = 0;
};

using hl_host_counts = hl_counts<hl_host_key, hl_host, ordered_view>;
using hl_host_row = hl_row<hl_host_counts>;
using hl_host_table = std::map<int32_t, hl_host_row>; // by hlHostControlIndex

/** What a set gives; the control rows' rules look for it. */
hl_settings settings_of(const rmonrpc_hlhost_ctl_t &request);

/** Removes the rows of an interface that went away. */
void hlhost_interface_gone(probe &agent, int32_t index);

/** Forgets the hosts' traffic of protocols that are not counted any more. */
void hlhost_protocols_changed(probe &agent);

/** What a set gives, with the row's state. */
void hlhost_describe(rmonrpc_hlhost_ctl_t &record, int32_t index, const hl_host_row &row);

rmonrpc_hlhost_ctl_t hlhost_ctl_get(probe &agent, const rmonrpc_row_key2_t &key);

/** By the row-status rules; the data source is fixed while a row is valid. A request_status. */
int32_t hlhost_ctl_set(probe &agent, const rmonrpc_hlhost_ctl_t &request);

rmonrpc_hlhost_arr_t hlhost_get(probe &agent, const rmonrpc_hlhost_key_t &key);

/** The row of this key never gives way to another one, or does again. A request_status. */
int32_t nlhost_make_persistent(probe &agent, const rmonrpc_hlhost_key_t &key);
int32_t nlhost_make_nonpersistent(probe &agent, const rmonrpc_hlhost_key_t &key);
