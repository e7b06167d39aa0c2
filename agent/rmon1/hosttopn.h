// SPDX-License-Identifier: MIT
/* Reports of the busiest hosts over an interval (RFC 2819, hostTopNControlTable, hostTopNTable). */
#pragma once

#include "agent/capture/mac_key.h"
#include "agent/core/loop.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct host_work;

/** What a host had when the interval began. */
struct topn_base {
    uint64_t serial; // of the host, see host_counts
    uint64_t value;
};

struct topn_host {
    mac_key address;
    uint64_t rate; // by how much the value grew in the interval
};

struct topn_row {
    int32_t host_index = 0; // hostControlIndex
    int32_t rate_base = 0;
    int32_t duration = 0; // seconds, of the running or the last interval
    int32_t requested = 0;
    std::string owner;
    row_status status = row_status::under_creation;
    bool running = false;
    uint32_t start_time = 0;       // sysUpTime at which the running or the last interval began
    timer end;                     // of the running interval
    std::weak_ptr<host_work> of;   // the hosts that the bases are of; others in their place have none
    std::vector<topn_base> base;   // by serial; while an interval runs
    std::vector<topn_host> report; // of the last interval that ended, the busiest host first
};

using topn_table = std::map<int32_t, topn_row>; // by hostTopNControlIndex
