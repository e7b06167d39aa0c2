// SPDX-License-Identifier: MIT
/*
 * Traffic of a data source by aggregation group (RFC 3287, dsmonStatsTable).
 *
 * "Out" is what the interface itself sent: frames from its own address. All
 * others are "in", also those between others that it only hears.
 */
#pragma once

#include "agent/dsmon/rows.h"

#include <array>
#include <cstdint>
#include <map>

struct dsmon_direction {
    uint64_t pkts;
    uint64_t octets;
};

struct dsmon_stats_counts {
    dsmon_work work;
    uint64_t groups = 0;              // those of the profile, one bit each
    std::array<uint8_t, 6> address{}; // of the interface
    bool has_address = false;
    std::array<dsmon_direction, aggregation_groups> in{};
    std::array<dsmon_direction, aggregation_groups> out{};
};

using dsmon_stats_table = std::map<int32_t, dsmon_row<dsmon_stats_counts>>; // by dsmonStatsControlIndex
