// SPDX-License-Identifier: MIT
/*
 * RTP streams and what RTCP tells of them (RFC 3550), followed as they pass by.
 *
 * Signalling is decoded late, so a stream is followed before anybody announced
 * it: whatever looks like RTP and is followed by a second packet that fits the
 * first. The table has a fixed size; streams that were announced stay in it
 * until they are forgotten; of the others one that was quiet for long gives way.
 */
#pragma once

#include "agent/capture/frame.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

/** Streams that are followed at once, and first packets that wait for a second one. */
inline constexpr uint32_t max_rtp_streams = 8192;
inline constexpr uint32_t max_rtp_candidates = 4096;

/** Receivers that are announced at once. */
inline constexpr uint32_t max_rtp_receivers = 16384;

/** Streams to one address and port: more than any phone gets, so that forged senders take no more. */
inline constexpr uint32_t max_rtp_senders = 32;

/** What is known of one stream. */
struct rtp_figures {
    int32_t interface = 0;
    net_address from;
    net_address to;
    uint16_t from_port = 0;
    uint16_t to_port = 0;
    uint32_t ssrc = 0;
    uint8_t payload_type = 0;
    uint32_t clock_rate = 0; // 0: not known, and no jitter

    int64_t first = 0; // times of its frames, microseconds
    int64_t last = 0;
    uint64_t packets = 0;    // all that came, duplicates too
    uint64_t octets = 0;     // of payload
    uint64_t expected = 0;   // by extended sequence numbers
    int64_t lost = 0;        // expected - packets (RFC 3550, A.3): below 0 where duplicates came
    uint64_t duplicates = 0; // of the last 128 sequence numbers
    uint64_t reordered = 0;  // came late

    double jitter = 0; // milliseconds (RFC 3550, 6.4.1): as it is now, its greatest value, the mean
    double max_jitter = 0;
    double mean_jitter = 0;

    // What the two ends said in RTCP; 0: nothing.
    uint32_t sr_packets = 0; // the sender's counts
    uint32_t sr_octets = 0;
    int32_t rr_lost = 0;          // the receiver's last report
    uint32_t rr_fraction = 0;     // of 256
    uint32_t rr_jitter = 0;       // in units of the clock rate
    uint32_t reports = 0;         // of the receiver
    uint64_t rr_fraction_sum = 0; // over these
    uint64_t rr_jitter_sum = 0;
    /** From here to the receiver and back; that of the stream the other way is the rest of the whole path's.
     */
    uint32_t round_trip_us = 0;
};

/* ---- what the follower keeps --------------------------------------------------------- */

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

/** Takes in a frame that may be RTP or RTCP: any of UDP that is not signalling. */
void follow(rtp_follower &follower, int32_t interface, const frame &seen);

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

/** Shows each stream to this address and port of which frames were seen between these times. */
void streams_to(
    const rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    int64_t from_time,
    int64_t to_time,
    void (*visit)(void *context, const rtp_figures &figures),
    void *context);
