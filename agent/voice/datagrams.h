// SPDX-License-Identifier: MIT
/*
 * Datagrams of signalling that are not one frame with one message: those of
 * several messages, and those that came as fragments of IP.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/voice/recent.h"

#include <cstdint>
#include <optional>

/* ---- several messages --------------------------------------------------------------------- */

/** Messages of one datagram that are parted; the last of them has all that follow. */
inline constexpr std::size_t max_mgcp_messages = 32;

/**
 * Calls visit for each message of a datagram of MGCP, as if it had come in a
 * datagram of its own: lines of one dot part them (RFC 3435, 3.5.5). Each may have a description of a
 * session, which could not be told from that of another one.
 */
void visit_messages(const frame &datagram, void (*visit)(void *context, const frame &message), void *context);

/* ---- fragments ------------------------------------------------------------------------------- */

/** Datagrams whose later fragments are waited for, and how long, microseconds. */
inline constexpr std::size_t max_fragmented = 1024;
inline constexpr int64_t patience_for_fragments = 30 * int64_t{1000000};

/** What the fragments of one datagram have in common. */
struct datagram_key {
    net_address from;
    net_address to;
    uint32_t identification = 0;
    int32_t interface = 0;

    bool operator==(const datagram_key &) const = default;
};

template <> struct std::hash<datagram_key> {
    std::size_t operator()(const datagram_key &key) const
    {
        const std::hash<net_address> of_end;
        const uint64_t one = (of_end(key.from) ^ key.identification) * 0x9e3779b97f4a7c15;
        return (one ^ one >> 32 ^ static_cast<uint32_t>(key.interface)) * 0xd6e8feb86659fd93 ^ of_end(key.to);
    }
};

/** What the first fragment told. */
struct datagram_ports {
    uint16_t from = 0;
    uint16_t to = 0;
    int64_t time = 0;
};

using fragmented_datagrams = recent_table<datagram_key, datagram_ports>;

/** The number by which fragments of a datagram know each other; nothing in a frame that is no fragment of
 * UDP. */
std::optional<uint32_t> identification_of(const frame &seen);

/** Keeps the ports of a first fragment for the later ones. */
void note_fragment(
    fragmented_datagrams &table, int32_t interface, const frame &first, uint32_t identification);

/** What the first one told of a later fragment's datagram; null when that was not noted, or long ago. */
const datagram_ports *ports_of_fragment(
    fragmented_datagrams &table, int32_t interface, const frame &later, uint32_t identification);
