// SPDX-License-Identifier: MIT
#include "agent/rpc/networks.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace {

constexpr uint8_t bits_before_ipv4 = 96;

std::array<uint8_t, 16> from_ipv4(const in_addr &address)
{
    std::array<uint8_t, 16> bytes{};
    bytes[10] = bytes[11] = 0xff;
    std::memcpy(bytes.data() + 12, &address, sizeof address);
    return bytes;
}

std::array<uint8_t, 16> from_ipv6(const in6_addr &address)
{
    std::array<uint8_t, 16> bytes{};
    std::memcpy(bytes.data(), &address, sizeof address);
    return bytes;
}

uint8_t mask_of(uint8_t prefix, std::size_t byte)
{
    const int bits = std::clamp(prefix - static_cast<int>(8 * byte), 0, 8);
    return static_cast<uint8_t>(0xff00 >> bits);
}

bool holds(const network &one, const std::array<uint8_t, 16> &address)
{
    for (std::size_t i = 0; i < address.size(); i++)
        if ((address[i] ^ one.address[i]) & mask_of(one.prefix, i))
            return false;
    return true;
}

} // namespace

std::optional<network> parse_network(std::string_view text)
{
    const std::size_t slash = text.find('/');
    const std::string host(text.substr(0, slash));
    network one{};
    in_addr four;
    in6_addr six;
    const bool is_ipv4 = inet_pton(AF_INET, host.c_str(), &four) == 1;
    if (is_ipv4)
        one.address = from_ipv4(four);
    else if (inet_pton(AF_INET6, host.c_str(), &six) == 1)
        one.address = from_ipv6(six);
    else
        return {};

    uint8_t bits = is_ipv4 ? 32 : 128;
    if (slash != text.npos) {
        const char *const end = text.data() + text.size();
        const uint8_t widest = bits;
        const auto [rest, error] = std::from_chars(text.data() + slash + 1, end, bits);
        if (error != std::errc{} || rest != end || bits > widest)
            return {};
    }
    one.prefix = is_ipv4 ? static_cast<uint8_t>(bits_before_ipv4 + bits) : bits;
    for (std::size_t i = 0; i < one.address.size(); i++)
        if (one.address[i] & ~mask_of(one.prefix, i))
            return {}; // 10.1.2.3/16: somebody meant something else
    return one;
}

const std::vector<network> &loopback_networks()
{
    static const std::vector<network> networks{*parse_network("127.0.0.0/8"), *parse_network("::1")};
    return networks;
}

bool is_within(const std::vector<network> &networks, const sockaddr_storage &address)
{
    std::array<uint8_t, 16> bytes{};
    if (address.ss_family == AF_INET)
        bytes = from_ipv4(reinterpret_cast<const sockaddr_in &>(address).sin_addr);
    else if (address.ss_family == AF_INET6)
        bytes = from_ipv6(reinterpret_cast<const sockaddr_in6 &>(address).sin6_addr);
    else
        return false;
    return std::ranges::any_of(networks, [&](const network &one) { return holds(one, bytes); });
}
