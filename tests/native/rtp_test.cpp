// SPDX-License-Identifier: MIT
/*
 * The follower of RTP and RTCP: sequence numbers, losses and jitter as worked
 * out by hand from RFC 3550.
 */
#include "tests/native/check.h"
#include "tests/native/rtp_frames.h"

#include "agent/voice/rtp.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

path back(const path &way)
{
    return {way.to, way.from, way.to_port, way.from_port};
}

/** Packets of 20 ms each with these sequence numbers, in this order. */
void send_sequence(rtp_follower &follower, const std::vector<uint16_t> &sequence)
{
    int64_t time = 0;
    for (const uint16_t number : sequence) {
        send(follower, {}, {time, number, static_cast<uint32_t>(time * 8)});
        time += 20;
    }
}

struct counts {
    uint64_t packets;
    uint64_t expected;
    int64_t lost;
    uint64_t duplicates;
    uint64_t reordered;
};

void check_counts(const std::vector<uint16_t> &sequence, const counts &right, const std::string &what)
{
    rtp_follower follower;
    send_sequence(follower, sequence);
    const rtp_figures told = only(follower, what);
    check(told.packets == right.packets, what + ": packets");
    check(told.expected == right.expected, what + ": expected");
    check(told.lost == right.lost, what + ": lost");
    check(told.duplicates == right.duplicates, what + ": duplicates");
    check(told.reordered == right.reordered, what + ": reordered");
}

void test_sequence()
{
    check_counts({7, 8, 9, 10}, {4, 4, 0, 0, 0}, "in order");
    check_counts({7, 8, 10, 11, 14}, {5, 8, 3, 0, 0}, "losses");
    check_counts({7, 10}, {2, 4, 2, 0, 0}, "a loss behind the first packet");
    check_counts({65534, 0, 1}, {3, 4, 1, 0, 0}, "the last number before the wrap is lost");
    check_counts(
        {65535, 0, 65534, 1}, {4, 3, -1, 0, 1}, "one from before the first packet comes behind the wrap");
    check_counts({1, 2, 4, 3, 5}, {5, 5, 0, 0, 1}, "another order");
    check_counts({1, 2, 2, 3}, {4, 3, -1, 1, 0}, "a packet comes twice");
    check_counts({1, 2, 3, 4, 2}, {5, 4, -1, 1, 0}, "the second copy comes late");
    check_counts({1, 2, 4, 5, 3, 3}, {6, 5, -1, 1, 1}, "a late packet comes twice");
    check_counts({1, 2, 80, 3, 3}, {5, 80, 75, 1, 1}, "late by more than a word of the window");
    check_counts({1, 2, 1000, 2}, {3, 1000, 997, 0, 0}, "too late to be of the same run");
    check_counts({1, 2, 3001}, {3, 3001, 2998, 0, 0}, "2,999 steps are a loss");
    check_counts({1, 2, 3002}, {2, 2, 0, 0, 0}, "3,000 steps are not");
    check_counts({10, 11, 12, 20000, 20001, 20002}, {5, 5, 0, 0, 0}, "the sender begins anew");
    check_counts({10, 11, 12, 20000, 13, 30000, 14}, {5, 5, 0, 0, 0}, "single strays");

    // 70,000 packets, every tenth lost: of 0 to 69,999 those that end with 5.
    rtp_follower follower;
    for (uint32_t i = 0; i < 70000; i++)
        if (i % 10 != 5)
            send(follower, {}, {i * 20, static_cast<uint16_t>(i), i * 160});
    const rtp_figures told = only(follower, "more than a round");
    check(
        told.packets == 63000 && told.expected == 70000 && told.lost == 7000, "more than a round is counted");
    check(told.first == start && told.last == start + 69999 * 20000LL, "its times");
    check(told.octets == 63000 * 160, "its octets");
}

