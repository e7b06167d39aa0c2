/* The Ethernet statistics table (RFC 2819, etherStatsTable). */
#pragma once

#include "agent/capture/ether_counters.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <string>

struct probe;

struct etherstats_row {
    int32_t data_source = 0; // ifIndex
    std::string owner;
    row_status status = row_status::under_creation;
    ether_counters base{};    // the source's counters when the row became valid
    uint32_t create_time = 0; // sysUpTime when the row became valid
};

using etherstats_table = std::map<int32_t, etherstats_row>; // by etherStatsIndex

/** Makes a row for each Ethernet-like interface of this machine. */
void start_etherstats(probe &agent);

/** Removes the rows of an interface that went away. */
void etherstats_interface_gone(probe &agent, int32_t index);

/** The fields of a row that a set gives. */
void etherstats_describe(rmonrpc_etherstats_t &record, int32_t index, const etherstats_row &row);

rmonrpc_etherstats_t etherstats_get(probe &agent, const rmonrpc_row_key2_t &key);

/** By the row-status rules; the data source is fixed while a row is valid. A request_status. */
int32_t etherstats_set(probe &agent, const rmonrpc_etherstats_t &request);
