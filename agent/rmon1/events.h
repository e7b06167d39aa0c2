// SPDX-License-Identifier: MIT
/*
 * Events and their log (RFC 2819, eventTable, logTable).
 *
 * An event happens when an alarm crosses a threshold or a channel accepts a
 * packet. It writes the log, as its type says, and turns channels on or off.
 */
#pragma once

#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

struct probe;

struct log_row {
    uint32_t time; // sysUpTime
    std::string description;
};

struct event_row {
    std::string description;
    int32_t type = 0;
    std::string community;
    uint32_t last_time_sent = 0; // sysUpTime of the last time, 0: never
    std::string owner;
    row_status status = row_status::under_creation;
    int32_t last_index = 0; // logIndex of the newest log row; they are numbered from 1 on
    std::deque<log_row> log;
};

using event_table = std::map<int32_t, event_row>; // by eventIndex

/** Told of each event that happens. */
using event_listener = void (*)(probe &agent, uint32_t event);
using event_listeners = std::vector<event_listener>;

/** An event happens, if there is a valid one of this index. What tells why, for the log. */
void fire_event(probe &agent, uint32_t index, std::string_view what);
