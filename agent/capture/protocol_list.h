// SPDX-License-Identifier: MIT
/* The protocols that the agent knows by itself, by the names of RFC 2895 and RFC 2896 where those name them.
 */
#pragma once

#include <cstdint>
#include <span>

/** Which transports carry an application. */
enum application_carriers : uint8_t {
    over_none = 0,
    over_tcp = 1,
    over_udp = 2,
    over_sctp = 4,
};

struct known_protocol {
    const char *name;
    uint32_t number;                  // Ethernet type, access point or IP protocol
    uint8_t applications = over_none; // of which carrier it carries the applications
};

struct known_application {
    const char *name;
    uint16_t number; // port
    uint8_t transports;
};

extern const std::span<const known_protocol> known_networks; // above ether2
extern const std::span<const known_protocol> known_over_llc;
extern const std::span<const known_protocol> known_over_ip;
extern const std::span<const known_protocol> known_over_ip6;
extern const std::span<const known_application> known_applications;

/** Whether response times are measured of what an IP protocol carries on a port: all of TCP, DNS of UDP. */
bool is_measured(uint32_t ip_protocol, uint32_t port);
