// SPDX-License-Identifier: MIT
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
    uint8_t from[max_address] = {};
    uint8_t to[max_address] = {};
    uint8_t from_length = 0;
    uint8_t to_length = 0;
    uint8_t group = 0;
    uint8_t unused[5] = {};
    int32_t network = 0;     // protocolDirLocalIndex of the network layer
    int32_t application = 0; // and of the application
};

struct dsmon_matrix_counts {
    dsmon_work work;
    learned_table<dsmon_matrix_key, dsmon_counters> learned;
    ordered_view by_sender;
    ordered_view by_receiver;
};

using dsmon_matrix_table = std::map<int32_t, dsmon_row<dsmon_matrix_counts>>; // by dsmonMatrixCtlIndex
