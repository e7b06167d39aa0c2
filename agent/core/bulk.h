// SPDX-License-Identifier: MIT
/* Replies of several rows. */
#pragma once

#include "agent/core/table.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

/** Rows of one reply, whatever is asked for. */
inline constexpr int32_t max_bulk_rows = 10000;

/** How many rows a read wants: one, or the count of a GETBULK. */
inline std::size_t rows_wanted(int32_t getType, int32_t count)
{
    return getType == GETBULK ? static_cast<std::size_t>(std::clamp(count, 0, max_bulk_rows)) : 1;
}

/** Gives a reply its rows, which own what their members point to. */
template <class Row> wire::rows<Row> reply_rows(const std::vector<Row> &from)
{
    wire::rows<Row> to{};
    if (from.empty())
        return to;
    to.value = static_cast<Row *>(std::malloc(from.size() * sizeof(Row)));
    if (!to.value)
        return to;
    std::memcpy(static_cast<void *>(to.value), from.data(), from.size() * sizeof(Row));
    to.length = static_cast<uint32_t>(from.size());
    return to;
}
