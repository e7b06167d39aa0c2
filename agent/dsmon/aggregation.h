// SPDX-License-Identifier: MIT
/*
 * Aggregation of the differentiated-services tables (RFC 3287,
 * dsmonAggObjects): profiles that map each of the 64 DSCP values to a group,
 * and names for the groups.
 *
 * Profiles change only while the lock is off, and traffic is counted only
 * while it is on. So whoever counts takes a profile's map once, when the lock
 * goes on.
 */
#pragma once

#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_dsmon.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct probe;

inline constexpr int32_t dscp_values = 64;
inline constexpr int32_t aggregation_groups = 64; // of one profile, numbered from 0

/** DSCP to group. */
using dscp_map = std::array<uint8_t, dscp_values>;

struct aggregation_group {
    std::string description;
    row_status status = row_status::under_creation;
};

struct aggregation_profile {
    std::string description;
    std::string owner;
    row_status status = row_status::under_creation;
    dscp_map group_of{};                         // all in group 0 at first
    std::map<int32_t, aggregation_group> groups; // by dsmonAggGroupIndex: those that have a description
};

/** Told when the lock goes on or off. */
using lock_listener = void (*)(probe &agent, bool locked);

struct dsmon_aggregation {
    bool locked = false;
    std::vector<lock_listener> listeners;            // of the families that count by it
    std::map<int32_t, aggregation_profile> profiles; // by dsmonAggControlIndex
};

/** The map of a valid profile, or null. */
const dscp_map *find_profile(const probe &agent, int32_t index);
