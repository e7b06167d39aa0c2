// SPDX-License-Identifier: MIT
/*
 * MIB variables by name: single numbers of the tables that the agent serves,
 * for those who ask for one and for alarms that sample one.
 *
 * A name is the variable's and its instance's: "ifInOctets.2", "sysUpTime.0", or
 * the same as an object identifier, "1.3.6.1.2.1.2.2.1.10.2", with or without a
 * dot before it. A MAC address in an instance is its length and its octets:
 * "hostInPkts.1.6.2.0.0.0.0.1".
 */
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct probe;

struct variable_reading {
    uint64_t value;
    bool counter; // it only grows; others rise and fall
};

/** None when there is no such variable or instance. */
std::optional<variable_reading> read_variable(probe &agent, std::string_view name);