void test_first_packets()
{
    rtp_follower follower;
    send(follower, {}, {0, 1, 0});
    check(streams(follower).empty(), "one packet is no stream");
    send(follower, {}, {20, 1, 0});
    check(streams(follower).empty(), "nor is the same packet twice");
    send(follower, {}, {40, 5000, 320});
    check(streams(follower).empty(), "nor are two that don't fit");
    send(follower, {}, {60, 5001, 480});
    const rtp_figures told = only(follower, "a second one that fits");
    check(told.packets == 2 && told.first == start + 40000, "a stream begins with the first of two that fit");

    send(follower, {}, {80, 1, 0, 0, 99});
    send(follower, {}, {100, 2, 160, 0, 99});
    const auto all = streams(follower);
    check(all.size() == 2 && all[0].ssrc != all[1].ssrc, "another source is another stream");

    for (const uint8_t type : {35, 64, 72, 95})
        for (const uint16_t number : {1, 2, 3})
            send(follower, {{10, 0, 0, 1}, {10, 0, 0, 2}, 5000, 7000}, {0, number, 0, type});
    for (const uint16_t number : {1, 2, 3})
        send(follower, {{10, 0, 0, 1}, {10, 0, 0, 2}, 53, 7000}, {0, number, 0});
    check(
        streams(follower, {{}, {10, 0, 0, 2}, 0, 7000}).empty(),
        "other payload types and ports below 1024 are no RTP");
}

bool near(double one, double other)
{
    return std::abs(one - other) < 1e-9;
}

void test_jitter()
{
    // D is 16 ms, then 0, then 0: J is 1, 15/16, 225/256.
    rtp_follower follower;
    const packet plain[] = {
        {0, 1, 4000000000}, {36, 2, 4000000160}, {56, 3, 4000000320}, {76, 4, 4000000480}};
    for (const packet &one : plain)
        send(follower, {}, one);
    rtp_figures told = only(follower, "jitter");
    check(told.clock_rate == 8000, "PCMU has 8,000 Hz");
    check(near(told.jitter, 225.0 / 256), "jitter as it is now");
    check(near(told.max_jitter, 1), "its greatest value");
    check(near(told.mean_jitter, (1 + 15.0 / 16 + 225.0 / 256) / 3), "its mean");

    // Comfort noise and a key press between two packets don't count; the spacing of these two does: D is 32
    // ms.
    send(follower, {}, {100, 5, 4000000700, 13});
    send(follower, {}, {120, 6, 4000000500, 101});
    send(follower, {}, {140, 7, 4000000500, 101});
    send(follower, {}, {168, 8, 4000000480 + 60 * 8});
    told = only(follower, "jitter with other types");
    check(
        near(told.jitter, 225.0 / 256 + (32 - 225.0 / 256) / 16), "other payload types count for no jitter");
    check(told.packets == 8 && told.lost == 0, "but as packets");
    check(told.payload_type == 0, "the type stays that of the speech");

    // Timestamps go round: 2^32 - 160, 0. D is 0.
    rtp_follower round;
    send(round, {}, {0, 1, 4294967136});
    send(round, {}, {20, 2, 0});
    // Then another order: one as it is due, and 20 ms behind it one from 20 ms before it. D is 0, then 40 ms.
    send(round, {}, {80, 4, 480});
    send(round, {}, {100, 3, 320});
    told = only(round, "timestamps go round");
    check(near(told.max_jitter, 40.0 / 16), "a packet from before has a negative distance");

    // A dynamic type: D is 0 at 48,000 Hz, 100 ms at 8,000 Hz.
    rtp_follower dynamic;
    send(dynamic, {}, {0, 1, 0, 111});
    send(dynamic, {}, {20, 2, 960, 111});
    told = only(dynamic, "a dynamic type");
    check(told.clock_rate == 8000 && near(told.jitter, 100.0 / 16), "8,000 Hz while nothing else is told");
    announce(dynamic, interface, address({10, 0, 0, 2}), 6000, start, 48000);
    told = only(dynamic, "a dynamic type that was announced");
    check(told.clock_rate == 48000 && told.jitter == 0, "the announced rate counts for what was before, too");
    announce(dynamic, interface, address({10, 0, 0, 2}), 6000, start, 12345);
    told = only(dynamic, "a rate that is not measured");
    check(told.clock_rate == 0 && told.jitter == 0, "a rate that is not measured has no jitter");
}

/** The same sender, when it was silent for long: what came before is not of its next call. */
void test_long_silence()
{
    rtp_follower follower;
    constexpr int64_t later = 301000;
    for (const int64_t begin : {int64_t{0}, int64_t{1000}, 1040 + later})
        for (const int i : {0, 1, 2}) {
            const auto number = static_cast<uint16_t>(100 + i + (begin == 1000 ? 3 : 0));
            send(follower, {}, {begin + 20 * i, number, 160U * number});
        }
    const auto before = streams(follower, {}, start, start + 2000000);
    check(before.size() == 1 && before[0].packets == 6, "a stream goes on after a second");
    const auto behind = streams(follower, {}, start + later * 1000, INT64_MAX);
    check(
        behind.size() == 1 && behind[0].packets == 3 && behind[0].lost == 0,
        "and is another one after five minutes");
    check(streams(follower).size() == 2, "beside the first one, which stays");
}

