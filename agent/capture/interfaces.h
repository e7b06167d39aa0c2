// SPDX-License-Identifier: MIT
/*
 * This machine's interfaces, as its kernel describes and counts them.
 *
 * The table follows the kernel's announcements, so that the time of a change
 * is known; the counters of one interface are fetched when they are asked for.
 */
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <linux/if_link.h>

/** The kernel's counters of one interface, 64 bits wide. */
using kernel_counters = rtnl_link_stats64;

struct interface {
    int32_t index = 0;
    std::string name;
    uint16_t hardware_type = 0; // ARPHRD_*
    uint32_t flags = 0;         // IFF_*
    uint8_t oper_state = 0;     // IF_OPER_* of the kernel
    int32_t mtu = 0;
    std::vector<uint8_t> address;
    std::string kind;         // the kernel's word for a virtual interface: "vlan", "bridge"
    bool adapter = false;     // a device on some bus, not software
    uint32_t vlan = 0;        // VLAN id, when kind is "vlan"
    uint32_t last_change = 0; // sysUpTime at which its state became what it is; 0: before the agent's start
    bool file = false;        // no interface of this machine: a capture file plays its part
    uint64_t file_speed = 0;  // bits per second that the file tells
    kernel_counters counters{};
};

struct interface_table {
    int questions = -1; // netlink sockets; none where capture files play all parts
    int announcements = -1;
    std::map<int32_t, interface> rows; // by ifIndex
    std::vector<std::string> measured; // names of those that are measured; none: all
};

/** False, with errno, when the kernel can't be asked. */
bool open_interfaces(interface_table &table);
void close_interfaces(interface_table &table);

/** What the kernel announced, by ifIndex. */
struct interface_news {
    std::vector<int32_t> changed; // new ones included
    std::vector<int32_t> gone;
};

/** Takes over what the kernel announced since the last call. up_time is the sysUpTime of now. */
interface_news hear_interfaces(interface_table &table, uint32_t up_time);

/** One interface, its counters fetched afresh. Null when the kernel has it no more. */
interface *fetch_interface(interface_table &table, int32_t index);

/** True for what carries Ethernet frames: adapters, virtual ones too, and the loopback. */
bool is_ethernet_like(const interface &iface);

/** What may be a data source: carries Ethernet frames, and is one of those that are measured. */
bool is_measured(const interface_table &table, const interface &iface);

/** Bits per second as ifSpeed states them: 0 unknown, 4294967295 when more than fits. */
uint32_t speed_of(const interface &iface);

/** Packets that wait to be sent. */
uint32_t queue_length_of(const interface_table &table, const interface &iface);
