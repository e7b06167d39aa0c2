// SPDX-License-Identifier: MIT
/* The Ethernet statistics table (RFC 2819, etherStatsTable). */
#pragma once

#include "agent/capture/ether_counters.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <string>

struct etherstats_row {
    int32_t data_source = 0; // ifIndex
    std::string owner;
    row_status status = row_status::under_creation;
    ether_counters base{};    // the source's counters when the row became valid
    uint32_t create_time = 0; // sysUpTime when the row became valid
};

using etherstats_table = std::map<int32_t, etherstats_row>; // by etherStatsIndex
