// SPDX-License-Identifier: MIT
/*
 * Traffic by VLAN and by priority, as the 802.1Q tags of the frames have them
 * (RFC 2613, smonVlanStats and smonPrioStats). Frames without a tag count in
 * neither. Of several tags the outermost counts.
 */
#pragma once

#include "agent/capture/counting_row.h"

#include "rmon/rpc/rmonrpc_smon_art.h"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

struct probe;

/** VLAN identifiers that a tag may carry; the last one (0xfff) is reserved and doesn't count. */
inline constexpr int32_t vlan_ids = 4095;

inline constexpr int32_t priorities = 8;

struct vlan_counters {
    uint64_t pkts;
    uint64_t octets;
    uint64_t nucast_pkts;
    uint64_t nucast_octets;
    uint32_t create_time; // sysUpTime of the VLAN's first frame
};

struct vlan_counts {
    std::array<uint16_t, vlan_ids> place{}; // in seen, and 1; 0: no frame of that VLAN yet
    std::vector<vlan_counters> seen;
};

struct priority_counts {
    std::array<uint64_t, priorities> pkts{};
    std::array<uint64_t, priorities> octets{};
};

using vlan_row = counting_row<vlan_counts>;
using priority_row = counting_row<priority_counts>;

using vlan_table = std::map<int32_t, vlan_row>;         // by smonVlanStatsControlIndex
using priority_table = std::map<int32_t, priority_row>; // by smonPrioStatsControlIndex
