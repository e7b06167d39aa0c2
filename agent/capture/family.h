// SPDX-License-Identifier: MIT
/*
 * A family: a group of tables that belong together, with all that the rest of
 * the agent has to know of it. It stands at the end of the family's source file
 * and is named in one line of agent/families.cpp.
 */
#pragma once

#include "agent/capture/probe.h"
#include "agent/core/state.h"
#include "agent/core/storage.h"
#include "agent/core/variable.h"
#include "agent/rpc/procedures.h"

#include <cstdint>
#include <span>

struct protocol;

struct family {
    const char *name;
    /** The interfaces are known, and nothing was restored yet. */
    void (*start)(probe &agent) = nullptr;
    /** The agent ends: what is open is closed. What is stored goes by itself. */
    void (*stop)(probe &agent) = nullptr;
    /** Once a second. */
    void (*tick)(probe &agent) = nullptr;
    /** An interface came, or is not as it was before. */
    void (*interface_changed)(probe &agent, int32_t index) = nullptr;
    void (*interface_gone)(probe &agent, int32_t index) = nullptr;
    /** The directory counts other protocols than before, or fewer of them. */
    void (*protocols_changed)(probe &agent) = nullptr;
    /** A protocol is about to leave the directory. */
    void (*protocol_gone)(probe &agent, const protocol &which) = nullptr;
    std::span<const served_procedure> procedures = {};
    /** Its part of the settings file, in the order in which it is taken back. */
    std::span<const state_part> kept = {};
    std::span<const known_variable> variables = {};
};

/** All of them, in the order in which their settings are taken back: what a row refers to stands before it.
 */
std::span<const family *const> families();
