/*
 * How rows are asked for. Every table of the agent is an ordered map from
 * index to row; an index of several parts is a std::pair or std::tuple of
 * them, which compare as MIB indexes do.
 */
#pragma once

#include "rmon/rpc/rmonrpc.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

/**
 * The row that a read asks for, or the table's end: the one with exactly this
 * index for GET, the first one after it for GETNEXT. For GETBULK, too, it is the
 * first row after the index; the reply goes on from there.
 */
template <class Table> auto find_row(Table &table, const typename Table::key_type &index, int32_t getType)
{
    switch (getType) {
    case GET:
        return table.find(index);
    case GETNEXT:
    case GETBULK:
        return table.upper_bound(index);
    default:
        return table.end();
    }
}

/** Rows of one reply; the longest rows still stay well below what a reply may have. */
inline constexpr int32_t most_bulk_rows = 10000;

/** How many rows a read may give: one, or so many as GETBULK asks for within bounds. */
inline std::size_t rows_wanted(int32_t getType, int32_t count)
{
    if (getType != GETBULK)
        return 1;
    return static_cast<std::size_t>(std::clamp(count, 0, most_bulk_rows));
}

/** Makes the rows of a reply, which owns them from then on. */
template <class Row> wire::rows<Row> rows_from(std::span<const Row> rows)
{
    static_assert(std::is_trivially_copyable_v<Row>);
    wire::rows<Row> made{};
    if (rows.empty())
        return made;
    made.value = static_cast<Row *>(std::malloc(rows.size_bytes()));
    if (!made.value)
        return made;
    std::memcpy(made.value, rows.data(), rows.size_bytes());
    made.length = static_cast<uint32_t>(rows.size());
    return made;
}

/**
 * The rows that a read asks for, of an ordered table: the one of GET or GETNEXT,
 * or those of GETBULK from the first after the index on. Fill makes the reply's
 * row from an entry of the table. None: an empty reply.
 */
template <class Reply, class Table, class Fill> wire::rows<Reply> read_rows(
    Table &table, const typename Table::key_type &index, int32_t getType, int32_t count, const Fill &fill)
{
    std::vector<Reply> rows;
    const std::size_t wanted = rows_wanted(getType, count);
    for (auto at = find_row(table, index, getType); at != table.end() && rows.size() < wanted; ++at)
        rows.push_back(fill(*at));
    return rows_from<Reply>(rows);
}
