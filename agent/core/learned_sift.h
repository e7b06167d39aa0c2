// SPDX-License-Identifier: MIT
/* Removing rows from a learned table other than by learning new ones. */
#pragma once

#include "agent/core/learned_table.h"

#include <algorithm>
#include <cstddef>
#include <vector>

/** The entries that may give way, in the order of their last use, as if that had been their first one. */
template <class Key, class Row> void renew_order_of_use(learned_table<Key, Row> &table)
{
    table.by_use.clear();
    table.next = 0;
    table.fresh.clear();
    for (uint32_t i = 0; i < table.entries.size(); i++) {
        auto &entry = table.entries[i];
        entry.first = entry.used;
        if (!entry.kept)
            table.fresh.push_back({entry.used, i});
    }
    std::ranges::sort(table.fresh, {}, &learned_use::used);
}

/**
 * Keeps the rows of a table whose key is wanted, the most recently used ones
 * of them when there are more than `max_rows`, which is the table's size from now
 * on. The memory of those that go is given back when it is the most part.
 */
template <class Key, class Row, class Wanted>
void sift_learned(learned_table<Key, Row> &table, uint32_t max_rows, Wanted wanted)
{
    end_epoch(table);
    const std::size_t before = table.entries.size();
    std::erase_if(table.entries, [&](const auto &entry) { return !wanted(entry.key); });
    renew_order_of_use(table);
    const std::size_t too_many = table.entries.size() > max_rows ? table.entries.size() - max_rows : 0;
    if (const std::size_t surplus = std::min(too_many, table.fresh.size())) {
        const uint64_t last = table.fresh[surplus - 1].used;
        std::erase_if(table.entries, [&](const auto &entry) { return !entry.kept && entry.used <= last; });
        renew_order_of_use(table);
    }
    table.max_rows = max_rows;
    table.kept = static_cast<uint32_t>(table.entries.size() - table.fresh.size());
    table.deletes += static_cast<uint32_t>(before - table.entries.size());
    table.version++;

    const std::size_t rows = table.entries.size();
    const std::size_t octets = octets_of<Key, Row>(rows) + table.memory.octets; // both are there for a moment
    if (rows < table.entries.capacity() / 2 && memory_is_there(table.memory, octets))
        set_capacity(table, rows);
    else
        set_slots(table);
}
