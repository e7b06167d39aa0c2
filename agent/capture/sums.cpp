// SPDX-License-Identifier: MIT
#include "agent/capture/sums.h"

#include "agent/capture/ether_counters.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/** Sums of each kind, a power of 2. */
constexpr std::size_t number_of_sums = 32768;

/** Sums that wait at most: all of them are counted within 20 ms, even where no row is in the processor's
 * cache. */
constexpr std::size_t most_waiting = 4096;

/** Of which so many are counted when they are as many as may wait. */
constexpr std::size_t counted_at_once = 64;

/**
 * Where fewer than two of three frames are added to a sum that waits, finding them costs more than it saves:
 * what is left are frames whose rows are not in the processor's cache, which cost most. After a round of
 * frames that are looked up so many go by that are not. A round ends early when not even as many find a sum
 * at all.
 */
constexpr uint32_t frames_of_a_trial = 16384;
constexpr uint32_t frames_of_a_round = 65536;
constexpr uint32_t frames_alone = 1048576;

constexpr bool is_enough(uint32_t looked_up, std::size_t saved)
{
    return saved * 3 >= std::size_t{looked_up} * 2;
}

/** Whether nothing but its key matters of a frame. The others tell of addresses in what they carry. */
bool has_likes(const frame &seen)
{
    return seen.from_mac && seen.ethertype != ethertype_arp && seen.ip_protocol != ip_icmp6;
}

sum_key key_of(int32_t data_source, const frame &seen, bool tags)
{
    sum_key key;
    std::memcpy(key.from, seen.from.bytes, sizeof key.from);
    std::memcpy(key.to, seen.to.bytes, sizeof key.to);
    std::memcpy(key.macs, seen.to_mac, sizeof key.macs);
    key.data_source = data_source;
    key.network_index = seen.network_index;
    key.application_index = seen.application_index;
    key.vlan = tags ? static_cast<int16_t>(seen.vlan) : int16_t{-1};
    key.priority = static_cast<uint8_t>(tags ? seen.priority + 1 : 0);
    key.dscp = static_cast<uint8_t>(tags ? seen.dscp + 1 : 0);
    key.address_length = seen.from.length;
    key.good_length = is_good_length(seen.length);
    key.base_index = static_cast<uint16_t>(seen.base_index);
    return key;
}

/** As the tables would see a frame of the sum, with the numbers of all of them. */
void show_sum(frame &to, const frame_sum &sum)
{
    to.length = sum.length;
    to.pkts = sum.pkts;
    to.octets = sum.octets;
    to.up_time = sum.up_time;
    to.base_index = sum.of.base_index;
    to.to_mac = sum.of.macs;
    to.from_mac = sum.of.macs + mac_octets;
    to.vlan = sum.of.vlan;
    to.priority = sum.of.priority - 1;
    to.dscp = sum.of.dscp - 1;
    to.from.length = to.to.length = sum.of.address_length;
    std::memcpy(to.from.bytes, sum.of.from, sizeof sum.of.from);
    std::memcpy(to.to.bytes, sum.of.to, sizeof sum.of.to);
    to.network_index = sum.of.network_index;
    to.application_index = sum.of.application_index;
}

/* ---- sums that wait ------------------------------------------------------------------- */

/** Has the tables count a sum. Its rows are there. */
void count_sum(late_counts &late, frame_sum &sum)
{
    frame shown;
    show_sum(shown, sum);
    sum.pkts = sum.octets = 0;
    late.frame = sum.last;
    count_frame(*sum.counters, shown);
}

/** Counts sums that wait, the oldest ones at first, as long as more than so many do. */
void count_waiting(late_counts &late, frame_sums &kind, std::size_t leave)
{
    constexpr std::size_t ahead = 4;
    const uint64_t frame = late.frame;
    while (kind.used > leave) {
        if (kind.used > ahead) {
            const frame_sum *next = &kind.sums[kind.waiting[(kind.first + ahead) % most_waiting]];
            __builtin_prefetch(next);
            __builtin_prefetch(&next->pkts);
        }
        frame_sum &sum = kind.sums[kind.waiting[kind.first]];
        kind.first = (kind.first + 1) % most_waiting;
        kind.used--;
        if (sum.pkts > 0)
            count_sum(late, sum);
    }
    late.frame = frame;
}

void wait(late_counts &late, frame_sums &kind, const frame_sum &sum)
{
    if (kind.used == most_waiting)
        count_waiting(late, kind, most_waiting - counted_at_once);
    kind.waiting[(kind.first + kind.used) % most_waiting] = static_cast<uint32_t>(&sum - kind.sums.data());
    kind.used++;
}

void count_all(late_counts &late)
{
    settle(static_cast<summed_frames &>(late));
}

