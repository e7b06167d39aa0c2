// SPDX-License-Identifier: MIT
/* Thresholds on the agent's variables (RFC 2819, alarmTable). */
#pragma once

#include "agent/core/loop.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

struct alarm_row {
    uint32_t interval = 0; // seconds
    std::string variable;
    int32_t sample_type = 0;
    int32_t startup = 0;
    uint32_t rising_threshold = 0;
    uint32_t falling_threshold = 0;
    uint32_t rising_event = 0;
    uint32_t falling_event = 0;
    std::string owner;
    row_status status = row_status::under_creation;

    timer sampling;                // the next time
    int64_t last_sampled = 0;      // grid_ms()
    uint64_t last_reading = 0;     // the variable itself, then
    std::optional<uint32_t> value; // of the last sample; none before there was one
    bool may_rise = true;          // a threshold is armed again when the other one is reached
    bool may_fall = true;
};

using alarm_table = std::map<int32_t, alarm_row>; // by alarmIndex
