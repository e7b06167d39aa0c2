// SPDX-License-Identifier: MIT
/* Removing rows from a learned table other than by learning new ones. */
#pragma once

#include "agent/core/learned_table.h"

#include <cstddef>
#include <utility>
#include <vector>

/**
 * Keeps the rows of a table whose key is wanted, the most recently used ones
 * of them when there are more than `max_rows`, which is the table's size from now
 * on. Costs as much as learning all rows anew.
 */
template <class Key, class Row, class Wanted>
void sift_learned(learned_table<Key, Row> &table, uint32_t max_rows, Wanted wanted)
{
    std::vector<learned_use> staying; // kept ones, then from the least to the most recently used
    for (uint32_t i = 0; i < table.entries.size(); i++)
        if (wanted(table.entries[i].key))
            staying.push_back({table.entries[i].used, i});
    std::ranges::sort(staying, [&](const learned_use &one, const learned_use &other) {
        const bool kept = table.entries[one.index].kept;
        return kept != table.entries[other.index].kept ? kept : one.used < other.used;
    });
    if (staying.size() > max_rows) {
        const auto first = std::ranges::find_if(
            staying, [&](const learned_use &one) { return !table.entries[one.index].kept; });
        const auto surplus = static_cast<std::ptrdiff_t>(staying.size() - max_rows);
        staying.erase(first, first + std::min(surplus, staying.end() - first));
    }

    learned_table<Key, Row> sifted;
    sifted.max_rows = max_rows;
    sifted.inserts = table.inserts;
    sifted.deletes = table.deletes + static_cast<uint32_t>(table.entries.size() - staying.size());
    sifted.version = table.version + 1;
    for (const auto [used, old] : staying) {
        grow_slots(sifted);
        const auto index = static_cast<uint32_t>(sifted.entries.size());
        sifted.entries.emplace_back();
        sifted.entries[index].key = table.entries[old].key;
        sifted.entries[index].row = table.entries[old].row;
        sifted.entries[index].tag = table.entries[old].tag;
        set_slot(sifted, index);
        begin_use(sifted, index);
        keep_learned(sifted, index, table.entries[old].kept);
    }
    table = std::move(sifted);
}
