// SPDX-License-Identifier: MIT
/* Samples of a data source at regular intervals (RFC 2819, historyControlTable, etherHistoryTable). */
#pragma once

#include "agent/capture/ether_counters.h"
#include "agent/core/loop.h"
#include "agent/core/memory.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>

struct history_sample {
    uint32_t start; // sysUpTime
    ether_counters counted;
    int32_t utilization; // hundredths of a percent
};

struct history_row {
    int32_t data_source = 0; // ifIndex
    int32_t buckets_requested = 0;
    int32_t interval = 0; // seconds
    std::string owner;
    row_status status = row_status::under_creation;
    uint32_t began = 0;      // sysUpTime at which the running interval began
    int64_t began_ms = 0;    // and grid_ms()
    timer sampling;          // at its end
    ether_counters before{}; // the source's counters then
    int32_t last_index = 0;  // etherHistorySampleIndex of the newest sample; they are numbered from 1 on
    std::deque<history_sample> samples;
    std::shared_ptr<memory_share> memory; // of the samples, while the row is valid
};

using history_table = std::map<int32_t, history_row>; // by historyControlIndex
