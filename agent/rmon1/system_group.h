// SPDX-License-Identifier: MIT
/* The system group of MIB-II (RFC 1213): what this machine is, and the texts that its manager gave it. */
#pragma once

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <optional>
#include <string>

struct probe;
struct state_writer;

struct system_texts {
    std::string contact;
    std::optional<std::string> name; // none: the host's name
    std::string location;
};

rmonrpc_system_t system_get(probe &agent);

/** Takes contact, name and location; what can only be read is ignored. A request_status. */
int32_t system_set(probe &agent, const rmonrpc_system_t &request);

/** The texts that were set; what is kept of them over a restart. */
void save_system_texts(probe &agent, state_writer &writer);
int32_t load_system_texts(probe &agent, const rmonrpc_system_t &kept);
