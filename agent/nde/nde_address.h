// SPDX-License-Identifier: MIT
/* The address of a device that exports NetFlow, as index of the tables about such devices. */
#pragma once

#include "rmon/rpc/rmonrpc_nde.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>
#include <optional>

/** Shorter ones stand first, as in a MIB's index; the bytes behind the length are 0. */
struct nde_address {
    uint32_t length = 0;
    std::array<uint8_t, 16> bytes{};

    auto operator<=>(const nde_address &) const = default;
};

/** The address in a request; none when it claims more bytes than there are. */
inline std::optional<nde_address> address_of(const rmonrpc_nde_head_t &head)
{
    if (head.addressLength > head.address.size)
        return {};
    nde_address made;
    made.length = head.addressLength;
    std::copy_n(head.address.value, made.length, made.bytes.begin());
    return made;
}

inline void set_address(rmonrpc_nde_head_t &head, const nde_address &address)
{
    head.addressLength = address.length;
    std::ranges::copy(address.bytes, head.address.value);
}
