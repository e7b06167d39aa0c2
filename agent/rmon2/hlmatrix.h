// SPDX-License-Identifier: MIT
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
    ordered_view by_sender;
    ordered_view by_receiver;
};

using hl_pair_counts = hl_counts<hl_pair_key, hl_pair, pair_views>;
using hl_matrix_row = hl_row<hl_pair_counts>;
using hl_matrix_table = std::map<int32_t, hl_matrix_row>; // by hlMatrixControlIndex