void test_headers()
{
    // IPv6 in a VLAN; two contributing sources, an extension of one word, 4 octets of padding.
    const path way{octets(16, 0x20), octets(16, 0x21), 40000, 40002};
    rtp_follower follower;
    for (const uint16_t number : {1, 2}) {
        octets datagram{0xb2, 0x80}; // marker
        put(datagram, number, 2);
        put(datagram, 0, 4);
        put(datagram, 7, 4);
        put(datagram, 0, 8);
        put(datagram, 0xbede000100000000, 8);
        datagram.resize(datagram.size() + 99, 0xd5);
        datagram.push_back(4);
        send(follower, ethernet(way, datagram, true), start);
    }
    rtp_figures told = only(follower, "IPv6 in a VLAN", way);
    check(told.octets == 2 * 96, "headers and padding are no payload");
    check(told.from == address(way.from) && told.to == address(way.to), "addresses of IPv6");
    check(
        told.from_port == 40000 && told.to_port == 40002 && told.interface == interface,
        "ports and interface");

    // Of an untagged frame over IPv4 with 160 octets the first 54 hold all headers.
    rtp_follower cut;
    for (const uint16_t number : {1, 2})
        send(cut, ethernet({}, rtp({0, number, 0})), start, 54);
    told = only(cut, "frames that were cut");
    check(told.octets == 320, "octets are those on the wire");
    for (std::size_t captured = 0; captured < 54; captured++) {
        rtp_follower none;
        for (const uint16_t number : {1, 2})
            send(none, ethernet({}, rtp({0, number, 0})), start, captured);
        check(streams(none).empty(), "without its header it is no RTP: " + std::to_string(captured));
    }

    // Headers that claim more than there is.
    rtp_follower lies;
    for (const uint16_t number : {1, 2, 3}) {
        octets sources = rtp({0, number, 0}, 8);
        sources[0] = 0x8f;
        octets extension = rtp({0, number, 0}, 8);
        extension[0] = 0x90;
        extension[14] = 0xff;
        octets padding = rtp({0, number, 0}, 8);
        padding[0] = 0xa0;
        for (const octets &datagram : {sources, extension, padding})
            send(lies, ethernet({}, datagram), start);
    }
    check(streams(lies).empty(), "a header longer than its packet is no RTP");
}

/** A report of RTCP: the sender's counts, if it is one of a sender, and what it received of a source. */
octets report(bool sender, uint32_t ssrc, uint32_t source, uint32_t stamp, uint32_t delay)
{
    octets made{0x81, static_cast<uint8_t>(sender ? 200 : 201)};
    put(made, sender ? 12 : 7, 2);
    put(made, ssrc, 4);
    if (sender) {
        put(made, 0xaaaa123456780000, 8); // NTP: the middle is 0x12345678
        put(made, 160, 4);
        put(made, 50, 4);   // packets
        put(made, 8000, 4); // octets
    }
    put(made, source, 4);
    put(made, 0x40fffffe, 4); // a quarter; -2 in all
    put(made, 1050, 4);
    put(made, 24, 4); // jitter
    put(made, stamp, 4);
    put(made, delay, 4);
    return made;
}

