// SPDX-License-Identifier: MIT
/* Networks, as an administrator names them: who may talk to the agent. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/socket.h>

/** IPv4 as IPv6 holds it (::ffff:0:0/96), so that a client counts as the same by either. */
struct network {
    std::array<uint8_t, 16> address;
    uint8_t prefix; // bits

    bool operator==(const network &) const = default;
};

/** Of "10.1.0.0/16", "10.1.2.3", "2001:db8::/32" or "::1"; nothing of any other text, nor where bits stand
 * behind the prefix. */
std::optional<network> parse_network(std::string_view text);

/** This machine alone. */
const std::vector<network> &loopback_networks();

/** Whether the address, of whichever family, lies in one of the networks. */
bool is_within(const std::vector<network> &networks, const sockaddr_storage &address);
