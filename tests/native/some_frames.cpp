// SPDX-License-Identifier: MIT
#include "tests/native/some_frames.h"

#include "agent/capture/frame.h"

#include <iterator>

void put(octets &to, uint64_t value, uint32_t bytes)
{
    for (uint32_t i = bytes; i-- > 0;)
        to.push_back(static_cast<uint8_t>(value >> 8 * i));
}

void put_mac(octets &to, uint32_t host)
{
    put(to, 0x020000000000 + host, mac_octets);
}

void put_ip4(octets &to, uint32_t host)
{
    put(to, 0x0a000000 + host, 4);
}

namespace {

void put_ip6(octets &to, uint32_t host)
{
    put(to, 0x20010db8, 4);
    put(to, 0, 8);
    put(to, host, 4);
}

/** A transport header with its payload. */
octets some_transport(chances &by, uint32_t protocol)
{
    static constexpr uint32_t ports[] = {80, 443, 53, 25, 5060, 12345, 40000};
    octets made;
    const bool back = by.one_in(3);
    const uint32_t port = ports[by.below(std::size(ports))], own = 50000 + by.below(4);
    put(made, back ? port : own, 2);
    put(made, back ? own : port, 2);
    if (protocol == ip_udp) {
        put(made, 12, 2);
        put(made, 0, 2);
        put(made, by.below(4), 2); // of DNS the number and the flags
        put(made, back ? 0x8000 : 0, 2);
    } else {
        put(made, by.below(50), 4);
        put(made, by.below(50), 4);
        put(made, 0x5000 | (by.one_in(5) ? 0x02 : 0x18), 2);
        put(made, 0, 6);
        put(made, 0, by.below(3) * 4);
    }
    return made;
}

} // namespace

octets some_frame(chances &by, const traffic &of)
{
    octets made;
    const uint32_t from = by.below(of.hosts), to = by.below(of.hosts);
    if (of.odd && by.one_in(12))
        put(made, by.one_in(2) ? 0xffffffffffff : 0x01005e0000fb, mac_octets);
    else
        put_mac(made, to);
    put_mac(made, from);
    for (uint32_t tags = by.one_in(3) + by.one_in(9); tags > 0; tags--)
        put(made, 0x81000000 | by.below(8) << 13 | (100 + by.below(5)), 4);
    const uint32_t kind = by.below(of.odd ? 20 : 16);
    const uint32_t protocol = by.one_in(2) ? ip_tcp : ip_udp;
    const uint32_t speaker = of.odd && by.one_in(40) ? 7 : from; // an address that moves
    if (kind < 10) {
        put(made, ethertype_ip, 2);
        const octets carried = some_transport(by, protocol);
        put(made, 0x4500 | by.below(20) << 2, 2);
        put(made, 20 + carried.size(), 2);
        put(made, of.odd && by.one_in(20) ? 100 : 0, 4); // a later fragment
        put(made, 64 << 8 | protocol, 2);
        put(made, 0, 2);
        put_ip4(made, speaker);
        put_ip4(made, to);
        made.insert(made.end(), carried.begin(), carried.end());
    } else if (kind < 16) {
        put(made, ethertype_ip6, 2);
        const octets carried = some_transport(by, protocol);
        put(made, 0x60000000 | by.below(20) << 22, 4);
        put(made, carried.size(), 2);
        put(made, protocol << 8 | 64, 2);
        put_ip6(made, speaker);
        put_ip6(made, to);
        made.insert(made.end(), carried.begin(), carried.end());
    } else if (kind == 16) {
        put(made, ethertype_arp, 2);
        put(made, 0x000108000604, 6);
        put(made, 1 + by.below(2), 2);
        put_mac(made, from);
        put_ip4(made, speaker);
        put_mac(made, to);
        put_ip4(made, to);
    } else if (kind == 17) { // a neighbour advertisement
        put(made, ethertype_ip6, 2);
        put(made, 0x60000000, 4);
        put(made, 32, 2);
        put(made, ip_icmp6 << 8 | 255, 2);
        put_ip6(made, from);
        put_ip6(made, to);
        put(made, 0x88000000, 4);
        put(made, 0, 4);
        put_ip6(made, by.below(of.hosts));
        put(made, 0x0201, 2);
        put_mac(made, from);
    } else if (kind == 18) {
        put(made, 20, 2); // 802.3
        put(made, by.one_in(2) ? 0x424203 : 0xe0e003, 3);
    } else {
        put(made, 0x88cc, 2);
    }
    if (made.size() < 60 && !(of.odd && by.one_in(8)))
        made.resize(60);
    if (of.odd && by.one_in(10))
        made.resize(1515 + by.below(2)); // too long
    if (of.odd && by.one_in(50))
        made.resize(by.below(16)); // hardly captured
    return made;
}
