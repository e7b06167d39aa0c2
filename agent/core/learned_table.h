// SPDX-License-Identifier: MIT
/*
 * Tables whose rows are learned from traffic.
 *
 * A table holds at most max_rows rows, and fewer where its share of the memory
 * ends before (memory.h); when it is full, the one used least recently gives way
 * to a new one. Finding a row costs a hash of its key, and
 * nothing is allocated once the table has its size. A key is a plain struct
 * without padding and of whole 64-bit words, so that its bytes are its
 * identity. The order of the MIB is made when somebody reads (ordered_view).
 */
#pragma once

#include "agent/core/memory.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

/** Rows of a table for which nobody asked for a size. */
inline constexpr uint32_t default_learned_rows = 10000;

/** Rows of a table at most, whatever is desired. */
inline constexpr uint32_t max_learned_rows = 1 << 20;

/** Rows that a table gets for its MaxDesiredEntries: -1 leaves it to the agent. */
inline uint32_t granted_rows(int32_t desired)
{
    return desired < 0 ? default_learned_rows : std::min(static_cast<uint32_t>(desired), max_learned_rows);
}

inline constexpr uint32_t no_entry = UINT32_MAX;

template <class Key, class Row> struct learned_entry {
    Key key{};
    Row row{};
    uint64_t used = 0;  // the number of its last use
    uint64_t first = 0; // the number of its first use
    uint32_t tag = 0;   // of the key
    bool kept = false;  // never gives way
};

/** Where an entry is found: at the place that its tag tells, or the first free one behind that. */
struct learned_slot {
    uint32_t tag = 0;
    uint32_t index = no_entry; // of the entry; no_entry: free
};

/** An entry in the order of use. */
struct learned_use {
    uint64_t used;
    uint32_t index;
};

/**
 * What a table has to know of frames that are counted later than they came, because others like them came
 * before (see capture/sums.h). Their rows are there: only the order of use is not yet known, and what the
 * rows count.
 */
struct late_counts {
    uint64_t frames = 0;     // that came so far; keeping a row or not takes a number too
    uint64_t frame = 0;      // the number of the one that is being counted
    uint64_t epoch = 1;      // rows that were used in it don't give way or go before its end
    uint64_t began = 1;      // the number of its first frame
    uint64_t learned = 1;    // grows as the epoch does, and whenever a row is learned
    bool refused = false;    // set when there is no room for a row
    bool some_first = false; // something waits that must be counted before another row is learned
    void (*count)(late_counts &late) = nullptr; // counts all that waits; null before something does
};

template <class Key, class Row> struct learned_table {
    uint32_t max_rows = default_learned_rows;
    late_counts *late = nullptr; // where frames may be counted late
    memory_share memory;         // for as many rows as entries has the capacity for
    std::vector<learned_entry<Key, Row>> entries;
    std::vector<learned_slot> slots; // a power of 2, of which at most half are taken
    uint64_t uses = 0;               // the highest number of a use
    uint64_t last_use = 0;           // the last number that was given, where frames may be counted late
    /**
     * The order of use as it was at sorted_at, from the entry on that gives way
     * next. Those that were used since are skipped: they stand behind all others.
     */
    std::vector<learned_use> by_use;
    std::size_t next = 0;
    std::vector<learned_use> fresh; // the first uses since then
    uint64_t sorted_at = 0;
    uint32_t kept = 0;    // entries that never give way
    uint32_t inserts = 0; // since the table began; what the MIBs count
    uint32_t deletes = 0;
    uint64_t version = 0; // grows with every change of which keys there are
};

/** Keys are hashed with numbers that no sender can know, so that nobody fills one chain on purpose. */
inline std::array<uint64_t, 2> hash_secrets()
{
    std::random_device random;
    const auto word = [&] { return uint64_t{random()} << 32 | random() | 1; };
    return {word(), word()};
}

inline const std::array<uint64_t, 2> hash_secret = hash_secrets();

