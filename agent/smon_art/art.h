// SPDX-License-Identifier: MIT
/*
 * Application response time: reports of how long the servers on a data source
 * take to answer, by server, client and protocol, and by server and protocol.
 *
 * A control row has an interval, in seconds (artControlTimeRemaining, as it is
 * set): when it is over, the report of it can be read until the next one is
 * ready. With an interval of 0 there is one report without an end, which can be
 * read while it grows. Times are in milliseconds; a response belongs to the
 * first range whose limit is not below it. Of a report that has its size, the
 * pairs that spoke least recently give way.
 */
#pragma once

#include "agent/smon_art/response_times.h"
#include "agent/core/loop.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_smon_art.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

struct probe;

struct art_work {
    probe *agent = nullptr;
    response_meter meter;  // of the report that is being made
    ordered_view order;    // of its exchanges
    exchange_table report; // the last one that was finished
    ordered_view report_order;
    int64_t began = 0;       // grid_ms() when the report that is being made began
    uint32_t start_time = 0; // and the sysUpTime
    int32_t reports = 0;     // that were finished
    int64_t frame_time = 0;  // microseconds of the capture's clock at the last frame
    int64_t frame_seen = 0;  // now_ms() at about that frame
};

struct art_row {
    int32_t data_source = 0;                           // ifIndex
    int32_t interval = 0;                              // seconds, 0: without an end
    std::array<int32_t, response_ranges - 1> limits{}; // milliseconds
    int32_t timeout = 0;                               // milliseconds
    int32_t requested = 0;                             // rows, -1: as many as the agent likes
    std::string owner;
    row_status status = row_status::under_creation;
    std::shared_ptr<art_work> work; // while the row is valid; where it is does not change
    timer end;                      // of the report that is being made
};

using art_table = std::map<int32_t, art_row>; // by artControlIndex
