// SPDX-License-Identifier: MIT
/*
 * What the DSMON tables (RFC 3287) have in common and other tables don't: a
 * call that fails is never reported, and a row that can't be read is
 * [0 => -1, "status" => -1]. Only a bad link or an address that is too long is
 * FALSE after a warning.
 */
#pragma once

#include "rmon/answers.h"

namespace rmon {

struct failed_read {
    int32_t status;
};

using failed_read_row = row_shape<status<&failed_read::status>>;

/** Asks for one row. A failed call and the agent's refusal look the same to the script. */
template <class Shape, class Procedure> void
read_row(script_call call, const Procedure &procedure, link_id link, const typename Procedure::argument &key)
{
    CLIENT *client = client_of(link);
    if (!client) {
        ZVAL_FALSE(call.return_value);
        return;
    }
    auto *row = procedure(&key, client);
    if (row && row->status == 0)
        ZVAL_ARR(call.return_value, make_row<Shape>(*row));
    else
        ZVAL_ARR(call.return_value, make_row<failed_read_row>(failed_read{-1}));
    if (row)
        release(row);
}

/** Puts into a key's field what fits of an address; the field is zero behind it. */
inline void put_address(const address &from, rmonrpc_dsmon_address_t &field, int32_t &length)
{
    const uint32_t fitting = std::min(from.length, field.size);
    std::memcpy(field.value, from.bytes, fitting);
    length = static_cast<int32_t>(fitting);
}

/** The first bytes of an address field, as many as are in use; none: 0. */
inline void show_used(zval *slot, const rmonrpc_dsmon_address_t &field, int32_t length)
{
    // The length is the agent's claim and may be any number.
    const auto used = std::clamp<int32_t>(length, 0, field.size);
    or_zero::put(slot, wire::list_of(field.value, static_cast<uint32_t>(used)));
}

/** An address field; the field Length says how much of it is in use. */
template <auto Address, auto Length> using counted_address =
    column<member_key<Address>, set_by<show_used>, Address, Length>;

} // namespace rmon
