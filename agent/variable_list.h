/* The MIB variables that the agent knows, each with its names and the read of its table. */
#pragma once

#include <cstdint>
#include <span>

struct probe;

/** The numbers of an instance. */
using variable_instance = std::span<const uint32_t>;

struct known_variable {
    const char *name;
    const char *identifier; // null where no MIB has it
    bool counter;           // it only grows; others rise and fall
    /** Reads an instance; false when there is none. */
    bool (*read)(probe &agent, variable_instance instance, uint64_t &value);
};

std::span<const known_variable> known_variables();
