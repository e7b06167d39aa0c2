// SPDX-License-Identifier: MIT
#include "agent/voice/rtp_table.h"

#include "agent/core/learned_table.h"

#include <algorithm>

namespace {

/** A stream that was heard so shortly before signalling told of its receiver is that of the same call. */
constexpr int64_t early_media = 5000000;

constexpr std::size_t chains = 16384;

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

rtp_receiver_key make_receiver(int32_t interface, const net_address &to, uint16_t port)
{
    return {words_of(to), interface, port, to.length};
}

} // namespace

std::size_t rtp_receiver_hash::operator()(const rtp_receiver_key &key) const
{
    return hash_of(key);
}

uint32_t find_stream(const rtp_follower &follower, const rtp_key &key)
{
    if (follower.by_key.empty())
        return no_entry;
    const uint32_t hash = short_hash(key);
    uint32_t at = follower.by_key[hash % chains];
    while (at != no_entry && (follower.streams[at].by_key.hash != hash || follower.streams[at].key != key))
        at = follower.streams[at].by_key.next;
    return at;
}

uint32_t add_candidate(rtp_follower &follower, const rtp_key &key)
{
    const uint32_t index = place_for_candidate(follower);
    move_to(follower, index, rtp_standing::candidate);
    follower.streams[index].key = key;
    put_in_chain<&rtp_follower::by_key, &rtp_stream::by_key>(follower, index, short_hash(key));
    return index;
}

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

rtp_stream *find_by_parties(
    rtp_follower &follower, int32_t interface, const net_address &from, const net_address &to, uint32_t ssrc)
{
    const parties_key parties{words_of(from), words_of(to), interface, ssrc};
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

void visit_streams(
    const rtp_follower &follower,
    int32_t interface,
    const net_address &to,
    uint16_t port,
    void (*visit)(void *context, const rtp_stream &stream, uint32_t dynamic_rate),
    void *context)
{
    const rtp_receiver_key receiver = make_receiver(interface, to, port);
    const auto announced = follower.receivers.find(receiver);
    const uint32_t rate = announced == follower.receivers.end() ? 8000 : announced->second.clock_rate;
    each_stream_to(follower, receiver, [&](uint32_t at) { visit(context, follower.streams[at], rate); });
}
