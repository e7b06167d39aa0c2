// SPDX-License-Identifier: MIT
/*
 * The configured side of NetFlow data export: devices, the data sources on a
 * device, and the flow paths (pairs of interfaces) of a data source. Scripts make them all; a
 * path needs its source, a source its device, and
 * goes with it.
 */
#pragma once

#include "agent/nde/nde_address.h"

#include "rmon/rpc/rmonrpc_nde.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>

struct probe;
struct state_writer;

struct nde_device {
    std::string name;
    std::string community;
};

using nde_datasrc_key = std::pair<nde_address, uint32_t>;
using nde_path_key = std::tuple<nde_address, uint32_t, int32_t, int32_t>; // source, input, output

struct nde_tables {
    std::map<nde_address, nde_device> devices;
    std::map<nde_datasrc_key, std::string> datasrcs; // their names
    std::set<nde_path_key> paths;
};

rmonrpc_nde_device_arr_t nde_device_get(probe &agent, const rmonrpc_nde_device_t &request);
int32_t nde_device_set(probe &agent, const rmonrpc_nde_device_t &request);

rmonrpc_nde_datasrc_arr_t nde_datasrc_get(probe &agent, const rmonrpc_nde_datasrc_t &request);

/** With index 0 a source is added, at the lowest index that is free on its device. */
int32_t nde_datasrc_set(probe &agent, const rmonrpc_nde_datasrc_t &request);

rmonrpc_nde_flow_path_arr_t nde_flow_path_get(probe &agent, const rmonrpc_nde_flow_path_t &request);
int32_t nde_flow_path_set(probe &agent, const rmonrpc_nde_flow_path_t &request);

/** What is kept over a restart. */
void save_nde_devices(probe &agent, state_writer &writer);
void save_nde_datasrcs(probe &agent, state_writer &writer);
int32_t load_nde_datasrc(probe &agent, const rmonrpc_nde_datasrc_t &kept);
void save_nde_paths(probe &agent, state_writer &writer);
