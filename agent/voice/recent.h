// SPDX-License-Identifier: MIT
/* A table of a fixed size that strangers fill: the entry that was used longest ago gives way. */
#pragma once

#include "agent/capture/frame.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>

template <class Key, class Value> struct recent_table {
    using entry = std::pair<const Key, Value>;
    using order_of_use = std::list<entry>;

    order_of_use entries; // the one that was used longest ago first
    std::unordered_map<Key, typename order_of_use::iterator> places;
};

/** The value of a key, null when there is none; it is used by that. */
template <class Key, class Value> Value *find_recent(recent_table<Key, Value> &table, const Key &key)
{
    const auto found = table.places.find(key);
    if (found == table.places.end())
        return nullptr;
    table.entries.splice(table.entries.end(), table.entries, found->second);
    return &found->second->second;
}

/** The value of a key, made when there is none. Drop is called with what gives way to it. */
template <class Key, class Value, class Drop>
Value &find_or_make(recent_table<Key, Value> &table, const Key &key, std::size_t max, const Drop &drop)
{
    if (Value *found = find_recent(table, key))
        return *found;
    if (table.entries.size() >= max) {
        drop(table.entries.front().second);
        table.places.erase(table.entries.front().first);
        table.entries.pop_front();
    }
    table.entries.emplace_back(key, Value{});
    table.places.emplace(key, std::prev(table.entries.end()));
    return table.entries.back().second;
}

template <class Key, class Value> void forget_recent(recent_table<Key, Value> &table, const Key &key)
{
    const auto found = table.places.find(key);
    if (found == table.places.end())
        return;
    table.entries.erase(found->second);
    table.places.erase(found);
}
