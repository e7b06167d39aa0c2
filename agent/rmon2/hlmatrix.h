/* The traffic between pairs of hosts by network-layer address (RFC 2021, nlMatrix and alMatrix). */
#pragma once

#include "agent/rmon2/hl_tables.h"

struct hl_pair_key {
    key_address from;
    key_address to;
    uint32_t length; // of both addresses
    int32_t network;
    int32_t application; // 0 in the network layer's table
    uint32_t zero;       // fills up the last word
};

struct hl_pair {
    uint64_t pkts = 0;
    uint64_t octets = 0;
    uint32_t create_time = 0; // sysUpTime, both
    uint32_t changed = 0;
};

/** The two orders of a matrix. */
struct pair_views {
    ordered_view by_source;
    ordered_view by_destination;
};

using hl_pair_counts = hl_counts<hl_pair_key, hl_pair, pair_views>;
using hl_matrix_row = hl_row<hl_pair_counts>;
using hl_matrix_table = std::map<int32_t, hl_matrix_row>; // by hlMatrixControlIndex

/** What a set gives; the control rows' rules look for it. */
hl_settings settings_of(const rmonrpc_hlmatrix_ctl_t &request);

/** Removes the rows of an interface that went away. */
void hlmatrix_interface_gone(probe &agent, int32_t index);

/** Forgets the pairs' traffic of protocols that are not counted any more. */
void hlmatrix_protocols_changed(probe &agent);

/** What a set gives, with the row's state. */
void hlmatrix_describe(rmonrpc_hlmatrix_ctl_t &record, int32_t index, const hl_matrix_row &row);

rmonrpc_hlmatrix_ctl_t hlmatrix_ctl_get(probe &agent, const rmonrpc_row_key2_t &key);

/** By the row-status rules; the data source is fixed while a row is valid. A request_status. */
int32_t hlmatrix_ctl_set(probe &agent, const rmonrpc_hlmatrix_ctl_t &request);

rmonrpc_hlmatrix_arr_t hlmatrix_get(probe &agent, const rmonrpc_hlmatrix_key_t &key);

/** The row of this key never gives way to another one, or does again. A request_status. */
int32_t nlmatrix_make_persistent(probe &agent, const rmonrpc_hlmatrix_key_t &key);
int32_t nlmatrix_make_nonpersistent(probe &agent, const rmonrpc_hlmatrix_key_t &key);
