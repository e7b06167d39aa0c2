// SPDX-License-Identifier: MIT
/*
 * What is counted of the frames on an Ethernet (RFC 2819, etherStatsTable).
 *
 * Lengths are in octets from the destination address to the end of the frame
 * check sequence. Counters only grow; whoever counts from a moment on keeps
 * what they were then and takes the difference.
 */
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/** Of the frame check sequence, which captures and the kernel's counters leave out. */
inline constexpr uint32_t fcs_octets = 4;

/** Frames of other lengths count as bad ones, whatever they carry. */
inline bool is_good_length(uint32_t length)
{
    return length >= 64 && length <= 1518;
}

/** The bit of a MAC address that tells a group, broadcast included. */
inline bool is_group(const uint8_t *mac)
{
    return mac[0] & 1;
}

inline bool is_broadcast(const uint8_t *mac)
{
    return (mac[0] & mac[1] & mac[2] & mac[3] & mac[4] & mac[5]) == 0xff;
}

struct ether_counters {
    uint64_t drop_events;
    uint64_t octets;
    uint64_t pkts;
    uint64_t broadcast_pkts;
    uint64_t multicast_pkts;
    uint64_t crc_align_errors;
    uint64_t undersize_pkts;
    uint64_t oversize_pkts;
    uint64_t fragments;
    uint64_t jabbers;
    uint64_t collisions;
    uint64_t pkts_64;
    uint64_t pkts_65_to_127;
    uint64_t pkts_128_to_255;
    uint64_t pkts_256_to_511;
    uint64_t pkts_512_to_1023;
    uint64_t pkts_1024_to_1518;
};

/** Counts one frame of length octets, of which the first captured ones are there. */
inline void count_frame(ether_counters &counters, const uint8_t *frame, uint32_t captured, uint32_t length)
{
    counters.pkts++;
    counters.octets += length;
    // Only good frames, those of 64 to 1518 octets, count as broadcast or multicast.
    if (length < 64) {
        counters.undersize_pkts++;
        return;
    }
    if (length > 1518) {
        counters.oversize_pkts++;
        return;
    }

    uint64_t &bucket = length == 64    ? counters.pkts_64
                       : length < 128  ? counters.pkts_65_to_127
                       : length < 256  ? counters.pkts_128_to_255
                       : length < 512  ? counters.pkts_256_to_511
                       : length < 1024 ? counters.pkts_512_to_1023
                                       : counters.pkts_1024_to_1518;
    bucket++;

    if (captured < 6 || !is_group(frame))
        return;
    (is_broadcast(frame) ? counters.broadcast_pkts : counters.multicast_pkts)++;
}

/** What was counted between two moments. */
inline ether_counters since(const ether_counters &then, const ether_counters &now)
{
    using list = std::array<uint64_t, sizeof(ether_counters) / sizeof(uint64_t)>;
    list difference = std::bit_cast<list>(now);
    const list before = std::bit_cast<list>(then);
    for (std::size_t i = 0; i < difference.size(); i++)
        difference[i] -= before[i];
    return std::bit_cast<ether_counters>(difference);
}
