// SPDX-License-Identifier: MIT
/* The reads, switches and clears of the voice monitors, for the list of procedures. */
#pragma once

#include "agent/capture/probe.h"
#include "agent/core/read_rows.h"
#include "agent/voice/voice.h"

#include <algorithm>
#include <span>

/** The key of these tables: the index, then how to read, then how many. */
struct voice_key {
    uint32_t index;
    int32_t getType;
    int32_t count;
};

inline voice_key voice_key_of(const rmonrpc_row_key3_t &key)
{
    return {static_cast<uint32_t>(std::max(key.index1, 0)), key.index2, key.getType};
}

/** Rows that a reply has room for, of those that a read wants. */
template <class Row> std::size_t voice_rows_wanted(const voice_key &key)
{
    return std::min<std::size_t>(
        rows_wanted(key.getType, key.count), max_voice_octets / wire::wire_size<Row>);
}

template <class Row> Row voice_row(const Row &row)
{
    return row;
}

template <class Row> Row voice_row(const monitored_phone<Row> &phone)
{
    return phone.row;
}

/** Phones or calls, by their numbers. */
template <class Row, class Table> wire::rows<Row> read_voice(const Table &table, const voice_key &key)
{
    const auto count = static_cast<int32_t>(voice_rows_wanted<Row>(key));
    return read_rows<Row>(
        table, key.index, key.getType, count, [](const auto &entry) { return voice_row(entry.second); });
}

inline void set_rank(rmonrpc_sccp_top_row_t &row, uint32_t rank)
{
    row.common.index = rank;
}

inline void set_rank(rmonrpc_h323_call_row_t &row, uint32_t rank)
{
    row.common.index = rank;
}

inline void set_rank(rmonrpc_mgcp_call_t &row, uint32_t rank)
{
    row.index = static_cast<int32_t>(rank);
}

/** Calls of a top table, by their ranks, which begin with 1. */
template <class Row, class Ranked>
wire::rows<Row> read_voice(const std::vector<ranked_call<Ranked>> &top, const voice_key &key)
{
    std::vector<Row> rows;
    const bool exactly = key.getType == GET;
    if ((exactly && key.index == 0) || key.getType < GET || key.getType > GETBULK)
        return {};
    const std::size_t wanted = voice_rows_wanted<Row>(key);
    for (std::size_t at = exactly ? key.index - 1 : key.index; at < top.size() && rows.size() < wanted;
         at++) {
        rows.push_back(top[at].row);
        set_rank(rows.back(), static_cast<uint32_t>(at + 1));
    }
    return reply_rows(rows);
}

/** Reads a table of a monitor. */
template <auto Monitor, auto Table, class Row>
wire::rows<Row> voice_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    return read_voice<Row>(storage<voice_monitors>(agent).*Monitor.*Table, voice_key_of(key));
}

/** Empties a table of a monitor. */
template <auto Monitor, auto Table> int32_t voice_clear(probe &agent)
{
    (storage<voice_monitors>(agent).*Monitor.*Table).clear();
    return no_error;
}

/** Turns a switch of a monitor. */
template <auto Monitor, auto Switch, int32_t Position> int32_t voice_switch(probe &agent)
{
    (storage<voice_monitors>(agent).*Monitor).settings.*Switch = Position;
    return no_error;
}