/** Both halves of the product of two numbers of 64 bits, as one. */
inline uint64_t folded_product(uint64_t a, uint64_t b)
{
#ifdef __SIZEOF_INT128__
    __extension__ typedef unsigned __int128 wide;
    const wide product = wide{a} * b;
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
#else
    // As on paper, with digits of 32 bits.
    constexpr uint64_t digit = 0xffffffff;
    const uint64_t low = (a & digit) * (b & digit);
    const uint64_t one = (a >> 32) * (b & digit) + (low >> 32);
    const uint64_t other = (a & digit) * (b >> 32) + (one & digit);
    return (other << 32 | (low & digit)) ^ ((a >> 32) * (b >> 32) + (one >> 32) + (other >> 32));
#endif
}

template <class Key> uint64_t hash_of(const Key &key)
{
    static_assert(std::has_unique_object_representations_v<Key> && sizeof(Key) % sizeof(uint64_t) == 0);
    std::array<uint64_t, sizeof(Key) / sizeof(uint64_t)> words;
    std::memcpy(words.data(), &key, sizeof key);
    uint64_t hash = hash_secret[1];
    for (const uint64_t word : words)
        hash = folded_product(word ^ hash_secret[0], hash ^ hash_secret[1] ^ 0x9e3779b97f4a7c15);
    return hash;
}

/* ---- the parts that learn() and the others are made of --------------------------- */

/** The part of a key's hash that is kept: an entry with another tag need not be looked at. */
template <class Key> uint32_t tag_of(const Key &key)
{
    const uint64_t hash = hash_of(key);
    return static_cast<uint32_t>(hash ^ hash >> 32);
}

