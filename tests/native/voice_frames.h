// SPDX-License-Identifier: MIT
/* Frames of telephone signalling, as tests make them. */
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

using octets = std::vector<uint8_t>;

inline void put(octets &to, std::string_view text)
{
    to.insert(to.end(), text.begin(), text.end());
}

inline void put_u16(octets &to, uint32_t value)
{
    to.push_back(static_cast<uint8_t>(value >> 8));
    to.push_back(static_cast<uint8_t>(value));
}

inline void put_u32(octets &to, uint32_t value)
{
    put_u16(to, value >> 16);
    put_u16(to, value);
}

/** SCCP's byte order. */
inline void put_low_first(octets &to, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        to.push_back(static_cast<uint8_t>(value >> shift));
}

/** A message of SCCP: length of what follows the version, version, number, words. */
inline octets sccp(uint32_t number, const std::vector<uint32_t> &words)
{
    octets made;
    put_low_first(made, static_cast<uint32_t>(4 + 4 * words.size()));
    put_low_first(made, 0);
    put_low_first(made, number);
    for (const uint32_t word : words)
        put_low_first(made, word);
    return made;
}

/** An Ethernet frame of IPv4: addresses are 10.0.0.0 and the last octet. */
inline octets frame_of(uint8_t protocol, uint8_t from, uint8_t to, const octets &transport)
{
    octets made{2, 0, 0, 0, 0, to, 2, 0, 0, 0, 0, from, 8, 0};
    put_u16(made, 0x4500);
    put_u16(made, static_cast<uint32_t>(20 + transport.size()));
    put_u32(made, 0x00010000);
    put_u16(made, static_cast<uint32_t>(64 << 8 | protocol));
    put_u16(made, 0); // the decoder does not judge checksums
    for (const uint8_t host : {from, to})
        put_u32(made, 0x0a000000U | host);
    made.insert(made.end(), transport.begin(), transport.end());
    return made;
}

inline octets tcp_frame(
    uint8_t from, uint16_t from_port, uint8_t to, uint16_t to_port, uint32_t sequence, const octets &payload)
{
    octets segment;
    put_u16(segment, from_port);
    put_u16(segment, to_port);
    put_u32(segment, sequence);
    put_u32(segment, 1);
    put_u16(segment, 0x5018);
    put_u16(segment, 8192);
    put_u32(segment, 0);
    segment.insert(segment.end(), payload.begin(), payload.end());
    return frame_of(6, from, to, segment);
}

inline octets
udp_frame(uint8_t from, uint16_t from_port, uint8_t to, uint16_t to_port, std::string_view payload)
{
    octets datagram;
    put_u16(datagram, from_port);
    put_u16(datagram, to_port);
    put_u16(datagram, static_cast<uint32_t>(8 + payload.size()));
    put_u16(datagram, 0);
    put(datagram, payload);
    return frame_of(17, from, to, datagram);
}