void test_reports()
{
    const path way;
    const path reports{way.from, way.to, 5001, 6001};
    rtp_follower follower;
    for (const uint16_t number : {1, 2}) {
        send(follower, way, {0, number, 0, 0, 1});
        send(follower, back(way), {0, number, 0, 0, 2});
    }
    send(follower, ethernet(reports, report(true, 1, 2, 0, 0)), start + 1000000);
    rtp_figures told = only(follower, "a sender report");
    check(told.sr_packets == 50 && told.sr_octets == 8000, "the sender's counts");
    check(told.reports == 0 && told.rr_lost == 0, "it says nothing of its own stream's losses");
    rtp_figures other = only(follower, "its report block", back(way));
    check(other.rr_fraction == 64 && other.rr_lost == -2 && other.rr_jitter == 24, "what it received");
    check(
        other.reports == 1 && other.round_trip_us == 0, "no round trip without a report from the other side");

    // 620 ms later; of these the receiver held it for half a second: 120 ms.
    send(follower, ethernet(back(reports), report(false, 2, 1, 0x12345678, 32768)), start + 1620000);
    told = only(follower, "a receiver report");
    check(told.round_trip_us == 120000, "the round trip");
    check(told.reports == 1 && told.rr_fraction_sum == 64 && told.rr_jitter_sum == 24, "sums of the reports");

    send(follower, ethernet(back(reports), report(false, 2, 1, 0x12345679, 0)), start + 1700000);
    send(follower, ethernet(back(reports), report(false, 2, 1, 0x12345678, 655360)), start + 1700000);
    told = only(follower, "other receiver reports");
    check(told.round_trip_us == 120000, "a report of another time, or a delay that is too long, tells none");
    check(told.reports == 3 && told.rr_fraction_sum == 192, "but they count");

    // Two in one datagram, and each length of what was captured of it.
    octets both = report(false, 2, 1, 0, 0);
    const octets more = report(true, 2, 1, 0, 0);
    both.insert(both.end(), more.begin(), more.end());
    const octets bytes = ethernet(back(reports), both);
    for (std::size_t captured = 42; captured <= bytes.size(); captured++) {
        rtp_follower again = follower;
        send(again, bytes, start + 2000000, captured);
        const uint32_t whole = captured < 42 + 32 ? 0 : captured < 42 + 32 + 52 ? 1 : 2;
        check(
            only(again, "a cut compound").reports == 3 + whole,
            "blocks that were captured whole count: " + std::to_string(captured));
    }
}

void test_announcements()
{
    rtp_follower follower;
    const path way;
    announce(follower, interface, address(way.to), way.to_port, start);
    for (const uint16_t number : {1, 2})
        send(follower, way, {0, number, 0});

    // A flood of streams, each to a receiver of its own.
    const auto flood = [&](uint32_t seed) {
        for (uint32_t i = 0; i < max_rtp_streams + 100; i++)
            for (const uint16_t number : {1, 2})
                send(
                    follower,
                    {{10, 1, 0, 1},
                     {10, 2, static_cast<uint8_t>(seed), static_cast<uint8_t>(i >> 8)},
                     5000,
                     static_cast<uint16_t>(2000 + i % 256)},
                    {0, number, 0, 0, i});
    };
    flood(1);
    check(streams(follower).size() == 1, "an announced stream stays");
    check(follower.streams.size() <= max_rtp_streams + max_rtp_candidates, "the table has its size");
    announce(follower, interface, address(way.to), way.to_port, start);
    forget(follower, interface, address(way.to), way.to_port);
    flood(2);
    check(streams(follower).size() == 1, "what was announced twice is forgotten with the second time");
    forget(follower, interface, address(way.to), way.to_port);
    flood(3);
    check(streams(follower).empty(), "what is forgotten gives way");
    check(follower.receivers.empty(), "nothing is left of it");
    forget(follower, interface, address(way.to), way.to_port);

    // Before it was announced; one of long ago.
    rtp_follower early;
    for (const uint16_t number : {1, 2}) {
        send(early, way, {0, number, 0, 0, 1});
        send(early, way, {20000, number, 0, 0, 2});
    }
    announce(early, interface, address(way.to), way.to_port, start + 21000000);
    uint32_t kept = 0;
    for (const rtp_stream &stream : early.streams)
        if (stream.standing == rtp_standing::kept) {
            kept++;
            check(stream.key.ssrc == 2, "the stream of the call before is not kept");
        }
    check(kept == 1, "a stream that began before it was announced is kept");
    check(streams(early, way, start + 10000000).size() == 1, "streams are found by time");
    check(streams(early, way, INT64_MIN, start + 10000000).size() == 1, "streams are found by time before");

    // Many sources to one port.
    rtp_follower forged;
    announce(forged, interface, address(way.to), way.to_port, start);
    for (uint32_t source = 0; source < 1000; source++)
        for (const uint16_t number : {1, 2})
            send(forged, way, {0, number, 0, 0, source});
    check(streams(forged).size() == max_rtp_senders, "one receiver has so many senders");
    check(forged.refused == 1000 - max_rtp_senders, "what has no room is counted");

    // First packets alone leave no stream, and little else.
    rtp_follower strays;
    for (uint32_t i = 0; i < 100000; i++)
        send(strays, way, {0, static_cast<uint16_t>(i * 7777), 0, 0, i});
    check(strays.streams.size() == max_rtp_candidates && streams(strays).empty(), "first packets alone");
}

} // namespace

void test_rtp()
{
    test_sequence();
    test_first_packets();
    test_jitter();
    test_long_silence();
    test_headers();
    test_reports();
    test_announcements();
}
