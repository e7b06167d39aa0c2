// SPDX-License-Identifier: MIT
/*
 * An XDR stream over bytes in memory that come in pieces, as reads bring them:
 * it gives no more in place than the rest of a piece, and tells how much that
 * is, as the module's connections do. For the native tests and the fuzzers.
 */
#pragma once

#include "rmon/rpc/rmonrpc_xdr.h"

#include <algorithm>
#include <cstring>
#include <span>

struct pieces {
    std::span<const uint8_t> rest;
    size_t size;         // of a piece
    size_t taken = 0;    // bytes
    size_t in_place = 0; // how often bytes were given in place
    bool has_window = true;

    size_t here() const { return std::min(size - taken % size, rest.size()); }

    const uint8_t *take(size_t count)
    {
        const uint8_t *from = rest.data();
        rest = rest.subspan(count);
        taken += count;
        return from;
    }
};

inline pieces &pieces_of(XDR *stream)
{
    return *static_cast<pieces *>(static_cast<void *>(stream->x_private));
}

inline bool_t take_piece_bytes(XDR *stream, char *to, u_int count)
{
    pieces &from = pieces_of(stream);
    if (count > from.rest.size())
        return FALSE;
    if (count)
        std::memcpy(to, from.take(count), count);
    return TRUE;
}

inline bool_t take_piece_unit(XDR *stream, long *to)
{
    uint8_t unit[4];
    if (!take_piece_bytes(stream, reinterpret_cast<char *>(unit), sizeof unit))
        return FALSE;
    *to = static_cast<int32_t>(
        static_cast<uint32_t>(unit[0]) << 24 | static_cast<uint32_t>(unit[1]) << 16 | unit[2] << 8 | unit[3]);
    return TRUE;
}

inline int32_t *take_piece_in_place(XDR *stream, u_int count)
{
    pieces &from = pieces_of(stream);
    if (count > from.here())
        return nullptr;
    from.in_place++;
    return static_cast<int32_t *>(const_cast<void *>(static_cast<const void *>(from.take(count))));
}

inline bool_t tell_window(XDR *stream, int request, void *answer)
{
    pieces &from = pieces_of(stream);
    if (request != wire::get_window || !from.has_window)
        return FALSE;
    *static_cast<wire::window *>(answer) = {from.rest.data(), static_cast<uint32_t>(from.here())};
    return TRUE;
}

inline XDR stream_over(pieces &from)
{
    static constexpr XDR::xdr_ops operations{take_piece_unit, nullptr, take_piece_bytes,    nullptr,
                                             nullptr,         nullptr, take_piece_in_place, nullptr,
                                             tell_window};
    XDR stream{};
    stream.x_op = XDR_DECODE;
    stream.x_ops = &operations;
    stream.x_private = &from;
    return stream;
}
