// SPDX-License-Identifier: MIT
/*
 * What the bundled agent's follower of RTP takes for a packet: 2,000 streams
 * send in turns, so that each packet finds the stream that was used longest
 * ago. The frames are taken apart before, as they are for all that counts them. Exit code 1
 * when it takes longer than it may, or counts wrongly.
 */
#include "agent/voice/rtp.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <time.h>

namespace {

constexpr uint32_t all_streams = 2000;
constexpr uint32_t packets_of_each = 500;
constexpr double most_nanoseconds = 300;
constexpr int64_t spacing = 20000; // microseconds

constexpr uint32_t udp_payload = 12 + 160;
constexpr uint32_t octets = 14 + 20 + 8 + udp_payload;

struct sent_packet {
    uint8_t bytes[octets];
    frame seen;
};

void put16(uint8_t *at, uint32_t value)
{
    at[0] = static_cast<uint8_t>(value >> 8);
    at[1] = static_cast<uint8_t>(value);
}

void put32(uint8_t *at, uint32_t value)
{
    put16(at, value >> 16);
    put16(at + 2, value);
}

void make_packet(sent_packet &made, uint32_t stream, uint32_t number, int64_t time)
{
    uint8_t *at = made.bytes;
    put16(at + 12, 0x0800);
    at[14] = 0x45;
    put16(at + 16, 20 + 8 + udp_payload);
    at[23] = 17;
    put32(at + 26, 0x0a000000 + stream);
    put32(at + 30, 0x0a010000 + stream);
    put16(at + 34, 16384);
    put16(at + 36, 20000);
    put16(at + 38, 8 + udp_payload);
    at[42] = 0x80;
    put16(at + 44, number);
    put32(at + 46, number * 160);
    put32(at + 50, stream * 2654435761);
    decode_frame(made.seen, made.bytes, octets, octets + 4, time);
}

int64_t processor_time()
{
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return int64_t{now.tv_sec} * 1000000000 + now.tv_nsec;
}

struct totals {
    uint64_t streams = 0;
    uint64_t packets = 0;
    uint64_t lost = 0;
};

void add(void *context, const rtp_figures &stream)
{
    auto &sum = *static_cast<totals *>(context);
    sum.streams++;
    sum.packets += stream.packets;
    sum.lost += static_cast<uint64_t>(stream.lost);
}

} // namespace

int main()
{
    rtp_follower follower;
    std::vector<sent_packet> round(all_streams);
    int64_t taken = 0;
    for (uint32_t number = 0; number < packets_of_each; number++) {
        for (uint32_t stream = 0; stream < all_streams; stream++)
            make_packet(round[stream], stream, number, number * spacing + stream);
        const int64_t begin = processor_time();
        for (const sent_packet &packet : round)
            follow(follower, 1, packet.seen);
        taken += processor_time() - begin;
    }

    totals sum;
    for (const sent_packet &packet : round)
        streams_to(follower, 1, packet.seen.to, packet.seen.to_port, INT64_MIN, INT64_MAX, add, &sum);
    const bool exact =
        sum.streams == all_streams && sum.packets == uint64_t{all_streams} * packets_of_each && sum.lost == 0;
    const double each = static_cast<double>(taken) / (double{all_streams} * packets_of_each);
    std::printf(
        "%s  %.0f ns of processor time for a packet of RTP among %u streams, at most %.0f\n",
        each <= most_nanoseconds ? "ok  " : "MISS", each, all_streams, most_nanoseconds);
    std::printf("%s  each packet is counted\n", exact ? "ok  " : "MISS");
    return exact && each <= most_nanoseconds ? EXIT_SUCCESS : EXIT_FAILURE;
}
