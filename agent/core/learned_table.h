// SPDX-License-Identifier: MIT
/*
 * Tables whose rows are learned from traffic.
 *
 * A table holds at most max_rows rows; when it is full,
 * the one used least recently gives way to a new one. Finding a row costs a hash of its key, and
 * nothing is allocated once the table has its size. A key is a plain struct
 * without padding and of whole 64-bit words, so that its bytes are its
 * identity. The order of the MIB is made when somebody reads (ordered_view).
 */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>
#include <vector>

/** Rows of a table for which nobody asked for a size. */
inline constexpr uint32_t default_learned_rows = 10000;

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

template <class Key, class Row> struct learned_table {
    uint32_t max_rows = default_learned_rows;
    std::vector<learned_entry<Key, Row>> entries;
    std::vector<learned_slot> slots; // a power of 2, of which at most half are taken
    uint64_t uses = 0;
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

template <class Key> uint64_t hash_of(const Key &key)
{
    static_assert(std::has_unique_object_representations_v<Key> && sizeof(Key) % sizeof(uint64_t) == 0);
    std::array<uint64_t, sizeof(Key) / sizeof(uint64_t)> words;
    std::memcpy(words.data(), &key, sizeof key);
    uint64_t hash = hash_secret[1];
    for (const uint64_t word : words) {
        __extension__ typedef unsigned __int128 wide;
        const wide product = wide{word ^ hash_secret[0]} * (hash ^ hash_secret[1] ^ 0x9e3779b97f4a7c15);
        hash = static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
    }
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

/** The next one in the order of use that can give way, as far as the order is known; else no_entry. */
template <class Key, class Row> uint32_t next_unused(learned_table<Key, Row> &table)
{
    while (table.next < table.by_use.size()) {
        const uint32_t index = table.by_use[table.next++].index;
        if (!table.entries[index].kept && table.entries[index].used <= table.sorted_at)
            return index;
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
    std::vector<learned_use> again;
    for (uint32_t i = 0; i < table.entries.size(); i++) {
        const auto &entry = table.entries[i];
        if (!entry.kept && entry.used != entry.first)
            again.push_back({entry.used, i});
    }
    std::ranges::sort(again, {}, &learned_use::used);
    table.by_use.resize(table.fresh.size() + again.size());
    std::ranges::merge(table.fresh, again, table.by_use.begin(), {}, &learned_use::used, &learned_use::used);
    table.fresh.clear();
    table.sorted_at = table.uses;
    table.next = 0;
}

/** Notes the first use of an entry. */
template <class Key, class Row> void begin_use(learned_table<Key, Row> &table, uint32_t index)
{
    auto &entry = table.entries[index];
    entry.used = entry.first = ++table.uses;
    table.fresh.push_back({entry.used, index});
}

/**
 * The entry that was used least recently, of those that can give way. Uses only
 * leave their number, and the order is made when it has been used up: that
 * costs less than to keep it with every use.
 */
template <class Key, class Row> uint32_t least_recently_used(learned_table<Key, Row> &table)
{
    const uint32_t index = next_unused(table);
    if (index != no_entry || table.kept == table.entries.size())
        return index;
    sort_by_use(table);
    return next_unused(table);
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

/** Makes room for another entry's slot: twice as many once there are half as many entries. */
template <class Key, class Row> void grow_slots(learned_table<Key, Row> &table)
{
    if (table.entries.size() * 2 < table.slots.size())
        return;
    table.slots.assign(std::max<std::size_t>(16, table.slots.size() * 2), learned_slot{});
    for (uint32_t i = 0; i < table.entries.size(); i++)
        set_slot(table, i);
}

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
        table.entries[index].used = ++table.uses;
        return &table.entries[index].row;
    }

    if (table.entries.size() < table.max_rows) {
        grow_slots(table);
        index = static_cast<uint32_t>(table.entries.size());
        table.entries.emplace_back();
    } else {
        index = least_recently_used(table);
        if (index == no_entry)
            return nullptr;
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
    entry.kept = keep;
    entry.used = ++table.uses;
    table.kept += keep ? 1 : -1u;
}

/** Forgets all rows; the counts of inserts and deletes go on. */
template <class Key, class Row> void forget_all(learned_table<Key, Row> &table)
{
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
    view.order.resize(table.entries.size());
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
