// SPDX-License-Identifier: MIT
#include "agent/voice/rtcp.h"

#include <algorithm>

namespace {

constexpr uint8_t sender_report = 200;
constexpr uint8_t receiver_report = 201;
constexpr uint32_t report_block = 24;

/** What a receiver says of a stream; RFC 3550, 6.4.1. */
void take_report(rtp_stream &stream, const uint8_t *block, int64_t time)
{
    stream.reports++;
    stream.rr_fraction = block[4];
    // 24 bits with a sign.
    stream.rr_lost = static_cast<int32_t>(read_u32(block + 4) << 8) >> 8;
    stream.rr_jitter = read_u32(block + 12);
    stream.rr_fraction_sum += stream.rr_fraction;
    stream.rr_jitter_sum += stream.rr_jitter;

    const uint32_t report = read_u32(block + 16);
    if (report == 0 || report != stream.report_stamp)
        return;
    // The receiver's delay is in units of 1/65536 s.
    const int64_t delay = int64_t{read_u32(block + 20)} * 1000000 / 65536;
    const int64_t since = microseconds_between(stream.report_sent, time);
    if (since >= delay)
        stream.round_trip_us = static_cast<uint32_t>(std::min<int64_t>(since - delay, UINT32_MAX));
}

/** Reads the report blocks from here on, as far as they were captured. */
void follow_blocks(
    rtp_follower &follower,
    int32_t interface,
    const frame &seen,
    const uint8_t *at,
    const uint8_t *end,
    uint32_t count)
{
    for (; count > 0 && end - at >= static_cast<std::ptrdiff_t>(report_block); count--, at += report_block) {
        if (rtp_stream *stream = find_by_parties(follower, interface, seen.to, seen.from, read_u32(at)))
            take_report(*stream, at, seen.time);
    }
}

/** One packet of a compound one, which has its 4 octets of header. */
void follow_report(
    rtp_follower &follower, int32_t interface, const frame &seen, const uint8_t *at, const uint8_t *end)
{
    const uint32_t count = at[0] & 31;
    if (at[1] == receiver_report && end - at >= 8)
        follow_blocks(follower, interface, seen, at + 8, end, count);
    if (at[1] != sender_report || end - at < 28)
        return;
    if (rtp_stream *stream = find_by_parties(follower, interface, seen.from, seen.to, read_u32(at + 4))) {
        stream->report_stamp = read_u32(at + 10);
        stream->report_sent = seen.time;
        stream->sr_packets = read_u32(at + 20);
        stream->sr_octets = read_u32(at + 24);
    }
    follow_blocks(follower, interface, seen, at + 28, end, count);
}

bool is_rtcp(const frame &seen)
{
    // RFC 3550, A.2: a report stands first, and is not padded.
    return seen.payload_length >= 8 && (seen.payload[0] & 0xe0) == 0x80
           && (seen.payload[1] == sender_report || seen.payload[1] == receiver_report);
}

} // namespace

void follow_rtcp(rtp_follower &follower, int32_t interface, const frame &seen)
{
    if (!is_rtcp(seen))
        return;
    const uint8_t *at = seen.payload;
    const uint8_t *end = at + seen.payload_length;
    while (end - at >= 4 && at[0] >> 6 == 2) {
        const std::ptrdiff_t octets = 4 + 4 * std::ptrdiff_t{read_u16(at + 2)};
        follow_report(follower, interface, seen, at, at + std::min(octets, end - at));
        if (octets > end - at)
            return;
        at += octets;
    }
}
