// SPDX-License-Identifier: MIT
#include "agent/voice/h323_shown.h"

#include "agent/voice/monitor.h"

#include <algorithm>
#include <cmath>

namespace {

struct sum_of_streams {
    uint64_t packets = 0;
    uint64_t octets = 0;
    uint64_t expected = 0;
    int64_t lost = 0;
    double jitter = 0;    // milliseconds, weighted by packets
    uint64_t largest = 0; // packets of the stream whose source is shown
    uint32_t ssrc = 0;
    int64_t last = 0;
};

void add_stream(void *context, const rtp_figures &stream)
{
    auto &sum = *static_cast<sum_of_streams *>(context);
    sum.packets += stream.packets;
    sum.octets += stream.octets;
    sum.expected += stream.expected;
    sum.lost += std::max<int64_t>(stream.lost, 0);
    sum.jitter += stream.mean_jitter * static_cast<double>(stream.packets);
    sum.last = std::max(sum.last, stream.last);
    if (stream.packets > sum.largest) {
        sum.largest = stream.packets;
        sum.ssrc = stream.ssrc;
    }
}

sum_of_streams
measured(const h323_tracked_call &call, const rtp_follower &follower, const std::vector<net_endpoint> &places)
{
    sum_of_streams sum;
    for (const net_endpoint &place : places)
        streams_to(
            follower, call.interface, place.address, place.port, call.begin,
            call.ended ? call.end : INT64_MAX, add_stream, &sum);
    return sum;
}

/** The figures of one direction are one sample: what was measured of all of it. */
void put_measured(rmonrpc_h323_quality_t &quality, uint32_t &samples, const sum_of_streams &sum)
{
    quality = {};
    samples = sum.packets > 0;
    if (sum.packets == 0)
        return;
    quality.ssrc = sum.ssrc;
    quality.sr_pkt_sent = as_u32(sum.expected);
    quality.sr_oct_sent = as_u32(sum.octets);
    quality.sr_pkt_lost = as_u32(static_cast<uint64_t>(sum.lost));
    // Of 256, as RTCP has it (RFC 3550, 6.4.1).
    quality.sr_fraction_lost =
        sum.expected == 0 ? 0 : as_u32(static_cast<uint64_t>(sum.lost) * 256 / sum.expected);
    const double hundredths = sum.jitter / static_cast<double>(sum.packets) * 100;
    quality.sr_jitter = static_cast<uint32_t>(std::min(std::round(hundredths), 4e9));
}

} // namespace

void complete_call(h323_tracked_call &call, const rtp_follower &follower, int64_t until)
{
    rmonrpc_h323_qual_row_t &qual = call.shown.qual;
    qual.call_state = static_cast<uint32_t>(call.state);
    put_measured(qual.forward_quality, qual.forward_num_samples, measured(call, follower, call.to_callee));
    put_measured(qual.reverse_quality, qual.reverse_num_samples, measured(call, follower, call.to_caller));
    const int64_t microseconds = std::clamp<int64_t>(until - call.begin, 0, int64_t{INT32_MAX} * 10000);
    call.shown.times.took = static_cast<uint32_t>(microseconds / 10000);
}

int64_t last_of_media(const h323_tracked_call &call, const rtp_follower &follower)
{
    return std::max(
        measured(call, follower, call.to_callee).last, measured(call, follower, call.to_caller).last);
}
