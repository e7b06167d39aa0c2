// SPDX-License-Identifier: MIT
/* Addresses in the keys of the differentiated-services tables and in their records. */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/octets.h"
#include "agent/core/variable.h"

#include "rmon/rpc/rmonrpc_dsmon.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

/** The longest address that a frame can have. */
inline constexpr uint32_t max_address = 16;

/**
 * A record's address as a key's octets and their number. A length that no address has
 * keeps its place in the order: lengths count before octets.
 */
inline uint8_t
take_octets(uint8_t (&octets)[max_address], const rmonrpc_dsmon_address_t &from, int32_t length)
{
    const int32_t bounded = std::clamp(length, 0, static_cast<int32_t>(from.size));
    std::memcpy(octets, from.value, std::min(static_cast<uint32_t>(bounded), max_address));
    return static_cast<uint8_t>(bounded);
}

/** A key's octets as a record's address; its length. */
inline int32_t give_octets(rmonrpc_dsmon_address_t &to, const uint8_t (&octets)[max_address], uint8_t length)
{
    std::memcpy(to.value, octets, std::min<uint32_t>(length, max_address));
    return length;
}

inline int compare_addresses(
    const uint8_t (&one)[max_address],
    uint8_t one_length,
    const uint8_t (&other)[max_address],
    uint8_t other_length)
{
    if (one_length != other_length)
        return one_length < other_length ? -1 : 1;
    const std::size_t size = std::min<std::size_t>(one_length, max_address);
    return compare_octets({one, size}, {other, size});
}

/** A group of a request; those that no row can have stay behind all that are. */
inline uint8_t group_in_key(uint32_t group)
{
    return static_cast<uint8_t>(std::min(group, uint32_t{UINT8_MAX}));
}

/** An address in the instance of a variable: the number of its octets, then each. */
inline int32_t take_octets(instance_reader &from, rmonrpc_dsmon_address_t &address)
{
    const uint32_t size = take_number(from, rmonrpc_dsmon_address_t::size);
    for (uint32_t i = 0; i < size; i++)
        address.value[i] = static_cast<uint8_t>(take_number(from, UINT8_MAX));
    return static_cast<int32_t>(size);
}
