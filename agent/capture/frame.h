// SPDX-License-Identifier: MIT
/*
 * What is in a frame. Each frame is taken apart once; all that count it look
 * at the result.
 *
 * Everything points into the captured bytes, which are the capture's and gone
 * after the frame was counted. Nothing here was checked for plausibility: lengths that
 * a header states are cut to what the frame has room for, and a header that was
 * not captured whole counts as not there, but for the ports in front of it.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>

/** An address of IPv4 or IPv6 in network order. What lies behind its length is 0. */
struct net_address {
    uint8_t length = 0; // 4 or 16; 0: none
    uint8_t bytes[16]{};

    bool operator==(const net_address &) const = default;
};

template <> struct std::hash<net_address> {
    std::size_t operator()(const net_address &address) const
    {
        uint64_t parts[2];
        std::memcpy(parts, address.bytes, sizeof parts);
        // Multiplications by odd constants spread what differs between neighbours over the upper half.
        uint64_t mixed = (parts[0] ^ address.length) * 0x9e3779b97f4a7c15;
        mixed = (mixed ^ mixed >> 32 ^ parts[1]) * 0xd6e8feb86659fd93;
        return mixed ^ mixed >> 32;
    }
};

/** The address in the first length bytes, 4 or 16. */
inline net_address make_net_address(const uint8_t *bytes, uint8_t length)
{
    net_address made;
    made.length = length;
    std::memcpy(made.bytes, bytes, length);
    return made;
}

inline constexpr uint32_t mac_octets = 6;

/** From here on the field behind the addresses is a type, below it is a length (IEEE 802.3). */
inline constexpr uint16_t first_ethernet_type = 0x0600;

inline constexpr uint16_t ethertype_ip = 0x0800;
inline constexpr uint16_t ethertype_arp = 0x0806;
inline constexpr uint16_t ethertype_ip6 = 0x86dd;

inline constexpr int32_t ip_icmp = 1;
inline constexpr int32_t ip_tcp = 6;
inline constexpr int32_t ip_udp = 17;
inline constexpr int32_t ip_icmp6 = 58;
inline constexpr int32_t ip_sctp = 132;

inline constexpr uint8_t tcp_fin = 0x01;
inline constexpr uint8_t tcp_syn = 0x02;
inline constexpr uint8_t tcp_rst = 0x04;
inline constexpr uint8_t tcp_ack = 0x10;

struct frame {
    const uint8_t *bytes = nullptr;
    uint32_t captured = 0;
    uint32_t length = 0;    // octets with the check sequence, as RFC 2819 counts them
    int64_t time = 0;       // microseconds since 1970, of the capture's clock
    uint64_t pkts = 1;      // frames like this one that are counted together (capture/sums.h)
    uint64_t octets = 0;    // of all of them
    uint32_t up_time = 0;   // sysUpTime at the last of them
    int32_t base_index = 0; // protocolDirLocalIndex of ether2 or llc; 0: cut within the Ethernet header

    const uint8_t *to_mac = nullptr; // MAC addresses; null when not captured
    const uint8_t *from_mac = nullptr;
    int32_t vlan = -1; // id and priority of the outermost tag (802.1Q, 802.1ad); -1: untagged
    int32_t priority = -1;
    uint16_t ethertype = 0; // behind the tags, and of SNAP; of other 802.3 frames their length (at most 1500)

    const uint8_t *network = nullptr; // from the network layer's header on, as far as captured
    uint32_t network_length = 0;
    net_address from; // of IPv4 and IPv6; of ARP for IPv4 sender and target
    net_address to;
    int32_t dscp = -1;           // -1: no IP
    int32_t ip_protocol = -1;    // of what the last IP header carries that could be read; -1: no IP
    bool later_fragment = false; // of an IP packet: it has no transport header, and its payload no beginning

    const uint8_t *transport =
        nullptr;            // what the IP headers carry, from its beginning on; null in later fragments
    uint16_t from_port = 0; // TCP, UDP, SCTP; 0: none
    uint16_t to_port = 0;
    bool has_tcp_header = false; // captured as far as it has a fixed form; what follows is 0 without
    uint8_t tcp_flags = 0;
    uint32_t tcp_sequence = 0;
    uint32_t tcp_acknowledgment = 0;

    const uint8_t *payload = nullptr; // of TCP, UDP, SCTP; for other protocols what IP carries
    uint32_t payload_length = 0;      // captured
    uint32_t payload_on_wire = 0;     // as the headers tell

    int32_t network_index = 0;     // protocolDirLocalIndex of the network layer's protocol; 0: none
    int32_t application_index = 0; // the same of the protocol above that was recognized; 0: none
};

/**
 * Takes apart a frame of which the first captured bytes are there; length
 * includes the check sequence. Everything that is not there stays empty.
 */
void decode_frame(frame &to, const uint8_t *bytes, uint32_t captured, uint32_t length, int64_t time);

inline uint16_t read_u16(const uint8_t *bytes)
{
    return static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
}

inline uint32_t read_u32(const uint8_t *bytes)
{
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

/** A MAC address as a number that sorts as the bytes do. */
inline uint64_t mac_number(const uint8_t *mac)
{
    return uint64_t{read_u16(mac)} << 32 | read_u32(mac + 2);
}
