// SPDX-License-Identifier: MIT
/* The protocol directory as scripts see it (RFC 2021, protocolDirTable). */
#pragma once

#include "rmon/rpc/rmonrpc_rmon2.h"

#include <cstdint>

struct probe;
struct state_writer;

rmonrpc_pdir_arr_t pdir_get(probe &agent, const rmonrpc_pdir_key_t &key);

rmonrpc_pdir_t pdir_byidx_get(probe &agent, const rmonrpc_row_key2_t &key);

/** The first row behind the key that a set made or changed. */
rmonrpc_pdir_t pdir_getnext_modified(probe &agent, const rmonrpc_pdir_key_t &key);

/**
 * By the agent's row-status rules (row_status.h). A new row is one more layer
 * above a protocol that is extensible. Removed are only rows above which there is
 * none, and no base layer.
 */
int32_t pdir_set(probe &agent, const rmonrpc_pdir_t &request);

/** sysUpTime. */
int32_t pdir_lastchange_get(probe &agent);

/** The agent learns no protocols by itself, so there is nothing to remove. */
int32_t pdir_destroy_all_autolearned(probe &agent);

/** The rows that a set made, changed or removed. */
void save_protocols(probe &agent, state_writer &writer);
int32_t load_protocol(probe &agent, const rmonrpc_pdir_t &record);
