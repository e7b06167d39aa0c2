// SPDX-License-Identifier: MIT
/*
 * The row-status rules of RFC 2819 (EntryStatus), by which the rows of all
 * control tables are made, changed and removed.
 *
 * What a set asks for, by the status that it carries:
 *
 *   createRequest   makes a new row, which is under creation from then on; a row
 *                   that is there already refuses it
 *   underCreation   changes a row; a valid one stops its work
 *   valid           changes a row and sets it to work; a row that works already
 *                   goes on, and refuses changes of the fields that are fixed
 *                   while it is valid
 *   invalid         removes a row
 *
 * All but createRequest need the row to exist. A set that is refused changes
 * nothing.
 */
#pragma once

#include "agent/core/reply.h"

#include <cstddef>
#include <cstdint>

enum class row_status : int32_t {
    valid = 1,
    create_request = 2,
    under_creation = 3,
    invalid = 4,
};

/** Indexes of control rows (RFC 2819: 1..65535). */
inline constexpr int32_t first_control_index = 1;
inline constexpr int32_t last_control_index = 65535;

/** Rows of one control table. */
inline constexpr std::size_t max_control_rows = 1000;

/** What bounds the rows of a table. */
struct row_limits {
    int32_t first = first_control_index;
    int32_t last = last_control_index;
    std::size_t max = max_control_rows;
};

/** Rows that learn can take much memory each, so there may be fewer of them. */
inline constexpr row_limits learning_rows{first_control_index, last_control_index, 100};

/** An index or a size that travels unsigned, for fields that hold less than 2^31; more becomes -1. */
inline int32_t signed_index(uint32_t value)
{
    return value > INT32_MAX ? -1 : static_cast<int32_t>(value);
}

inline int32_t signed_index(int32_t value)
{
    return value;
}
