// SPDX-License-Identifier: MIT
/*
 * The probe: what all families share. What one of them keeps is found by its
 * type (core/storage.h); this file knows none of them.
 */
#pragma once

#include "agent/capture/capture_files.h"
#include "agent/capture/interfaces.h"
#include "agent/capture/protocols.h"
#include "agent/capture/sources.h"
#include "agent/core/loop.h"
#include "agent/core/state.h"
#include "agent/core/storage.h"

#include <cstdint>
#include <string>

/** sysUpTime for what happens with every frame, where asking the system's clock each time costs too much. */
struct frame_clock {
    int64_t frame_time = 0; // of the frame for which the clock was asked, microseconds
    uint32_t up_time = 0;   // what it said
    uint32_t uses = 0;      // since then
};

struct probe {
    event_loop loop;
    int64_t started = 0; // of the clock behind up_time(), in hundredths of a second
    state_store state;
    interface_table interfaces;
    protocol_directory protocols;
    source_table sources;
    capture_files files;
    struct frame_clock frame_clock;
    stored_objects stored = make_stored_objects();
};

/** sysUpTime begins. */
void start_clock(probe &agent);

/** sysUpTime: hundredths of a second since the agent's start, modulo 2^32. */
uint32_t up_time(const probe &agent);
