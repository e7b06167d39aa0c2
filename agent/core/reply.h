// SPDX-License-Identifier: MIT
/*
 * What handlers answer with: the codes of a status word, and the parts of a
 * reply that live on the heap. A reply owns its parts; the dispatcher releases
 * them once the reply is encoded.
 */
#pragma once

#include "rmon/rpc/wire.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>

/**
 * The status word of a row and the answer to a set: 0 when all is well, else
 * one of SNMP's error-status numbers (RFC 1157).
 */
enum request_status : int32_t {
    no_error = 0,
    no_such_name = 2, // no such row, or no next one
    bad_value = 3,    // a value outside its range, or one that the row's state rules out
    gen_err = 5,      // it can't be done for another reason: the table is full, the kernel refuses
};

/** The reply of a read for which there is no row. */
template <class Reply> Reply no_such_row()
{
    Reply reply{};
    reply.status = no_such_name;
    return reply;
}

/** Gives a reply's text a copy of value, cut to what the field may carry. */
template <uint32_t Bound> void set_text(wire::text<Bound> &field, std::string_view value)
{
    field.value = strndup(value.data(), std::min<std::size_t>(value.size(), Bound));
}

/** A text of a request. */
template <uint32_t Bound> std::string_view text_of(const wire::text<Bound> &field)
{
    return field.value ? field.value : "";
}

/** Gives a reply's byte list a copy of bytes. */
inline void set_bytes(wire::byte_list &list, std::span<const uint8_t> bytes)
{
    list = {};
    if (bytes.empty())
        return;
    uint8_t *to = list.small;
    if (bytes.size() > wire::byte_list::inside) {
        to = static_cast<uint8_t *>(std::malloc(bytes.size()));
        if (!to)
            return;
        list.large = to;
    }
    std::memcpy(to, bytes.data(), bytes.size());
    // NOLINTNEXTLINE(clang-analyzer-unix.Malloc): the block is the list's, which the dispatcher releases
    list.length = static_cast<uint32_t>(bytes.size());
}

/** True for printable ASCII: a DisplayString (RFC 1213) without its control characters. */
inline bool is_printable(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}
