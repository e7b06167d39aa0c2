// SPDX-License-Identifier: MIT
/*
 * Which physical address uses a network address, and on which interface it was
 * seen last (RFC 2021, addressMap).
 *
 * Addresses are learned from ARP, from the source of IP packets, and from what
 * neighbour discovery tells of others. One table holds what all control rows
 * learn; the control rows say on which interfaces to look.
 */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/capture/key_address.h"
#include "agent/core/learned_table.h"

#include "rmon/rpc/rmonrpc_rmon2.h"

#include <cstdint>
#include <map>

struct probe;

struct mapped_key {
    key_address address;
    uint32_t length;
    int32_t network;     // protocolDirLocalIndex
    int32_t data_source; // ifIndex
    uint32_t zero;       // fills up the last word
};

struct mapped_address {
    uint8_t physical[6] = {};
    uint32_t changed = 0; // sysUpTime when the physical address was learned or became another one
};

struct address_map {
    int32_t max_desired = -1; // addressMapMaxDesiredEntries
    learned_table<mapped_key, mapped_address> rows;
    ordered_view view;
};

/** What a control row learns is the table's; it only needs to know where. */
struct address_watch {
    probe *agent = nullptr;
    address_map *learned = nullptr;
    int32_t data_source = 0;
    uint32_t dropped_frames = 0; // with an address for which there was no room
};

using address_watch_row = counting_row<address_watch>;
using address_watch_table = std::map<int32_t, address_watch_row>; // by addressMapControlIndex
