// SPDX-License-Identifier: MIT
/*
 * Sums: frames that are counted together.
 *
 * Much of the traffic is like a frame that came shortly before: between the same
 * addresses, of the same protocols. The first such frame is counted by each table
 * at once, which makes its rows. Those that follow are only added up in one place,
 * and the tables count the sum later: before anybody looks at them, before rows or
 * protocols change, and when many sums wait. So it is as if each frame had been
 * counted by itself.
 *
 * A sum may grow only as long as its rows are there. So there are epochs: a full
 * table gives up only rows that were not used in the present one
 * (core/learned_table.h). Where there are no others, all sums are counted, the
 * epoch ends, and the next frame of each sum is counted at once again.
 */
#pragma once

#include "agent/capture/counters.h"
#include "agent/core/learned_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/** What the frames of one sum have in common; whole words without padding. */
struct sum_key {
    uint8_t from[16]; // network addresses; what lies behind their length is 0
    uint8_t to[16];
    uint8_t macs[2 * mac_octets]; // destination and source, as in the frame
    int32_t data_source;          // ifIndex
    int32_t network_index;        // as in struct frame, and those below
    int32_t application_index;
    int16_t vlan;     // -1 as well where no table wants to know
    uint8_t priority; // greater by 1, as the next one: 0 is none, or of no interest
    uint8_t dscp;
    uint8_t address_length; // of both, 0: none
    uint8_t good_length;    // 64 to 1518 octets: 1
    uint16_t base_index;
};

/** Frames that wait to be counted. */
struct alignas(128) frame_sum {
    sum_key of{};
    uint64_t pkts = 0; // 0: nothing waits
    uint64_t octets = 0;
    uint64_t last = 0;   // the number of the last frame
    uint64_t grows = 0;  // the epoch in which frames may be added
    uint32_t length = 0; // of the last frame
    uint32_t up_time = 0;
    const counter_list *counters = nullptr; // of its source, and its kind
};

inline constexpr std::size_t sums_of_a_set = 8;

/** Where the sums are that a tag may mean. */
struct alignas(64) sum_set {
    std::array<uint32_t, sums_of_a_set> tags{};
    std::array<uint8_t, sums_of_a_set> used{}; // since the hand passed it
    uint32_t hand = 0;                         // the next one that may give way
};

/** Sums of the frames that some of the tables count. */
struct frame_sums {
    bool tags = false; // whether they want to know VLAN, priority and DSCP
    std::vector<sum_set> sets;
    std::vector<frame_sum> sums;
    /** Places of sums that wait, the oldest at first: a ring. A place whose sum does not wait any more is
     * passed over. */
    std::vector<uint32_t> waiting;
    std::size_t first = 0;
    std::size_t used = 0;
    uint32_t looked_up = 0; // frames of this round
    uint32_t added = 0;     // of them, to a sum that waited already: what this saves
    uint32_t alone = 0;     // frames that are still not to be looked up, because too few were added
};

/** All sums of the agent. */
struct summed_frames : late_counts {
    std::array<frame_sums, 2> of; // without and with tags
};

/**
 * Counts a frame of a source in those tables that count like frames together: now, or later with others. Its
 * counters stay where they are until what waits was counted.
 */
void add_up(summed_frames &all, int32_t data_source, attached_counters &counters, const frame &seen);

/** Has all tables count what waits. */
void settle(summed_frames &all);

/** The same, and no sum grows until a frame of it was counted at once: what sums tell of may change. */
void settle_for_change(summed_frames &all);
