// SPDX-License-Identifier: MIT
/* Network addresses as the keys of learned tables have them: of whole words, their length elsewhere in the
 * key. */
#pragma once

#include "agent/capture/frame.h"

#include "rmon/rpc/wire.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

struct key_address {
    uint8_t bytes[16];
};

inline key_address key_address_of(const net_address &address)
{
    key_address made;
    std::memcpy(made.bytes, address.bytes, sizeof made.bytes);
    return made;
}

/** The first 16 bytes of a request's address; longer ones stand behind all rows by their length alone. */
inline key_address key_address_of(const wire::byte_list &list)
{
    key_address made{};
    std::copy_n(wire::bytes_of(list), std::min<std::size_t>(list.length, sizeof made.bytes), made.bytes);
    return made;
}

/** The order of addresses of which the lengths are the same: below, at or above 0. */
inline int compare_addresses(const key_address &a, const key_address &b)
{
    return std::memcmp(a.bytes, b.bytes, sizeof a.bytes);
}
