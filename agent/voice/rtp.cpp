// SPDX-License-Identifier: MIT
#include "agent/voice/rtp.h"

#include "agent/core/learned_table.h"

#include <algorithm>
#include <cmath>

namespace {

/** A stream that was heard so shortly before signalling told of its receiver is that of the same call. */
constexpr int64_t early_media = 5000000;

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

constexpr uint8_t sender_report = 200;
constexpr uint8_t receiver_report = 201;
constexpr uint32_t report_block = 24;

constexpr std::size_t chains = 16384;

/** Microseconds between two times, which a capture file may put as far apart as it likes. */
int64_t elapsed(int64_t from, int64_t to)
{
    return static_cast<int64_t>(static_cast<uint64_t>(to) - static_cast<uint64_t>(from));
}

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

/* ---- chains and queues --------------------------------------------------------------- */

struct parties_key {
    std::array<uint64_t, 2> from;
    std::array<uint64_t, 2> to;
    int32_t interface;
    uint32_t ssrc;
};

rtp_receiver_key receiver_of(const rtp_key &key)
{
    return {key.to, key.interface, key.to_port, static_cast<uint16_t>(key.address_length)};
}

parties_key parties_of(const rtp_key &key)
{
    return {key.from, key.to, key.interface, key.ssrc};
}

template <class Key> uint32_t short_hash(const Key &key)
{
    return static_cast<uint32_t>(hash_of(key));
}

std::array<uint64_t, 2> words_of(const net_address &address)
{
    std::array<uint64_t, 2> words;
    std::memcpy(words.data(), address.bytes, sizeof address.bytes);
    return words;
}

net_address address_of(const std::array<uint64_t, 2> &words, uint32_t length)
{
    net_address address;
    address.length = static_cast<uint8_t>(length);
    std::memcpy(address.bytes, words.data(), sizeof address.bytes);
    return address;
}

/** An index, by its heads and by its link within a stream. */
using rtp_heads = std::vector<uint32_t> rtp_follower::*;
using rtp_place = rtp_link rtp_stream::*;

template <rtp_heads Heads, rtp_place Place>
void put_in_chain(rtp_follower &follower, uint32_t index, uint32_t hash)
{
    uint32_t &head = (follower.*Heads)[hash % chains];
    follower.streams[index].*Place = {hash, head, no_entry};
    if (head != no_entry)
        (follower.streams[head].*Place).before = index;
    head = index;
}

template <rtp_heads Heads, rtp_place Place> void take_from_chain(rtp_follower &follower, uint32_t index)
{
    const rtp_link link = follower.streams[index].*Place;
    if (link.before == no_entry)
        (follower.*Heads)[link.hash % chains] = link.next;
    else
        (follower.streams[link.before].*Place).next = link.next;
    if (link.next != no_entry)
        (follower.streams[link.next].*Place).before = link.before;
}

void leave_queue(rtp_follower &follower, uint32_t index)
{
    const rtp_link &link = follower.streams[index].in_queue;
    rtp_queue &queue = follower.queues[static_cast<std::size_t>(follower.streams[index].standing)];
    (link.before == no_entry ? queue.head : follower.streams[link.before].in_queue.next) = link.next;
    (link.next == no_entry ? queue.tail : follower.streams[link.next].in_queue.before) = link.before;
    queue.count--;
}

/** To the end of the queue of this standing. */
void join_queue(rtp_follower &follower, uint32_t index, rtp_standing standing)
{
    rtp_queue &queue = follower.queues[static_cast<std::size_t>(standing)];
    rtp_stream &stream = follower.streams[index];
    stream.standing = standing;
    stream.touched = false;
    stream.in_queue = {0, no_entry, queue.tail};
    (queue.tail == no_entry ? queue.head : follower.streams[queue.tail].in_queue.next) = index;
    queue.tail = index;
    queue.count++;
}

void move_to(rtp_follower &follower, uint32_t index, rtp_standing standing)
{
    leave_queue(follower, index);
    join_queue(follower, index, standing);
}

rtp_queue &queue_of(rtp_follower &follower, rtp_standing standing)
{
    return follower.queues[static_cast<std::size_t>(standing)];
}

/** Forgets a stream; its place can be used again. */
void drop(rtp_follower &follower, uint32_t index)
{
    const rtp_standing standing = follower.streams[index].standing;
    take_from_chain<&rtp_follower::by_key, &rtp_stream::by_key>(follower, index);
    if (standing == rtp_standing::followed || standing == rtp_standing::kept) {
        take_from_chain<&rtp_follower::by_receiver, &rtp_stream::by_receiver>(follower, index);
        take_from_chain<&rtp_follower::by_parties, &rtp_stream::by_parties>(follower, index);
    }
    move_to(follower, index, rtp_standing::unused);
}

uint32_t find_stream(const rtp_follower &follower, const rtp_key &key, uint32_t hash)
{
    if (follower.by_key.empty())
        return no_entry;
    uint32_t at = follower.by_key[hash % chains];
    while (at != no_entry && (follower.streams[at].by_key.hash != hash || follower.streams[at].key != key))
        at = follower.streams[at].by_key.next;
    return at;
}

/** Calls visit for each stream to this receiver, with its place. */
template <class Visit>
void each_stream_to(const rtp_follower &follower, const rtp_receiver_key &receiver, Visit visit)
{
    if (follower.by_receiver.empty())
        return;
    const uint32_t hash = short_hash(receiver);
    for (uint32_t at = follower.by_receiver[hash % chains]; at != no_entry;
         at = follower.streams[at].by_receiver.next)
        if (follower.streams[at].by_receiver.hash == hash
            && receiver_of(follower.streams[at].key) == receiver)
            visit(at);
}

/* ---- room for streams ---------------------------------------------------------------- */

/** A place for a first packet: the oldest of the others gives way where all are taken. */
uint32_t place_for_candidate(rtp_follower &follower)
{
    if (follower.by_key.empty())
        for (const rtp_heads heads :
             {&rtp_follower::by_key, &rtp_follower::by_receiver, &rtp_follower::by_parties})
            (follower.*heads).assign(chains, no_entry);
    const rtp_queue &waiting = queue_of(follower, rtp_standing::candidate);
    if (waiting.count >= max_rtp_candidates)
        drop(follower, waiting.head);
    if (queue_of(follower, rtp_standing::unused).count == 0) {
        follower.streams.emplace_back();
        join_queue(follower, static_cast<uint32_t>(follower.streams.size() - 1), rtp_standing::unused);
    }
    return queue_of(follower, rtp_standing::unused).head;
}

/** Makes room for one stream more that is followed. False when all are announced. */
bool make_room(rtp_follower &follower)
{
    rtp_queue &others = queue_of(follower, rtp_standing::followed);
    if (others.count + queue_of(follower, rtp_standing::kept).count < max_rtp_streams)
        return true;
    // Those that were used since they came to their place have another turn.
    for (uint32_t turns = others.count; turns > 0 && follower.streams[others.head].touched; turns--)
        move_to(follower, others.head, rtp_standing::followed);
    if (others.count == 0)
        return false;
    drop(follower, others.head);
    return true;
}

struct senders {
    uint32_t count;    // streams to one receiver
    uint32_t quietest; // of those that aren't announced; no_entry: none
};

senders senders_to(const rtp_follower &follower, const rtp_receiver_key &receiver)
{
    senders found{0, no_entry};
    int64_t last = INT64_MAX;
    each_stream_to(follower, receiver, [&](uint32_t at) {
        const rtp_stream &stream = follower.streams[at];
        found.count++;
        if (stream.standing == rtp_standing::followed && stream.last <= last) {
            last = stream.last;
            found.quietest = at;
        }
    });
    return found;
}

/** Whether a stream to an announced receiver is what was announced, not that of a call before. */
bool is_of_call(const rtp_stream &stream, const rtp_receiver &announced)
{
    return announced.since <= INT64_MIN + early_media || stream.last >= announced.since - early_media;
}

/** A candidate becomes a stream, if there is room. */
bool promote(rtp_follower &follower, uint32_t index)
{
    const rtp_receiver_key receiver = receiver_of(follower.streams[index].key);
    const senders others = senders_to(follower, receiver);
    if (others.count >= max_rtp_senders && others.quietest == no_entry)
        return false;
    if (others.count >= max_rtp_senders)
        drop(follower, others.quietest);
    if (!make_room(follower))
        return false;
    put_in_chain<&rtp_follower::by_receiver, &rtp_stream::by_receiver>(follower, index, short_hash(receiver));
    put_in_chain<&rtp_follower::by_parties, &rtp_stream::by_parties>(
        follower, index, short_hash(parties_of(follower.streams[index].key)));
    const auto announced = follower.receivers.find(receiver);
    const bool keep =
        announced != follower.receivers.end() && is_of_call(follower.streams[index], announced->second);
    move_to(follower, index, keep ? rtp_standing::kept : rtp_standing::followed);
    return true;
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
        const double spacing = static_cast<double>(elapsed(stream.arrival, time)) / 1000;
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
    const uint32_t hash = short_hash(key);
    uint32_t index = find_stream(follower, key, hash);
    // The one before stays as it is until its call was handed over: the newest is found first.
    if (index == no_entry || elapsed(follower.streams[index].last, seen.time) > longest_silence) {
        index = place_for_candidate(follower);
        move_to(follower, index, rtp_standing::candidate);
        follower.streams[index].key = key;
        put_in_chain<&rtp_follower::by_key, &rtp_stream::by_key>(follower, index, hash);
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

/* ---- RTCP ---------------------------------------------------------------------------- */

/** The stream of this sender between two addresses, whatever its ports. */
rtp_stream *find_by_parties(rtp_follower &follower, const parties_key &parties)
{
    const uint32_t hash = short_hash(parties);
    uint32_t at = follower.by_parties.empty() ? no_entry : follower.by_parties[hash % chains];
    rtp_stream *found = nullptr;
    for (uint32_t steps = 0; at != no_entry && steps < max_rtp_senders; steps++) {
        rtp_stream &stream = follower.streams[at];
        const bool same = stream.by_parties.hash == hash && stream.key.from == parties.from
                          && stream.key.to == parties.to
                          && stream.key.interface == parties.interface && stream.key.ssrc == parties.ssrc;
        if (same && (!found || stream.last > found->last))
            found = &stream;
        at = stream.by_parties.next;
    }
    return found;
}

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
    const int64_t since = elapsed(stream.report_sent, time);
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
        const parties_key parties{words_of(seen.to), words_of(seen.from), interface, read_u32(at)};
        if (rtp_stream *stream = find_by_parties(follower, parties))
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
    const parties_key parties{words_of(seen.from), words_of(seen.to), interface, read_u32(at + 4)};
    if (rtp_stream *stream = find_by_parties(follower, parties)) {
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

void follow_rtcp(rtp_follower &follower, int32_t interface, const frame &seen)
{
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

rtp_receiver_key make_receiver(int32_t interface, const net_address &to, uint16_t port)
{
    return {words_of(to), interface, port, to.length};
}

} // namespace

std::size_t rtp_receiver_hash::operator()(const rtp_receiver_key &key) const
{
    return hash_of(key);
}

void follow(rtp_follower &follower, int32_t interface, const frame &seen)
{
    if (seen.ip_protocol != ip_udp || seen.from_port < first_port || seen.to_port < first_port)
        return;
    rtp_packet packet;
    if (read_rtp(packet, seen))
        follow_rtp(follower, interface, seen, packet);
    else if (is_rtcp(seen))
        follow_rtcp(follower, interface, seen);
}

void announce(
    rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    int64_t since,
    uint32_t clock_rate)
{
    const rtp_receiver_key key = make_receiver(interface, to, port);
    if (follower.receivers.size() >= max_rtp_receivers && !follower.receivers.contains(key))
        return;
    rtp_receiver &receiver = follower.receivers[key];
    if (receiver.announced++ == 0)
        receiver.since = since;
    receiver.since = std::min(receiver.since, since);
    receiver.clock_rate = clock_rate;
    each_stream_to(follower, key, [&](uint32_t at) {
        if (follower.streams[at].standing == rtp_standing::followed
            && is_of_call(follower.streams[at], receiver))
            move_to(follower, at, rtp_standing::kept);
    });
}

void forget(rtp_follower &follower, int32_t interface, const net_address &to, uint16_t port)
{
    const auto found = follower.receivers.find(make_receiver(interface, to, port));
    if (found == follower.receivers.end() || --found->second.announced > 0)
        return;
    each_stream_to(follower, found->first, [&](uint32_t at) {
        if (follower.streams[at].standing == rtp_standing::kept)
            move_to(follower, at, rtp_standing::followed);
    });
    follower.receivers.erase(found);
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
    const rtp_receiver_key receiver = make_receiver(interface, to, port);
    const auto announced = follower.receivers.find(receiver);
    const uint32_t rate = announced == follower.receivers.end() ? 8000 : announced->second.clock_rate;
    each_stream_to(follower, receiver, [&](uint32_t at) {
        const rtp_stream &stream = follower.streams[at];
        if (stream.last >= from_time && stream.first <= to_time)
            visit(context, figures_of(stream, rate));
    });
}
