// SPDX-License-Identifier: MIT
/*
 * Devices that export NetFlow, as far as their packets tell of them: learned
 * from what arrives on a UDP port (--netflow).
 */
#pragma once

#include "agent/core/loop.h"
#include "agent/nde/nde_address.h"
#include "agent/nde/netflow_packet.h"

#include "rmon/rpc/rmonrpc_nde.h"

#include <cstdint>
#include <map>
#include <string>

struct probe;
struct state_writer;

/** Directions in which flows passed an interface of a device. */
inline constexpr int32_t flows_in = 1;
inline constexpr int32_t flows_out = 2;

struct learned_interface {
    int32_t directions = 0;
    uint64_t last_seen = 0; // number of the packet
};

struct learned_device {
    uint32_t last_time = 0; // sysUpTime of the last packet
    uint32_t packets = 0;
    uint64_t last_seen = 0; // number of the packet
    std::map<int32_t, learned_interface> interfaces;
    netflow_templates templates;
};

struct netflow_learning {
    int socket = -1;
    bool enabled = true;
    uint32_t start_time = 0; // sysUpTime at which learning began
    uint64_t packets = 0;    // taken so far, of all devices
    std::map<nde_address, learned_device> devices;
};

/** Listens for packets; port 0 takes any free one, which is told. An empty text, or what went wrong. */
std::string open_netflow(probe &agent, const std::string &host, uint16_t port);

rmonrpc_nde_learned_dev_arr_t nde_learned_dev_get(probe &agent, const rmonrpc_nde_learned_dev_t &request);

rmonrpc_nde_learned_dev_intf_arr_t
nde_learned_dev_intf_get(probe &agent, const rmonrpc_nde_learned_dev_intf_t &request);

/** Learning begins anew, if it is not under way; it can't where no port is listened on. */
int32_t nde_auto_learned_enable(probe &agent);

/** Learning ends; what was learned stays to be read. */
int32_t nde_auto_learned_disable(probe &agent);

rmonrpc_nde_learned_dev_status_t nde_learned_dev_status(probe &agent);

/** What is kept over a restart: whether it is switched on. */
void save_learning(probe &agent, state_writer &writer);
void load_learning(probe &agent, const rmonrpc_nde_learned_dev_status_t &kept);
