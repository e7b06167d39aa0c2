/*
 * Traffic of a data source by aggregation group, pair of hosts and protocols
 * (RFC 3287, dsmonMatrixSDTable and dsmonMatrixDSTable): one set of rows, which
 * can be read in two orders. Where no application is known, the highest layer
 * that is known takes its place.
 */
#pragma once

#include "agent/dsmon/address.h"
#include "agent/dsmon/rows.h"

#include <cstdint>
#include <map>

struct dsmon_matrix_key {
    uint8_t source[longest_address] = {};
    uint8_t destination[longest_address] = {};
    uint8_t source_length = 0;
    uint8_t destination_length = 0;
    uint8_t group = 0;
    uint8_t unused[5] = {};
    int32_t network = 0;     // protocolDirLocalIndex of the network layer
    int32_t application = 0; // and of the application
};

struct dsmon_matrix_counts {
    dsmon_work work;
    learned_table<dsmon_matrix_key, dsmon_counters> learned;
    ordered_view by_source;
    ordered_view by_destination;
};

using dsmon_matrix_table = std::map<int32_t, dsmon_row<dsmon_matrix_counts>>; // by dsmonMatrixCtlIndex

/** Fills in what a set gives to a control row. */
void describe_dsmon_matrix_row(
    rmonrpc_dsmon_matrixctl_t &record, int32_t index, const dsmon_row<dsmon_matrix_counts> &row);

void dsmon_matrix_lock_changed(probe &agent, bool locked);
void dsmon_matrix_interface_gone(probe &agent, int32_t index);

rmonrpc_dsmon_matrixctl_t dsmon_matrixctl_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t dsmon_matrixctl_set(probe &agent, const rmonrpc_dsmon_matrixctl_t &request);
rmonrpc_dsmon_matrixstats_t dsmon_matrixsdstats_get(probe &agent, const rmonrpc_dsmon_matrix_key_t &key);
rmonrpc_dsmon_matrixstats_t dsmon_matrixdsstats_get(probe &agent, const rmonrpc_dsmon_matrix_key_t &key);

/** The row of this key never gives way to another one, or does again. A request_status. */
int32_t dsmatrix_make_persistent(probe &agent, const rmonrpc_dsmon_matrix_key_t &key);
int32_t dsmatrix_make_nonpersistent(probe &agent, const rmonrpc_dsmon_matrix_key_t &key);
