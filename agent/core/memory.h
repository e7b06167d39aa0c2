// SPDX-License-Identifier: MIT
/*
 * The memory of what traffic and clients make grow: one bound for all of it
 * (--memory), shared out as tables grow.
 *
 * Half of it is kept for equal parts, more than there may be tables: each has
 * its part when it needs it, whatever the others have. Beyond its part, a table
 * never takes more of the other half than it leaves free for all others.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

struct memory_bound {
    std::size_t limit = SIZE_MAX / 2; // octets
    std::size_t taken = 0;
    std::size_t beyond = 0; // of these, what is beyond the parts of those that took it
};

/** Of the process, as its memory is. */
inline memory_bound learned_memory;

/** Parts of half of the bound. All control rows together have less than 3,000 tables. */
inline constexpr std::size_t memory_parts = 4096;

constexpr std::size_t memory_part(std::size_t limit)
{
    return limit / 2 / memory_parts;
}

/** The smallest bound: in its parts, each table has room for some rows. */
inline constexpr std::size_t smallest_memory = std::size_t{16} << 20;

/** What one table has of the bound. It is given back with the table. */
struct memory_share {
    std::size_t octets = 0;

    memory_share() = default;
    memory_share(memory_share &&other) noexcept : octets(std::exchange(other.octets, 0)) {}
    memory_share &operator=(memory_share &&other) noexcept;
    ~memory_share();
};

/** Notes that a table has so many octets now. */
inline void have_memory(memory_share &share, std::size_t octets)
{
    const std::size_t part = memory_part(learned_memory.limit);
    const auto beyond = [&](std::size_t of) { return of > part ? of - part : 0; };
    learned_memory.taken += octets - share.octets;
    learned_memory.beyond += beyond(octets) - beyond(share.octets);
    share.octets = octets;
}

inline memory_share &memory_share::operator=(memory_share &&other) noexcept
{
    if (this != &other) {
        have_memory(*this, 0);
        octets = std::exchange(other.octets, 0);
    }
    return *this;
}

inline memory_share::~memory_share()
{
    have_memory(*this, 0);
}

/** Octets that a table may have in all, as the others are now. */
inline std::size_t memory_within_reach(const memory_share &share)
{
    const std::size_t part = memory_part(learned_memory.limit);
    const std::size_t own = share.octets > part ? share.octets - part : 0;
    const std::size_t left_by_others = learned_memory.limit / 2 - (learned_memory.beyond - own);
    return part + left_by_others / 2;
}

/** Whether there are so many octets for a table in the place of those that it has. */
inline bool memory_is_there(const memory_share &share, std::size_t octets)
{
    return octets <= learned_memory.limit - (learned_memory.taken - share.octets);
}

/** Takes so many octets in the place of those that a table has, if it may have them. */
inline bool take_memory(memory_share &share, std::size_t octets)
{
    if (octets > memory_within_reach(share) || !memory_is_there(share, octets))
        return false;
    have_memory(share, octets);
    return true;
}

/**
 * Octets of memory that this process can have: the machine's, or what its
 * control groups leave it. Where these are told can be elsewhere in tests.
 */
uint64_t machine_memory(
    const std::string &membership = "/proc/self/cgroup", const std::string &groups = "/sys/fs/cgroup");

/** A quarter of the machine's memory, and not less than smallest_memory. */
std::size_t usual_memory();
