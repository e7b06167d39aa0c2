// SPDX-License-Identifier: MIT
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
