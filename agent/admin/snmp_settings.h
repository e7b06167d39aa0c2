/*
 * The SNMP side of the settings: who may ask (communities), and who is told
 * (trap destinations). The agent keeps and shows them; it speaks no SNMP.
 */
#pragma once

#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_admin.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct probe;
struct state_writer;

struct trapdest_row {
    std::string community;
    int32_t protocol = 0; // protocolDirLocalIndex of how the traps travel
    std::vector<uint8_t> address;
    std::string owner;
    row_status status = row_status::under_creation;
};

using trapdest_table = std::map<int32_t, trapdest_row>; // by trapDestIndex

/** The order of communities: the shorter one first, as of texts in a MIB's index. */
struct community_order {
    bool operator()(const std::string &a, const std::string &b) const
    {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    }
};

using community_table = std::map<std::string, int32_t, community_order>; // their rights

/** The fields of a row that a set gives. */
void trapdest_describe(rmonrpc_snmp_trapdest_t &record, int32_t index, const trapdest_row &row);

rmonrpc_snmp_trapdest_t trapdest_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t trapdest_set(probe &agent, const rmonrpc_snmp_trapdest_t &request);

rmonrpc_snmp_community_arr_t community_get(probe &agent, const rmonrpc_snmp_community_key_t &key);

/** Makes a community or changes its rights; rights of 0 remove it. */
int32_t community_set(probe &agent, const rmonrpc_snmp_community_t &request);

/** What is kept over a restart. */
void save_communities(probe &agent, state_writer &writer);
int32_t load_community(probe &agent, const rmonrpc_snmp_community_t &kept);
