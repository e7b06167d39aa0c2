// SPDX-License-Identifier: MIT
/*
 * What the NetFlow tables have in common: rows are keyed by a device's address,
 * reads answer with all rows under one key, writes tell in the record what is
 * to be done.
 */
#pragma once

#include "rmon/answers.h"

namespace rmon {

/* ---- arguments ------------------------------------------------------------------ *
 *
 * A device's address is an array of at most 16 integers; more are refused with
 * "too many (%d) elements in addr!" before any is converted.
 */

/** The address of a read: anything but an array is an empty one. The return value stays NULL on a refusal. */
bool convert_read_address(script_call call, zval *argument, rmonrpc_nde_head_t &head);

/** The address of a write, which must be an array. The return value is FALSE on a refusal. */
bool convert(script_call call, zval *argument, rmonrpc_nde_head_t &head);

/** A text of at most 80 bytes; a longer one is cut. The field is expected to be zeroed. */
bool convert(script_call call, zval *argument, nde_text &text);

/* ---- rows ------------------------------------------------------------------------ */

/** The bytes of the address, never more than there are, whatever the agent says. */
void show_address(zval *slot, const wire::uchars<16> &address, uint32_t length);

/** The columns with which most rows begin. Head is the pointer to the record's member. */
template <auto Head, class H = rmonrpc_nde_head_t> using device_columns = within<
    Head,
    converted<"address", show_address, &H::address, &H::addressLength>,
    field<&H::addressLength>,
    left_out<&H::getType, &H::count, &H::operation>>;

/** All rows of a reply as a list, under one key. */
template <key_text Key, class Shape> struct rows_under {
    static constexpr std::array keys{text_key<Key>::key};
    template <class Record> static void put(Bucket *slot, const wire::rows<Record> &rows)
    {
        set(&slot->val, make_rows<Shape>(rows));
    }
    static constexpr void tell(field_list &, uint32_t) {}
};

/* ---- calls ----------------------------------------------------------------------- */

/**
 * A read: link, address, then the given fields of the request. A call that
 * failed is not reported.
 */
template <class Shape, class Procedure, class... Index> void read_rows(
    script_call call,
    int32_t getType,
    const Procedure &procedure,
    typename Procedure::argument &request,
    Index &...index)
{
    link_id link;
    zval *from;
    request.head.getType = getType;
    if (take_rows(call, getType, request.head.count, link, from, index...)
        && convert_read_address(call, from, request.head))
        return_row<Shape>(call, ask(call, procedure, link, request, unreported));
}

/** A write: link, address, then the given fields of the row. */
template <class Procedure, class... Field> void write_row(
    script_call call,
    int32_t operation,
    const char *label,
    const Procedure &procedure,
    typename Procedure::argument &row,
    Field &...field)
{
    link_id link;
    row.head.operation = operation;
    if (take(call, link, row.head, field...))
        return_integer(call, ask(call, procedure, link, row, label));
}

} // namespace rmon
