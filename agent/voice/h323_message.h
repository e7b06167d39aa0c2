// SPDX-License-Identifier: MIT
/* What messages of H.225.0 and of H.245 have alike: numbers, and addresses of transport. */
#pragma once

#include "agent/voice/decoder.h"
#include "agent/voice/measured.h"

#include <cstdint>
#include <string_view>

/** A number of a part, 0 when it has none of this name. */
inline uint32_t number_in(decoded_part part, std::string_view name)
{
    return static_cast<uint32_t>(number_of(part, name).value_or(0));
}

/** The address and the port of a part, by the names of their fields for IPv4 and IPv6. */
inline net_endpoint endpoint_of(
    decoded_part part,
    std::string_view ip4,
    std::string_view port4,
    std::string_view ip6,
    std::string_view port6)
{
    net_endpoint found{address_of(part, ip4), static_cast<uint16_t>(number_in(part, port4))};
    if (found.address.length == 0)
        found = {address_of(part, ip6), static_cast<uint16_t>(number_in(part, port6))};
    return found;
}
