// SPDX-License-Identifier: MIT
/*
 * Settings of the appliance that scripts read and set: its addresses, its host
 * name, its resolvers.
 *
 * They are kept, and shown again; the agent never changes the machine on which
 * it runs. What was not set is what the machine has.
 */
#pragma once

#include "rmon/rpc/rmonrpc_admin.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct probe;
struct state_writer;

struct administration {
    std::map<uint32_t, rmonrpc_ipconfig_t> addresses; // by interface; those that were set
    std::optional<std::string> host_name;
    std::optional<std::vector<std::string>> resolvers;
};

/** Of an interface; 0 is the one of the default route. */
rmonrpc_ipconfig_t sys_ipconf_get(probe &agent, const int32_t &interface_index);
int32_t sys_ipconf_set(probe &agent, const rmonrpc_ipconfig_t &request);

rmonrpc_sys_hostname_t sys_hostname_get(probe &agent);
int32_t sys_hostname_set(probe &agent, const rmonrpc_sys_hostname_t &request);

rmonrpc_sys_resolvers_t sys_resolvers_get(probe &agent);
int32_t sys_resolvers_set(probe &agent, const rmonrpc_sys_resolvers_t &request);

/** The number of a MIB variable, by its name (variables.h). */
rmonrpc_mibvar_t mibvar_get(probe &agent, const rmonrpc_mibvar_name &name);

/* An appliance is several machines in one box, of which the agent is one; here it is alone. */

/** There are no data ports, so there is none of this index. */
int32_t data_port_config(probe &agent, const rmonrpc_row_key2_t &key);

/** Done when a set is answered, unless what it set could not be written. */
int32_t rmon_data_sync_completed(probe &agent);

/** There is no other part to tell of a new address. */
int32_t tambo_send_ip_change(probe &agent);

/** There is no other part to ask for the time. */
int32_t tambo_send_time_poll(probe &agent);

/** What is kept over a restart. */
void save_addresses(probe &agent, state_writer &writer);
void load_addresses(probe &agent, const rmonrpc_ipconfig_t &kept);
void save_host_name(probe &agent, state_writer &writer);
void load_host_name(probe &agent, const rmonrpc_sys_hostname_t &kept);
void save_resolvers(probe &agent, state_writer &writer);
void load_resolvers(probe &agent, const rmonrpc_sys_resolvers_t &kept);
