// SPDX-License-Identifier: MIT
/* Records of the NetFlow data export (NDE) tables: devices, data sources, flow paths, learned devices. */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/** What a write does with the row. */
inline constexpr int32_t NDE_SET = 1;
inline constexpr int32_t NDE_DELETE = 2;

/** The beginning of every record of a table; reads and writes send the table's own record as their request.
 */
struct rmonrpc_nde_head_t {
    int32_t getType;   // 0 in writes
    int32_t count;     // rows wanted: 1 unless getbulk, 0 in writes
    int32_t operation; // 0 in reads
    wire::uchars<16> address;
    uint32_t addressLength; // bytes of address in use
};

/** A text, zero-terminated unless it fills the field. */
using nde_text = wire::uchars<80>;

/* ---- configured devices, their data sources and flow paths ------------------- */

struct rmonrpc_nde_device_t {
    rmonrpc_nde_head_t head;
    nde_text deviceName;
    nde_text commString;
    uint32_t flag;
};

using rmonrpc_nde_device_arr_t = wire::rows<rmonrpc_nde_device_t>;

struct rmonrpc_nde_datasrc_t {
    rmonrpc_nde_head_t head;
    nde_text deviceName;
    nde_text datasrcName;
    uint32_t datasrcIndex;
    uint32_t flag;
};

using rmonrpc_nde_datasrc_arr_t = wire::rows<rmonrpc_nde_datasrc_t>;

struct rmonrpc_nde_flow_path_t {
    rmonrpc_nde_head_t head;
    nde_text deviceName;
    uint32_t datasrcIndex;
    int32_t inputIndex;
    int32_t outputIndex;
    uint32_t flag;
};

using rmonrpc_nde_flow_path_arr_t = wire::rows<rmonrpc_nde_flow_path_t>;

/* ---- learned devices and their interfaces -------------------------------------- */

struct rmonrpc_nde_learned_dev_t {
    rmonrpc_nde_head_t head;
    uint32_t timeLastNdePkt;
    uint32_t numNdePkts;
};

using rmonrpc_nde_learned_dev_arr_t = wire::rows<rmonrpc_nde_learned_dev_t>;

struct rmonrpc_nde_learned_dev_intf_t {
    rmonrpc_nde_head_t head;
    int32_t ifIndex;
    int32_t dirFlag;
};

using rmonrpc_nde_learned_dev_intf_arr_t = wire::rows<rmonrpc_nde_learned_dev_intf_t>;

struct rmonrpc_nde_learned_dev_status_t {
    int32_t state;
    uint32_t startTime;
};
