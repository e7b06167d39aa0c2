// SPDX-License-Identifier: MIT
/*
 * RTP streams and what RTCP tells of them (RFC 3550), followed as they pass by.
 *
 * Signalling is decoded late, so a stream is followed before anybody announced
 * it: whatever looks like RTP and is followed by a second packet that fits the
 * first.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/voice/rtp_table.h"

#include <cstdint>

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

/* ---- use ----------------------------------------------------------------------------- */

/** Takes in a frame that may be RTP or RTCP: any of UDP that is not signalling. */
void follow(rtp_follower &follower, int32_t interface, const frame &seen);

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
