// SPDX-License-Identifier: MIT
/* What counts the frames of a source for the rows of all groups. */
#pragma once

#include "agent/capture/frame.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/**
 * Counts frames for a row: frame.pkts of them, which is 1 unless it counts like
 * ones together. It must not attach or detach anything, and must not keep what
 * the frame points to.
 */
using count_function = void (*)(void *row, const frame &seen);

/** Which frames are alike for a counter. */
enum class counting : uint8_t {
    each,            // none: it looks into each
    alike,           // those of the same addresses and protocols
    alike_with_tags, // those that are of one VLAN, priority and DSCP, too
};

struct attached_counter {
    count_function count;
    void *row;
    uint32_t octets; // of each frame that the row wants captured
};

using counter_list = std::vector<attached_counter>;

/** The counters of a source, in the order of enum counting. */
struct attached_counters {
    std::array<counter_list, 3> of;

    counter_list &operator[](counting how) { return of[static_cast<std::size_t>(how)]; }
    std::size_t size() const { return of[0].size() + of[1].size() + of[2].size(); }
    bool empty() const { return size() == 0; }
};

inline void count_frame(const counter_list &list, const frame &seen)
{
    for (const attached_counter &counter : list)
        counter.count(counter.row, seen);
}
