// SPDX-License-Identifier: MIT
#include "agent/voice/rtp.h"

#include "agent/core/learned_table.h"
#include "agent/voice/rtcp.h"

#include <algorithm>
#include <cmath>

namespace {

/** A sender that was silent for as long is another one, whose call may be another. */
constexpr int64_t longest_silence = 300 * int64_t{1000000};

/** RFC 3550, A.1: a step forward that is a loss, a step back that is another order; others are a new
 * beginning. */
constexpr uint32_t max_dropout = 3000;
constexpr uint32_t max_misorder = 100;
constexpr uint32_t sequence_modulus = 65536;
constexpr uint32_t no_restart = sequence_modulus + 1; // no sequence number is as great

constexpr uint32_t fixed_header = 12;
constexpr uint32_t first_port = 1024;

constexpr uint8_t comfort_noise = 13;
constexpr uint8_t last_static_type = 34;
constexpr uint8_t first_dynamic_type = 96;

/** Clock rates by payload type (RFC 3551); 0: the type is not known. */
uint32_t static_rate(uint8_t type)
{
    switch (type) {
    case 6:
        return 16000;
    case 10:
    case 11:
        return 44100;
    case 16:
        return 11025;
    case 17:
        return 22050;
    case 14:
    case 25:
    case 26:
    case 28:
    case 31:
    case 32:
    case 33:
    case 34:
        return 90000;
    default:
        return type < 19 ? 8000 : 0;
    }
}

/* ---- RTP ----------------------------------------------------------------------------- */

/** What of a packet counts. */
struct rtp_packet {
    uint8_t payload_type;
    uint16_t sequence;
    uint32_t timestamp;
    uint32_t ssrc;
    uint32_t octets; // of payload
};

bool is_payload_type(uint8_t type)
{
    return type <= last_static_type || type >= first_dynamic_type;
}

/** False when it is no RTP. What is behind the captured bytes counts by the lengths of the headers below. */
bool read_rtp(rtp_packet &to, const frame &seen)
{
    const uint8_t *bytes = seen.payload;
    if (seen.payload_length < fixed_header || bytes[0] >> 6 != 2 || !is_payload_type(bytes[1] & 0x7f))
        return false;
    uint32_t header = fixed_header + 4 * (bytes[0] & 15u);
    if (bytes[0] & 0x10 && header + 4 <= seen.payload_length)
        header += 4 + 4u * read_u16(bytes + header + 2);
    if (header > seen.payload_on_wire)
        return false;
    to.octets = seen.payload_on_wire - header;
    if (bytes[0] & 0x20 && seen.payload_length == seen.payload_on_wire) {
        const uint32_t padding = bytes[seen.payload_length - 1];
        if (padding == 0 || padding > to.octets)
            return false;
        to.octets -= padding;
    }
    to.payload_type = bytes[1] & 0x7f;
    to.sequence = read_u16(bytes + 2);
    to.timestamp = read_u32(bytes + 4);
    to.ssrc = read_u32(bytes + 8);
    return true;
}

void begin_sequence(rtp_stream &stream, uint16_t sequence)
{
    stream.base = stream.highest = sequence;
    stream.cycles = 0;
    stream.restart = no_restart;
    stream.recent = {1, 0};
    stream.has_timestamp = false;
}

uint64_t expected_of(const rtp_stream &stream)
{
    return stream.expected_before + stream.cycles + stream.highest - stream.base + 1;
}

/** Notes that so many sequence numbers later than the highest one came. */
void shift_recent(rtp_stream &stream, uint32_t by)
{
    auto &[low, high] = stream.recent;
    if (by >= 128) {
        low = high = 0;
    } else if (by >= 64) {
        high = low << (by - 64);
        low = 0;
    } else {
        high = high << by | low >> (64 - by);
        low <<= by;
    }
    low |= 1;
}

/** Counts a packet that is so far behind the highest one. */
void count_late(rtp_stream &stream, uint32_t behind)
{
    uint64_t &word = stream.recent[behind / 64];
    const uint64_t bit = uint64_t{1} << behind % 64;
    (word & bit ? stream.duplicates : stream.reordered)++;
    word |= bit;
}

/** RFC 3550, A.1. False when the packet does not count: it may be the first one of a sender that begins anew.
 */
bool count_sequence(rtp_stream &stream, uint16_t sequence)
{
    const auto ahead = static_cast<uint16_t>(sequence - stream.highest);
    if (ahead == 0) {
        stream.duplicates++;
    } else if (ahead < max_dropout) {
        if (sequence < stream.highest)
            stream.cycles += sequence_modulus;
        stream.highest = sequence;
        shift_recent(stream, ahead);
    } else if (ahead > sequence_modulus - max_misorder) {
        count_late(stream, sequence_modulus - ahead);
    } else if (sequence == stream.restart) {
        stream.expected_before = expected_of(stream);
        begin_sequence(stream, sequence);
    } else {
        stream.restart = (sequence + 1) % sequence_modulus;
        return false;
    }
    return true;
}

void measure(jitter_meter &meter, double spacing, uint32_t ticks, uint32_t rate)
{
    // The difference of two timestamps has a sign: packets of another order.
    const double nominal = static_cast<int32_t>(ticks) * 1000.0 / rate;
    meter.jitter += (std::abs(spacing - nominal) - meter.jitter) / 16;
    meter.highest = std::max(meter.highest, meter.jitter);
    meter.sum += meter.jitter;
}

/**
 * RFC 3550, A.8. Other payload types than the stream's own don't count: comfort
 * noise, and key presses, whose packets have the timestamp of the key's beginning (RFC 4733).
 */
void count_jitter(rtp_stream &stream, const rtp_packet &packet, int64_t time)
{
    if (packet.payload_type != stream.payload_type) {
        const bool other_codec =
            packet.payload_type != comfort_noise
            && (packet.payload_type < first_dynamic_type || stream.payload_type == comfort_noise);
        if (!other_codec)
            return;
        stream.payload_type = packet.payload_type;
        stream.has_timestamp = false;
    }
    if (stream.has_timestamp) {
        const double spacing = static_cast<double>(microseconds_between(stream.arrival, time)) / 1000;
        const uint32_t ticks = packet.timestamp - stream.timestamp;
        if (packet.payload_type >= first_dynamic_type)
            for (std::size_t i = 0; i < dynamic_rates.size(); i++)
                measure(stream.meters[i], spacing, ticks, dynamic_rates[i]);
        else if (const uint32_t rate = static_rate(packet.payload_type); rate != 0)
            measure(stream.meters[0], spacing, ticks, rate);
        stream.spacings++;
    }
    stream.arrival = time;
    stream.timestamp = packet.timestamp;
    stream.has_timestamp = true;
}

void count_packet(rtp_stream &stream, const rtp_packet &packet, int64_t time)
{
    stream.packets++;
    stream.octets += packet.octets;
    stream.last = std::max(stream.last, time);
    stream.touched = true;
    count_jitter(stream, packet, time);
}

void begin_stream(rtp_stream &stream, const rtp_packet &packet, int64_t time)
{
    rtp_stream begun;
    begun.key = stream.key;
    begun.by_key = stream.by_key;
    begun.in_queue = stream.in_queue;
    begun.standing = stream.standing;
    begun.payload_type = packet.payload_type;
    begun.first = begun.last = time;
    stream = begun;
    begin_sequence(stream, packet.sequence);
    count_packet(stream, packet, time);
}

/** The second packet of a sender shows whether it is one. */
bool fits_first(const rtp_stream &first, const rtp_packet &packet)
{
    const auto ahead = static_cast<uint16_t>(packet.sequence - first.highest);
    return ahead != 0 && (ahead <= max_misorder || ahead > sequence_modulus - max_misorder);
}

void follow_rtp(rtp_follower &follower, int32_t interface, const frame &seen, const rtp_packet &packet)
{
    const rtp_key key{words_of(seen.from), words_of(seen.to), seen.from_port,  seen.to_port,
                      packet.ssrc,         interface,         seen.from.length};
    uint32_t index = find_stream(follower, key);
    // The one before stays as it is until its call was handed over: the newest is found first.
    if (index == no_entry
        || microseconds_between(follower.streams[index].last, seen.time) > longest_silence) {
        index = add_candidate(follower, key);
        begin_stream(follower.streams[index], packet, seen.time);
        return;
    }
    rtp_stream &stream = follower.streams[index];
    if (stream.standing == rtp_standing::candidate) {
        if (!fits_first(stream, packet)) {
            begin_stream(stream, packet, seen.time);
            return;
        }
        if (!promote(follower, index)) {
            follower.refused++;
            begin_stream(stream, packet, seen.time);
            return;
        }
    }
    if (count_sequence(stream, packet.sequence))
        count_packet(stream, packet, seen.time);
}

/* ---- what is told of a stream -------------------------------------------------------- */

rtp_figures figures_of(const rtp_stream &stream, uint32_t dynamic_rate)
{
    rtp_figures told;
    told.interface = stream.key.interface;
    told.from = address_of(stream.key.from, stream.key.address_length);
    told.to = address_of(stream.key.to, stream.key.address_length);
    told.from_port = stream.key.from_port;
    told.to_port = stream.key.to_port;
    told.ssrc = stream.key.ssrc;
    told.payload_type = stream.payload_type;
    told.first = stream.first;
    told.last = stream.last;
    told.packets = stream.packets;
    told.octets = stream.octets;
    told.expected = expected_of(stream);
    told.lost = static_cast<int64_t>(told.expected - told.packets);
    told.duplicates = stream.duplicates;
    told.reordered = stream.reordered;

    std::size_t meter = 0;
    told.clock_rate = static_rate(stream.payload_type);
    if (stream.payload_type >= first_dynamic_type) {
        meter =
            static_cast<std::size_t>(std::ranges::find(dynamic_rates, dynamic_rate) - dynamic_rates.begin());
        told.clock_rate = meter == dynamic_rates.size() ? 0 : dynamic_rate;
    }
    if (told.clock_rate != 0 && stream.spacings != 0) {
        const jitter_meter &measured = stream.meters[meter];
        told.jitter = measured.jitter;
        told.max_jitter = measured.highest;
        told.mean_jitter = measured.sum / static_cast<double>(stream.spacings);
    }

    told.sr_packets = stream.sr_packets;
    told.sr_octets = stream.sr_octets;
    told.rr_lost = stream.rr_lost;
    told.rr_fraction = stream.rr_fraction;
    told.rr_jitter = stream.rr_jitter;
    told.reports = stream.reports;
    told.rr_fraction_sum = stream.rr_fraction_sum;
    told.rr_jitter_sum = stream.rr_jitter_sum;
    told.round_trip_us = stream.round_trip_us;
    return told;
}

/** Who asks for figures, of streams of these times. */
struct figures_asked {
    int64_t from_time;
    int64_t to_time;
    void (*visit)(void *context, const rtp_figures &figures);
    void *context;
};

void show_figures(void *context, const rtp_stream &stream, uint32_t dynamic_rate)
{
    const auto &asked = *static_cast<const figures_asked *>(context);
    if (stream.last >= asked.from_time && stream.first <= asked.to_time)
        asked.visit(asked.context, figures_of(stream, dynamic_rate));
}

} // namespace

void follow(rtp_follower &follower, int32_t interface, const frame &seen)
{
    if (seen.ip_protocol != ip_udp || seen.from_port < first_port || seen.to_port < first_port)
        return;
    rtp_packet packet;
    if (read_rtp(packet, seen))
        follow_rtp(follower, interface, seen, packet);
    else
        follow_rtcp(follower, interface, seen);
}

void streams_to(
    const rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    int64_t from_time,
    int64_t to_time,
    void (*visit)(void *context, const rtp_figures &figures),
    void *context)
{
    figures_asked asked{from_time, to_time, visit, context};
    visit_streams(follower, interface, to, port, show_figures, &asked);
}
