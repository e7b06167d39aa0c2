/*
 * MIB variables by name: single numbers of the tables that the agent serves,
 * for those who ask for one and for alarms that sample one.
 *
 * A name is the variable's and its instance's: "ifInOctets.2", "sysUpTime.0", or
 * the same as an object identifier, "1.3.6.1.2.1.2.2.1.10.2", with or without a
 * dot before it.
 */
#pragma once

#include <cstdint>
#include <string_view>

struct probe;

/** False when there is no such variable or instance. */
bool variable_value(probe &agent, std::string_view name, uint64_t &value);
