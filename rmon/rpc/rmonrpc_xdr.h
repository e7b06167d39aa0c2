// SPDX-License-Identifier: MIT
/*
 * The XDR routines of the wire records.
 *
 * One routine serves all records: it carries out the steps of a record's
 * layout (wire.h) on an XDR stream, encoding, decoding or freeing. It may be
 * used on any stream of the RPC library; on record streams it never asks for
 * or sets the position.
 */
#pragma once

#include "rmon/rpc/rmonrpc.h"

#include <rpc/types.h>
#include <rpc/xdr.h>

namespace wire {

/**
 * The bytes that a stream gives in place: so many from here, of which
 * XDR_INLINE takes as many as were used. Asked for by the stream's control
 * operation; streams without one, or of whom nothing is known, answer FALSE.
 */
struct window {
    const uint8_t *at;
    uint32_t size;
};
inline constexpr int get_window = 0x77696e64;

/**
 * Encodes, decodes or frees one record; the first field that fails ends it
 * with FALSE.
 *
 * A count or a length in a reply is a claim of the agent's: memory grows with
 * the bytes that arrive. A record that could not be decoded whole is zeroed and
 * owns nothing; a freed one owns nothing and may be freed again.
 */
bool_t xdr_layout(XDR *xdrs, void *record, const layout &plan);

/** Releases what a decoded record owns. */
void release_layout(void *record, const layout &plan);

} // namespace wire

template <class Record> bool_t xdr_record(XDR *xdrs, Record *record)
{
    return wire::xdr_layout(xdrs, record, wire::layout_of<Record>);
}

/** Releases what a decoded reply owns: its texts, byte lists and rows. */
template <class Record> void release(Record *record)
{
    if constexpr (wire::layout_of<Record>.owns)
        wire::release_layout(record, wire::layout_of<Record>);
}
