// SPDX-License-Identifier: MIT
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
