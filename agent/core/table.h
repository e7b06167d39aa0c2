// SPDX-License-Identifier: MIT
/*
 * How rows are asked for. Every table of the agent is an ordered map from
 * index to row; an index of several parts is a std::pair or std::tuple of
 * them, which compare as MIB indexes do.
 */
#pragma once

#include "rmon/rpc/rmonrpc.h"

#include <cstdint>

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
