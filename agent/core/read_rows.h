// SPDX-License-Identifier: MIT
/* Reads of an ordered table, as find_row() has it, that are answered with several rows. */
#pragma once

#include "agent/core/bulk.h"

/**
 * The row of GET or GETNEXT, or those of GETBULK from the first after the index
 * on. Fill makes the reply's row from an entry of the table. None: an empty
 * reply.
 */
template <class Reply, class Table, class Fill> wire::rows<Reply> read_rows(
    Table &table, const typename Table::key_type &index, int32_t getType, int32_t count, const Fill &fill)
{
    std::vector<Reply> rows;
    const std::size_t wanted = rows_wanted(getType, count);
    for (auto at = find_row(table, index, getType); at != table.end() && rows.size() < wanted; ++at)
        rows.push_back(fill(*at));
    return reply_rows(rows);
}
