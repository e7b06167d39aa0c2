// SPDX-License-Identifier: MIT
/*
 * The table of RTP streams: how one is found, and which one gives way.
 *
 * A first packet makes a candidate, a second one that fits it a stream. The
 * table has a fixed size; streams that were announced stay in it until they are
 * forgotten; of the others one that was quiet for long gives way.
 */
#pragma once

#include "agent/capture/frame.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

/** Streams that are followed at once, and first packets that wait for a second one. */
inline constexpr uint32_t max_rtp_streams = 8192;
inline constexpr uint32_t max_rtp_candidates = 4096;

/** Receivers that are announced at once. */
inline constexpr uint32_t max_rtp_receivers = 16384;

/** Streams to one address and port: more than any phone gets, so that forged senders take no more. */
inline constexpr uint32_t max_rtp_senders = 32;

/* ---- what is kept -------------------------------------------------------------------- */

struct rtp_key {
    std::array<uint64_t, 2> from{};
    std::array<uint64_t, 2> to{};
    uint16_t from_port = 0;
    uint16_t to_port = 0;
    uint32_t ssrc = 0;
    int32_t interface = 0;
    uint32_t address_length = 0;

    bool operator==(const rtp_key &) const = default;
};

struct rtp_receiver_key {
    std::array<uint64_t, 2> to{};
    int32_t interface = 0;
    uint16_t port = 0;
    uint16_t address_length = 0;

    bool operator==(const rtp_receiver_key &) const = default;
};

/** An address as keys have it. */
inline std::array<uint64_t, 2> words_of(const net_address &address)
{
    std::array<uint64_t, 2> words;
    std::memcpy(words.data(), address.bytes, sizeof address.bytes);
    return words;
}

/** And back. */
inline net_address address_of(const std::array<uint64_t, 2> &words, uint32_t length)
{
    net_address address;
    address.length = static_cast<uint8_t>(length);
    std::memcpy(address.bytes, words.data(), sizeof address.bytes);
    return address;
}

/** One stream's place in a chain of an index. */
struct rtp_link {
    uint32_t hash = 0;
    uint32_t next = UINT32_MAX;
    uint32_t before = UINT32_MAX;
};

/** In this order they are queues of the follower. */
enum class rtp_standing : uint8_t {
    unused,
    candidate, // one packet came
    followed,
    kept, // is announced
};

/** Mean deviation of the packets' spacing, RFC 3550 A.8, of one clock rate; milliseconds. */
struct jitter_meter {
    double jitter = 0;
    double highest = 0;
    double sum = 0;
};

/** Rates of the clocks of dynamic payload types that are measured at once, until signalling tells which it
 * is. */
inline constexpr std::array<uint32_t, 5> dynamic_rates{8000, 16000, 32000, 48000, 90000};

struct rtp_stream {
    rtp_key key;
    rtp_link by_key;
    rtp_link by_receiver;
    rtp_link by_parties; // addresses and SSRC: RTCP comes from other ports
    rtp_link in_queue;
    rtp_standing standing = rtp_standing::unused;
    bool touched = false; // since it came to its place in the queue
    uint8_t payload_type = 0;

    // RFC 3550, A.1.
    uint16_t base = 0;
    uint16_t highest = 0;
    uint64_t cycles = 0;              // 65536 for each
    uint32_t restart = 0;             // the sequence number that a sender who began anew would use next
    uint64_t expected_before = 0;     // before the sender began anew
    std::array<uint64_t, 2> recent{}; // of highest and the 127 before it, which came
    uint64_t packets = 0;
    uint64_t octets = 0;
    uint64_t duplicates = 0;
    uint64_t reordered = 0;

    int64_t first = 0;
    int64_t last = 0;
    // The packet before, for the jitter.
    int64_t arrival = 0;
    uint32_t timestamp = 0;
    bool has_timestamp = false;
    uint64_t spacings = 0;
    std::array<jitter_meter, dynamic_rates.size()> meters; // the first one only where the type tells the rate

    // RTCP.
    int64_t report_sent = 0;   // when the last sender report passed by
    uint32_t report_stamp = 0; // the middle of its NTP time stamp; 0: none came
    uint32_t sr_packets = 0;
    uint32_t sr_octets = 0;
    int32_t rr_lost = 0;
    uint32_t rr_fraction = 0;
    uint32_t rr_jitter = 0;
    uint32_t reports = 0;
    uint64_t rr_fraction_sum = 0;
    uint64_t rr_jitter_sum = 0;
    uint32_t round_trip_us = 0;
};

struct rtp_receiver {
    uint32_t announced = 0; // how many times
    int64_t since = 0;
    uint32_t clock_rate = 0; // of dynamic payload types
};

struct rtp_queue {
    uint32_t head = UINT32_MAX;
    uint32_t tail = UINT32_MAX;
    uint32_t count = 0;
};

struct rtp_receiver_hash {
    std::size_t operator()(const rtp_receiver_key &key) const;
};

struct rtp_follower {
    std::vector<rtp_stream> streams; // grows to its size with the traffic
    // Heads of chains, as many as a power of 2.
    std::vector<uint32_t> by_key;
    std::vector<uint32_t> by_receiver;
    std::vector<uint32_t> by_parties;
    std::array<rtp_queue, 4> queues; // by standing
    std::unordered_map<rtp_receiver_key, rtp_receiver, rtp_receiver_hash> receivers;
    uint64_t refused = 0; // streams for which there was no room
};

/* ---- use ----------------------------------------------------------------------------- */

/** The place of the newest stream or candidate of this key; no_entry (learned_table.h): there is none. */
uint32_t find_stream(const rtp_follower &follower, const rtp_key &key);

/** The place of a new candidate of this key; the oldest one gives way where there are too many. */
uint32_t add_candidate(rtp_follower &follower, const rtp_key &key);

/** A candidate becomes a stream, if there is room. */
bool promote(rtp_follower &follower, uint32_t index);

/** The stream of a sender from one address to another, whatever its ports; null when there is none. */
rtp_stream *find_by_parties(
    rtp_follower &follower, int32_t interface, const net_address &from, const net_address &to, uint32_t ssrc);

/**
 * Says that RTP goes to this address and port from a time on: streams that are
 * seen since then stay. As often as this is said, it is to be forgotten.
 * clock_rate is that of a dynamic payload type, where signalling tells it.
 */
void announce(
    rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    int64_t since,
    uint32_t clock_rate = 8000);
void forget(rtp_follower &follower, int32_t interface, const net_address &to, uint16_t port);

/** Shows each stream to this address and port, and the clock rate of dynamic types that was announced. */
void visit_streams(
    const rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    void (*visit)(void *context, const rtp_stream &stream, uint32_t dynamic_rate),
    void *context);

/** Microseconds between two times, which a capture file may put as far apart as it likes. */
inline int64_t microseconds_between(int64_t from, int64_t to)
{
    return static_cast<int64_t>(static_cast<uint64_t>(to) - static_cast<uint64_t>(from));
}
