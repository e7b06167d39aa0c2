// SPDX-License-Identifier: MIT
/*
 * Rows straight from the bytes that are there.
 *
 * Of the rows of a large reply nearly all lie whole in what one read brought.
 * For those the compiler unrolls the steps of the row's layout (wire.h): no step
 * is read, no field asks the stream, and one look at the bytes that are left
 * serves all fields of fixed size. A row that is not all there, or has a list
 * too long to stay inside the record, is left to the routine that takes any
 * record (rmonrpc_xdr.cpp).
 */
#pragma once

#include "rmon/rpc/units.h"
#include "rmon/rpc/wire.h"

#include <utility>

namespace wire {

/** Where a row's bytes stand, and how many of those that are there its fixed fields and its counts leave
 * over. */
struct row_bytes {
    const uint8_t *in;
    std::size_t over;
};

/** A list that stays inside the record and is all there; false for others. */
[[gnu::always_inline]] inline bool decode_short_list(byte_list &list, row_bytes &from)
{
    uint32_t count;
    swap_words<uint32_t>(&count, from.in, 1);
    if (count > byte_list::inside || unit_size(kind::bytes) * count > from.over)
        return false;
    list.length = count;
    gather_bytes(list.small, from.in + unit_size(kind::word), count);
    from.in += unit_size(kind::word) + unit_size(kind::bytes) * count;
    from.over -= unit_size(kind::bytes) * count;
    return true;
}

/** Carries out one step of the layout of Row; false where the row is left to others. */
template <class Row, std::size_t Step>
[[gnu::always_inline]] inline bool decode_step(uint8_t *row, row_bytes &from)
{
    constexpr step s = steps_of<Row>[Step];
    if constexpr (s.kind == kind::bytes) {
        return decode_short_list(*reinterpret_cast<byte_list *>(row + s.offset), from);
    } else if constexpr (s.kind != kind::run) {
        if constexpr (s.kind == kind::word)
            swap_words<uint32_t>(row + s.offset, from.in, s.count);
        else if constexpr (s.kind == kind::hyper)
            swap_words<uint64_t>(row + s.offset, from.in, s.count);
        else
            gather_bytes(row + s.offset, from.in, s.count);
        from.in += unit_size(s.kind) * s.count;
    }
    return true;
}

/** All steps; false where the row is left to others. */
template <class Row, std::size_t... Step>
[[gnu::always_inline]] inline bool decode_steps(uint8_t *row, row_bytes &from, std::index_sequence<Step...>)
{
    return (decode_step<Row, Step>(row, from) && ...);
}

template <class Row>
uint32_t decode_straight(void *rows, uint32_t most, const uint8_t *&in, const uint8_t *end)
{
    constexpr std::size_t least = layout_holder<Row>::value.least;
    for (uint32_t decoded = 0; decoded < most; decoded++) {
        const auto there = static_cast<std::size_t>(end - in);
        if (there < least)
            return decoded;
        row_bytes from{in, there - least};
        auto *row = reinterpret_cast<uint8_t *>(static_cast<Row *>(rows) + decoded);
        const bool whole = decode_steps<Row>(row, from, std::make_index_sequence<steps_of<Row>.size()>{});
        if (!whole)
            return decoded;
        in = from.in;
    }
    return most;
}

} // namespace wire
