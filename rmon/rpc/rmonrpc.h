// SPDX-License-Identifier: MIT
/*
 * The program's identity and the records that it carries.
 *
 * A record's members stand in wire order; its routine follows from them
 * (wire.h). Records of one family of tables stand together in a header of
 * their own; those that many procedures share stand here.
 */
#pragma once

#include "rmon/rpc/straight.h"
#include "rmon/rpc/wire.h"

inline constexpr uint32_t RMONRPC_PROGRAM = 99999;
inline constexpr uint32_t RMONRPC_VERSION = 1;
/** TCP port where neither the configuration nor the services database names one. */
inline constexpr uint16_t RMONRPC_PORT = 9911;

/** The access mode of a table read. */
inline constexpr int32_t GET = 1;     // the row with exactly the given index
inline constexpr int32_t GETNEXT = 2; // the first row after the given index
inline constexpr int32_t GETBULK = 3; // several rows after the given index

/** The two views of a matrix, which travel through one procedure: a key's direction. */
inline constexpr int32_t MATRIX_SD = 0; // by source, then destination
inline constexpr int32_t MATRIX_DS = 1; // by destination, then source

struct rmonrpc_row_key1_t {
    int32_t index;
};

struct rmonrpc_row_key2_t {
    int32_t index;
    int32_t getType;
};

struct rmonrpc_row_key3_t {
    int32_t index1;
    int32_t index2;
    int32_t getType;
};

struct rmonrpc_row_key4_t {
    int32_t index1;
    int32_t index2;
    int32_t getType;
    int32_t count; // rows wanted: 1 unless getbulk
};
