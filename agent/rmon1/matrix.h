// SPDX-License-Identifier: MIT
/* The conversations of a data source (RFC 2819, matrixControlTable, matrixSDTable, matrixDSTable). */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/core/learned_table.h"
#include "agent/capture/mac_key.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>

struct probe;

/** One direction of a conversation. */
struct matrix_key {
    mac_key from;
    mac_key to;
};

struct matrix_counts {
    uint64_t pkts;
    uint64_t octets;
    uint64_t errors;
};

struct matrix_work {
    learned_table<matrix_key, matrix_counts> learned;
    uint32_t last_delete = 0;     // sysUpTime at which a conversation gave way, 0: never
    ordered_view by_direction[2]; // MATRIX_SD, MATRIX_DS
};

using matrix_control = counting_row<matrix_work>;
using matrix_table = std::map<int32_t, matrix_control>; // by matrixControlIndex