template <class Key> bool same_key(const Key &one, const Key &other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

/** Numbers of uses that each frame has; it has no more uses in one table. */
inline constexpr uint64_t uses_of_a_frame = 16;

/**
 * The next one in the order of use that can give way, as far as the order is known; else no_entry. It is not
 * taken from the order yet.
 */
template <class Key, class Row> uint32_t next_unused(learned_table<Key, Row> &table)
{
    for (; table.next < table.by_use.size(); table.next++) {
        const uint32_t index = table.by_use[table.next].index;
        const auto &entry = table.entries[index];
        if (entry.kept || entry.used > table.sorted_at)
            continue;
        const bool safe = table.late && entry.used >= table.late->began * uses_of_a_frame;
        return safe ? no_entry : index;
    }
    return no_entry;
}

/**
 * Makes the order of use anew, when it has been used up: all entries are fresh
 * then, or were used again. The fresh ones are in order, so that only the
 * others are sorted.
 */
template <class Key, class Row> void sort_by_use(learned_table<Key, Row> &table)
{
    std::erase_if(table.fresh, [&](const learned_use &one) {
        return table.entries[one.index].used != one.used || table.entries[one.index].kept;
    });
    // The others stand behind the place of the fresh ones, which then come in between them.
    table.by_use.resize(table.fresh.size());
    for (uint32_t i = 0; i < table.entries.size(); i++) {
        const auto &entry = table.entries[i];
        if (!entry.kept && entry.used != entry.first)
            table.by_use.push_back({entry.used, i});
    }
    const auto end = table.by_use.end();
    auto to = table.by_use.begin();
    auto from = to + std::ssize(table.fresh);
    std::ranges::sort(from, end, {}, &learned_use::used);
    for (const learned_use &one : table.fresh) {
        while (from != end && from->used < one.used)
            *to++ = *from++;
        *to++ = one;
    }
    table.fresh.clear();
    table.sorted_at = table.uses;
    table.next = 0;
}

/**
 * The number of a use, by which rows are ordered. Where frames may be counted late, it is made of the frame's
 * number, so that it does not matter when it is counted.
 */
template <class Key, class Row> uint64_t next_use(learned_table<Key, Row> &table)
{
    if (!table.late)
        return ++table.uses;
    const uint64_t frame = table.late->frame;
    table.last_use = table.last_use / uses_of_a_frame == frame ? table.last_use + 1 : frame * uses_of_a_frame;
    table.uses = std::max(table.uses, table.last_use);
    return table.last_use;
}

/** Counts all that waits, in the midst of counting another frame. */
template <class Key, class Row> void count_late(learned_table<Key, Row> &table)
{
    if (!table.late->count)
        return;
    const uint64_t frame = table.late->frame;
    const uint64_t last_use = table.last_use;
    table.late->count(*table.late);
    table.late->frame = frame;
    table.last_use = last_use;
}

/** To be called before rows go that were used in the epoch. */
template <class Key, class Row> void end_epoch(learned_table<Key, Row> &table)
{
    if (!table.late)
        return;
    count_late(table);
    table.late->epoch++;
    table.late->began = table.late->frames + 1;
    table.late->learned++;
}

/** To be called before a row is learned. */
template <class Key, class Row> void before_learning(learned_table<Key, Row> &table)
{
    if (!table.late)
        return;
    if (table.late->some_first)
        count_late(table);
    table.late->learned++;
}

/** Notes the first use of an entry. */
template <class Key, class Row> void begin_use(learned_table<Key, Row> &table, uint32_t index)
{
    auto &entry = table.entries[index];
    entry.used = entry.first = next_use(table);
    table.fresh.push_back({entry.used, index});
}

/**
 * The entry that was used least recently, of those that can give way. Uses only
 * leave their number, and the order is made when it has been used up: that
 * costs less than to keep it with every use.
 */
template <class Key, class Row> uint32_t least_recently_used(learned_table<Key, Row> &table)
{
    if (table.kept == table.entries.size())
        return no_entry;
    uint32_t index = next_unused(table);
    if (index == no_entry && table.next < table.by_use.size()) {
        end_epoch(table);
        index = next_unused(table);
    }
    if (index == no_entry) {
        if (table.late)
            count_late(table);
        sort_by_use(table);
        index = next_unused(table);
    }
    if (index == no_entry) {
        end_epoch(table);
        index = next_unused(table);
    }
    table.next += index != no_entry;
    return index;
}

/** Takes an entry's slot away and closes the gap, so that those behind it are still found. */
template <class Key, class Row> void clear_slot(learned_table<Key, Row> &table, uint32_t index)
{
    const std::size_t mask = table.slots.size() - 1;
    std::size_t gap = table.entries[index].tag & mask;
    while (table.slots[gap].index != index)
        gap = (gap + 1) & mask;
    for (std::size_t at = (gap + 1) & mask; table.slots[at].index != no_entry; at = (at + 1) & mask) {
        const std::size_t home = table.slots[at].tag & mask;
        if (((at - home) & mask) < ((at - gap) & mask))
            continue; // it would stand before the place that its tag tells
        table.slots[gap] = table.slots[at];
        gap = at;
    }
    table.slots[gap] = {};
}

template <class Key, class Row> void set_slot(learned_table<Key, Row> &table, uint32_t index)
{
    const std::size_t mask = table.slots.size() - 1;
    const uint32_t tag = table.entries[index].tag;
    std::size_t at = tag & mask;
    while (table.slots[at].index != no_entry)
        at = (at + 1) & mask;
    table.slots[at] = {tag, index};
}

/* ---- growth ------------------------------------------------------------------------- */

/** Rows that a table begins with. In its part of the smallest bound, each has room for them. */
inline constexpr std::size_t first_rows = 8;

inline constexpr std::size_t slots_for(std::size_t rows)
{
    return rows == 0 ? 0 : std::bit_ceil(rows * 2);
}

/** What a table with room for so many rows takes, the orders in which it is read and uses are noted included.
 */
template <class Key, class Row> constexpr std::size_t octets_of(std::size_t rows)
{
    constexpr std::size_t views = 3; // more than any table has
    constexpr std::size_t notes = 2 * sizeof(learned_use) + views * sizeof(uint32_t);
    return rows * (sizeof(learned_entry<Key, Row>) + notes) + slots_for(rows) * sizeof(learned_slot);
}

/**
 * Rows for which a table with room for so many would make room next: twice as
 * many, or as many as its memory allows. Old and new entries are there at once,
 * and less than an eighth more is not worth it.
 */
template <class Key, class Row>
std::size_t next_capacity(const learned_table<Key, Row> &table, std::size_t rows)
{
    static_assert(octets_of<Key, Row>(first_rows) <= memory_part(smallest_memory));
    const std::size_t wanted = std::min<std::size_t>(std::max(first_rows, rows * 2), table.max_rows);
    const auto allowed = [&](std::size_t more) {
        const std::size_t octets = octets_of<Key, Row>(more);
        return octets <= memory_within_reach(table.memory)
               && memory_is_there(table.memory, octets + rows * sizeof(learned_entry<Key, Row>));
    };
    if (wanted <= rows)
        return rows;
    if (allowed(wanted))
        return wanted;
    std::size_t most = rows + rows / 8 + 1;
    if (most >= wanted || !allowed(most))
        return rows;
    for (std::size_t too_many = wanted; too_many - most > 1;) {
        const std::size_t middle = most + (too_many - most) / 2;
        (allowed(middle) ? most : too_many) = middle;
    }
    return most;
}

/** Rows that a table has room for, or would have if it grew now. */
template <class Key, class Row> uint32_t rows_within_reach(const learned_table<Key, Row> &table)
{
    std::size_t rows = table.entries.capacity();
    for (std::size_t next; (next = next_capacity(table, rows)) > rows;)
        rows = next;
    return static_cast<uint32_t>(std::min<std::size_t>(rows, table.max_rows));
}

/** Whether a table has room for another row, or would make it. */
template <class Key, class Row> bool has_room(const learned_table<Key, Row> &table)
{
    const std::size_t rows = table.entries.capacity();
    return table.entries.size() < table.max_rows
           && (table.entries.size() < rows || next_capacity(table, rows) > rows);
}

/** Has room for exactly so many elements, neither more nor fewer. */
template <class Element> void set_room(std::vector<Element> &list, std::size_t elements)
{
    std::vector<Element> moved;
    moved.reserve(elements);
    moved.assign(list.begin(), list.end());
    list = std::move(moved);
}

template <class Key, class Row> void set_slots(learned_table<Key, Row> &table)
{
    std::ranges::fill(table.slots, learned_slot{});
    for (uint32_t i = 0; i < table.entries.size(); i++)
        set_slot(table, i);
}

/** Has room for so many rows from now on, which are not fewer than there are. */
template <class Key, class Row> void set_capacity(learned_table<Key, Row> &table, std::size_t rows)
{
    have_memory(table.memory, octets_of<Key, Row>(rows));
    set_room(table.entries, rows);
    set_room(table.fresh, rows);
    set_room(table.by_use, rows);
    table.slots = {};
    table.slots.resize(slots_for(rows));
    set_slots(table);
}

/** Whether there is room for another row; makes it where it can. */
template <class Key, class Row> bool make_room(learned_table<Key, Row> &table)
{
    if (!has_room(table))
        return false;
    if (table.entries.size() == table.entries.capacity())
        set_capacity(table, next_capacity(table, table.entries.capacity()));
    return true;
}

/* ---- finding ------------------------------------------------------------------------ */

/** The entry with a key that has this tag, or no_entry. */
template <class Key, class Row>
uint32_t find_tagged(const learned_table<Key, Row> &table, const Key &key, uint32_t tag)
{
    if (table.slots.empty())
        return no_entry;
    const std::size_t mask = table.slots.size() - 1;
    for (std::size_t at = tag & mask;; at = (at + 1) & mask) {
        const learned_slot &slot = table.slots[at];
        if (slot.index == no_entry || (slot.tag == tag && same_key(table.entries[slot.index].key, key)))
            return slot.index;
    }
}

/** The later of two times that are not far from each other: sysUpTime begins anew at 2^32. */
inline uint32_t later(uint32_t one, uint32_t other)
{
    return static_cast<int32_t>(other - one) > 0 ? other : one;
}

/* ---- use ---------------------------------------------------------------------------- */

/** A key and its tag. */
template <class Key> struct tagged_key {
    Key key;
    uint32_t tag;
};

/**
 * Begins to look for a key: what the tag tells of its place is on its way into
 * the processor's cache then. Who needs several rows begins with all of them,
 * and waits for memory once.
 */
template <class Key, class Row> tagged_key<Key> seek(const learned_table<Key, Row> &table, const Key &key)
{
    const uint32_t tag = tag_of(key);
    if (!table.slots.empty())
        __builtin_prefetch(&table.slots[tag & (table.slots.size() - 1)]);
    return {key, tag};
}

/** The entry with this key, or no_entry. It does not count as use. */
template <class Key, class Row> uint32_t find_learned(const learned_table<Key, Row> &table, const Key &key)
{
    return find_tagged(table, key, tag_of(key));
}

/**
 * The row of this key, which is used now; a new one when there was none. Null
 * when the table is full of rows that never give way. Good until the next call.
 */
template <class Key, class Row>
Row *learn_sought(learned_table<Key, Row> &table, const tagged_key<Key> &sought)
{
    const auto &[key, tag] = sought;
    uint32_t index = find_tagged(table, key, tag);
    if (index != no_entry) {
        auto &used = table.entries[index].used;
        used = std::max(used, next_use(table));
        return &table.entries[index].row;
    }
    before_learning(table);

    if (table.entries.size() < table.max_rows && make_room(table)) {
        index = static_cast<uint32_t>(table.entries.size());
        table.entries.emplace_back();
    } else {
        index = least_recently_used(table);
        if (index == no_entry) {
            if (table.late)
                table.late->refused = true;
            return nullptr;
        }
        clear_slot(table, index);
        table.deletes++;
    }
    auto &entry = table.entries[index];
    entry.key = key;
    entry.tag = tag;
    begin_use(table, index);
    entry.row = {};
    set_slot(table, index);
    table.inserts++;
    table.version++;
    return &entry.row;
}

template <class Key, class Row> Row *learn(learned_table<Key, Row> &table, const Key &key)
{
    return learn_sought(table, tagged_key<Key>{key, tag_of(key)});
}

/** Sets whether an entry is kept whatever comes. */
template <class Key, class Row> void keep_learned(learned_table<Key, Row> &table, uint32_t index, bool keep)
{
    auto &entry = table.entries[index];
    if (entry.kept == keep)
        return;
    if (table.late) {
        end_epoch(table);
        table.late->frame = ++table.late->frames;
    }
    entry.kept = keep;
    entry.used = next_use(table);
    table.kept += keep ? 1 : -1u;
}

/** Forgets all rows; the counts of inserts and deletes go on. */
template <class Key, class Row> void forget_all(learned_table<Key, Row> &table)
{
    end_epoch(table);
    table.deletes += static_cast<uint32_t>(table.entries.size());
    table.entries.clear();
    std::ranges::fill(table.slots, learned_slot{});
    table.by_use.clear();
    table.fresh.clear();
    table.next = 0;
    table.kept = 0;
    table.version++;
}

/* ---- in order ------------------------------------------------------------------------ */

/** Has a place for each entry of a table, and room for as many as the table has. */
template <class Key, class Row, class Place>
void fit_to(const learned_table<Key, Row> &table, std::vector<Place> &places)
{
    static_assert(sizeof(Place) == sizeof(uint32_t)); // as octets_of() counts them
    if (places.capacity() != table.entries.capacity()) {
        places = {};
        places.reserve(table.entries.capacity());
    }
    places.resize(table.entries.size());
}

/** A table's entries in one order. It is made anew when it is asked for and keys came or went since. */
struct ordered_view {
    uint64_t version = UINT64_MAX;
    std::vector<uint32_t> order;
};

template <class Key, class Row, class Less>
const std::vector<uint32_t> &in_order(const learned_table<Key, Row> &table, ordered_view &view, Less less)
{
    if (view.version == table.version)
        return view.order;
    fit_to(table, view.order);
    for (uint32_t i = 0; i < view.order.size(); i++)
        view.order[i] = i;
    std::ranges::sort(view.order, [&](uint32_t one, uint32_t other) {
        return less(table.entries[one].key, table.entries[other].key);
    });
    view.version = table.version;
    return view.order;
}

/** Where in the order the first entry after a key stands. */
template <class Key, class Row, class Less>
std::size_t place_after(const learned_table<Key, Row> &table, ordered_view &view, Less less, const Key &key)
{
    const auto &order = in_order(table, view, less);
    const auto after = std::ranges::upper_bound(
        order, key, less, [&](uint32_t index) -> const Key & { return table.entries[index].key; });
    return static_cast<std::size_t>(after - order.begin());
}
