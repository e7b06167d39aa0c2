// SPDX-License-Identifier: MIT
/*
 * Links to agents: the resources that scripts hold, and the RPC client handles
 * behind them.
 */
#pragma once

#include "rmon/rmon.h"
#include "rmon/rpc/rmonrpc_clnt.h"

namespace rmon {

/**
 * A script's name for a link: its resource id. A script passes the resource
 * itself or the id. It is kept in place of the handle while arguments are
 * converted, since user code may run in between and close the link.
 */
struct link_id {
    zend_long number;
};

/**
 * The RPC handle behind a link, or null after the warning
 * "%d is not a RMON/RPC conn id!". Valid until user code may run again.
 */
CLIENT *client_of(link_id link);

/** Registers the resource types of normal and persistent links, and what a fork does to links. For module
 * start-up. */
void register_link_types(int module_number);

/**
 * Opens a TCP connection to the agent on host (a name or a dotted address), in
 * the time of a call at most; null after a failure.
 */
CLIENT *clnt_rmon_create(const char *host);

/** Why the last failed TCP connection failed; empty when none has failed in this process. */
const char *last_failed_connect();

} // namespace rmon
