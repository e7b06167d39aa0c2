// SPDX-License-Identifier: MIT
/*
 * MAC addresses as indexes of learned tables.
 *
 * An index compares by its length first (octets.h), so that a shorter address
 * stands before all MAC addresses and a longer one behind them; an empty one is
 * where a walk begins.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/reply.h"

#include <compare>
#include <cstdint>

struct mac_key {
    uint64_t place = 0; // 1 + the address as a number; 0 is before all addresses

    auto operator<=>(const mac_key &) const = default;
};

inline mac_key mac_key_of(const uint8_t *mac)
{
    return {1 + mac_number(mac)};
}

/** Where an address of a request stands. */
inline mac_key mac_key_of(const wire::byte_list &address)
{
    if (address.length != mac_octets)
        return {address.length < mac_octets ? 0 : UINT64_MAX};
    return mac_key_of(bytes_of(address));
}

/** Gives a reply's field the address of a key that came from a frame. */
inline void set_mac(wire::byte_list &field, mac_key key)
{
    const uint64_t number = key.place - 1;
    uint8_t mac[mac_octets];
    for (uint32_t i = 0; i < mac_octets; i++)
        mac[i] = static_cast<uint8_t>(number >> 8 * (mac_octets - 1 - i));
    set_bytes(field, mac);
}
