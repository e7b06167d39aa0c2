// SPDX-License-Identifier: MIT
/* Frames of RTP as tests make them, and the streams that the follower made of them. */
#pragma once

#include "tests/native/check.h"

#include "agent/voice/rtp.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

using octets = std::vector<uint8_t>;

/** Where all frames pass by, and when the first ones do. */
inline constexpr int32_t interface = 3;
inline constexpr int64_t start = 1600000000000000; // microseconds

/** A number in network byte order, of so many octets. */
inline void put(octets &to, uint64_t value, int size)
{
    for (int i = size - 1; i >= 0; i--)
        to.push_back(static_cast<uint8_t>(value >> 8 * i));
}

/** Two ends of a call: octets of their addresses, and ports. */
struct path {
    octets from{10, 0, 0, 1};
    octets to{10, 0, 0, 2};
    uint16_t from_port = 5000;
    uint16_t to_port = 6000;
};

/** A frame that has a datagram of UDP in it, over IPv4 or IPv6; tagged: in a VLAN. */
inline octets ethernet(const path &way, const octets &datagram, bool tagged = false)
{
    octets made{2, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 1};
    if (tagged)
        put(made, 0x8100a064, 4);
    const std::size_t length = datagram.size() + 8;
    if (way.to.size() == 4) {
        put(made, 0x08004500, 4);
        put(made, length + 20, 2);
        put(made, 0x40110000, 8);
    } else {
        put(made, 0x86dd60000000, 6);
        put(made, length, 2);
        put(made, 0x1140, 2);
    }
    made.insert(made.end(), way.from.begin(), way.from.end());
    made.insert(made.end(), way.to.begin(), way.to.end());
    put(made, way.from_port, 2);
    put(made, way.to_port, 2);
    put(made, length << 16, 4);
    made.insert(made.end(), datagram.begin(), datagram.end());
    return made;
}

/** Has a frame followed, or as much of it as was captured. */
inline void send(rtp_follower &follower, const octets &bytes, int64_t time, std::size_t captured = SIZE_MAX)
{
    // In a block of its own, so that the sanitizers see what is read behind it.
    const octets kept(
        bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(captured, bytes.size())));
    frame seen;
    decode_frame(
        seen, kept.data(), static_cast<uint32_t>(kept.size()), static_cast<uint32_t>(bytes.size() + 4), time);
    follow(follower, interface, seen);
}

/** A packet of RTP. */
struct packet {
    int64_t time = 0; // milliseconds after the start
    uint16_t sequence = 0;
    uint32_t timestamp = 0;
    uint8_t type = 0;
    uint32_t ssrc = 0x11223344;
};

inline octets rtp(const packet &one, std::size_t payload = 160)
{
    octets made{0x80, one.type};
    put(made, one.sequence, 2);
    put(made, one.timestamp, 4);
    put(made, one.ssrc, 4);
    made.resize(made.size() + payload, 0xd5);
    return made;
}

inline void send(rtp_follower &follower, const path &way, const packet &one)
{
    send(follower, ethernet(way, rtp(one)), start + one.time * 1000);
}

inline net_address address(const octets &bytes)
{
    return make_net_address(bytes.data(), static_cast<uint8_t>(bytes.size()));
}

/** The streams to one end that were seen between these times. */
inline std::vector<rtp_figures> streams(
    const rtp_follower &follower,
    const path &way = {},
    int64_t from_time = INT64_MIN,
    int64_t to_time = INT64_MAX)
{
    std::vector<rtp_figures> all;
    streams_to(
        follower, interface, address(way.to), way.to_port, from_time, to_time,
        [](void *list, const rtp_figures &one) {
            static_cast<std::vector<rtp_figures> *>(list)->push_back(one);
        },
        &all);
    return all;
}

/** What the only stream has. */
inline rtp_figures only(const rtp_follower &follower, const std::string &what, const path &way = {})
{
    const auto all = streams(follower, way);
    check(all.size() == 1, what + ": one stream");
    return all.empty() ? rtp_figures{} : all[0];
}
