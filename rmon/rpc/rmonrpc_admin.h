// SPDX-License-Identifier: MIT
/* Records of the appliance's administration: its network settings and its SNMP agent's. */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- network configuration ----------------------------------------------------- */

/**
 * The addresses are the words of an in_addr, network order in memory, and
 * travel like any other integer: between little-endian hosts 10.1.2.3 is the
 * bytes 3, 2, 1, 10. Agents have always had it so.
 */
struct rmonrpc_ipconfig_t {
    int32_t status;
    uint32_t ipAddress;
    uint32_t ipNetmask;
    uint32_t ipBroadcast;
    uint32_t ipGateway;
    uint32_t ipInterface;
};

struct rmonrpc_sys_hostname_t {
    int32_t status;
    wire::text<255> hostname;
};

using rmonrpc_sys_resolver_name = wire::text<255>;

struct rmonrpc_sys_resolvers_t {
    int32_t status;
    wire::rows<rmonrpc_sys_resolver_name> resolvers;
};

/* ---- SNMP agent ------------------------------------------------------------------ */

struct rmonrpc_snmp_trapdest_t {
    int32_t status;
    int32_t trapDestIndex;
    wire::text<255> trapDestCommunity;
    int32_t trapDestProtocol;
    wire::byte_list trapDestAddress;
    wire::text<255> trapDestOwner;
    int32_t trapDestStatus;
};

/** Rights of a community; 0 stands for its deletion. */
inline constexpr int32_t COMM_RO = 1;
inline constexpr int32_t COMM_RW = 2;

struct rmonrpc_snmp_community_key_t {
    wire::text<255> communityString;
    int32_t getType;
    int32_t count; // rows wanted: 1 unless getbulk
};

struct rmonrpc_snmp_community_t {
    int32_t status;
    wire::text<255> communityString;
    int32_t privs;
};

using rmonrpc_snmp_community_arr_t = wire::rows<rmonrpc_snmp_community_t>;

/** The name of a MIB variable, of any length. */
using rmonrpc_mibvar_name = wire::text<>;

struct rmonrpc_mibvar_t {
    int32_t status; // 0 when found
    uint64_t value;
};
