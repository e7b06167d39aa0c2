// SPDX-License-Identifier: MIT
/* Which clients a network holds. */

#include "agent/rpc/networks.h"

#include "tests/native/check.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace {

sockaddr_storage address_of(const std::string &text)
{
    sockaddr_storage address{};
    auto &four = reinterpret_cast<sockaddr_in &>(address);
    auto &six = reinterpret_cast<sockaddr_in6 &>(address);
    if (inet_pton(AF_INET, text.c_str(), &four.sin_addr) == 1)
        address.ss_family = AF_INET;
    else if (inet_pton(AF_INET6, text.c_str(), &six.sin6_addr) == 1)
        address.ss_family = AF_INET6;
    return address;
}

struct membership {
    const char *network, *address;
    bool within;
};

constexpr membership memberships[] = {
    {"10.1.0.0/16", "10.1.0.0", true},
    {"10.1.0.0/16", "10.1.255.255", true},
    {"10.1.0.0/16", "10.2.0.0", false},
    {"10.1.0.0/16", "10.0.255.255", false},
    {"10.1.2.3", "10.1.2.3", true},
    {"10.1.2.3", "10.1.2.2", false},
    {"10.1.2.2/31", "10.1.2.3", true},
    {"10.1.2.2/31", "10.1.2.4", false},
    {"0.0.0.0/0", "255.255.255.255", true},
    {"0.0.0.0/0", "2001:db8::1", false},
    {"::/0", "2001:db8::1", true},
    {"2001:db8::/33", "2001:db8:7fff::1", true},
    {"2001:db8::/33", "2001:db8:8000::1", false},
    {"::1", "::1", true},
    {"::1", "::2", false},
    // A socket of IPv6 shows clients of IPv4 like this.
    {"10.1.0.0/16", "::ffff:10.1.2.3", true},
    {"10.1.0.0/16", "::ffff:10.2.2.3", false},
    {"::ffff:10.1.0.0/112", "10.1.2.3", true},
};

constexpr const char *no_networks[] = {
    "",
    "/",
    "10.1.0.0/",
    "10.1.0.0/33",
    "10.1.0.0/-1",
    "10.1.0.0/8x",
    "10.1.0/16",
    "10.1.2.3/16",
    "::1/129",
    "2001:db8::1/64",
    "localhost",
    " 10.1.0.0/16",
    "10.1.0.0/16/16",
    "10.1.0.0/256",
};

} // namespace

void test_networks()
{
    for (const membership &one : memberships) {
        const std::optional<network> parsed = parse_network(one.network);
        check(parsed.has_value(), std::string("a network: ") + one.network);
        check(
            parsed && is_within({*parsed}, address_of(one.address)) == one.within,
            std::string(one.address) + " in " + one.network);
    }
    for (const char *text : no_networks)
        check(!parse_network(text), std::string("no network: ") + text);

    check(is_within(loopback_networks(), address_of("127.8.9.1")), "127.8.9.1 is this machine");
    check(is_within(loopback_networks(), address_of("::1")), "::1 is this machine");
    check(!is_within(loopback_networks(), address_of("128.0.0.1")), "128.0.0.1 is not this machine");
    check(!is_within({}, address_of("127.0.0.1")), "no network holds nobody");
    sockaddr_storage local{};
    local.ss_family = AF_UNIX;
    check(!is_within({*parse_network("::/0")}, local), "an address of another family");
}
