// SPDX-License-Identifier: MIT
/*
 * What the four differentiated-services tables that count traffic have in
 * common (RFC 3287): their control rows, and what a row needs while it counts.
 *
 * A row counts while it is valid and the aggregation is locked. Its profile's
 * map is taken when the lock goes on; when it goes off, all that was counted is
 * forgotten.
 */
#pragma once

#include "agent/dsmon/aggregation.h"
#include "agent/core/learned_table.h"
#include "agent/core/row_status.h"

#include <cstdint>
#include <memory>
#include <string>

struct probe;

inline constexpr int32_t whole_ipv4 = 32, whole_ipv6 = 128;
inline constexpr int32_t min_prefix = 8;

template <class Counts> struct dsmon_row {
    int32_t data_source = 0;
    int32_t profile = 0;
    int32_t desired = -1; // rows, -1: as many as the agent likes
    int32_t ipv4_prefix = whole_ipv4;
    int32_t ipv6_prefix = whole_ipv6;
    std::string owner;
    row_status status = row_status::under_creation;
    std::shared_ptr<Counts> counts; // while the row is valid; where it is does not change
};

/** What each table's counts begin with. */
struct dsmon_work {
    probe *agent = nullptr;
    bool attached = false;
    dscp_map group_of{};
    uint32_t dropped = 0; // frames for which there was no room
};

/** A row of counters with the time of their last change, for TimeFilter. */
struct dsmon_counters {
    uint64_t pkts;
    uint64_t octets;
    uint32_t changed; // sysUpTime
};
