// SPDX-License-Identifier: MIT
/* The interface table of MIB-II (RFC 1213), with what the agent adds about each interface as a data source.
 */
#pragma once

#include "rmon/rpc/rmonrpc_rmon1.h"

struct probe;

rmonrpc_ifentry_t ifentry_get(probe &agent, const rmonrpc_row_key2_t &key);
