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
struct state_writer;

struct mapped_key {
    key_address address;
    uint32_t length;
    int32_t network; // protocolDirLocalIndex
    int32_t source;  // ifIndex
    uint32_t zero;   // fills up the last word
};

struct mapped_address {
    uint8_t physical[6] = {};
    uint32_t changed = 0; // sysUpTime when the physical address was learned or became another one
};

/** What a control row learns is the table's; it only needs to know where. */
struct address_watch {
    probe *agent = nullptr;
    int32_t source = 0;
    uint32_t dropped_frames = 0; // with an address for which there was no room
};

using address_watch_row = counting_row<address_watch>;
using address_watch_table = std::map<int32_t, address_watch_row>; // by addressMapControlIndex

struct address_map {
    int32_t most = -1; // addressMapMaxDesiredEntries
    learned_table<mapped_key, mapped_address> rows;
    ordered_view view;
};

/** Removes the control rows of an interface that went away. */
void addrmap_interface_gone(probe &agent, int32_t index);

/** Forgets the addresses of protocols that are not mapped any more. */
void addrmap_protocols_changed(probe &agent);

rmonrpc_addrmap_scalars_t addrmap_scalars_get(probe &agent);

/** Sets the table's size; rows that are too many then go, those that were used least recently first. */
int32_t addrmap_scalars_set(probe &agent, const rmonrpc_addrmap_scalars_t &request);

/** What a set gives, with the row's state. */
void addrmap_describe(rmonrpc_addrmap_ctl_t &record, int32_t index, const address_watch_row &row);

void save_address_map(probe &agent, state_writer &writer);
int32_t load_address_map(probe &agent, const rmonrpc_addrmap_scalars_t &record);

rmonrpc_addrmap_ctl_t addrmap_ctl_get(probe &agent, const rmonrpc_row_key2_t &key);

/** By the row-status rules; the data source is fixed while a row is valid. A request_status. */
int32_t addrmap_ctl_set(probe &agent, const rmonrpc_addrmap_ctl_t &request);

rmonrpc_addrmap_arr_t addrmap_entry_get(probe &agent, const rmonrpc_addrmap_key_t &key);