/* ---- finding sums ----------------------------------------------------------------------- */

void make_room(summed_frames &all, frame_sums &kind)
{
    all.count = count_all;
    kind.tags = &kind == &all.of[1];
    kind.sets.resize(number_of_sums / sums_of_a_set);
    kind.sums.resize(number_of_sums);
    kind.waiting.resize(most_waiting);
}

/** The sum of a key. One that was not used lately gives way to a new one. */
frame_sum &find_sum(late_counts &late, frame_sums &kind, const sum_key &key)
{
    const uint32_t tag = tag_of(key);
    const std::size_t at = tag & (kind.sets.size() - 1);
    sum_set &set = kind.sets[at];
    frame_sum *const sums = &kind.sums[at * sums_of_a_set];
    for (std::size_t i = 0; i < sums_of_a_set; i++) {
        if (set.tags[i] == tag && same_key(sums[i].of, key)) {
            set.used[i] = 1;
            return sums[i];
        }
    }
    while (std::exchange(set.used[set.hand], 0))
        set.hand = (set.hand + 1) % sums_of_a_set;
    const std::size_t place = set.hand;
    set.hand = (set.hand + 1) % sums_of_a_set;
    frame_sum &sum = sums[place];
    if (sum.pkts > 0) {
        const uint64_t frame = late.frame;
        count_sum(late, sum);
        late.frame = frame;
    }
    set.tags[place] = tag;
    sum = {.of = key};
    return sum;
}

void add(late_counts &late, frame_sums &kind, frame_sum &sum, const frame &seen)
{
    if (sum.pkts == 0)
        wait(late, kind, sum);
    else
        kind.added++;
    sum.pkts++;
    sum.octets += seen.length;
    sum.last = late.frame;
    sum.length = seen.length;
    sum.up_time = seen.up_time;
    // Frames of bad length count where hosts are known: a new one must not have them.
    late.some_first = late.some_first || !sum.of.good_length;
}

/** An epoch for frames of good length, and one for the others: that ends with each row that is learned. */
struct epochs {
    uint64_t of_good;
    uint64_t of_bad;
};

epochs epochs_of(const late_counts &late)
{
    return {late.epoch, late.learned};
}

uint64_t epoch_for(const frame_sum &sum, const epochs &at)
{
    return sum.of.good_length ? at.of_good : at.of_bad;
}

/**
 * Counts a frame at once. Its sum may grow in the epoch in which the frame came: where that ended with the
 * frame, be it in a table of the other kind, its rows are not safe.
 */
void count_first(
    late_counts &late, const counter_list &counters, frame_sum &sum, const frame &seen, const epochs &came)
{
    late.refused = false;
    count_frame(counters, seen);
    sum.grows = late.refused ? 0 : epoch_for(sum, came);
    sum.counters = &counters;
}

/** Whether sums pay is judged from time to time. */
void judge(late_counts &late, frame_sums &kind)
{
    const bool ends = kind.looked_up == frames_of_a_round;
    if (!ends && kind.looked_up != frames_of_a_trial)
        return;
    if (!is_enough(kind.looked_up, ends ? kind.added : kind.added + kind.used)) {
        count_waiting(late, kind, 0);
        kind.alone = frames_alone;
    }
    if (ends || kind.alone > 0)
        kind.looked_up = kind.added = 0;
}

void add_up(
    summed_frames &all,
    frame_sums &kind,
    int32_t data_source,
    const counter_list &counters,
    const frame &seen,
    const epochs &came)
{
    if (counters.empty())
        return;
    if (kind.sums.empty())
        make_room(all, kind);
    if (kind.alone > 0 || !has_likes(seen)) {
        kind.alone -= kind.alone > 0;
        count_frame(counters, seen);
        return;
    }
    frame_sum &sum = find_sum(all, kind, key_of(data_source, seen, kind.tags));
    if (sum.grows == epoch_for(sum, epochs_of(all)))
        add(all, kind, sum, seen);
    else
        count_first(all, counters, sum, seen, came);
    kind.looked_up++;
    judge(all, kind);
}

} // namespace

void add_up(summed_frames &all, int32_t data_source, attached_counters &counters, const frame &seen)
{
    const epochs came = epochs_of(all);
    add_up(all, all.of[0], data_source, counters[counting::alike], seen, came);
    add_up(all, all.of[1], data_source, counters[counting::alike_with_tags], seen, came);
}

void settle(summed_frames &all)
{
    for (frame_sums &kind : all.of)
        count_waiting(all, kind, 0);
    all.some_first = false;
}

void settle_for_change(summed_frames &all)
{
    settle(all);
    all.epoch++;
    all.began = all.frames + 1;
    all.learned++;
}
