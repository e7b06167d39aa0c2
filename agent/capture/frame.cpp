// SPDX-License-Identifier: MIT
#include "agent/capture/frame.h"

#include <algorithm>

namespace {

constexpr uint32_t ether_header = 14;

/** More headers than any honest packet has. */
constexpr int max_tags = 4;
constexpr int max_extensions = 16;

/** What is left of the captured bytes, and how many the packet has from there on. */
struct rest {
    const uint8_t *bytes;
    uint32_t captured;
    uint32_t on_wire;
};

bool skip(rest &at, uint32_t octets)
{
    if (octets > at.captured || octets > at.on_wire)
        return false;
    at.bytes += octets;
    at.captured -= octets;
    at.on_wire -= octets;
    return true;
}

/** Cuts off what lies behind a length that a header states: padding. */
void cut(rest &at, uint32_t octets)
{
    at.on_wire = std::min(at.on_wire, octets);
    at.captured = std::min(at.captured, octets);
}

void take_payload(frame &to, const rest &at)
{
    to.payload = at.bytes;
    to.payload_length = at.captured;
    to.payload_on_wire = at.on_wire;
}

/** The ports stand first: they are known where the capture cut off what follows them of the header. */
void take_ports(frame &to, const rest &at, uint32_t header)
{
    if (at.captured < 4 || at.on_wire < header)
        return;
    to.from_port = read_u16(at.bytes);
    to.to_port = read_u16(at.bytes + 2);
}

void decode_tcp(frame &to, rest at)
{
    take_ports(to, at, 20);
    if (at.captured < 20)
        return;
    to.has_tcp_header = true;
    to.tcp_sequence = read_u32(at.bytes + 4);
    to.tcp_acknowledgment = read_u32(at.bytes + 8);
    to.tcp_flags = at.bytes[13];
    const uint32_t header = (at.bytes[12] >> 4) * 4u;
    if (header >= 20 && skip(at, header))
        take_payload(to, at);
}

void decode_udp(frame &to, rest at)
{
    take_ports(to, at, 8);
    if (at.captured < 8)
        return;
    const uint32_t length = read_u16(at.bytes + 4);
    if (length >= 8) // 0 in jumbograms
        cut(at, length);
    skip(at, 8);
    take_payload(to, at);
}

void decode_sctp(frame &to, rest at)
{
    take_ports(to, at, 12);
    if (skip(at, 12))
        take_payload(to, at);
}

void decode_transport(frame &to, const rest &at)
{
    if (to.later_fragment) {
        take_payload(to, at);
        return;
    }
    to.transport = at.bytes;
    if (to.ip_protocol == ip_tcp)
        decode_tcp(to, at);
    else if (to.ip_protocol == ip_udp)
        decode_udp(to, at);
    else if (to.ip_protocol == ip_sctp)
        decode_sctp(to, at);
    else
        take_payload(to, at);
}

void decode_ip(frame &to, rest at)
{
    if (at.captured < 20 || at.bytes[0] >> 4 != 4)
        return;
    const uint8_t *header = at.bytes;
    const uint32_t header_length = (header[0] & 15) * 4u;
    if (header_length < 20)
        return;
    to.from = make_net_address(header + 12, 4);
    to.to = make_net_address(header + 16, 4);
    to.dscp = header[1] >> 2;
    to.ip_protocol = header[9];
    to.later_fragment = (read_u16(header + 6) & 0x1fff) != 0;
    const uint32_t total = read_u16(header + 2);
    if (total != 0) // 0 where the adapter is to fill it in
        cut(at, total);
    if (skip(at, header_length))
        decode_transport(to, at);
}

/** Whether the header of this number is an extension header of IPv6, which tells what follows it. */
bool is_extension(int32_t next)
{
    switch (next) {
    case 0:   // hop-by-hop options
    case 43:  // routing
    case 44:  // fragment
    case 51:  // authentication
    case 60:  // destination options
    case 135: // mobility
        return true;
    default:
        return false;
    }
}

void decode_ip6(frame &to, rest at)
{
    if (at.captured < 40 || at.bytes[0] >> 4 != 6)
        return;
    to.from = make_net_address(at.bytes + 8, 16);
    to.to = make_net_address(at.bytes + 24, 16);
    to.dscp = (read_u16(at.bytes) >> 6) & 63;
    to.ip_protocol = at.bytes[6];
    const uint32_t length = read_u16(at.bytes + 4);
    skip(at, 40);
    if (length != 0) // 0 in jumbograms
        cut(at, length);

    for (int i = 0; i < max_extensions && is_extension(to.ip_protocol); i++) {
        if (at.captured < 8)
            return;
        const int32_t kind = to.ip_protocol;
        const uint32_t units = at.bytes[1];
        const uint32_t octets = kind == 44 ? 8 : kind == 51 ? (units + 2) * 4 : (units + 1) * 8;
        if (kind == 44 && read_u16(at.bytes + 2) >> 3 != 0)
            to.later_fragment = true;
        const uint8_t next = at.bytes[0];
        if (!skip(at, octets))
            return;
        to.ip_protocol = next;
        if (to.later_fragment)
            break;
    }
    decode_transport(to, at);
}

/** ARP between Ethernet and IPv4 addresses. */
void decode_arp(frame &to, const rest &at)
{
    if (at.captured < 28 || read_u16(at.bytes) != 1 || read_u16(at.bytes + 2) != ethertype_ip
        || at.bytes[4] != 6 || at.bytes[5] != 4)
        return;
    to.from = make_net_address(at.bytes + 14, 4);
    to.to = make_net_address(at.bytes + 24, 4);
}

bool is_tag(uint16_t ethertype)
{
    return ethertype == 0x8100 || ethertype == 0x88a8 || ethertype == 0x9100;
}

void skip_tags(frame &to, rest &at)
{
    for (int i = 0; i < max_tags && is_tag(to.ethertype) && at.captured >= 4; i++) {
        const uint16_t tag = read_u16(at.bytes);
        if (to.vlan < 0) {
            to.vlan = tag & 0x0fff;
            to.priority = tag >> 13;
        }
        to.ethertype = read_u16(at.bytes + 2);
        skip(at, 4);
    }
}

/** An 802.3 frame has its length in the place of the type; SNAP carries a type behind it. */
void skip_snap(frame &to, rest &at)
{
    static constexpr uint8_t snap[] = {0xaa, 0xaa, 0x03, 0, 0, 0};
    if (to.ethertype > 1500 || at.captured < 8 || std::memcmp(at.bytes, snap, sizeof snap) != 0)
        return;
    const uint16_t ethertype = read_u16(at.bytes + 6);
    if (ethertype < first_ethernet_type)
        return; // no type: the frame stays one of 802.3
    cut(at, to.ethertype);
    if (skip(at, 8))
        to.ethertype = ethertype;
}

} // namespace

void decode_frame(frame &to, const uint8_t *bytes, uint32_t captured, uint32_t length, int64_t time)
{
    to = {};
    to.bytes = bytes;
    to.captured = captured;
    to.length = length;
    to.octets = length;
    to.time = time;
    if (captured >= mac_octets)
        to.to_mac = bytes;
    if (captured >= 2 * mac_octets)
        to.from_mac = bytes + mac_octets;
    if (captured < ether_header)
        return;

    // The length has the check sequence, which is not payload; it may be too small only in a broken capture
    // file.
    constexpr uint32_t check_sequence = 4;
    rest at{bytes, captured, std::max(captured, length > check_sequence ? length - check_sequence : 0)};
    skip(at, ether_header);
    to.ethertype = read_u16(bytes + 12);
    skip_tags(to, at);
    skip_snap(to, at);

    to.network = at.bytes;
    to.network_length = at.captured;
    if (to.ethertype == ethertype_ip)
        decode_ip(to, at);
    else if (to.ethertype == ethertype_ip6)
        decode_ip6(to, at);
    else if (to.ethertype == ethertype_arp)
        decode_arp(to, at);
}
